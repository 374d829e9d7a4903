// Solves a DIMACS problem with CaDiCaL under the settings of a configuration text. What it prints, and its exit status,
// are those of the SAT competition: 10 satisfiable, 20 unsatisfiable, 0 neither; 2 when something is wrong.

#include <iostream>
#include <string>

#include <CLI/CLI.hpp>

#include "examples/host/program.h"
#include "examples/host/settings.h"
#include "examples/solve/dimacs.h"
#include "examples/solve/solve.h"
#include "examples/solve/solveroptions.h"

namespace {

constexpr std::size_t longest_line = 78;

/// "v" lines that end with 0.
std::string model_lines(const std::vector<int> &model)
{
    std::string text;
    std::string line = "v";
    const auto add = [&](int literal) {
        const std::string word = " " + std::to_string(literal);
        if (line.size() + word.size() > longest_line) {
            text += line + "\n";
            line = "v";
        }
        line += word;
    };
    for (const int literal : model) {
        add(literal);
    }
    add(0);
    return text + line + "\n";
}

const char *status_line(examples::Status status)
{
    return status == examples::Status::satisfiable     ? "s SATISFIABLE\n"
           : status == examples::Status::unsatisfiable ? "s UNSATISFIABLE\n"
                                                       : "s UNKNOWN\n";
}

} // namespace

int main(int argc, char **argv)
{
    CLI::App program("Solves a DIMACS problem with CaDiCaL under the settings of a configuration text.", "solve");
    std::string config;
    std::string section;
    std::string problem;
    bool show_settings = false;
    program.add_option("--config", config, "Configuration text, read after the built-in one")->type_name("FILE");
    program.add_option("--section", section, "Section of it that applies")->type_name("NAME");
    program.add_flag("--show-settings", show_settings, "Print which settings are passed on to CaDiCaL, and as what");
    program.add_option("problem", problem, "Problem in DIMACS form")->required()->type_name("problem.cnf");

    return examples::run_program(program, argc, argv, [&] {
        const dalvo::Configuration settings = examples::read_settings(config, section);
        const examples::Formula formula = examples::read_dimacs(problem, examples::read_file(problem));
        CaDiCaL::Solver solver;
        const auto passed = examples::pass_on(solver, settings);
        if (show_settings) {
            std::cout << "c model_generation = " << (settings.model_generation ? "true" : "false")
                      << ": kept here, it decides about the v lines\n"
                      << examples::shown_settings(settings, passed) << std::flush; // ahead of what CaDiCaL writes
        }
        const examples::Answer answer = examples::solve(solver, formula);
        solver.statistics(); // nothing when it is quiet
        std::cout << status_line(answer.status);
        if (answer.status == examples::Status::satisfiable && settings.model_generation) {
            std::cout << model_lines(answer.model);
        }
        return static_cast<int>(answer.status);
    });
}
