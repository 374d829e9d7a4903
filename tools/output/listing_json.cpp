#include <cstdint>
#include <limits>
#include <ostream>
#include <utility>
#include <variant>

#include "tools/output/jsontext.h"
#include "tools/output/knowledgejson.h"
#include "tools/output/listing.h"

namespace dalvo::tools {

namespace {

using nlohmann::ordered_json;

/// null where `bound` is the one that every number keeps.
template <class T> ordered_json bound_json(T bound, T unbounded)
{
    return bound != unbounded ? ordered_json(bound) : ordered_json();
}

ordered_json range_json(const IntRange &range)
{
    using limits = std::numeric_limits<std::int32_t>;
    return {{"lowest", bound_json(range.lowest, limits::min())},
            {"highest", bound_json(range.highest, limits::max())},
            {"except", range.hole ? ordered_json(*range.hole) : ordered_json()}};
}

ordered_json range_json(const FloatRange &range)
{
    return {{"lowest", nullptr},
            {"highest", bound_json(range.highest, std::numeric_limits<float>::infinity())},
            {"except", nullptr}};
}

ordered_json range_json(std::monostate)
{
    return nullptr;
}

} // namespace

void write_listing_json(std::ostream &out, const OptionList &options)
{
    ordered_json list = ordered_json::array();
    for (const inspect::OptionInfo *const option : options) {
        ordered_json entry = {
            {"name", option->name},
            {"group", group_title(option->group)},
            {"type", inspect::type_name(option->type)},
            {"default", json_value(option->default_value)},
            {"accepted", option->accepted()},
            {"range", std::visit([](const auto &range) { return range_json(range); }, option->range)},
            {"codes", json_codes(*option)},
            {"codes_add_up", option->codes_add_up},
            {"help", option->help},
        };
        entry.update(json_relations(*option));
        list.push_back(std::move(entry));
    }
    out << json_text({{"options", std::move(list)}});
}

} // namespace dalvo::tools
