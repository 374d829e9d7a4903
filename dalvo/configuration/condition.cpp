#include "dalvo/configuration/condition.h"

namespace dalvo {

namespace {

/// The functions that make conditions take integers only.
std::string digits(double number)
{
    return std::to_string(static_cast<std::int64_t>(number));
}

} // namespace

std::string Condition::text() const
{
    switch (test) {
    case Test::equal: return "is " + digits(bound);
    case Test::equal_bool: return bound != 0.0 ? "is true" : "is false";
    case Test::not_equal: return "is not " + digits(bound);
    case Test::neither_equal: return "is neither " + digits(bound) + " nor " + digits(other);
    case Test::at_most: return "is at most " + digits(bound);
    case Test::above: break;
    }
    return "is above " + digits(bound);
}

} // namespace dalvo
