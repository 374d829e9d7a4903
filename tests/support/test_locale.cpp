// The global locale of a test program, linked into each of them. DALVO_TEST_LOCALE names it, for C++ and for C; without
// it the classic one stays.

#include <cstdlib>
#include <locale>
#include <sstream>

#include <gtest/gtest.h>

namespace {

class TestLocale : public ::testing::Environment {
public:
    void SetUp() override
    {
        const char *const name = std::getenv("DALVO_TEST_LOCALE");
        if (name == nullptr) {
            return;
        }
        std::locale::global(std::locale(name)); // throws, and ends the program, where there is no such locale
        std::ostringstream shown;
        shown << 1234.5;
        ASSERT_EQ(shown.str(), "1.234,5") << "the locale of C++ is not at work";
        ASSERT_EQ(std::strtod("0,5", nullptr), 0.5) << "the locale of C is not at work";
    }
};

const ::testing::Environment *const test_locale = ::testing::AddGlobalTestEnvironment(new TestLocale);

} // namespace
