#include <absl/container/node_hash_map.h>
#include <boost/unordered_map.hpp>

#include <algorithm>
#include <random>
#include <unordered_map>

#include "bench/inputs.h"
#include "bench/workloads.h"
#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/utils/hashmap.h"

// map: operator[] with the setter's own types. Inserts names, looks each up again in another order, destroys the map.

namespace dalvo::bench {

namespace {

using Row = std::vector<ConfigurationSetter::OptEntry>;

constexpr const char *insertion = "insert";
constexpr const char *look_up = "look up";
constexpr const char *destruction = "destroy";

struct MapNames {
    std::vector<std::string> inserted;
    std::vector<std::string> looked_up; ///< the same in another order
};

std::shared_ptr<const MapNames> map_names(std::vector<std::string> names)
{
    auto made = std::make_shared<MapNames>();
    made->looked_up = names;
    made->inserted = std::move(names);
    std::mt19937_64 random(made->inserted.size());
    std::shuffle(made->looked_up.begin(), made->looked_up.end(), random);
    return made;
}

template <class Map> Contender mapping(const std::string &name, const std::shared_ptr<const MapNames> &names)
{
    return {name, [names](Laps &laps, bool verify) {
                std::unique_ptr<Map> map;
                laps.time(insertion, [&] {
                    map = std::make_unique<Map>();
                    for (const std::string &key : names->inserted) {
                        (*map)[key];
                    }
                });
                std::uintptr_t seen = 0;
                laps.time(look_up, [&] {
                    for (const std::string &key : names->looked_up) {
                        seen ^= reinterpret_cast<std::uintptr_t>(&(*map)[key]);
                    }
                });
                std::uintptr_t expected = 0;
                if (verify) {
                    for (const std::string &key : names->inserted) {
                        Row &row = (*map)[key];
                        require(row.empty(), "two keys share a value");
                        row.push_back({key, "", 0});
                        expected ^= reinterpret_cast<std::uintptr_t>(&row);
                    }
                }
                require(!verify || seen == expected, "the look-up found other values");
                laps.time(destruction, [&] { map.reset(); });
            }};
}

/// The option name that the spread names begin with: of the longest third.
constexpr const char *long_option = "theory.la.laz_internal_branch_and_bound_";

Case map_case(Names kind, std::size_t count)
{
    const bool is_spread = kind == Names::spread;
    const auto names =
        map_names(is_spread ? make_names(kind, count, long_option, 16) : make_names(kind, count, "fast_", 6));
    Case made;
    made.workload = "map";
    made.name = std::to_string(count) + (is_spread ? " spread names" : " numbered names");
    made.unit = "name";
    made.units = static_cast<double>(count);
    made.phases = {insertion, look_up, destruction};
    made.contenders = {
        mapping<hsh::HashMap<std::string, Row>>("dalvo", names),
        mapping<std::unordered_map<std::string, Row>>("std::unordered_map", names),
        mapping<boost::unordered_map<std::string, Row>>("boost::unordered_map", names),
        mapping<absl::node_hash_map<std::string, Row>>("absl::node_hash_map", names),
    };
    if (is_spread) {
        const double insert_bound = count <= 100 ? 1.5 : count <= 10000 ? 1.2 : 0.7;
        made.ratio_bounds = {{"dalvo", "std::unordered_map", insertion, insert_bound},
                             {"dalvo", "std::unordered_map", look_up, count <= 100 ? 2.0 : 1.2},
                             {"dalvo", "std::unordered_map", destruction, 0.6}};
    }
    return made;
}

} // namespace

CaseMakers map_cases(Scale scale)
{
    CaseMakers cases;
    std::vector<std::size_t> counts{100};
    if (scale != Scale::smoke) {
        counts.push_back(10000);
        counts.push_back(1000000);
    }
    for (const std::size_t count : counts) {
        cases.push_back([count] { return map_case(Names::spread, count); });
        if (count < 1000000 || scale == Scale::full) {
            cases.push_back([count] { return map_case(Names::numbered, count); });
        }
    }
    return cases;
}

} // namespace dalvo::bench
