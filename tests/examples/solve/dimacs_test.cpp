#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "examples/host/settings.h"
#include "examples/solve/dimacs.h"

namespace {

using namespace std::string_literals;
using Clauses = std::vector<std::vector<int>>;

TEST(dimacs, reads_clauses)
{
    const struct { std::string text; Clauses clauses; const char *why; } rows[] = {
        {"p cnf 0 0", {}, "nothing"},
        {"p cnf 3 2\n1 -2 0\n3 0\n", {{1, -2}, {3}}, "a line a clause"},
        {"c a\ncb\np cnf 3 2\nc in between\n1\n-2 0 3\nc p cnf 9 9\n0", {{1, -2}, {3}}, "comments, clauses over lines"},
        {"\r\np\tcnf  3 1 \r\n 1 2\t3 0 \r\n\r\n", {{1, 2, 3}}, "any white space"},
        {"p cnf 1 1 0", {{}}, "the empty clause"},
        {"p cnf 2147483647 1 2147483647 -2147483647 0", {{2147483647, -2147483647}}, "the largest variable"},
        {"p cnf 2 1 1 1 -1 0", {{1, 1, -1}}, "a literal again"},
        {"p cnf 2 1\n1 2 0\n%\n0\n", {{1, 2}}, "ended by a percent sign"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(examples::read_dimacs("f", row.text).clauses, row.clauses) << row.why;
    }
}

TEST(dimacs, refuses_what_is_wrong_and_says_where)
{
    const struct { std::string text; std::string error; } rows[] = {
        {"", "f:1:1: the header 'p cnf VARIABLES CLAUSES' expected"},
        {"c no more\n", "f:2:1: the header 'p cnf VARIABLES CLAUSES' expected"},
        {"1 0", "f:1:1: the header 'p cnf VARIABLES CLAUSES' expected"},
        {"p dnf 1 1", "f:1:3: the header 'p cnf VARIABLES CLAUSES' expected"},
        {"p cnf", "f:1:6: the number of variables expected"},
        {"p cnf x 1", "f:1:7: the number of variables expected, not 'x'"},
        {"p cnf 1\n", "f:2:1: the number of clauses expected"},
        {"p cnf 1 -1", "f:1:9: a negative number in the header"},
        {"p cnf -1 0", "f:1:10: a negative number in the header"},
        {"p cnf 2147483648 0", "f:1:7: the number of variables expected, not '2147483648'"},
        {"p cnf 2 1\n1 3 0", "f:2:3: literal 3 is beyond the header's variables, 2"},
        {"p cnf 2 1\n1 -3 0", "f:2:3: literal -3 is beyond the header's variables, 2"},
        {"p cnf 2 1\n-2147483648 0", "f:2:1: literal -2147483648 is beyond the header's variables, 2"},
        {"p cnf 2 1\n99999999999 0", "f:2:1: a literal, or the 0 that ends a clause, expected, not '99999999999'"},
        {"p cnf 2 1\n+1 0", "f:2:1: a literal, or the 0 that ends a clause, expected, not '+1'"},
        {"p cnf 2 1\n1 2x 0", "f:2:3: a literal, or the 0 that ends a clause, expected, not '2x'"},
        {"p cnf 2 1\n1 c 0", "f:2:3: a literal, or the 0 that ends a clause, expected, not 'c'"},
        {"p cnf 2 1\n1 2", "f:2:4: a literal, or the 0 that ends a clause, expected"},
        {"p cnf 2 2\n1 0\n", "f:3:1: a literal, or the 0 that ends a clause, expected"},
        {"p cnf 2 1\n1 0\n2 0", "f:3:1: the end expected after the header's clauses, 1"},
        {"p cnf 2 1\n%\n1 0", "f:2:1: a literal, or the 0 that ends a clause, expected, not '%'"},
        {"p cnf 2 1\n1 \0"s, "f:2:3: a literal, or the 0 that ends a clause, expected, not '?'"},
        {"p cnf 2 1\n\x80\x1B[1m", "f:2:1: a literal, or the 0 that ends a clause, expected, not '??[1m'"},
        {"p cnf 2 1\n" + std::string(1000, 'x'),
         "f:2:1: a literal, or the 0 that ends a clause, expected, not '" + std::string(30, 'x') + "'"},
    };
    for (const auto &row : rows) {
        try {
            examples::read_dimacs("f", row.text);
            ADD_FAILURE() << "accepted: " << row.text;
        } catch (const examples::Failure &e) {
            EXPECT_EQ(e.what(), row.error) << row.text;
        }
    }
}

TEST(dimacs, tells_models_from_others)
{
    const examples::Formula formula = examples::read_dimacs("f", "p cnf 3 2 1 -2 0 3 0");
    EXPECT_TRUE(examples::satisfies({1, 2, 3}, formula));
    EXPECT_TRUE(examples::satisfies({-1, -2, 3}, formula));
    EXPECT_FALSE(examples::satisfies({-1, 2, 3}, formula));
    EXPECT_FALSE(examples::satisfies({1, 2, -3}, formula));
    EXPECT_FALSE(examples::satisfies({}, formula));
    EXPECT_FALSE(examples::satisfies({1}, examples::read_dimacs("f", "p cnf 1 1 0"))) << "the empty clause";
}

} // namespace
