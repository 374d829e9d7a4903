#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

#include "dalvo/export.h"

namespace dalvo {

/// The integers that an option accepts: from `lowest` to `highest`, both included, without `hole`. The ranges of the
/// library are one-sided on purpose: a code's upper end is checked, a negative one is the solver's business.
///
/// Example:
///
///     at_most(3).accepts(-1)      // true
///     at_most(3).text()           // "at most 3"
struct DALVO_API IntRange {
    std::int32_t lowest = std::numeric_limits<std::int32_t>::min();  ///< the first that is accepted
    std::int32_t highest = std::numeric_limits<std::int32_t>::max(); ///< the last that is accepted
    std::optional<std::int32_t> hole = std::nullopt;                 ///< one between them that is not

    /// Whether `value` is one of them.
    bool accepts(std::int32_t value) const noexcept { return value >= lowest && value <= highest && value != hole; }

    /// "any", "at most N", "at least N", "M to N" or "any but N".
    std::string text() const;
};

/// The floats that do not compare greater than `highest`: NaN is one of them.
struct DALVO_API FloatRange {
    float highest = std::numeric_limits<float>::infinity(); ///< the last that is accepted

    /// Whether `value` is one of them.
    bool accepts(float value) const noexcept { return !(value > highest); }

    /// "any" or "at most N".
    std::string text() const;
};

/// The integers up to `highest`.
constexpr IntRange at_most(std::int32_t highest) noexcept
{
    return {std::numeric_limits<std::int32_t>::min(), highest, std::nullopt};
}

/// The integers from `lowest` on.
constexpr IntRange at_least(std::int32_t lowest) noexcept
{
    return {lowest, std::numeric_limits<std::int32_t>::max(), std::nullopt};
}

/// The integers from `lowest` to `highest`.
constexpr IntRange between(std::int32_t lowest, std::int32_t highest) noexcept
{
    return {lowest, highest, std::nullopt};
}

/// All integers but `hole`.
constexpr IntRange any_but(std::int32_t hole) noexcept
{
    return {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max(), hole};
}

/// The floats that do not compare greater than `highest`.
constexpr FloatRange at_most(float highest) noexcept
{
    return {highest};
}

} // namespace dalvo
