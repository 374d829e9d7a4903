#include "dalvo/configuration/appliedoptions.h"

namespace dalvo {

namespace {

/// False where there is no value of the type.
template <class Range, class T> bool accepted_by(const Range *range, const T *value) noexcept
{
    return value != nullptr && (range == nullptr || range->accepts(*value));
}

} // namespace

bool AppliedOption::accepts(const OptionParser::Value &value) const noexcept
{
    switch (type) {
    case OPT_BOOL: return std::holds_alternative<bool>(value);
    case OPT_INT: return accepted_by(std::get_if<IntRange>(&range), std::get_if<std::int32_t>(&value));
    case OPT_FLOAT: return accepted_by(std::get_if<FloatRange>(&range), std::get_if<float>(&value));
    case OPT_STR: break;
    }
    return std::holds_alternative<std::string>(value);
}

std::string AppliedOption::accepted() const
{
    if (const auto *integers = std::get_if<IntRange>(&range)) {
        return integers->text();
    }
    if (const auto *reals = std::get_if<FloatRange>(&range)) {
        return reals->text();
    }
    return "any";
}

} // namespace dalvo
