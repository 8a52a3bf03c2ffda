// Aligned tables for a person.
#pragma once

#include <string>
#include <vector>

namespace obmgr::tool {

// Columns of the terminal on standard output; 0 when that is no terminal.
int TerminalColumns();

class Table {
public:
    // Without a line of titles when all of them are empty.
    explicit Table(std::vector<std::string> titles);

    // As many cells as there are titles.
    void AddRow(std::vector<std::string> cells);
    // Cells wider than this are shortened; 0 for no limit.
    void LimitCells(int columns) { m_cellLimit = columns; }
    // Leaves out the last columns that do not fit into so many columns, and gives their titles. The first column
    // always stays.
    std::vector<std::string> DropColumnsBeyond(int columns);
    void Print(int indent = 0) const;

private:
    std::string Cell(const std::string& text) const;
    std::vector<int> Widths() const;
    bool IsNumeric(std::size_t column) const;

    std::vector<std::string> m_titles;
    std::vector<std::vector<std::string>> m_rows;
    int m_cellLimit = 0;
};

} // namespace obmgr::tool
