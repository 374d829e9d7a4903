// Which assignment wins, after any sequence of operations, beside a model.

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/support/records.h"
#include "tests/support/sections.h"
#include "tests/support/settings.h"

namespace {

using dalvo::Configuration;
using dalvo::OptionParser;
using dalvo::testing::CatalogueSetter;
using dalvo::testing::differing_fields;
using dalvo::testing::load_text;

using Names = std::vector<std::string>;

struct Assignment {
    std::string name;
    std::string value;
};

/// Lines of a text: a header, unless it names no section, and what stands below it.
struct Block {
    Names sections;
    std::vector<Assignment> assignments;
};

struct Operation {
    enum Kind { load, set, activate, replay, fill } kind;
    std::vector<Block> text;
    Assignment assignment;
    std::string section;
    std::int32_t level;
};

std::string text_of(const std::vector<Block> &blocks)
{
    std::string text;
    for (const Block &block : blocks) {
        std::string header;
        for (const std::string &section : block.sections) {
            header += (header.empty() ? "[" : ", ") + section;
        }
        text += header.empty() ? "" : header + "]\n";
        for (const Assignment &assignment : block.assignments) {
            text += assignment.name + " = " + assignment.value + "\n";
        }
    }
    return text;
}

std::ostream &operator<<(std::ostream &out, const Operation &operation)
{
    switch (operation.kind) {
    case Operation::load: return out << "load " << operation.level << "\n" << text_of(operation.text);
    case Operation::set:
        return out << "set " << operation.level << " " << operation.assignment.name << " = "
                   << operation.assignment.value << "\n";
    case Operation::activate: return out << "activate " << operation.section << "\n";
    case Operation::replay: return out << "replay\n";
    case Operation::fill: break;
    }
    return out << "fill\n";
}

/// The options at hand, one of each type and one that none knows; with texts that are values of the type, all of them
/// within the option's range.
const std::map<std::string, Names> &valid_texts()
{
    static const std::map<std::string, Names> texts = {
        {"model_generation", {"true", "false"}},
        {"random_seed", {"1", "2", "-7"}},
        {"dpll.restart_geometric_factor", {"1", "0.5", "-7"}},
        {"printer.defines_prefix", {"", "1", "true", "a = b"}},
        {"no.such.option", {}},
    };
    return texts;
}

rc::Gen<Assignment> assignments()
{
    const auto name = rc::gen::weightedElement<std::string>({{20, "model_generation"},
                                                             {20, "random_seed"},
                                                             {20, "dpll.restart_geometric_factor"},
                                                             {20, "printer.defines_prefix"},
                                                             {1, "no.such.option"}});
    return rc::gen::mapcat(name, [](const std::string &chosen) {
        Names texts = valid_texts().at(chosen);
        texts.push_back("1x"); // a value of a string alone
        return rc::gen::map(rc::gen::inRange<std::size_t>(0, 100), [chosen, texts](std::size_t place) {
            const std::size_t valid = texts.size() - 1;
            return Assignment{chosen, valid == 0 || place >= 98 ? texts.back() : texts[place % valid]};
        });
    });
}

rc::Gen<std::string> section_names()
{
    return rc::gen::element<std::string>("a", "b", "default", "c d");
}

rc::Gen<Block> blocks()
{
    const auto sections = rc::gen::container<Names>(section_names());
    const auto lines = rc::gen::container<std::vector<Assignment>>(assignments());
    return rc::gen::build<Block>(rc::gen::set(&Block::sections, rc::gen::resize(4, sections)),
                                 rc::gen::set(&Block::assignments, rc::gen::resize(6, lines)));
}

rc::Gen<Operation> operations()
{
    return rc::gen::build<Operation>(
        rc::gen::set(&Operation::kind,
                     rc::gen::element(Operation::load, Operation::set, Operation::activate, Operation::replay,
                                      Operation::fill)),
        rc::gen::set(&Operation::text, rc::gen::resize(5, rc::gen::container<std::vector<Block>>(blocks()))),
        rc::gen::set(&Operation::assignment, assignments()),
        rc::gen::set(&Operation::section, rc::gen::element<std::string>("", "a", "b", "default", "c d", "nowhere")),
        rc::gen::set(&Operation::level, rc::gen::inRange<std::int32_t>(-3, 4)));
}

/// Plain and slow: what a setter is to do with the options at hand.
class Model {
public:
    struct Set {
        OptionParser::Value value;
        std::int32_t level;
    };

    void load(const std::vector<Block> &text, std::int32_t level)
    {
        Names current = {""};
        for (const Block &block : text) {
            if (block.sections == Names{"default"}) {
                current = {""};
            } else if (!block.sections.empty()) {
                current = block.sections;
            }
            for (const Assignment &assignment : block.assignments) {
                for (const std::string &section : current) {
                    sections[section].emplace_back(assignment, level);
                }
            }
        }
    }

    /// The assignment that failed, if it did.
    std::optional<Assignment> set(const Assignment &assignment, std::int32_t level)
    {
        const Names &valid = valid_texts().at(assignment.name);
        bool is_valid = assignment.name == "printer.defines_prefix";
        for (const std::string &text : valid) {
            is_valid = is_valid || text == assignment.value;
        }
        if (!is_valid) {
            return assignment;
        }
        values[assignment.name] = {typed(assignment), level};
        return std::nullopt;
    }

    std::optional<Assignment> replay()
    {
        auto entries = sections[""];
        const auto found = sections.find(active);
        if (!active.empty() && found != sections.end()) {
            entries.insert(entries.end(), found->second.begin(), found->second.end());
        }
        for (const auto &[assignment, level] : entries) {
            if (const auto failed = set(assignment, level)) {
                return failed;
            }
        }
        return std::nullopt;
    }

    void fill(Configuration &record) const
    {
        const auto store = [&](const char *name, auto &field, auto none) {
            const auto found = values.find(name);
            if (found != values.end()) {
                field = std::get<decltype(none)>(found->second.value);
            }
        };
        store("model_generation", record.model_generation, bool());
        store("random_seed", record.random_seed, std::int32_t());
        store("dpll.restart_geometric_factor", record.dpll.restart_geometric_factor, float());
        store("printer.defines_prefix", record.printer_defines_prefix, std::string());
    }

    std::string active;
    std::map<std::string, Set> values;

private:
    static OptionParser::Value typed(const Assignment &assignment)
    {
        if (assignment.name == "model_generation") {
            return assignment.value == "true";
        }
        if (assignment.name == "random_seed") {
            return std::stoi(assignment.value);
        }
        if (assignment.name == "dpll.restart_geometric_factor") {
            return assignment.value == "0.5" ? 0.5F : static_cast<float>(std::stoi(assignment.value));
        }
        return assignment.value;
    }

    std::map<std::string, std::vector<std::pair<Assignment, std::int32_t>>> sections;
};

/// A setter and its model, which do the same.
class Pair {
public:
    void run(const Operation &operation)
    {
        switch (operation.kind) {
        case Operation::load:
            load_text(setter, text_of(operation.text), operation.level);
            model.load(operation.text, operation.level);
            break;
        case Operation::set:
            compare([&] { setter.set_option(operation.assignment.name, operation.assignment.value, operation.level); },
                    model.set(operation.assignment, operation.level));
            break;
        case Operation::activate:
            setter.set_active_config(operation.section);
            model.active = operation.section;
            break;
        case Operation::replay: compare([&] { setter.parse_active_config(); }, model.replay()); break;
        case Operation::fill: fill(); break;
        }
        compare_values();
    }

private:
    void fill()
    {
        const auto failed = model.replay();
        compare([&] { setter.update_config(&record); }, failed);
        if (!failed) {
            model.fill(expected);
        }
        RC_ASSERT(differing_fields(record, expected) == Names());
    }

    /// Does `action`, which is to end with an error at `failed`, or without one.
    template <class Action> static void compare(Action action, const std::optional<Assignment> &failed)
    {
        try {
            action();
        } catch (const OptionParser::error &e) {
            RC_ASSERT(failed.has_value());
            RC_ASSERT(e.option == failed->name);
            RC_ASSERT(e.value == failed->value);
            return;
        }
        RC_ASSERT_FALSE(failed.has_value());
    }

    void compare_values() const
    {
        for (const OptionParser::Option &option : setter.options().options()) {
            const auto found = model.values.find(option.name);
            if (found == model.values.end()) {
                RC_ASSERT_FALSE(option.has_value());
            } else {
                RC_ASSERT(option.value == found->second.value);
                RC_ASSERT(option.level == found->second.level);
            }
        }
    }

    CatalogueSetter setter;
    Model model;
    Configuration record = dalvo::testing::sentinel_record(0);
    Configuration expected = record;
};

RC_GTEST_PROP(replay, gives_each_option_the_last_assignment_that_applies, ())
{
    const auto sequence = *rc::gen::scale(0.4, rc::gen::container<std::vector<Operation>>(operations()));
    Pair pair;
    for (const Operation &operation : sequence) {
        pair.run(operation);
    }
    pair.run({Operation::fill, {}, {}, "", 0});
}

} // namespace
