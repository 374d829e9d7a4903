#pragma once

#include <array>
#include <cstddef>

#include "dalvo/configuration/condition.h"

namespace dalvo {

/// What a row of the application does to fields of other options, as data: one visitor applies it, another lists it.
///
/// Example:
///     when(is(true)).forces(c.proof_generation, true)
class Effect {
public:
    /// A write into another option's field.
    struct Write {
        bool *field;
        bool value;
    };

    constexpr explicit Effect(Condition on_own_value) noexcept : when(on_own_value) {}

    /// The same effect with one write more; at most two.
    constexpr Effect forces(bool &field, bool value) const noexcept
    {
        Effect longer = *this;
        longer.list[longer.count] = {&field, value};
        ++longer.count;
        return longer;
    }

    /// Writes, where the row's own value meets the condition.
    void apply(double value) const noexcept
    {
        if (when.holds(value)) {
            for (std::size_t i = 0; i < count; ++i) {
                *list[i].field = list[i].value;
            }
        }
    }

    const Condition &condition() const noexcept { return when; }
    const Write *begin() const noexcept { return list.data(); }
    const Write *end() const noexcept { return list.data() + count; }

private:
    Condition when;
    std::array<Write, 2> list{};
    std::size_t count = 0;
};

/// An effect without a write: `when(is(1)).forces(...)` reads as a sentence.
constexpr Effect when(Condition on_own_value) noexcept
{
    return Effect(on_own_value);
}

} // namespace dalvo
