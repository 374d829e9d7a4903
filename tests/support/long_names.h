#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "dalvo/utils/hashmap.h"

namespace dalvo::testing {

/// A map that has to ask the heap for each of its keys, too.
using LongNamesMap = hsh::HashMap<std::string, std::vector<int>>;

/// Too long for a string to hold without the heap.
inline std::string numbered(std::size_t i)
{
    return "a section with a long name, number " + std::to_string(i);
}

/// Inserts the keys numbered from the map's count up to `count`.
inline void fill(LongNamesMap &map, std::size_t count)
{
    for (std::size_t i = map.table().count(); i < count; ++i) {
        map[numbered(i)];
    }
}

} // namespace dalvo::testing
