#pragma once

#include <string>
#include <vector>

#include <z3++.h>

#include "dalvo/configuration/configuration.h"

namespace examples {

/// The script `text` in pieces that give it back when joined. Each but the last, which may be empty, ends with a command that asks for an
/// answer: (check-sat) or (check-sat-assuming ...). What follows (exit) is left out.
std::vector<std::string> script_pieces(const std::string &text);

/// Runs a script in a context of its own, which takes the parameters of the process as they are when it is made.
class ScriptRunner {
public:
    explicit ScriptRunner(const dalvo::Configuration &runner_settings) : settings(runner_settings) {}

    /// What Z3 prints for `piece` (without NUL), the next one of the script; then, as the settings ask for it, the
    /// model, the unsat core and the proof behind its answer, and with a verbosity the statistics. The last piece of a
    /// script ends with no answer, whatever it prints.
    std::string run(const std::string &piece, bool is_last);

    /// Whether Z3 has reported an error so far.
    bool failed() const noexcept { return any_error; }

private:
    std::string evaluate(const std::string &commands);

    const dalvo::Configuration &settings;
    z3::context context;
    std::string position; ///< moves Z3's line and column to where the next piece begins
    bool any_error = false;
};

} // namespace examples
