#include "dalvo/inspect/knowledge/logic.h"

#include <algorithm>
#include <iterator>

namespace dalvo::inspect {

namespace {

bool take(std::string_view &text, std::string_view start)
{
    const bool is_there = text.substr(0, start.size()) == start;
    text.remove_prefix(is_there ? start.size() : 0);
    return is_there;
}

bool is_arithmetic(std::string_view text)
{
    constexpr std::string_view names[] = {"IDL", "RDL", "LIA", "LRA", "LIRA", "NIA", "NRA", "NIRA"};
    return std::any_of(std::begin(names), std::end(names), [&](std::string_view name) {
        return text.substr(0, name.size()) == name && (text.size() == name.size() || text.substr(name.size()) == "T");
    });
}

} // namespace

bool is_logic_name(std::string_view name) noexcept
{
    if (name == "ALL") {
        return true;
    }
    take(name, "QF_");
    const std::size_t size = name.size();
    if (!take(name, "AX")) {
        take(name, "A");
    }
    for (const std::string_view part : {"UF", "BV", "FP", "DT", "S"}) {
        take(name, part);
    }
    return size != 0 && (name.empty() || is_arithmetic(name));
}

} // namespace dalvo::inspect
