// Loops of spans: everything that cannot lie on a loop is peeled away from the ends, and what is left is reported.

#include "integrity/SpanLoops.h"

#include "control/DlgProgress.h"
#include "network/Links.h"
#include "resources/ResourceOverride.h"
#include "resources/Resources.h"

#include <algorithm>
#include <functional>
#include <queue>

namespace {

// Units of work between two looks at the user's input.
constexpr int kUnitsPerPump = 20;

// One stage of the check, as the dialog shows it. The count goes on through all passes of a stage.
class Stage {
public:
    Stage(CDlgProgress& progress, obmgr::StringId caption) : m_progress(progress)
    {
        m_progress.SetWindowText(obmgr::ResourceText(caption));
        m_progress.SetPos(0);
    }
    Stage(CDlgProgress& progress, obmgr::StringId caption, std::size_t range) : m_progress(progress)
    {
        m_progress.SetWindowText(obmgr::ResourceText(caption));
        m_progress.SetRange(0, static_cast<int>(range));
        m_progress.SetPos(0);
    }

    // After each unit of work; false when the user cancels.
    bool GoesOn()
    {
        if (++m_units % kUnitsPerPump == 0) {
            m_progress.SetPos(m_units);
            m_progress.PeekAndPump(1);
        }
        return m_progress.IsContinue();
    }

private:
    CDlgProgress& m_progress;
    int m_units = 0;
};

} // namespace

CLoopSpan::CLoopSpan(const CTypedPtrList<CObList, CSpan*>& spans)
{
    m_spans.reserve(static_cast<std::size_t>(spans.GetCount()));
    for (const CSpan* span : spans)
        m_spans.push_back({span->GetId32(), obmgr::UpperNodeOf(*span), obmgr::LowerNodeOf(*span)});
}

CLoopSpan::~CLoopSpan() = default;

CLoopSpan::Result CLoopSpan::Check(CDlgProgress& progress, CList<long, long>& spanIds)
{
    const std::ptrdiff_t before = spanIds.GetCount();
    if (!NumberNodes(progress) || !SetCells(progress) || !PeelNodes(progress) || !CollectSpans(progress, spanIds))
        return kCancelled;
    return spanIds.GetCount() > before ? kLoop : kNoLoop;
}

void CLoopSpan::NumberNode(std::int32_t nodeId)
{
    const std::size_t count = m_numbers.Size();
    std::uint32_t& number = m_numbers[nodeId];
    if (m_numbers.Size() > count) number = static_cast<std::uint32_t>(count);
}

// A unit is a span. A node counts by its id, whether there is an object or not.
bool CLoopSpan::NumberNodes(CDlgProgress& progress)
{
    Stage stage(progress, IDS_CHECK_SPANLOOP_COLLECT, m_spans.size());
    for (const Span& span : m_spans) {
        NumberNode(span.lowerNode);
        NumberNode(span.upperNode);
        if (!stage.GoesOn()) return false;
    }
    return true;
}

// A unit is a span.
bool CLoopSpan::SetCells(CDlgProgress& progress)
{
    Stage stage(progress, IDS_CHECK_SPANLOOP_MATRIX);
    m_cells.reserve(m_spans.size());
    for (const Span& span : m_spans) {
        const auto place = static_cast<std::uint32_t>(m_cells.size());
        m_cells.push_back({*m_numbers.Find(span.upperNode), *m_numbers.Find(span.lowerNode), place});
        if (!stage.GoesOn()) return false;
    }
    CountCells();
    return true;
}

void CLoopSpan::CountCells()
{
    std::sort(m_cells.begin(), m_cells.end());
    const auto isSame = [](const Cell& a, const Cell& b) { return a.row == b.row && a.column == b.column; };
    m_cells.erase(std::unique(m_cells.begin(), m_cells.end(), isSame), m_cells.end());

    const std::size_t nodes = m_numbers.Size();
    m_cellsInRow.resize(nodes);
    m_cellsInColumn.resize(nodes);
    m_isZeroed.resize(nodes);
    for (const Cell& cell : m_cells) {
        ++m_cellsInRow[cell.row];
        ++m_cellsInColumn[cell.column];
    }
    m_rowStart.resize(nodes + 1);
    m_columnStart.resize(nodes + 1);
    for (std::size_t node = 0; node < nodes; ++node) {
        m_rowStart[node + 1] = m_rowStart[node] + m_cellsInRow[node];
        m_columnStart[node + 1] = m_columnStart[node] + m_cellsInColumn[node];
    }
    m_rowsOfColumn.resize(m_cells.size());
    std::vector<std::uint32_t> end = m_columnStart;
    for (const Cell& cell : m_cells)
        m_rowsOfColumn[end[cell.column]++] = cell.row;
}

// Empties the node's row and column, one of which is empty already, and tells of each node that is open now.
template <class Opened> void CLoopSpan::ZeroNode(std::uint32_t node, Opened&& opened)
{
    const auto drop = [&](std::uint32_t other, std::vector<std::uint32_t>& cells) {
        if (m_isZeroed[other]) return;
        if (--cells[other] == 0 && IsOpen(other)) opened(other);
    };
    m_isZeroed[node] = true;
    m_cellsInRow[node] = 0;
    m_cellsInColumn[node] = 0;
    for (std::uint32_t i = m_rowStart[node]; i < m_rowStart[node + 1]; ++i)
        drop(m_cells[i].column, m_cellsInColumn);
    for (std::uint32_t i = m_columnStart[node]; i < m_columnStart[node + 1]; ++i)
        drop(m_rowsOfColumn[i], m_cellsInRow);
}

// Passes over the nodes by number, until one changes nothing. A node is open when there is something in its row or in
// its column but not in both: it is zeroed at its turn, which can open others. Those with a greater number have their
// turn in the same pass, the rest in the next one. So a pass need not look at the nodes that are not open.
//
// A unit is a node that is zeroed. A node that has both is passed over, and so is one that has nothing any more:
// counting these anew in every pass would take n squared questions for a line that is numbered from its ends inwards.
bool CLoopSpan::PeelNodes(CDlgProgress& progress)
{
    const auto nodes = static_cast<std::uint32_t>(m_numbers.Size());
    Stage stage(progress, IDS_CHECK_SPANLOOP_TEST, nodes);
    std::vector<std::uint32_t> next;
    for (std::uint32_t node = 0; node < nodes; ++node)
        if (IsOpen(node)) next.push_back(node);
    for (bool isChanged = true; isChanged;) {
        progress.SetPos(0);
        isChanged = false;
        std::priority_queue<std::uint32_t, std::vector<std::uint32_t>, std::greater<>> open({}, std::move(next));
        next.clear();
        while (!open.empty()) {
            const std::uint32_t node = open.top();
            open.pop();
            if (!IsOpen(node)) continue; // what it still had went with another node
            ZeroNode(node, [&](std::uint32_t opened) {
                if (opened > node)
                    open.push(opened);
                else
                    next.push_back(opened);
            });
            isChanged = true;
            if (!stage.GoesOn()) return false;
        }
    }
    return true;
}

// A unit is a cell that is still set, off the diagonal.
bool CLoopSpan::CollectSpans(CDlgProgress& progress, CList<long, long>& spanIds) const
{
    Stage stage(progress, IDS_CHECK_SPANLOOP_RESULT, m_numbers.Size());
    for (const Cell& cell : m_cells) {
        if (cell.row == cell.column || m_isZeroed[cell.row] || m_isZeroed[cell.column]) continue;
        spanIds.AddTail(m_spans[cell.span].id);
        if (!stage.GoesOn()) return false;
    }
    return true;
}

int CObjectManager::CheckSpanLoop(long webId, CList<long, long>& spanIds) const
{
    constexpr int kNoSpans = -1;
    const CObmgerResourceOverride texts;
    CTypedPtrList<CObList, CSpan*> spans;
    // A span without a route hides what stands behind it in the table: a part of the web tells nothing of its loops.
    if (!GetSpanFromWeb(webId, spans)) return kNoSpans;
    CDlgProgress progress;
    progress.Create();
    return CLoopSpan(spans).Check(progress, spanIds);
}
