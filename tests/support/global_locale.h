#pragma once

#include <locale>
#include <string>

namespace dalvo::testing {

/// While it lives, the global C++ locale writes 1234.5 as "1.234,5" and true as "wahr".
class CommaLocale {
public:
    CommaLocale() : before(std::locale::global(std::locale(std::locale::classic(), new Punctuation))) {}
    ~CommaLocale() { std::locale::global(before); }

    CommaLocale(const CommaLocale &) = delete;
    CommaLocale &operator=(const CommaLocale &) = delete;

private:
    struct Punctuation : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
        std::string do_truename() const override { return "wahr"; }
        std::string do_falsename() const override { return "falsch"; }
    };

    std::locale before;
};

} // namespace dalvo::testing
