#include "bench/bound_options.h"
#include "bench/handwritten.h"
#include "bench/workloads.h"
#include "dalvo/configuration/configurationsetter.h"

// start: what a solver does before it reads its problem. Construct, register 127 options with their help, load a text
// of 127 lines, fill a plain record.

namespace dalvo::bench {

namespace {

/// A record that is filled again and again, and where each option belongs in it.
struct Target {
    Configuration record;
    std::vector<testing::FieldPointer> fields = fields_by_option(record);
};
using SharedTarget = std::shared_ptr<Target>;

/// A contender that returns what is to be destroyed outside of the clock, having filled the record of its target.
template <class Start> Contender starting(const std::string &name, Start start)
{
    const auto target = std::make_shared<Target>();
    return {name, [target, start](Laps &laps, bool verify) {
                target->record = Configuration();
                decltype(start(*target)) result{};
                laps.time(only_phase, [&] { result = start(*target); });
                if (verify) {
                    require_assigned(target->record);
                }
            }};
}

Contender dalvo_start()
{
    return starting("dalvo", [](Target &target) {
        auto setter = std::make_unique<ConfigurationSetter>();
        setter->initialize_options();
        MemoryStream stream(all_options_text());
        setter->load(stream, 0);
        setter->update_config(&target.record);
        return setter;
    });
}

Contender dalvo_registration()
{
    return making(
        "dalvo, registration alone",
        [] {
            auto setter = std::make_unique<ConfigurationSetter>();
            setter->initialize_options();
            return setter;
        },
        [](const std::unique_ptr<ConfigurationSetter> &setter) {
            require(setter->options().options().size() == catalogue().size(), "options are missing");
        });
}

Contender cli11_start()
{
    return starting("CLI11", [](Target &target) {
        auto app = cli11_options(target.fields, std::make_shared<DottedNames>());
        MemoryStream stream(all_options_text());
        app->parse_from_stream(stream);
        return app;
    });
}

Contender boost_start()
{
    namespace po = boost::program_options;
    struct Started {
        po::options_description description;
        po::variables_map values;
    };
    return starting("Boost.Program_options", [](Target &target) {
        auto started = std::make_unique<Started>();
        started->description.add(boost_options(target.fields));
        MemoryStream stream(all_options_text());
        po::store(po::parse_config_file(stream, started->description), started->values);
        po::notify(started->values);
        return started;
    });
}

std::string_view without_blanks(std::string_view text)
{
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    return text;
}

template <class Text> Contender hand_start(const std::string &name)
{
    return starting(name, [](Target &target) {
        auto options = std::make_unique<HandWritten<Text>>(catalogue().size());
        for (std::size_t i = 0; i < catalogue().size(); ++i) {
            options->add(catalogue()[i].name, catalogue()[i].help, target.fields[i]);
        }
        MemoryStream stream(all_options_text());
        std::string line;
        while (std::getline(stream, line)) {
            const std::string_view text = line;
            const std::size_t equals = text.find('=');
            options->set(Text(without_blanks(text.substr(0, equals))), without_blanks(text.substr(equals + 1)));
        }
        return options;
    });
}

Case start_case()
{
    Case made;
    made.workload = "start";
    made.name = "127 options";
    made.unit = "option";
    made.units = static_cast<double>(catalogue().size());
    made.contenders = {dalvo_start(),
                       dalvo_registration(),
                       cli11_start(),
                       boost_start(),
                       hand_start<std::string>("by hand"),
                       hand_start<std::string_view>("by hand, literals")};
    made.ratio_bounds = {{"dalvo", "CLI11", only_phase, 0.05},
                         {"dalvo", "Boost.Program_options", only_phase, 0.05},
                         {"dalvo", "by hand", only_phase, 2.0}};
    made.notes = {"\"by hand\" keeps copies of names and help, as dalvo must, to which others add options; "
                  "\"literals\" only points to them."};
    return made;
}

} // namespace

CaseMakers start_cases(Scale)
{
    return {start_case};
}

} // namespace dalvo::bench
