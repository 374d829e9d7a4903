#include "bench/loaders.h"
#include "bench/workloads.h"

// load: a text with the real option names, from memory into the table of sections.

namespace dalvo::bench {

namespace {

Case load_case(std::size_t lines, const std::string &shape, std::size_t section_count, std::size_t padding = 0)
{
    const auto input = std::make_shared<const InputText>(
        make_text(lines, make_names(Names::spread, section_count, "fast_", 12), padding));
    Case made;
    made.workload = "load";
    made.name = std::to_string(lines) + " lines, " + shape;
    made.unit = "line";
    made.units = static_cast<double>(input->lines);
    made.stored = static_cast<double>(input->assignments);
    made.contenders = loaders(input);
    made.ratio_bounds = {{"dalvo", "inih", only_phase, 0.5},
                         {"dalvo", "SimpleIni", only_phase, 0.7},
                         {"dalvo", "GKeyFile", only_phase, 0.7},
                         {"dalvo", "CLI11", only_phase, 0.7},
                         {"dalvo", "by hand", only_phase, 1.5}};
    if (names_an_option_twice(*input)) {
        made.notes = {"Boost.PropertyTree is left out: it refuses a section that names an option twice.",
                      "GKeyFile keeps only the last value of an option that a section names twice."};
    } else {
        made.ratio_bounds.push_back({"dalvo", "Boost.PropertyTree", only_phase, 0.7});
    }
    made.allocation_bounds = {{"dalvo", 3}};
    return made;
}

} // namespace

CaseMakers load_cases(Scale scale)
{
    std::vector<std::size_t> sizes{1000};
    if (scale != Scale::smoke) {
        sizes.push_back(100000);
    }
    if (scale == Scale::full) {
        sizes.push_back(1000000);
    }
    CaseMakers cases;
    for (const std::size_t lines : sizes) {
        cases.push_back([lines] { return load_case(lines, "10 sections", 10); });
        cases.push_back([lines] { return load_case(lines, "a section per 10", lines / 10); });
    }
    cases.push_back([] {
        constexpr std::size_t padding = 100; // inih refuses lines of 200 bytes
        return load_case(1000, "long names", 100, padding);
    });
    return cases;
}

} // namespace dalvo::bench
