#pragma once

#include <stdexcept>
#include <string>

namespace dalvo::tools {

// What a command ends with.
constexpr int status_fine = 0;
constexpr int status_problem = 1; ///< what was asked for found problems, or differences
constexpr int status_usage = 2;   ///< wrong usage, a file that cannot be read, no memory: nothing is known

/// What ends a command: something wrong with what a user gave, and where it came from.
class Failure : public std::runtime_error {
public:
    /// Reads "where: what", with control bytes escaped, so that it is one line whatever the texts hold.
    Failure(const std::string &where, const std::string &what, int exit_status = status_problem);

    const int status;
};

} // namespace dalvo::tools
