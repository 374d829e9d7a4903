// Runs an SMT-LIB script in Z3 under the settings of a configuration text. The exit status is 0 when Z3 took the whole
// script, 1 when it reported an error, 2 when something else is wrong.

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "examples/host/program.h"
#include "examples/host/settings.h"
#include "examples/smt/script.h"
#include "examples/smt/z3options.h"

int main(int argc, char **argv)
{
    CLI::App program("Runs an SMT-LIB script in Z3 under the settings of a configuration text.", "smt");
    std::string config;
    std::string section;
    std::string file;
    bool show_settings = false;
    program.add_option("--config", config, "Configuration text, read after the built-in one")->type_name("FILE");
    program.add_option("--section", section, "Section of it that applies")->type_name("NAME");
    program.add_flag("--show-settings", show_settings, "Print which settings are passed on to Z3, and as what");
    program.add_option("script", file, "Script in SMT-LIB form")->required()->type_name("script.smt2");

    return examples::run_program(program, argc, argv, [&] {
        const dalvo::Configuration settings = examples::read_settings(config, section);
        const std::string script = examples::read_file(file);
        if (const std::size_t nul = script.find('\0'); nul != std::string::npos) {
            const auto line = std::count(script.begin(), script.begin() + static_cast<std::ptrdiff_t>(nul), '\n') + 1;
            throw examples::Failure(file + ":" + std::to_string(line) + ": a NUL byte");
        }
        examples::pass_on(settings);
        if (show_settings) {
            std::cout << examples::shown_settings(settings);
        }
        examples::ScriptRunner runner(settings);
        const std::vector<std::string> pieces = examples::script_pieces(script);
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            std::cout << runner.run(pieces[i], i + 1 == pieces.size()) << std::flush;
        }
        return runner.failed() ? 1 : 0;
    });
}
