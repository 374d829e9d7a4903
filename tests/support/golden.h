#pragma once

#include <cstddef>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace dalvo::testing {

/// A row of a golden file: its cells.
using GoldenRow = std::vector<std::string>;

/// The text of a cell, in which backslash-n stands for a line break.
inline std::string unescaped(const std::string &cell)
{
    std::string text;
    for (std::size_t i = 0; i < cell.size(); ++i) {
        if (cell.compare(i, 2, "\\n") == 0) {
            text += '\n';
            ++i;
        } else {
            text += cell[i];
        }
    }
    return text;
}

inline GoldenRow split_row(const std::string &line)
{
    GoldenRow cells;
    std::size_t start = 0;
    for (std::size_t tab = line.find('\t'); tab != std::string::npos; tab = line.find('\t', start)) {
        cells.push_back(unescaped(line.substr(start, tab - start)));
        start = tab + 1;
    }
    cells.push_back(unescaped(line.substr(start)));
    return cells;
}

/// The path of a file of the source tree, which `path` names from its root.
inline std::string source_path(const std::string &path)
{
    return std::string(DALVO_SOURCE_DIR) + "/" + path;
}

/// The lines of a file of the source tree. Throws std::runtime_error when it cannot be read.
inline std::vector<std::string> source_lines(const std::string &path)
{
    std::ifstream in(source_path(path), std::ios_base::binary);
    if (!in) {
        throw std::runtime_error("cannot read " + path);
    }
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// The rows of tests/golden/`name`, each of `columns` cells. Throws std::runtime_error when there are others.
inline std::vector<GoldenRow> golden_rows(const std::string &name, std::size_t columns)
{
    std::vector<GoldenRow> rows;
    for (const std::string &line : source_lines("tests/golden/" + name)) {
        rows.push_back(split_row(line));
        if (rows.back().size() != columns) {
            throw std::runtime_error("golden file " + name + ": bad row: " + line);
        }
    }
    return rows;
}

} // namespace dalvo::testing
