#pragma once

#include <CLI/CLI.hpp>
#include <boost/program_options.hpp>

#include <memory>
#include <vector>

#include "bench/inputs.h"

/// The catalogue, registered with the peers and bound to the fields of a record.
namespace dalvo::bench {

/// Options that have their dots in their names, not sections.
class DottedNames : public CLI::ConfigINI {
public:
    DottedNames() { parentSeparatorChar = '/'; }
};

inline std::unique_ptr<CLI::App> cli11_options(const std::vector<testing::FieldPointer> &fields,
                                               const std::shared_ptr<CLI::Config> &format)
{
    auto app = std::make_unique<CLI::App>();
    app->config_formatter(format);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const OptionParser::Option &option = catalogue()[i];
        std::visit([&](auto *field) { app->add_option("--" + option.name, *field, option.help)->group(option.group); },
                   fields[i]);
    }
    return app;
}

inline boost::program_options::options_description boost_options(const std::vector<testing::FieldPointer> &fields)
{
    namespace po = boost::program_options;
    po::options_description description;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const OptionParser::Option &option = catalogue()[i];
        std::visit(
            [&](auto *field) { description.add_options()(option.name.c_str(), po::value(field), option.help.c_str()); },
            fields[i]);
    }
    return description;
}

} // namespace dalvo::bench
