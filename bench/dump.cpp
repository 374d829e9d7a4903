#include <CLI/CLI.hpp>
#include <SimpleIni.h>
#include <glib.h>

#include <algorithm>
#include <sstream>

#include "bench/bound_options.h"
#include "bench/straight_dump.h"
#include "bench/workloads.h"
#include "dalvo/configuration/configurationsetter.h"

// dump: 127 settings into a string stream.

namespace dalvo::bench {

namespace {

/// The record that all write, and its fields in the catalogue's order.
struct Settings {
    Configuration record;
    std::vector<testing::FieldPointer> fields = fields_by_option(record);

    Settings()
    {
        ConfigurationSetter setter;
        setter.initialize_options();
        MemoryStream stream(all_options_text());
        setter.load(stream, 0);
        setter.update_config(&record);
    }
};

const Settings &settings()
{
    static const Settings filled;
    return filled;
}

/// Lines without blanks around "=", without empty ones and headers, sorted: what all writers have in common.
std::vector<std::string> normal_lines(const std::string &text)
{
    std::istringstream in(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        line.erase(std::remove_if(line.begin(), line.end(), [](char c) { return c == ' ' || c == '"'; }), line.end());
        if (!line.empty() && line.front() != '[') {
            lines.push_back(line);
        }
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

void require_all_settings(const std::string &text)
{
    require(normal_lines(text) == normal_lines(all_options_text()), "wrong text:\n" + text);
}

/// A contender that writes into a string stream.
template <class Write> Contender dumping(const std::string &name, Write write)
{
    return making(
        name,
        [write] {
            auto out = std::make_unique<std::ostringstream>();
            write(*out);
            return out;
        },
        [](const std::unique_ptr<std::ostringstream> &out) { require_all_settings(out->str()); });
}

void by_gkeyfile(std::ostream &out)
{
    struct Put {
        GKeyFile *file;
        const char *name;

        void operator()(const bool *at) const { g_key_file_set_boolean(file, "main", name, *at ? TRUE : FALSE); }
        void operator()(const std::int32_t *at) const { g_key_file_set_integer(file, "main", name, *at); }
        void operator()(const double *at) const { g_key_file_set_double(file, "main", name, *at); }
        void operator()(const std::string *at) const { g_key_file_set_string(file, "main", name, at->c_str()); }
        void operator()(const std::vector<std::string> *) const { require(false, "no option is a list"); }
    };
    GKeyFile *const file = g_key_file_new();
    for (std::size_t i = 0; i < catalogue().size(); ++i) {
        std::visit(Put{file, catalogue()[i].name.c_str()}, settings().fields[i]);
    }
    gsize size = 0;
    char *const text = g_key_file_to_data(file, &size, nullptr);
    out.write(text, static_cast<std::streamsize>(size));
    g_free(text);
    g_key_file_free(file);
}

void by_simpleini(std::ostream &out)
{
    struct Put {
        CSimpleIniCaseA &ini;
        const char *name;

        void operator()(const bool *at) const { ini.SetBoolValue("main", name, *at); }
        void operator()(const std::int32_t *at) const { ini.SetLongValue("main", name, *at); }
        void operator()(const double *at) const
        {
            char digits[32];
            std::snprintf(digits, sizeof digits, "%g", *at); // its own way writes six decimals
            ini.SetValue("main", name, digits);
        }
        void operator()(const std::string *at) const { ini.SetValue("main", name, at->c_str()); }
        void operator()(const std::vector<std::string> *) const { require(false, "no option is a list"); }
    };
    CSimpleIniCaseA ini;
    for (std::size_t i = 0; i < catalogue().size(); ++i) {
        std::visit(Put{ini, catalogue()[i].name.c_str()}, settings().fields[i]);
    }
    std::string text;
    ini.Save(text);
    out << text;
}

/// The options have their values from a parse before the clock starts.
Contender cli11_dump()
{
    struct Parsed {
        Configuration record;
        std::unique_ptr<CLI::App> app = cli11_options(fields_by_option(record), std::make_shared<DottedNames>());
    };
    const auto parsed = std::make_shared<Parsed>();
    MemoryStream stream(all_options_text());
    parsed->app->parse_from_stream(stream);
    return dumping("CLI11", [parsed](std::ostream &out) { out << parsed->app->config_to_str(); });
}

Case dump_case()
{
    const auto setter = std::make_shared<ConfigurationSetter>();
    setter->initialize_options();
    Case made;
    made.workload = "dump";
    made.name = "127 options";
    made.unit = "option";
    made.units = static_cast<double>(catalogue().size());
    made.contenders = {
        dumping("dalvo", [setter](std::ostream &out) { setter->dump(&settings().record, out, ""); }),
        dumping("GKeyFile", by_gkeyfile),
        cli11_dump(),
        dumping("SimpleIni", by_simpleini),
        dumping("<<", [](std::ostream &out) { dump_by_stream(settings().record, out); }),
        dumping("std::to_chars", [](std::ostream &out) { out << dump_by_to_chars(settings().record); }),
    };
    made.ratio_bounds = {{"dalvo", "<<", only_phase, 1.2},
                         {"dalvo", "GKeyFile", only_phase, 0.6},
                         {"dalvo", "CLI11", only_phase, 0.6},
                         {"dalvo", "SimpleIni", only_phase, 0.6}};
    made.notes = {"CLI11 writes the texts that it has parsed; all others format values.",
                  "The time of GKeyFile and SimpleIni includes filling them and destroying them."};
    return made;
}

} // namespace

CaseMakers dump_cases(Scale)
{
    return {dump_case};
}

} // namespace dalvo::bench
