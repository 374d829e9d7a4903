#pragma once

#include <cstddef>
#include <ostream>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "dalvo/inspect/knowledge/catalogue.h"
#include "dalvo/inspect/runs/run.h"

/// Random runs, most of which apply, with weight on the options that have to do with each other.
namespace dalvo::testing {

/// What a run is made of.
struct RunPlan {
    bool has_default_text = false; ///< as the first text
    std::vector<std::string> texts;
    std::string section;
    std::vector<std::pair<std::string, std::string>> direct; ///< names and values assigned by hand
};

inline std::ostream &operator<<(std::ostream &out, const RunPlan &plan)
{
    out << (plan.has_default_text ? "the default text\n" : "");
    for (const std::string &text : plan.texts) {
        out << "---- a text\n" << text << "\n";
    }
    out << "---- section '" << plan.section << "'\n";
    for (const auto &[name, value] : plan.direct) {
        out << "-o " << name << "=" << value << "\n";
    }
    return out;
}

inline inspect::Run run_of(const RunPlan &plan, const inspect::Catalogue &catalogue)
{
    inspect::Run run(catalogue);
    if (plan.has_default_text) {
        run.add_default();
    }
    for (const std::string &text : plan.texts) {
        run.add_text("text " + std::to_string(run.texts().size()), text);
    }
    run.choose_section(plan.section);
    for (const auto &[name, value] : plan.direct) {
        run.assign(name, value, name.size() % 2 == 0 ? "command line" : "environment");
    }
    return run;
}

/// Makes plans; the same ones for the same seed.
class RandomRuns {
public:
    RandomRuns(const inspect::Catalogue &options, unsigned seed) : catalogue(options), random(seed) {}

    RunPlan next()
    {
        RunPlan plan;
        rarity = one_of<std::size_t>({5, 40, 200}); // one in so many is wrong
        plan.has_default_text = below(2) == 0;
        for (std::size_t texts = 1 + below(4); texts > 0; --texts) {
            plan.texts.push_back(text());
        }
        plan.section = section();
        for (std::size_t direct = below(5); direct > 0; --direct) {
            plan.direct.push_back(assignment());
        }
        return plan;
    }

    /// A section that may be there, or none.
    std::string section()
    {
        return slips() ? one_of<std::string>({"nowhere", "A", "default"}) : one_of<std::string>({"", "a", "a", "b"});
    }

private:
    using Words = std::vector<std::string>;

    std::size_t below(std::size_t bound) { return random() % bound; }
    bool slips() { return below(rarity) == 0; }
    template <class T> T one_of(const std::vector<T> &choice) { return choice[below(choice.size())]; }

    std::string text()
    {
        std::string lines;
        if (below(6) != 0) { // sections that are there without a line
            lines = "[a,b]\n[default]\n";
        }
        for (std::size_t count = below(9); count > 0; --count) {
            lines += line() + one_of<std::string>({"\n", "\n", "\r\n"});
        }
        return (below(rarity * 4) == 0 ? "\xEF\xBB\xBF" : "") + lines;
    }

    std::string line()
    {
        switch (below(7)) {
        case 0: return one_of<std::string>({"", "# verbosity = x", "  "});
        case 1:
            return below(rarity * 2) == 0
                       ? one_of<std::string>({"[", "[]", "[a", "[a] x", "[a] # x", "[a,,b]", "[b,]", "[default] # x"})
                       : one_of<std::string>({"[a]", "[b]", "[ a , b ]", "[default]", "[a,a]", "[default, a]", "[c]"});
        default: break;
        }
        const auto [name, value] = assignment();
        return value.empty() && below(2) == 0 ? name : name + " = " + value;
    }

    std::pair<std::string, std::string> assignment()
    {
        if (slips() && below(4) == 0) {
            return {one_of<std::string>({"verbostiy", "", "Verbosity", "verbosity 1", std::string("verbosity\0", 10),
                                         "\xFF", "theory.arr.debug_lemmas"}),
                    "1"};
        }
        const inspect::OptionInfo &option = below(3) == 0 ? any_option() : related_option();
        return {option.name, value_for(option)};
    }

    const inspect::OptionInfo &any_option() { return catalogue.options()[below(catalogue.options().size())]; }

    /// One that forces others or is forced, or that is often out of its range.
    const inspect::OptionInfo &related_option()
    {
        return *catalogue.find(one_of<std::string>(
            {"interpolation", "interpolation", "unsat_core_generation", "unsat_core_generation", "proof_generation",
             "preprocessor.toplevel_propagation", "dpll.store_tlemmas", "theory.arr.enable_nonlinear_strat",
             "theory.arr.enable_nonlinear", "verbosity", "random_seed", "dpll.branching_random_frequency"}));
    }

    static bool is_often_out_of_range(const inspect::OptionInfo &option)
    {
        return option.name == "verbosity" || option.name == "random_seed" ||
               option.name == "dpll.branching_random_frequency";
    }

    std::string value_for(const inspect::OptionInfo &option)
    {
        if (is_often_out_of_range(option) && below(8) == 0) {
            return option.name == "random_seed" ? "0" : "3";
        }
        if (slips()) {
            return one_of<std::string>({"x", "3", "99", "-1", "0", "1.5", "", "1 # one", "nan", "2147483648", "\xFF"});
        }
        switch (option.type) {
        case OPT_BOOL: return one_of<std::string>({"true", "false", "ON", "0"});
        case OPT_INT: return one_of<std::string>({"1", "1", "+1", "2", "01"});
        case OPT_FLOAT: return one_of<std::string>({"0.5", "-0.0", "1e-3", "nan", "-inf", "1"});
        case OPT_STR: break;
        }
        return one_of<std::string>({"", "text", "a,b", "ALL", "= x", "\xC3\xA4", std::string("a\0b", 3)});
    }

    const inspect::Catalogue &catalogue;
    std::mt19937 random;
    std::size_t rarity = 1;
};

} // namespace dalvo::testing
