#include "Table.h"

#include "DisplayText.h"
#include "Output.h"

#include <algorithm>

#include <sys/ioctl.h>
#include <unistd.h>

namespace obmgr::tool {

namespace {

constexpr int kGap = 2;

bool looksLikeNumber(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return (c >= '0' && c <= '9') || c == '-' || c == '.'; });
}

} // namespace

int TerminalColumns()
{
    if (!::isatty(STDOUT_FILENO)) return 0;
    winsize size = {};
    return ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

Table::Table(std::vector<std::string> titles) : m_titles(std::move(titles)) {}

void Table::AddRow(std::vector<std::string> cells)
{
    for (std::string& cell : cells)
        cell = WithoutControls(cell);
    m_rows.push_back(std::move(cells));
}

std::string Table::Cell(const std::string& text) const
{
    return m_cellLimit > 0 ? Shortened(text, m_cellLimit) : text;
}

std::vector<int> Table::Widths() const
{
    std::vector<int> widths;
    for (const std::string& title : m_titles)
        widths.push_back(DisplayWidth(Cell(title)));
    for (const auto& row : m_rows)
        for (std::size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], DisplayWidth(Cell(row[i])));
    return widths;
}

bool Table::IsNumeric(std::size_t column) const
{
    return std::all_of(m_rows.begin(), m_rows.end(),
                       [column](const auto& row) { return looksLikeNumber(row[column]); });
}

std::vector<std::string> Table::DropColumnsBeyond(int columns)
{
    const std::vector<int> widths = Widths();
    int used = 0;
    std::size_t kept = 0;
    while (kept < widths.size() && (kept == 0 || used + kGap + widths[kept] <= columns)) {
        used += (kept == 0 ? 0 : kGap) + widths[kept];
        ++kept;
    }
    const auto first = m_titles.begin() + static_cast<std::ptrdiff_t>(kept);
    std::vector<std::string> dropped(first, m_titles.end());
    m_titles.erase(first, m_titles.end());
    for (auto& row : m_rows)
        row.resize(kept);
    return dropped;
}

void Table::Print(int indent) const
{
    const std::vector<int> widths = Widths();
    std::vector<bool> isNumeric;
    for (std::size_t i = 0; i < widths.size(); ++i)
        isNumeric.push_back(IsNumeric(i));

    std::string line;
    const auto printRow = [&](const std::vector<std::string>& cells) {
        line.assign(static_cast<std::size_t>(indent), ' ');
        for (std::size_t i = 0; i < widths.size(); ++i) {
            if (i > 0) line.append(kGap, ' ');
            const std::string cell = Cell(cells[i]);
            const auto padding = static_cast<std::size_t>(widths[i] - DisplayWidth(cell));
            if (isNumeric[i]) line.append(padding, ' ');
            line += cell;
            if (!isNumeric[i]) line.append(padding, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        tool::Print(line + "\n");
    };
    const bool hasTitles =
        std::any_of(m_titles.begin(), m_titles.end(), [](const auto& title) { return !title.empty(); });
    if (hasTitles) printRow(m_titles);
    for (const auto& row : m_rows)
        printRow(row);
}

} // namespace obmgr::tool
