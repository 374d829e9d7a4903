#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tests/support/golden.h"

namespace dalvo::testing {

/// A row of a table of a document: its cells, without the blanks around them.
using TableRow = std::vector<std::string>;

inline TableRow table_row(const std::string &line)
{
    TableRow cells;
    for (std::size_t start = 1, bar = line.find('|', start); bar != std::string::npos; bar = line.find('|', start)) {
        const std::string cell = line.substr(start, bar - start);
        const std::size_t first = cell.find_first_not_of(' ');
        cells.push_back(first == std::string::npos ? "" : cell.substr(first, cell.find_last_not_of(' ') - first + 1));
        start = bar + 1;
    }
    return cells;
}

/// The rows of the table of `document` whose heading is the line `heading`; none when there is no such table.
inline std::vector<TableRow> table_rows(const std::string &document, const std::string &heading)
{
    std::vector<TableRow> rows;
    bool inside = false;
    for (const std::string &line : source_lines(document)) {
        if (line == heading) {
            inside = true;
        } else if (line.empty() || line.front() != '|') {
            inside = false;
        } else if (inside && line.rfind("|---", 0) != 0) {
            rows.push_back(table_row(line));
        }
    }
    return rows;
}

/// The pieces of a cell that stand between backticks.
inline std::vector<std::string> code_spans(const std::string &cell)
{
    std::vector<std::string> spans;
    for (std::size_t open = cell.find('`'); open != std::string::npos;) {
        const std::size_t close = cell.find('`', open + 1);
        spans.push_back(cell.substr(open + 1, close - open - 1));
        open = close == std::string::npos ? close : cell.find('`', close + 1);
    }
    return spans;
}

/// The only piece of a cell that stands between backticks; empty when there is none.
inline std::string code_span(const std::string &cell)
{
    const std::vector<std::string> spans = code_spans(cell);
    return spans.empty() ? "" : spans.front();
}

} // namespace dalvo::testing
