// Holds docs/errors.md to the library: its headings to the texts in the sources, its examples to what is thrown.

#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/configuration/configurationsetter.h"
#include "tests/configuration/caught.h"
#include "tests/support/golden.h"
#include "tests/support/sections.h"
#include "tests/support/settings.h"

namespace {

using dalvo::Configuration;
using dalvo::ConfigurationSetter;
using dalvo::OptionType;
using dalvo::testing::CatalogueSetter;
using dalvo::testing::caught_from;
using dalvo::testing::load_text;
using dalvo::testing::source_lines;

/// Each error text with the messages that stand as examples below it: the headings with a block of text.
std::map<std::string, std::vector<std::string>> documented_examples()
{
    std::map<std::string, std::vector<std::string>> examples;
    std::string heading;
    bool inside = false;
    for (const std::string &line : source_lines("docs/errors.md")) {
        if (line.rfind("## ", 0) == 0) {
            heading = line.substr(3);
        } else if (line.rfind("```", 0) == 0) {
            inside = !inside;
        } else if (inside && line.rfind("dalvo-config: ", 0) != 0) {
            examples[heading].push_back(line);
        }
    }
    return examples;
}

/// The literals that begin the messages of errors in the library's sources, without the blank before a name.
std::set<std::string> texts_in_sources()
{
    namespace fs = std::filesystem;
    const std::regex thrown("\\berror\\(\"([^\"]*?) ?\"");
    std::set<std::string> texts;
    for (const auto &entry : fs::recursive_directory_iterator(fs::path(DALVO_SOURCE_DIR) / "dalvo")) {
        if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h") {
            continue;
        }
        for (const std::string &line : source_lines(fs::relative(entry.path(), DALVO_SOURCE_DIR).string())) {
            std::smatch found;
            if (std::regex_search(line, found, thrown)) {
                texts.insert(found[1]);
            }
        }
    }
    return texts;
}

/// What the library throws for each example, in the document's order.
std::map<std::string, std::vector<std::string>> thrown_examples()
{
    const auto load = [](const char *text) {
        return caught_from([&] {
            ConfigurationSetter setter;
            load_text(setter, text);
        }).what;
    };
    const auto apply = [](const char *text) {
        return caught_from([&] {
            CatalogueSetter setter;
            load_text(setter, text);
            Configuration record;
            setter.update_config(&record);
        }).what;
    };
    const auto add = [](const char *name, OptionType type) {
        return caught_from([&] { CatalogueSetter().options().add_option(name, type, ""); }).what;
    };
    return {
        {"bad format of configuration file", {load("a = 1\n[fast\n")}},
        {"unknown option", {apply("no.such.option = 1"), apply("verbostiy = 1")}},
        {"invalid value for option",
         {apply("verbosity = high"), apply("verbosity = 7"), apply("dpll.branching_random_frequency = 1.5")}},
        {"option registered twice", {add("verbosity", dalvo::OPT_INT)}},
        {"unknown type of option", {add("shape", static_cast<OptionType>(2))}},
    };
}

TEST(error_document, has_an_example_for_each_text_and_the_library_throws_it)
{
    EXPECT_EQ(documented_examples(), thrown_examples());
}

TEST(error_document, leaves_out_no_text_of_the_sources)
{
    std::set<std::string> documented;
    for (const auto &[text, examples] : documented_examples()) {
        documented.insert(text);
    }
    EXPECT_EQ(texts_in_sources(), documented);
}

} // namespace
