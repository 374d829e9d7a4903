#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace dalvo::tools {

/// Writes `rows`, each a line: its cells (one line each, any number of them) below those of the other rows, two blanks
/// apart, behind two blanks. A column is as wide as its widest cell, as terminals count, but for cells beyond 100:
/// such a one moves the rest of its own row and no other, so that one long value does not fill every row with blanks.
/// Nothing stands behind a row's last cell that is not empty.
void write_table(std::ostream &out, const std::vector<std::vector<std::string>> &rows);

} // namespace dalvo::tools
