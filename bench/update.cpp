#include "bench/bound_options.h"
#include "bench/handwritten.h"
#include "bench/workloads.h"
#include "dalvo/configuration/appliedoptions.h"
#include "dalvo/configuration/configurationsetter.h"
#include "tests/support/records.h"

// update: a record is filled again from assignments that were read before, 127 of them or none.

namespace dalvo::bench {

namespace {

/// A contender whose `state` fills the record `state->record`; it is made once, outside of the clock.
template <class State> Contender updating(const std::string &name, const std::shared_ptr<State> &state)
{
    return {name, [state](Laps &laps, bool verify) {
                state->record = Configuration();
                laps.time(only_phase, [&] { state->update(); });
                if (verify) {
                    state->check();
                }
            }};
}

struct Updating {
    Configuration record;
    void check() { require_assigned(record); }
};

struct Replaying : Updating {
    Replaying()
    {
        setter.initialize_options();
        MemoryStream stream(all_options_text());
        setter.load(stream, 0);
    }
    void update() { setter.update_config(&record); }

    ConfigurationSetter setter;
};

/// The options have their values already.
struct Set : Updating {
    Set()
    {
        setter.initialize_options();
        for (const auto &[name, value] : all_options_assigned()) {
            setter.set_option(name, value, 0);
        }
    }
    void update() { setter.update_config(&record); }

    ConfigurationSetter setter;
};

/// The options have no values.
struct Unset {
    Unset() { setter.initialize_options(); }
    void update() { setter.update_config(&record); }
    void check() { require(testing::differing_fields(record, Configuration()).empty(), "a field was touched"); }

    Configuration record;
    ConfigurationSetter setter;
};

/// Hands over assignments that were read before.
class ReadBefore : public CLI::Config {
public:
    ReadBefore()
    {
        MemoryStream stream(all_options_text());
        items = DottedNames().from_config(stream);
    }
    std::string to_config(const CLI::App *, bool, bool, std::string) const override { return ""; }
    std::vector<CLI::ConfigItem> from_config(std::istream &) const override { return items; }

private:
    std::vector<CLI::ConfigItem> items;
};

struct Cli11 : Updating {
    void update()
    {
        app->clear();
        app->parse_from_stream(nothing);
    }

    MemoryStream nothing{""};
    std::unique_ptr<CLI::App> app = cli11_options(fields_by_option(record), std::make_shared<ReadBefore>());
};

struct ProgramOptions : Updating {
    ProgramOptions()
    {
        MemoryStream stream(all_options_text());
        parsed = std::make_unique<boost::program_options::parsed_options>(
            boost::program_options::parse_config_file(stream, description));
    }
    void update()
    {
        boost::program_options::variables_map values;
        boost::program_options::store(*parsed, values);
        boost::program_options::notify(values);
    }

    boost::program_options::options_description description = boost_options(fields_by_option(record));
    std::unique_ptr<boost::program_options::parsed_options> parsed;
};

struct ByHand : Updating {
    ByHand()
    {
        const auto fields = fields_by_option(record);
        for (std::size_t i = 0; i < fields.size(); ++i) {
            options.add(catalogue()[i].name, catalogue()[i].help, fields[i]);
        }
    }
    void update()
    {
        for (const auto &[name, value] : assignments) {
            options.set(name, value);
        }
    }

    std::vector<Assignment> assignments = all_options_assigned();
    HandWritten<std::string> options{catalogue().size()};
};

/// The allocations that a filling must make: names that do not fit into a string itself, and such values stored.
double necessary_allocations()
{
    const std::size_t inside = std::string().capacity();
    double count = 0;
    for (const AppliedOption &row : applied_options()) {
        count += row.name.size() > inside ? 1 : 0;
    }
    for (std::size_t i = 0; i < catalogue().size(); ++i) {
        for (const auto &[name, value] : all_options_assigned()) {
            const bool is_stored = name == catalogue()[i].name && catalogue()[i].type == OPT_STR;
            count += is_stored && value.size() > inside ? 1 : 0;
        }
    }
    return count;
}

Case update_case()
{
    Case made;
    made.workload = "update";
    made.name = "127 options";
    made.unit = "option";
    made.units = static_cast<double>(catalogue().size());
    made.contenders = {updating("dalvo", std::make_shared<Replaying>()),
                       updating("dalvo, none to replay", std::make_shared<Unset>()),
                       updating("dalvo, none to replay, all set", std::make_shared<Set>()),
                       updating("CLI11", std::make_shared<Cli11>()),
                       updating("Boost.Program_options", std::make_shared<ProgramOptions>()),
                       updating("by hand", std::make_shared<ByHand>())};
    made.ratio_bounds = {{"dalvo", "CLI11", only_phase, 0.03},
                         {"dalvo", "Boost.Program_options", only_phase, 0.03},
                         {"dalvo", "by hand", only_phase, 5.0},
                         {"dalvo, none to replay", "by hand", only_phase, 2.5},
                         {"dalvo, none to replay, all set", "by hand", only_phase, 2.5}};
    for (const char *contender : {"dalvo", "dalvo, none to replay", "dalvo, none to replay, all set"}) {
        made.allocation_bounds.push_back({contender, necessary_allocations() / made.units});
    }
    made.notes = {"CLI11's assignments were read before; it is handed a copy of them, which is what its interface asks "
                  "for."};
    return made;
}

} // namespace

CaseMakers update_cases(Scale)
{
    return {update_case};
}

} // namespace dalvo::bench
