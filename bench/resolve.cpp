#include <memory>
#include <optional>

#include "bench/inputs.h"
#include "bench/workloads.h"
#include "dalvo/configuration/configurationsetter.h"
#include "dalvo/inspect/inspect.h"
#include "tests/support/records.h"

// resolve: a run of one text and a chosen section, beside loading the same text and filling a record.

namespace dalvo::bench {

namespace {

Configuration load_and_update(const InputText &input)
{
    ConfigurationSetter setter;
    setter.initialize_options();
    MemoryStream in(input.text);
    setter.load(in, 2);
    setter.set_active_config(input.sections.front().name);
    Configuration record;
    setter.update_config(&record);
    return record;
}

std::optional<inspect::Resolution> resolve(const InputText &input)
{
    inspect::Run run;
    run.add_text("text", input.text);
    run.choose_section(input.sections.front().name);
    return inspect::Resolution(run);
}

Case resolve_case(std::size_t lines, std::size_t sections)
{
    const auto input =
        std::make_shared<const InputText>(make_text(lines, make_names(Names::spread, sections, "section_", 10)));
    Case made;
    made.workload = "resolve";
    made.name = std::to_string(lines) + " lines, " + std::to_string(sections) + " sections";
    made.unit = "line";
    made.units = static_cast<double>(input->lines);
    made.contenders = {
        making(
            "resolve", [input] { return resolve(*input); },
            [input](const std::optional<inspect::Resolution> &resolution) {
                Configuration expected = load_and_update(*input);
                Configuration record = resolution->record();
                require(testing::differing_fields(record, expected).empty(), "another record");
            }),
        making(
            "load and update", [input] { return load_and_update(*input); }, [](const Configuration &) {}),
    };
    made.ratio_bounds = {{"resolve", "load and update", only_phase, 3.0}};
    return made;
}

} // namespace

CaseMakers resolve_cases(Scale scale)
{
    CaseMakers cases{[] { return resolve_case(1000, 10); }};
    if (scale != Scale::smoke) {
        cases.push_back([] { return resolve_case(100000, 1000); });
    }
    if (scale == Scale::full) {
        cases.push_back([] { return resolve_case(1000000, 1); });
        cases.push_back([] { return resolve_case(1000000, 500000); });
    }
    return cases;
}

} // namespace dalvo::bench
