#pragma once

#include <cstdint>
#include <string>

#include "dalvo/export.h"

namespace dalvo {

/// A condition on an option's value, which checks and prints itself. A boolean counts as 0 or 1. The functions `is`,
/// `is_not`, `is_neither`, `is_at_most` and `is_above` make conditions.
///
/// Example:
///
///     is_at_most(2).holds(3)      // false
///     is_at_most(2).text()        // "is at most 2"
struct DALVO_API Condition {
    /// How the value is compared.
    enum class Test {
        equal,         ///< with `bound`
        equal_bool,    ///< with `bound`, which is 0 for false and 1 for true
        not_equal,     ///< with `bound`
        neither_equal, ///< with neither `bound` nor `other`
        at_most,       ///< with `bound`
        above,         ///< with `bound`
    };

    Test test;    ///< how the value is compared
    double bound; ///< with what
    double other; ///< the second number of neither_equal; 0 otherwise

    /// Whether `value` meets the condition. NaN meets none but not_equal and neither_equal.
    constexpr bool holds(double value) const noexcept
    {
        switch (test) {
        case Test::equal:
        case Test::equal_bool: return value == bound;
        case Test::not_equal: return value != bound;
        case Test::neither_equal: return value != bound && value != other;
        case Test::at_most: return value <= bound;
        case Test::above: break;
        }
        return value > bound;
    }

    /// For people: "is true", "is 0", "is not 0", "is neither 0 nor 1", "is at most 2" or "is above 0".
    std::string text() const;
};

/// That a boolean is `value`.
constexpr Condition is(bool value) noexcept
{
    return {Condition::Test::equal_bool, value ? 1.0 : 0.0, 0.0};
}

/// That a number is `value`.
constexpr Condition is(std::int32_t value) noexcept
{
    return {Condition::Test::equal, static_cast<double>(value), 0.0};
}

/// That a number is another one than `value`.
constexpr Condition is_not(std::int32_t value) noexcept
{
    return {Condition::Test::not_equal, static_cast<double>(value), 0.0};
}

/// That a number is another one than `value` and than `other`.
constexpr Condition is_neither(std::int32_t value, std::int32_t other) noexcept
{
    return {Condition::Test::neither_equal, static_cast<double>(value), static_cast<double>(other)};
}

/// That a number is `bound` or less.
constexpr Condition is_at_most(std::int32_t bound) noexcept
{
    return {Condition::Test::at_most, static_cast<double>(bound), 0.0};
}

/// That a number is more than `bound`.
constexpr Condition is_above(std::int32_t bound) noexcept
{
    return {Condition::Test::above, static_cast<double>(bound), 0.0};
}

} // namespace dalvo
