#include "tools/output/table.h"

#include <algorithm>
#include <ostream>

#include "tools/output/width.h"

namespace dalvo::tools {

namespace {

constexpr std::size_t widest = 100; // of the cells that decide how wide their column is

std::vector<std::size_t> widths_of(const std::vector<std::vector<std::string>> &rows)
{
    std::vector<std::size_t> widths;
    for (const std::vector<std::string> &row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::size_t width = columns_of(row[i]);
            if (width <= widest) {
                widths[i] = std::max(widths[i], width);
            }
        }
    }
    return widths;
}

} // namespace

void write_table(std::ostream &out, const std::vector<std::vector<std::string>> &rows)
{
    const std::vector<std::size_t> widths = widths_of(rows);
    for (const std::vector<std::string> &row : rows) {
        std::size_t pending = 0; // blanks, written only where a cell follows
        for (std::size_t i = 0; i < row.size(); ++i) {
            pending += 2;
            if (!row[i].empty()) {
                out << std::string(pending, ' ') << row[i];
                pending = 0;
            }
            pending += widths[i] - std::min(widths[i], columns_of(row[i]));
        }
        out << '\n';
    }
}

} // namespace dalvo::tools
