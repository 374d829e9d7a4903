#include "examples/solve/dimacs.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <string_view>
#include <unordered_set>

#include "examples/host/settings.h"

namespace examples {

namespace {

/// Hands out the words of a text, one after the other, without the comments.
class Words {
public:
    Words(const std::string &file_name, std::string_view file_text) : file(file_name), text(file_text) {}

    /// The next word; empty at the end.
    std::string_view next()
    {
        skip_blanks();
        while (at < text.size() && text[at] == 'c' && at == line_start) {
            at = std::min(text.find('\n', at), text.size());
            skip_blanks();
        }
        word_start = at;
        at = std::min(text.find_first_of(blanks, at), text.size());
        return text.substr(word_start, at - word_start);
    }

    int number(const char *what)
    {
        const std::string_view word = next();
        int value = 0;
        const auto end = word.data() + word.size();
        const auto read = std::from_chars(word.data(), end, value);
        if (word.empty() || read.ec != std::errc() || read.ptr != end) {
            fail(std::string(what) + " expected" + (word.empty() ? "" : ", not '" + shown(word) + "'"));
        }
        return value;
    }

    /// About the last word.
    [[noreturn]] void fail(const std::string &what) const
    {
        const std::size_t column = word_start - line_start + 1;
        throw Failure(file + ":" + std::to_string(line) + ":" + std::to_string(column) + ": " + what);
    }

private:
    static constexpr const char *blanks = " \t\r\n\v\f";

    void skip_blanks()
    {
        const std::size_t end = std::min(text.find_first_not_of(blanks, at), text.size());
        for (; at < end; ++at) {
            if (text[at] == '\n') {
                ++line;
                line_start = at + 1;
            }
        }
    }

    /// One line, whatever the bytes.
    static std::string shown(std::string_view word)
    {
        std::string cut(word.substr(0, 30));
        std::replace_if(
            cut.begin(), cut.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
        return cut;
    }

    const std::string &file;
    std::string_view text;
    std::size_t at = 0;
    std::size_t word_start = 0;
    std::size_t line = 1;
    std::size_t line_start = 0;
};

} // namespace

Formula read_dimacs(const std::string &file, const std::string &text)
{
    Words words(file, text);
    if (words.next() != "p" || words.next() != "cnf") {
        words.fail("the header 'p cnf VARIABLES CLAUSES' expected");
    }
    const int variables = words.number("the number of variables");
    const int clauses = words.number("the number of clauses");
    if (variables < 0 || clauses < 0) {
        words.fail("a negative number in the header");
    }
    Formula formula;
    while (formula.clauses.size() < static_cast<std::size_t>(clauses)) {
        std::vector<int> &clause = formula.clauses.emplace_back();
        while (const int literal = words.number("a literal, or the 0 that ends a clause,")) {
            if (literal > variables || literal < -variables) {
                words.fail("literal " + std::to_string(literal) + " is beyond the header's variables, " +
                           std::to_string(variables));
            }
            clause.push_back(literal);
        }
    }
    const std::string_view behind = words.next();
    if (!behind.empty() && behind != "%") { // ends the clauses in the problems of some collections
        words.fail("the end expected after the header's clauses, " + std::to_string(clauses));
    }
    return formula;
}

bool satisfies(const std::vector<int> &model, const Formula &formula)
{
    const std::unordered_set<int> literals(model.begin(), model.end());
    return std::all_of(formula.clauses.begin(), formula.clauses.end(), [&](const std::vector<int> &clause) {
        return std::any_of(clause.begin(), clause.end(), [&](int literal) { return literals.count(literal) != 0; });
    });
}

} // namespace examples
