#include "tools/inspection/findings.h"

#include <array>

namespace dalvo::tools {

namespace {

// clang-format off
constexpr std::array<std::string_view, 16> problem_names = {
    "malformed-header", "unknown-option", "invalid-value",       "out-of-range",
    "replaced",         "no-equals",      "empty-value",         "comment-in-value",
    "quoted-value",     "byte-order-mark", "negative-code",      "default-among-names",
    "repeated-name",    "similar-section", "forced",             "disabled-theory",
};
// clang-format on
static_assert(problem_names.size() == static_cast<std::size_t>(Problem::disabled_theory) + 1);

} // namespace

std::string_view name_of(Problem problem)
{
    return problem_names[static_cast<std::size_t>(problem)];
}

bool is_warning(Problem problem)
{
    return problem >= Problem::replaced;
}

std::vector<std::string> warning_names()
{
    return {problem_names.begin() + static_cast<std::ptrdiff_t>(Problem::replaced), problem_names.end()};
}

} // namespace dalvo::tools
