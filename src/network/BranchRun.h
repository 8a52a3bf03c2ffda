// The run of a branch sort over the lines of a set of routes: which line is taken next, and in which order routes come
// out. For the sources of the network.
//
// A line goes from a head route to the lowest route of the set, or the other way round. Lines of one tree share their
// lower parts; the place where a line meets one that is under way is its branch point.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace obmgr {

// Lines of routes in one block, the routes numbered from 0.
struct RouteLines {
    struct Line {
        std::size_t begin;
        std::size_t end;
    };
    std::vector<std::int32_t> ids;    // by number
    std::vector<std::int32_t> routes; // numbers, line after line
    std::vector<Line> lines;

    std::span<const std::int32_t> Of(std::size_t line) const
    {
        return {routes.data() + lines[line].begin, lines[line].end - lines[line].begin};
    }
};

class BranchRun {
public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    // The lines in the order in which they are looked through. `listed` are ids that count as put out before.
    BranchRun(RouteLines lines, const std::vector<std::int32_t>& listed);

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
            for (const std::int32_t route : m_lines.Of(line)) {
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
    struct Branch {
        std::size_t line;
        std::int32_t next; // the route behind the branch point
    };

    std::int32_t IdOf(std::int32_t route) const { return m_lines.ids[static_cast<std::size_t>(route)]; }
    void FindThrough();
    std::size_t FirstThrough(std::int32_t route);
    std::size_t FirstLeaving(std::int32_t route, std::size_t line);
    void FindBranches();
    bool MarkListed(std::int32_t route);
    void PutOut(std::int32_t route);

    RouteLines m_lines;
    std::vector<bool> m_isTaken;
    std::size_t m_firstLeft = 0;
    // Lines through each route, rising, in one block. Those before `first` are known to be taken.
    struct Through {
        std::size_t first = 0;
        std::size_t end = 0;
    };
    std::vector<Through> m_through;
    std::vector<std::uint32_t> m_linesThrough;
    // Ways on behind each route, each with the first line that takes it; made when first needed. The first ones, as
    // many as told, are known to be put out.
    std::vector<std::vector<Branch>> m_branches;
    std::vector<std::size_t> m_doneBranches;
    std::vector<std::size_t> m_onLine; // the line that put its mark on a route last
    std::vector<bool> m_isListed;
    std::vector<std::int32_t> m_output;
};

} // namespace obmgr
