#include "tools/output/diagnostics.h"

#include "dalvo/inspect/words/printable.h"

namespace dalvo::tools {

Failure::Failure(const std::string &where, const std::string &what, int exit_status)
    : std::runtime_error(inspect::escaped(where) + ": " + inspect::escaped(what)), status(exit_status)
{
}

} // namespace dalvo::tools
