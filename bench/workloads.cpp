#include "bench/workloads.h"

#include <iterator>

namespace dalvo::bench {

CaseMakers all_cases(Scale scale)
{
    CaseMakers all;
    for (const auto workload :
         {load_cases, start_cases, update_cases, dump_cases, map_cases, section_cases, check_cases, resolve_cases}) {
        CaseMakers cases = workload(scale);
        all.insert(all.end(), std::make_move_iterator(cases.begin()), std::make_move_iterator(cases.end()));
    }
    return all;
}

} // namespace dalvo::bench
