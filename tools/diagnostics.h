#pragma once

#include <stdexcept>
#include <string>

namespace dalvo::tools {

/// What ends a command: something wrong with what a user gave, and where it came from.
class Failure : public std::runtime_error {
public:
    /// Reads "where: what", with control bytes escaped, so that it is one line whatever the texts hold.
    Failure(const std::string &where, const std::string &what);
};

/// `text` with "\n", "\r", "\t" and "\xHH" for the control bytes in it; other bytes as they are.
std::string escaped(const std::string &text);

} // namespace dalvo::tools
