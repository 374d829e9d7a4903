#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "dalvo/inspect/knowledge/catalogue.h"

namespace {

using dalvo::inspect::Catalogue;
using Names = std::vector<std::string>;

Names suggestions(const std::string &name, std::size_t most = 3)
{
    return Catalogue::standard().suggestions(name, most);
}

const struct {
    std::string name;
    Names expected;
    const char *why;
} meant[] = {
    {"seed", {"random_seed"}, "an everyday word"},
    {"restarts", {"dpll.restart_strategy", "dpll.restart_initial"}, "a word for two options"},
    {"models", {"model_generation"}, "an everyday word"},
    {"proofs", {"proof_generation"}, "an everyday word"},
    {"unsat_core", {"unsat_core_generation"}, "an everyday word"},
    {"trace", {"debug.api_call_trace"}, "an everyday word"},
    {"produce-models", {"model_generation"}, "a name of SMT-LIB"},
    {"produce-proofs", {"proof_generation"}, "a name of SMT-LIB"},
    {"produce-unsat-cores", {"unsat_core_generation"}, "a name of SMT-LIB"},
    {"random-seed", {"random_seed"}, "a name of SMT-LIB"},
    {"verbosity", {"verbosity"}, "a name of SMT-LIB"},
    {":produce-models", {"model_generation"}, "with a colon in front"},
    {":random-seed", {"random_seed"}, "with a colon in front"},
    {"PRODUCE_MODELS", {"model_generation"}, "large letters, and another line"},
    {"produce.models", {"model_generation"}, "points for lines"},
    {"SEED", {"random_seed"}, "large letters"},
    {"radnom_seed", {"random_seed"}, "a slip"},
    {"Random_Seed", {"random_seed"}, "letters of the other case"},
    {"toplevel_propagation", {"preprocessor.toplevel_propagation"}, "without what stands before the point"},
    {"restart_strategy", {"dpll.restart_strategy", "theory.bv.lazydpll.restart_strategy",
                          "theory.fp.dpll.restart_strategy"}, "the same of three engines, in their order"},
    {"theory.la.enable", {"theory.la.enabled"}, "a slip, before those that are farther off"},
};

TEST(suggestions, start_with_the_options_that_are_meant)
{
    for (const auto &row : meant) {
        Names found = suggestions(row.name);
        ASSERT_GE(found.size(), row.expected.size()) << row.name;
        found.resize(row.expected.size());
        EXPECT_EQ(found, row.expected) << row.name << ": " << row.why;
    }
}

// Words for which others know an option, in the spellings that they use.
const Names words = {
    "seed", "random-seed", "restart", "restarts", "luby", "phase", "phase-saving", "model", "models", "produce-models",
    "produce-assignments", "proof", "proofs", "produce-proofs", "core", "cores", "unsat-core", "unsat-cores",
    "produce-unsat-cores", "interpolant", "interpolants", "produce-interpolants", "trace", "tracing", "verbose",
    "verbosity", ":verbosity", "unsat_cores", "Phase_Saving",
};

TEST(suggestions, are_names_of_options_each_once_and_at_most_as_many_as_asked_for)
{
    const Catalogue &catalogue = Catalogue::standard();
    Names asked = words;
    for (const auto &option : catalogue.options()) {
        asked.push_back(option.name);
        asked.push_back(option.name.substr(1));
        asked.push_back(option.name.substr(option.name.rfind('.') + 1));
    }
    for (const std::string &name : asked) {
        const Names all = suggestions(name, 1000);
        EXPECT_EQ(std::set<std::string>(all.begin(), all.end()).size(), all.size()) << name;
        for (const std::string &option : all) {
            EXPECT_NE(catalogue.find(option), nullptr) << option << " for " << name;
        }
        for (const std::size_t most : {0U, 1U, 2U, 3U}) {
            Names first = all;
            first.resize(std::min<std::size_t>(most, all.size()));
            EXPECT_EQ(suggestions(name, most), first) << name << ", at most " << most;
        }
    }
}

TEST(suggestions, are_there_for_each_word_of_others)
{
    for (const std::string &word : words) {
        EXPECT_FALSE(suggestions(word).empty()) << word;
    }
}

TEST(suggestions, are_three_unless_more_are_asked_for)
{
    EXPECT_EQ(Catalogue::standard().suggestions("enabled").size(), 3U);
    EXPECT_EQ(suggestions("enabled", 4).size(), 4U);
}

TEST(suggestions, are_none_for_what_is_like_no_option)
{
    for (const std::string &name : Names{"", ":", "xyzzy", std::string("\0", 1), "\x80\xff", "seed ", "::seed",
                                         "no option is called like this", std::string(100000, 'x')}) {
        EXPECT_EQ(suggestions(name), Names()) << ::testing::PrintToString(name.substr(0, 40));
    }
}

TEST(suggestions, know_the_options_of_a_host)
{
    Catalogue catalogue;
    catalogue.describe("cache.entries", dalvo::OPT_INT, "Cache options:", "Entries of the cache.");
    catalogue.describe("seeds", dalvo::OPT_INT, "Cache options:", "Seeds.");
    EXPECT_EQ(catalogue.suggestions("cache.entires"), Names{"cache.entries"});
    EXPECT_EQ(catalogue.suggestions("entries"), Names{"cache.entries"});
    EXPECT_EQ(catalogue.suggestions("seed"), (Names{"random_seed", "seeds"})) << "words come before slips";
    EXPECT_EQ(suggestions("cache.entires"), Names()) << "another catalogue does not";
}

} // namespace
