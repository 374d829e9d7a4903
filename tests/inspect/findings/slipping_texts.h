#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/inspect/random_runs.h"

/// Random texts and runs in which many lines are wrong, each in a way that people are wrong in.
namespace dalvo::testing {

class SlippingTexts {
public:
    using Words = std::vector<std::string>;

    /// About one line in `slip_rarity` is wrong.
    SlippingTexts(unsigned seed, std::size_t slip_rarity) : random(seed), rarity(slip_rarity) {}

    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(random()) % bound; }

    const std::string &one_of(const Words &words) { return words[below(words.size())]; }

    std::string text()
    {
        std::string made = is_slip() && below(4) == 0 ? "\xEF\xBB\xBF" : "";
        for (std::size_t lines = below(14); lines > 0; --lines) {
            made += line() + (below(6) == 0 ? "\r\n" : "\n");
        }
        return !made.empty() && below(4) == 0 ? made.substr(0, made.size() - 1) : made;
    }

    RunPlan run()
    {
        RunPlan plan;
        plan.has_default_text = below(4) != 0;
        for (std::size_t texts = below(4); texts > 0; --texts) {
            plan.texts.push_back(text());
        }
        static const Words sections = {"", "", "a", "a", "b", "fast", "default", "fats"};
        plan.section = one_of(sections);
        for (std::size_t count = below(3) == 0 ? 1 + below(3) : 0; count > 0; --count) {
            std::string chosen = name();
            std::string with = value(chosen);
            plan.direct.emplace_back(std::move(chosen), std::move(with));
        }
        return plan;
    }

private:
    bool is_slip() { return below(rarity) == 0; }

    std::string line()
    {
        static const Words others = {"", "# note", "  \t", "\t# [a", "#", "\r", "#; verbosity = 1"};
        static const Words indents = {"", "", "", "  ", "\t", " \v"};
        const std::string indent = one_of(indents);
        switch (below(10)) {
        case 0: return indent + one_of(others);
        case 1:
        case 2: return indent + header();
        default: return indent + assignment() + (below(6) == 0 ? " " : "");
        }
    }

    std::string header()
    {
        static const Words good = {"[a]",          "[b]",      "[default]", "[a, b]",
                                   "[a, b, fast]", "[ fast ]", "[a]]",      "[default, a]"};
        static const Words doubtful = {"[a, a]", "[a,b,\ta ]", "[default, default]", "[fats]", "[Default]", "[a, a, a]",
                                       "[a, default,default]", "[b , b]", "[fast,fast,b]"};
        static const Words bad = {"[", "[]", "[ ]", "[a", "[a] x", "[a,,b]", "[a,]", "[,a]", "[a,a,]"};
        if (!is_slip()) {
            return one_of(good);
        }
        switch (below(3)) {
        case 0: return one_of(doubtful);
        case 1: return one_of(bad);
        default: return one_of(good) + comment();
        }
    }

    std::string comment()
    {
        static const Words starts = {" # ", "# ", " ; ", ";", " // ", "//", "\t#", "  #", " #"};
        static const Words texts = {"note", "", "see [b]", "a = 1", "x # y", "1;2", "// z", "\xff\x1b"};
        return one_of(starts) + one_of(texts);
    }

    std::string name()
    {
        static const Words good = {
            "verbosity", "verbosity", "interpolation", "interpolation", "random_seed", "model_generation",
            "proof_generation", "unsat_core_generation", "unsat_core_generation", "dpll.store_tlemmas",
            "preprocessor.toplevel_propagation", "preprocessor.toplevel_propagation_limit", "dpll.preprocessor.mode",
            "dpll.preprocessor.elimination_phase", "dpll.branching_random_frequency", "dpll.restart_strategy",
            "dpll.restart_geometric_factor", "theory.la.enabled", "theory.la.detect_euf_fragment", "theory.euf.enabled",
            "theory.euf.dyn_ack", "theory.euf.dyn_ack_limit", "theory.arr.enable_nonlinear",
            "theory.arr.enable_nonlinear_strat", "theory.bv.lazydpll.restart_strategy", "theory.bv.eager",
            "printer.defines_prefix", "printer.defines_prefix", "debug.api_call_trace_filename"};
        static const Words bad = {
            "verbostiy", "Verbosity", "seed", "mode", "", "interpolation true", "printer.defines_prefix x",
            "; verbosity", ";", "// random_seed", "//", "debug.log_sections", "shallow_incrementality", "verbosity x",
            "a\xff b", "]", "x[y]", "verbosity:", "verbosity :", "interpolation: true", "printer.defines_prefix:",
            "random_seed : 2 ", std::string("a\0b", 3), "printer.defines_prefix: x # y", "random_seed: 2 # y"};
        return is_slip() && below(2) == 0 ? one_of(bad) : one_of(good);
    }

    std::string value(const std::string &of)
    {
        static const Words flags = {"true", "false", "1", "0", "YES", "off"};
        static const Words numbers = {"1", "2", "0", "+1", "01", "1", "2"};
        static const Words texts = {"x", "", "a b", "x=y", "x#y", "\xC3\xA4"};
        static const Words odd = {
            "3", "-1", "16", "", "high", "1.5", "nan", "inf", "-inf", "1e50", "treu", "2147483648", "\"1\"", "'true'",
            "\"x", "\"x y\"", "0.5", "=", "99", "N", std::string("1\0", 2), "\xFF", "enabled", "\"\"",
            "\x1b[1m", "' 1 '"};
        static const Words odd_and_usual = {"1", "true", "\"1\"", "\"true\"", "x", "", "treu"};
        if (is_slip()) {
            return below(3) == 0 ? one_of(odd_and_usual) + comment() : one_of(odd);
        }
        const bool is_text = of == "printer.defines_prefix" || of == "debug.api_call_trace_filename";
        const bool is_flag = of.find("generation") != std::string::npos || of.find("enable") != std::string::npos ||
                             of == "interpolation" || of == "dpll.store_tlemmas" || of == "theory.bv.eager" ||
                             of == "preprocessor.toplevel_propagation" || of == "theory.la.detect_euf_fragment";
        return one_of(is_text ? texts : is_flag && of != "unsat_core_generation" ? flags : numbers);
    }

    std::string assignment()
    {
        static const Words between = {" = ", "=", " =", "= ", "\t=\t", " = ", " = "};
        const std::string chosen = name();
        return chosen + (is_slip() && below(4) == 0 ? "" : one_of(between) + value(chosen));
    }

    std::mt19937 random;
    std::size_t rarity;
};

} // namespace dalvo::testing
