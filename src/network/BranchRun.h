// The run of a branch sort over the lines of a set of routes: which line is taken next, and in which order routes come
// out. For the sources of the network.
//
// A line goes from a head route to the lowest route of the set, or the other way round. Lines of one tree share their
// lower parts; the place where a line meets one that is under way is its branch point.
#pragma once

#include "network/IdMap.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace obmgr {

class BranchRun {
public:
    using Line = std::vector<std::int32_t>; // route ids
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    // The lines in the order in which they are looked through. `listed` are routes that count as put out before.
    BranchRun(std::vector<Line> lines, const std::vector<std::int32_t>& listed);

    // Each takes `line` and the lines that it meets. A line that was taken is not met again.
    // Whatever joins the line at a route comes out before that route.
    void Sort(std::size_t line);
    // The line whole, then the line that joins it first, whole, and so on.
    void Extend(std::size_t line);
    // Lines from the bottom up: the line, then each line that leaves it, by its branch points, with its own.
    void ExtendReverse(std::size_t line);
    // Gives each route of the line to `use`, then the line that joins it first, and so on. `use` is told whether the
    // route is met for the first time, and how many lines came before; false from it ends the run.
    template <class Use> void Follow(std::size_t line, Use&& use)
    {
        for (std::size_t count = 0; line != kNone; ++count) {
            m_isTaken[line] = true;
            std::size_t next = kNone;
            for (const std::int32_t route : m_lines[line]) {
                if (next == kNone) next = FirstThrough(route);
                if (!use(IdOf(route), MarkListed(route), count)) return;
            }
            line = next;
        }
    }

    // The line is run when asked for, and never met.
    void Hide(std::size_t line) { m_isTaken[line] = true; }
    bool IsTaken(std::size_t line) const { return m_isTaken[line]; }
    // The first line that was not taken, kNone when all were.
    std::size_t FirstLeft();
    // The routes put out by the runs, in their order.
    const std::vector<std::int32_t>& Output() const { return m_output; }

private:
    // Inside, routes are numbered from 0 as they are first met.
    struct Branch {
        std::size_t line;
        std::int32_t next; // the route behind the branch point
    };

    std::int32_t NumberOf(std::int32_t id);
    std::int32_t IdOf(std::int32_t route) const { return m_ids[static_cast<std::size_t>(route)]; }
    std::size_t FirstThrough(std::int32_t route);
    std::size_t FirstLeaving(std::int32_t route, std::size_t line);
    void FindBranches();
    bool MarkListed(std::int32_t route);
    void PutOut(std::int32_t route);

    std::vector<Line> m_lines; // of route numbers
    std::vector<bool> m_isTaken;
    std::size_t m_firstLeft = 0;
    IdMap<std::int32_t> m_numberOf;
    std::vector<std::int32_t> m_ids;
    // Lines through each route, rising, and how many of them, from the first on, are known to be taken.
    std::vector<std::vector<std::size_t>> m_through;
    std::vector<std::size_t> m_takenThrough;
    // Ways on behind each route, each with the first line that takes it; made when first needed. The first ones, as
    // many as told, are known to be put out.
    std::vector<std::vector<Branch>> m_branches;
    std::vector<std::size_t> m_doneBranches;
    std::vector<std::size_t> m_onLine; // the line that put its mark on a route last
    std::vector<bool> m_isListed;
    std::vector<std::int32_t> m_output;
};

} // namespace obmgr
