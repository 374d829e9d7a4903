#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace dalvo::testing {

/// Texts of lines that are likely to be taken for others.
class RandomTexts {
public:
    explicit RandomTexts(unsigned seed) : random(seed) {}

    /// A text without a malformed line.
    std::string next()
    {
        std::string text;
        for (std::size_t lines = below(16); lines > 0; --lines) {
            text += line() + one_of({"\n", "\n", "\n", "\r\n", " \t\n", "\v\f\n", "\r\r\n"});
        }
        if (text.substr(0, 3) == "\xEF\xBB\xBF") {
            text.insert(0, "\n"); // the mark is not at the start
        }
        return below(4) == 0 && !text.empty() ? text.substr(0, text.size() - 1) : text;
    }

    std::string malformed_line()
    {
        return one_of({"[", "[]", "[ ]", "[a", "[a] x", "[a,,b]", "[a, ]", "[,a]", "[new, b,]", "[a] = 1", "[\xFF"});
    }

    std::size_t below(std::size_t bound) { return random() % bound; }

private:
    using Words = std::vector<std::string>;

    std::string one_of(const Words &words) { return words[below(words.size())]; }

    std::string line()
    {
        switch (below(8)) {
        case 0:
        case 1: return one_of({" ", ""}) + header();
        case 2: return one_of({"", " ", "# a = 1", "\t# [a]", "#", "\r", "#["});
        default: break;
        }
        const std::string name =
            one_of({"verbosity", "random_seed", "printer.defines_prefix", "no.such.option", "", "a b", "]", "; a",
                    std::string("a\0b", 3), "\xFF\x80", "\xEF\xBB\xBFverbosity", "default", "a]"});
        if (below(6) == 0 && !name.empty()) {
            return name;
        }
        return one_of({"", " ", "\t"}) + name + one_of({" = ", "=", " =", "= "}) +
               one_of({"1", "", "7", "a = b", "1 # one", "\"1\"", std::string("\0x", 2), "\xC3\xA4\xFF", "[a]", "="});
    }

    std::string header()
    {
        return one_of({"[a]", "[b]", "[ a ]", "[a,b]", "[b ,\ta]", "[default]", "[ default ]", "[default, x]",
                       "[x,default]", "[DEFAULT]", "[a]]", "[a] [b]", "[a # b]", "[a=b]", "[[]",
                       std::string("[a\0]", 4), "[\xFF\x80]", "[a b]", "[b, a, x]"});
    }

    std::mt19937 random;
};

} // namespace dalvo::testing
