#include <memory>
#include <stdexcept>

#include "bench/inputs.h"
#include "bench/workloads.h"
#include "dalvo/configuration/configurationsetter.h"
#include "tools/inspection/check.h"

// check: what dalvo-config's report costs beside what the library does with the same text, which is to load it and to
// replay its sections one after the other.

namespace dalvo::bench {

namespace {

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
    return setter.sections().table().count();
}

Case check_case(std::size_t lines, std::size_t sections)
{
    const auto input =
        std::make_shared<const InputText>(make_text(lines, make_names(Names::spread, sections, "section_", 6)));
    Case made;
    made.workload = "check";
    made.name = std::to_string(lines) + " lines, " + std::to_string(sections) + " sections";
    made.unit = "line";
    made.units = static_cast<double>(input->lines);
    made.contenders = {
        making(
            "check", [input] { return tools::check_text("text", input->text); },
            [](const std::vector<tools::Finding> &findings) {
                for (const tools::Finding &finding : findings) {
                    require(finding.severity != tools::Severity::error, "an error in a text without one");
                }
            }),
        making(
            "load and replay", [input] { return load_and_replay(*input); },
            [input](std::size_t count) { require(count == input->sections.size() + 1, "sections are missing"); }),
    };
    if (lines >= 100000) {
        made.ratio_bounds = {{"check", "load and replay", only_phase, 3.0}};
    } else {
        made.notes = {"About a millisecond of check's time does not depend on the text."};
    }
    return made;
}

} // namespace

CaseMakers check_cases(Scale scale)
{
    CaseMakers cases{[] { return check_case(1000, 10); }};
    if (scale != Scale::smoke) {
        cases.push_back([] { return check_case(10000, 100); });
        cases.push_back([] { return check_case(100000, 1000); });
    }
    return cases;
}

} // namespace dalvo::bench
