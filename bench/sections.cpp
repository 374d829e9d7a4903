#include "bench/loaders.h"
#include "bench/workloads.h"

// sections: what the names of sections cost where the fixed hash gives many of them one value. Reported without bounds:
// numbers that carry into each other share values, and names can be made that all fall into one bucket.

namespace dalvo::bench {

namespace {

Case section_case(const std::string &kind, Names names, std::size_t count)
{
    const auto input = std::make_shared<const InputText>(make_text(2 * count, make_names(names, count, "fast_", 6)));
    Case made;
    made.workload = "sections";
    made.name = std::to_string(count) + " " + kind + " names";
    made.unit = "section";
    made.units = static_cast<double>(count);
    made.stored = static_cast<double>(input->assignments);
    made.contenders = loaders(input);
    return made;
}

} // namespace

CaseMakers section_cases(Scale scale)
{
    CaseMakers cases;
    std::vector<std::size_t> counts{1000};
    if (scale != Scale::smoke) {
        counts.push_back(10000);
    }
    if (scale == Scale::full) {
        counts.push_back(100000);
    }
    for (const std::size_t count : counts) {
        cases.push_back([count] { return section_case("spread", Names::spread, count); });
        cases.push_back([count] { return section_case("numbered", Names::numbered, count); });
        if (count <= (scale == Scale::full ? 10000U : 1000U)) { // the cost grows with the square
            cases.push_back([count] { return section_case("hostile", Names::hostile, count); });
        }
    }
    return cases;
}

} // namespace dalvo::bench
