#include "dalvo/inspect/knowledge/logic.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace {

using dalvo::inspect::is_logic_name;

TEST(is_logic_name, holds_for_the_logics_that_benchmarks_name)
{
    for (const char *const name : {
             // without quantifiers
             "QF_ABV", "QF_ABVFP", "QF_ABVFPLRA", "QF_ALIA", "QF_ANIA", "QF_AUFBV", "QF_AUFBVFP", "QF_AUFBVFPLIA",
             "QF_AUFBVLIA", "QF_AUFBVNIA", "QF_AUFLIA", "QF_AUFNIA", "QF_AX", "QF_BV", "QF_BVFP", "QF_BVFPLRA",
             "QF_BVLRA", "QF_DT", "QF_FP", "QF_FPLRA", "QF_IDL", "QF_LIA", "QF_LIRA", "QF_LRA", "QF_NIA", "QF_NIRA",
             "QF_NRA", "QF_NRAT", "QF_RDL", "QF_S", "QF_SLIA", "QF_SNIA", "QF_UF", "QF_UFBV", "QF_UFBVDT",
             "QF_UFBVLIA", "QF_UFDT", "QF_UFDTLIA", "QF_UFDTLIRA", "QF_UFDTNIA", "QF_UFFP", "QF_UFFPDTNIRA",
             "QF_UFIDL", "QF_UFLIA", "QF_UFLRA", "QF_UFNIA", "QF_UFNRA",
             // with quantifiers
             "ABV", "ABVFP", "ABVFPLRA", "ALIA", "ANIA", "AUFBV", "AUFBVDTLIA", "AUFBVDTNIA", "AUFBVFP",
             "AUFDTLIA", "AUFDTLIRA", "AUFDTNIRA", "AUFFPDTNIRA", "AUFLIA", "AUFLIRA", "AUFNIA", "AUFNIRA", "BV",
             "BVFP", "BVFPLRA", "FP", "FPLRA", "LIA", "LRA", "NIA", "NRA", "UF", "UFBV", "UFBVFP", "UFBVLIA", "UFDT",
             "UFDTLIA", "UFDTLIRA", "UFDTNIA", "UFDTNIRA", "UFFPDTNIRA", "UFIDL", "UFLIA", "UFLRA", "UFNIA", "UFNIRA",
             // of everything
             "ALL"}) {
        EXPECT_TRUE(is_logic_name(name)) << name;
    }
}

TEST(is_logic_name, fails_for_names_that_are_none)
{
    const struct {
        std::string_view name;
        const char *why;
    } rows[] = {
        {"", "nothing"},
        {"fast", "a word"},
        {"default", "a word"},
        {"QF_", "nothing after the start"},
        {"QF", "half of the start"},
        {"_LIA", "half of the start"},
        {"QFLIA", "no line below"},
        {"QF_XYZ", "no part"},
        {"QF_QF_LIA", "the start twice"},
        {"qf_lia", "small letters"},
        {"QF_lia", "small letters"},
        {"lia", "small letters"},
        {"all", "small letters"},
        {"LIAA", "something after the arithmetic"},
        {"LIAUF", "something after the arithmetic"},
        {"LIALRA", "two arithmetics"},
        {"LI", "half of an arithmetic"},
        {"IA", "half of an arithmetic"},
        {"NIDL", "a difference logic is linear"},
        {"T", "no arithmetic for the transcendental functions"},
        {"QF_UFT", "no arithmetic for the transcendental functions"},
        {"NRATT", "the letter twice"},
        {"TNRA", "the letter at the start"},
        {"UFA", "parts in another order"},
        {"BVUF", "parts in another order"},
        {"QF_FPBV", "parts in another order"},
        {"UFUF", "a part twice"},
        {"SS", "a part twice"},
        {"ALLIA", "all and an arithmetic"},
        {"XLIA", "half of the arrays"},
        {" LIA", "a blank"},
        {"LIA ", "a blank"},
        {"QF_ LIA", "a blank"},
        {{"LIA\0", 4}, "a NUL"},
        {{"\0LIA", 4}, "a NUL"},
        {"L\xcc\x81IA", "bytes above 0x7F"},
        {"\xff", "bytes above 0x7F"},
    };
    for (const auto &row : rows) {
        EXPECT_FALSE(is_logic_name(row.name)) << ::testing::PrintToString(row.name) << ": " << row.why;
    }
}

/// Every name that the parts make, put together from the start on.
std::set<std::string> names_of_parts()
{
    std::set<std::string> names = {""};
    const auto append = [&](const std::vector<std::string> &one_of) {
        std::set<std::string> longer = names;
        for (const std::string &name : names) {
            for (const std::string &part : one_of) {
                longer.insert(name + part);
            }
        }
        names = longer;
    };
    append({"A", "AX"});
    for (const char *const part : {"UF", "BV", "FP", "DT", "S"}) {
        append({part});
    }
    append({"IDL", "RDL", "LIA", "LRA", "LIRA", "NIA", "NRA", "NIRA", "IDLT", "RDLT", "LIAT", "LRAT", "LIRAT", "NIAT",
            "NRAT", "NIRAT"});
    names.erase("");
    for (const std::string &name : std::set<std::string>(names)) {
        names.insert("QF_" + name);
    }
    names.insert("ALL");
    return names;
}

TEST(is_logic_name, holds_for_all_that_the_parts_make_and_for_no_other_short_run_of_them)
{
    const std::string pieces[] = {"QF_", "A",   "AX",  "UF",  "BV",   "FP",  "DT",  "S",    "T",   "IDL",
                                  "RDL", "LIA", "LRA", "LIRA", "NIA", "NRA", "NIRA", "ALL", "x", ""};
    const std::set<std::string> logics = names_of_parts();
    for (const std::string &name : logics) {
        EXPECT_TRUE(is_logic_name(name)) << name;
    }
    for (const std::string &a : pieces) {
        for (const std::string &b : pieces) {
            for (const std::string &c : pieces) {
                const std::string name = a + b + c;
                EXPECT_EQ(is_logic_name(name), logics.count(name) != 0) << name;
            }
        }
    }
}

} // namespace
