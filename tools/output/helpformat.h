#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace dalvo::tools {

/// Help in lines of at most 80 columns: what does not fit beside the name of an option is broken into lines there, and
/// the paragraphs of descriptions and footers are broken as well. Lines that start with a blank are left as they are.
class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter();

    std::string make_option(const CLI::Option *option, bool is_positional) const override;
    std::string make_subcommand(const CLI::App *sub) const override;
    std::string make_description(const CLI::App *app) const override;
    std::string make_footer(const CLI::App *app) const override;
};

} // namespace dalvo::tools
