#include "network/BranchRun.h"

#include <unordered_set>

namespace obmgr {

BranchRun::BranchRun(std::vector<Line> lines, const std::vector<std::int32_t>& listed)
    : m_lines(std::move(lines)), m_isTaken(m_lines.size())
{
    for (std::size_t line = 0; line < m_lines.size(); ++line)
        for (std::int32_t& route : m_lines[line]) {
            route = NumberOf(route);
            std::vector<std::size_t>& through = m_through[static_cast<std::size_t>(route)];
            if (through.empty() || through.back() != line) through.push_back(line);
        }
    m_takenThrough.resize(m_ids.size());
    m_isListed.resize(m_ids.size());
    for (const std::int32_t id : listed)
        if (const std::int32_t* const route = m_numberOf.Find(id)) m_isListed[static_cast<std::size_t>(*route)] = true;
}

std::int32_t BranchRun::NumberOf(std::int32_t id)
{
    const std::size_t before = m_numberOf.Size();
    std::int32_t& number = m_numberOf[id];
    if (m_numberOf.Size() > before) {
        number = static_cast<std::int32_t>(m_ids.size());
        m_ids.push_back(id);
        m_through.emplace_back();
    }
    return number;
}

std::size_t BranchRun::FirstThrough(std::int32_t route)
{
    const std::vector<std::size_t>& through = m_through[static_cast<std::size_t>(route)];
    std::size_t& taken = m_takenThrough[static_cast<std::size_t>(route)];
    while (taken < through.size() && m_isTaken[through[taken]])
        ++taken;
    return taken < through.size() ? through[taken] : kNone;
}

std::size_t BranchRun::FirstLeft()
{
    while (m_firstLeft < m_lines.size() && m_isTaken[m_firstLeft])
        ++m_firstLeft;
    return m_firstLeft < m_lines.size() ? m_firstLeft : kNone;
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
        if (frame.at == m_lines[frame.line].size()) {
            frames.pop_back();
            continue;
        }
        const std::int32_t route = m_lines[frame.line][frame.at];
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
    m_branches.resize(m_ids.size());
    m_doneBranches.resize(m_ids.size());
    m_onLine.assign(m_ids.size(), kNone);
    std::unordered_set<std::uint64_t> known;
    for (std::size_t line = 0; line < m_lines.size(); ++line)
        for (std::size_t i = 0; i < m_lines[line].size(); ++i) {
            const std::int32_t route = m_lines[line][i];
            // A route that the line comes to again counts where it stands first.
            if (std::exchange(m_onLine[static_cast<std::size_t>(route)], line) == line) continue;
            if (i + 1 == m_lines[line].size()) continue; // the last route of a line leads to itself, which is listed
            const std::int32_t next = m_lines[line][i + 1];
            // Once a line is taken its routes are listed or on the line under way: another line with the same way on
            // is not looked for any more.
            const auto pair = (static_cast<std::uint64_t>(route) << 32) | static_cast<std::uint32_t>(next);
            if (known.insert(pair).second) m_branches[static_cast<std::size_t>(route)].push_back({line, next});
        }
    m_onLine.assign(m_ids.size(), kNone);
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
        for (const std::int32_t route : m_lines[line])
            m_onLine[static_cast<std::size_t>(route)] = line;
        std::vector<std::size_t> leaving;
        for (const std::int32_t route : m_lines[line]) {
            const std::size_t branch = FirstLeaving(route, line);
            if (branch != kNone) leaving.push_back(branch);
            PutOut(route);
        }
        waiting.insert(waiting.end(), leaving.rbegin(), leaving.rend());
    }
}

} // namespace obmgr
