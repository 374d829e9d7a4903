#pragma once

#include <locale.h> // newlocale and uselocale, which are POSIX's

#include <locale>
#include <sstream>

namespace dalvo::testing {

/// While it lives, the C library works in the "C" locale on this thread, whatever the global locale: for a test that
/// prints or reads its expectations with printf, strtof and the like.
class ClassicCLocale {
public:
    ClassicCLocale() : classic(newlocale(LC_ALL_MASK, "C", nullptr)), before(uselocale(classic)) {}
    ~ClassicCLocale()
    {
        uselocale(before);
        freelocale(classic);
    }

    ClassicCLocale(const ClassicCLocale &) = delete;
    ClassicCLocale &operator=(const ClassicCLocale &) = delete;

private:
    locale_t classic;
    locale_t before;
};

/// A stream that writes numbers as the classic locale has them, whatever the global locale: where `dump` writes as the
/// stream has it and a test expects plain numbers.
class ClassicStream : public std::ostringstream {
public:
    ClassicStream() { imbue(std::locale::classic()); }
};

} // namespace dalvo::testing
