#include "dalvo/configuration/ranges.h"

#include <ios>
#include <locale>
#include <sstream>

namespace dalvo {

std::string IntRange::text() const
{
    const bool has_lowest = lowest != std::numeric_limits<std::int32_t>::min();
    const bool has_highest = highest != std::numeric_limits<std::int32_t>::max();
    std::string text = "any";
    if (has_lowest && has_highest) {
        text = std::to_string(lowest) + " to " + std::to_string(highest);
    } else if (has_lowest) {
        text = "at least " + std::to_string(lowest);
    } else if (has_highest) {
        text = "at most " + std::to_string(highest);
    }
    return hole ? text + " but " + std::to_string(*hole) : text;
}

std::string FloatRange::text() const
{
    if (highest == std::numeric_limits<float>::infinity()) {
        return "any";
    }
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.exceptions(std::ios_base::badbit); // a text cut short by bad_alloc must not pass for whole
    text << "at most " << highest;
    return text.str();
}

} // namespace dalvo
