#include <memory>

#include "bench/inputs.h"
#include "bench/workloads.h"
#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/inspect/inspect.h"

// check: what the findings of a text cost, beside what the library does with the same text, which is to load it and to
// replay its sections one after the other. Texts without findings; but in one long section each line replaces another.

namespace dalvo::bench {

namespace {

constexpr double nanoseconds_per_finding = 2000;

std::size_t load_and_replay(const InputText &input)
{
    ConfigurationSetter setter;
    setter.initialize_options();
    MemoryStream in(input.text);
    setter.load(in, 2);
    for (const InputSection &section : input.sections) {
        setter.set_active_config(section.name);
        setter.parse_active_config();
    }
    return setter.sections().size();
}

Case check_case(std::size_t lines, std::size_t sections)
{
    const auto input =
        std::make_shared<const InputText>(make_plain_text(lines, make_names(Names::spread, sections, "section_", 16)));
    const std::size_t options = catalogue().size();
    const std::size_t findings = sections == 1 && input->assignments > options ? input->assignments - options : 0;
    Case made;
    made.workload = "check";
    made.name = std::to_string(lines) + " lines, " + std::to_string(sections) + " sections";
    made.unit = "line";
    made.units = static_cast<double>(input->lines);
    made.contenders = {
        making(
            "check", [input] { return inspect::check_text("text", input->text); },
            [findings](const std::vector<inspect::Finding> &found) {
                require(found.size() == findings, std::to_string(found.size()) + " findings");
            }),
        making(
            "load and replay", [input] { return load_and_replay(*input); },
            [input](std::size_t count) { require(count == input->sections.size() + 1, "sections are missing"); }),
    };
    if (lines >= 100000) {
        made.ratio_bounds = {
            {"check", "load and replay", only_phase, 3.0, nanoseconds_per_finding * static_cast<double>(findings)}};
    }
    if (findings != 0) {
        made.notes = {"In " + std::to_string(findings) + " lines, a finding each: 2000 ns more for each."};
    }
    return made;
}

} // namespace

CaseMakers check_cases(Scale scale)
{
    CaseMakers cases{[] { return check_case(1000, 10); }};
    if (scale != Scale::smoke) {
        cases.push_back([] { return check_case(100000, 1000); });
    }
    if (scale == Scale::full) {
        cases.push_back([] { return check_case(1000000, 1); });
        cases.push_back([] { return check_case(1000000, 500000); });
    }
    return cases;
}

} // namespace dalvo::bench
