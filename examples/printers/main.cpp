// Prints the settings of a configuration text as SMT-LIB options or as JSON.

#include <iostream>
#include <string>

#include <CLI/CLI.hpp>

#include "examples/host/program.h"
#include "examples/host/settings.h"
#include "examples/printers/jsonprinter.h"
#include "examples/printers/smtlibprinter.h"

int main(int argc, char **argv)
{
    CLI::App program("Prints the settings of a configuration text in another form.", "print-settings");
    std::string file;
    std::string section;
    std::string form = "smtlib";
    bool standard_names = false;
    program.add_option("--config", file, "Configuration text, read after the built-in one")->type_name("FILE");
    program.add_option("--section", section, "Section of it that applies")->type_name("NAME");
    program.add_option("--form", form, "What to print: smtlib or json")->check(CLI::IsMember({"smtlib", "json"}));
    program.add_flag("--standard-names", standard_names, "In SMT-LIB: the standard's own names, where it has them");

    return examples::run_program(program, argc, argv, [&] {
        using examples::SmtlibPrinter;
        const dalvo::Configuration settings = examples::read_settings(file, section);
        if (form == "json") {
            examples::write_json(std::cout, settings);
        } else {
            const auto names = standard_names ? SmtlibPrinter::Names::standard : SmtlibPrinter::Names::own;
            dalvo::ConfigurationSetter().dump(&settings, std::cout, SmtlibPrinter(names));
        }
        return 0;
    });
}
