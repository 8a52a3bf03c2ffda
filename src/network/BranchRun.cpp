#include "network/BranchRun.h"

#include "network/IdMap.h"

#include <unordered_set>

namespace obmgr {

BranchRun::BranchRun(RouteLines lines, const std::vector<std::int32_t>& listed)
    : m_lines(std::move(lines)), m_isTaken(m_lines.lines.size()), m_isListed(m_lines.ids.size())
{
    FindThrough();
    if (listed.empty()) return;
    IdSet ids = IdSet::Of(listed);
    for (std::size_t route = 0; route < m_lines.ids.size(); ++route)
        m_isListed[route] = ids.Contains(m_lines.ids[route]);
}

void BranchRun::FindThrough()
{
    std::vector<std::size_t> count(m_lines.ids.size());
    for (const std::int32_t route : m_lines.routes)
        ++count[static_cast<std::size_t>(route)];
    m_through.reserve(count.size());
    std::size_t total = 0;
    for (const std::size_t lines : count) {
        m_through.push_back({total, total});
        total += lines;
    }
    m_linesThrough.resize(total);
    for (std::size_t line = 0; line < m_lines.lines.size(); ++line)
        for (const std::int32_t route : m_lines.Of(line)) {
            Through& through = m_through[static_cast<std::size_t>(route)];
            m_linesThrough[through.end++] = static_cast<std::uint32_t>(line);
        }
}

std::size_t BranchRun::FirstThrough(std::int32_t route)
{
    Through& through = m_through[static_cast<std::size_t>(route)];
    while (through.first < through.end && m_isTaken[m_linesThrough[through.first]])
        ++through.first;
    return through.first < through.end ? m_linesThrough[through.first] : kNone;
}

std::size_t BranchRun::FirstLeft()
{
    while (m_firstLeft < m_isTaken.size() && m_isTaken[m_firstLeft])
        ++m_firstLeft;
    return m_firstLeft < m_isTaken.size() ? m_firstLeft : kNone;
}

bool BranchRun::MarkListed(std::int32_t route)
{
    if (m_isListed[static_cast<std::size_t>(route)]) return false;
    m_isListed[static_cast<std::size_t>(route)] = true;
    return true;
}

void BranchRun::PutOut(std::int32_t route)
{
    if (MarkListed(route)) m_output.push_back(IdOf(route));
}

void BranchRun::Sort(std::size_t line)
{
    struct Frame {
        std::size_t line;
        std::size_t at = 0;
        bool hasBranched = false;
    };
    std::vector<Frame> frames;
    m_isTaken[line] = true;
    frames.push_back({line});
    while (!frames.empty()) {
        Frame& frame = frames.back();
        const std::span<const std::int32_t> routes = m_lines.Of(frame.line);
        if (frame.at == routes.size()) {
            frames.pop_back();
            continue;
        }
        const std::int32_t route = routes[frame.at];
        if (!std::exchange(frame.hasBranched, true)) {
            const std::size_t branch = FirstThrough(route);
            if (branch != kNone) {
                m_isTaken[branch] = true;
                frames.push_back({branch});
                continue;
            }
        }
        PutOut(route);
        ++frame.at;
        frame.hasBranched = false;
    }
}

void BranchRun::Extend(std::size_t line)
{
    Follow(line, [&](std::int32_t id, bool isNew, std::size_t) {
        if (isNew) m_output.push_back(id);
        return true;
    });
}

void BranchRun::FindBranches()
{
    if (!m_branches.empty()) return;
    m_branches.resize(m_lines.ids.size());
    m_doneBranches.resize(m_lines.ids.size());
    m_onLine.assign(m_lines.ids.size(), kNone);
    std::unordered_set<std::uint64_t> known;
    for (std::size_t line = 0; line < m_lines.lines.size(); ++line) {
        const std::span<const std::int32_t> routes = m_lines.Of(line);
        for (std::size_t i = 0; i < routes.size(); ++i) {
            const std::int32_t route = routes[i];
            // A route that the line comes to again counts where it stands first.
            if (std::exchange(m_onLine[static_cast<std::size_t>(route)], line) == line) continue;
            if (i + 1 == routes.size()) continue; // the last route of a line leads to itself, which is listed
            const std::int32_t next = routes[i + 1];
            // Once a line is taken its routes are listed or on the line under way: another line with the same way on
            // is not looked for any more.
            const auto pair = (static_cast<std::uint64_t>(route) << 32) | static_cast<std::uint32_t>(next);
            if (known.insert(pair).second) m_branches[static_cast<std::size_t>(route)].push_back({line, next});
        }
    }
    m_onLine.assign(m_lines.ids.size(), kNone);
}

// The first line whose way on behind the route is neither on the line under way nor put out.
std::size_t BranchRun::FirstLeaving(std::int32_t route, std::size_t line)
{
    const std::vector<Branch>& branches = m_branches[static_cast<std::size_t>(route)];
    std::size_t& done = m_doneBranches[static_cast<std::size_t>(route)];
    while (done < branches.size() && m_isListed[static_cast<std::size_t>(branches[done].next)])
        ++done;
    for (std::size_t i = done; i < branches.size(); ++i) {
        const auto next = static_cast<std::size_t>(branches[i].next);
        if (!m_isListed[next] && m_onLine[next] != line) return branches[i].line;
    }
    return kNone;
}

void BranchRun::ExtendReverse(std::size_t start)
{
    FindBranches();
    std::vector<std::size_t> waiting{start}; // the next one last
    while (!waiting.empty()) {
        const std::size_t line = waiting.back();
        waiting.pop_back();
        m_isTaken[line] = true;
        for (const std::int32_t route : m_lines.Of(line))
            m_onLine[static_cast<std::size_t>(route)] = line;
        std::vector<std::size_t> leaving;
        for (const std::int32_t route : m_lines.Of(line)) {
            const std::size_t branch = FirstLeaving(route, line);
            if (branch != kNone) leaving.push_back(branch);
            PutOut(route);
        }
        waiting.insert(waiting.end(), leaving.rbegin(), leaving.rend());
    }
}

} // namespace obmgr
