// CLoopSpan: which spans of a web lie on or between loops.
#pragma once

#include "common/Export.h"
#include "framework/List.h"
#include "network/IdMap.h"
#include "objects/Records.h"

#include <cstdint>
#include <tuple>
#include <vector>

class CDlgProgress;

// Lives for one check. The check is that of a matrix with a row and a column for each node, where cell [i][j] tells
// whether some span runs from node i down to node j; but only the cells that are set are kept, and for each node how
// many there are in its row and in its column.
class RIVELTA_API CLoopSpan { // name as published
public:
    enum Result { kNoLoop = 0, kLoop = 1, kCancelled = 2 };

    // Takes down the ends of the spans; the objects are not looked at again, so that they may change or go while the
    // dialog lets input through.
    explicit CLoopSpan(const CTypedPtrList<CObList, CSpan*>& spans);
    virtual ~CLoopSpan();
    CLoopSpan(const CLoopSpan&) = delete;
    CLoopSpan& operator=(const CLoopSpan&) = delete;

    // Appends the spans found to `spanIds`, by the numbers of their upper and then their lower node, the first span of
    // each pair of nodes. What was appended before a cancel stays. To be called once.
    Result Check(CDlgProgress& progress, CList<long, long>& spanIds);

private:
    struct Span {
        std::int32_t id;
        std::int32_t upperNode;
        std::int32_t lowerNode;
    };
    struct Cell {
        std::uint32_t row;    // number of the upper node
        std::uint32_t column; // number of the lower node
        std::uint32_t span;   // the first that sets the cell

        bool operator<(const Cell& other) const
        {
            return std::tie(row, column, span) < std::tie(other.row, other.column, other.span);
        }
    };

    // The four stages; false when the user cancels.
    bool NumberNodes(CDlgProgress& progress);
    bool SetCells(CDlgProgress& progress);
    bool PeelNodes(CDlgProgress& progress);
    bool CollectSpans(CDlgProgress& progress, CList<long, long>& spanIds) const;

    void NumberNode(std::int32_t nodeId);
    void CountCells();
    bool IsOpen(std::uint32_t node) const { return (m_cellsInRow[node] == 0) != (m_cellsInColumn[node] == 0); }
    template <class Opened> void ZeroNode(std::uint32_t node, Opened&& opened);

    std::vector<Span> m_spans;
    obmgr::IdMap<std::uint32_t> m_numbers; // of the nodes, from 0, by id
    std::vector<Cell> m_cells;             // row by row, each cell once
    std::vector<std::uint32_t> m_rowStart; // where a row begins in m_cells; one more for the end
    std::vector<std::uint32_t> m_columnStart;
    std::vector<std::uint32_t> m_rowsOfColumn; // column by column the rows of its cells
    std::vector<std::uint32_t> m_cellsInRow;   // that are still set
    std::vector<std::uint32_t> m_cellsInColumn;
    std::vector<bool> m_isZeroed; // row and column of the node
};
