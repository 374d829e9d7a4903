#pragma once

#include <exception>
#include <iostream>
#include <new>
#include <string>

#include <CLI/CLI.hpp>

namespace examples {

constexpr int status_failed = 2; ///< of wrong usage and of files that are wrong

/// Parses the command line of `program`, then returns what `work` returns. What they throw ends as a message on
/// standard error and status 2, as does an output that cannot be written.
template <class Work> int run_program(CLI::App &program, int argc, char **argv, Work work)
{
    const std::string name = program.get_name();
    try {
        program.parse(argc, argv);
        const int status = work();
        if (!std::cout.flush()) {
            std::cerr << name << ": standard output: cannot be written\n";
            return status_failed;
        }
        return status;
    } catch (const CLI::ParseError &e) {
        return program.exit(e) == 0 ? 0 : status_failed;
    } catch (const std::bad_alloc &) {
        std::cerr << name << ": out of memory\n";
    } catch (const std::exception &e) {
        std::cerr << name << ": " << e.what() << '\n';
    }
    return status_failed;
}

} // namespace examples
