// Orders of a set of routes that follow the tree from the longest line outward.

#include "network/BranchRun.h"
#include "network/IdMap.h"
#include "network/MiddleQuicksort.h"
#include "network/RouteChain.h"

#include <optional>
#include <utility>

using obmgr::BranchRun;
using obmgr::Id32;
using obmgr::RouteLines;

namespace {

std::vector<std::int32_t> IdsOf(const CList<long, long>& list)
{
    std::vector<std::int32_t> ids;
    ids.reserve(static_cast<std::size_t>(list.GetCount()));
    for (const long id : list)
        ids.push_back(Id32(id));
    return ids;
}

// The lines of a caller's chains.
class LinesOfChains {
public:
    void Add(const CList<long, long>& routeIds)
    {
        const std::size_t begin = m_lines.routes.size();
        for (const long id : routeIds) {
            const std::size_t before = m_numberOf.Size();
            std::int32_t& number = m_numberOf[Id32(id)];
            if (m_numberOf.Size() > before) {
                number = static_cast<std::int32_t>(before);
                m_lines.ids.push_back(Id32(id));
            }
            m_lines.routes.push_back(number);
        }
        m_lines.lines.push_back({begin, m_lines.routes.size()});
    }
    RouteLines Take() { return std::move(m_lines); }

private:
    RouteLines m_lines;
    obmgr::IdMap<std::int32_t> m_numberOf;
};

// A run over chains of a caller, which loses those that the run takes.
class ChainRun {
public:
    ChainRun(tagSortBranch& first, CObjectManager::SortBranches& chains, const CList<long, long>& listed)
        : m_chains(chains)
    {
        LinesOfChains lines;
        const CList<long, long> nothing;
        for (POSITION position = chains.GetHeadPosition(); position;) {
            const POSITION here = position;
            const tagSortBranch* const chain = chains.GetNext(position);
            if (chain == &first && m_first == BranchRun::kNone) m_first = m_positions.size();
            m_positions.push_back(here);
            lines.Add(chain ? chain->routeIds : nothing);
        }
        const bool isFirstApart = m_first == BranchRun::kNone;
        if (isFirstApart) {
            m_first = m_positions.size();
            lines.Add(first.routeIds);
        }
        m_run.emplace(lines.Take(), IdsOf(listed));
        if (isFirstApart) m_run->Hide(m_first);
    }
    ~ChainRun()
    {
        for (std::size_t i = 0; i < m_positions.size(); ++i)
            if (m_run->IsTaken(i)) m_chains.RemoveAt(m_positions[i]);
    }
    ChainRun(const ChainRun&) = delete;
    ChainRun& operator=(const ChainRun&) = delete;

    BranchRun& Run() { return *m_run; }
    std::size_t First() const { return m_first; }

private:
    CObjectManager::SortBranches& m_chains;
    std::vector<POSITION> m_positions;
    std::size_t m_first = BranchRun::kNone;
    std::optional<BranchRun> m_run;
};

// The lines of the set, the longest first. False for an empty set and when a line has a route without spans.
bool FindLines(const CObjectManager& manager, const CList<long, long>& set, bool fromBelow, RouteLines& found)
{
    CList<long, long> heads;
    if (!manager.GetUpperRouteId(set, heads)) return false;
    if (heads.IsEmpty()) return true; // a ring has no head, and so no line

    constexpr std::int32_t kEnd = -1;
    struct Member {
        std::int32_t below = kEnd; // number of the route that it flows into; kEnd where the set ends
        std::int32_t line = kEnd;  // the last line that came by
        double length = 0.0;
        bool hasSpans = false;
    };
    obmgr::IdMap<std::int32_t> numberOf(static_cast<std::size_t>(set.GetCount()));
    for (const long id : set) {
        const std::size_t before = numberOf.Size();
        std::int32_t& number = numberOf[Id32(id)];
        if (numberOf.Size() == before) continue;
        number = static_cast<std::int32_t>(before);
        found.ids.push_back(Id32(id));
    }
    std::vector<Member> members(found.ids.size());
    for (std::size_t i = 0; i < members.size(); ++i) {
        members[i].hasSpans = manager.GetRouteLength(found.ids[i], members[i].length);
        const CRoute* const route = manager.GetRouteDb().Find(found.ids[i]);
        const std::int32_t below = route ? obmgr::ConnectOf(*route) : 0;
        if (const std::int32_t* const number = below != 0 ? numberOf.Find(below) : nullptr) members[i].below = *number;
    }

    std::vector<std::pair<double, RouteLines::Line>> byLength;
    for (const long head : heads) {
        const auto line = static_cast<std::int32_t>(byLength.size());
        const std::size_t begin = found.routes.size();
        // On a ring the line ends where it comes round.
        for (std::int32_t at = *numberOf.Find(Id32(head)); at != kEnd;) {
            Member& member = members[static_cast<std::size_t>(at)];
            if (std::exchange(member.line, line) == line) break;
            if (!member.hasSpans) return false;
            found.routes.push_back(at);
            at = member.below;
        }
        const auto first = found.routes.begin() + static_cast<std::ptrdiff_t>(begin);
        if (fromBelow) std::reverse(first, found.routes.end());
        // Added up in the order of the line: the last digit of a sum, and so a tie, depends on it.
        double length = 0.0;
        for (auto route = first; route != found.routes.end(); ++route)
            length += members[static_cast<std::size_t>(*route)].length;
        byLength.push_back({length, {begin, found.routes.size()}});
    }
    obmgr::MiddleQuicksort(
        0, static_cast<long>(byLength.size()) - 1, [&](long i) { return byLength[static_cast<std::size_t>(i)].first; },
        [&](long i, long j) {
            std::swap(byLength[static_cast<std::size_t>(i)], byLength[static_cast<std::size_t>(j)]);
        });
    for (auto entry = byLength.rbegin(); entry != byLength.rend(); ++entry)
        found.lines.push_back(entry->second);
    return true;
}

} // namespace

bool CObjectManager::SortByBranches(const CList<long, long>& in, CList<long, long>& out, bool fromBelow,
                                    void (BranchRun::*take)(std::size_t)) const
{
    RouteLines lines;
    if (!FindLines(*this, in, fromBelow, lines)) return false;
    BranchRun run(std::move(lines), IdsOf(out));
    for (std::size_t line = run.FirstLeft(); line != BranchRun::kNone; line = run.FirstLeft())
        (run.*take)(line);
    obmgr::AppendAll(out, run.Output());
    return true;
}

bool CObjectManager::SortRouteBranchUpper(const CList<long, long>& in, CList<long, long>& out) const
{
    return SortByBranches(in, out, false, &BranchRun::Sort);
}

bool CObjectManager::SortRouteBranchLower(const CList<long, long>& in, CList<long, long>& out) const
{
    if (!SortRouteBranchUpper(in, out)) return false;
    ReverseIdList(out);
    return true;
}

bool CObjectManager::SortRouteMaxExtendUpper(const CList<long, long>& in, CList<long, long>& out) const
{
    return SortByBranches(in, out, false, &BranchRun::Extend);
}

bool CObjectManager::SortRouteMaxExtendLower(const CList<long, long>& in, CList<long, long>& out) const
{
    return SortByBranches(in, out, true, &BranchRun::ExtendReverse);
}

// Measures the lines that meet, the first of them from `line` on. False when a route of the first has no order of
// spans; `measured` gets the routes.
bool CObjectManager::MeasureLines(BranchRun& run, std::size_t line, CList<long, long>& measured)
{
    double distance = 0.0;
    std::size_t lineOfDistance = 0;
    bool isMeasured = true;
    run.Follow(line, [&](std::int32_t id, bool isNew, std::size_t count) {
        if (std::exchange(lineOfDistance, count) != count) distance = 0.0;
        if (!isNew) return true;
        CTypedPtrList<CObList, CSpan*> spans;
        if (!GetSortSpanInRoute(id, spans, false)) {
            isMeasured = count > 0; // what befalls a further line is not told
            return false;
        }
        for (CSpan* span : spans) {
            distance += span->GetSubAttributeDouble(L"splength", 0.0);
            span->WriteSubAttributeDouble(L"splent", distance);
        }
        measured.AddTail(id);
        return true;
    });
    return isMeasured;
}

bool CObjectManager::SetSpanMaxExtend(long webId)
{
    CList<long, long> routes;
    RouteLines lines;
    if (!GetRouteIdList(webId, routes) || !FindLines(*this, routes, false, lines)) return false;
    if (lines.lines.empty()) return false; // rings only
    BranchRun run(std::move(lines), {});
    CList<long, long> measured;
    return MeasureLines(run, 0, measured);
}

void CObjectManager::SortRouteLength(SortBranches& chains, long low, long high) const
{
    std::vector<tagSortBranch*> entries(chains.begin(), chains.end());
    if (low < 0) low = 0;
    if (high < 0) high = static_cast<long>(entries.size()) - 1;
    if (low >= high || high >= static_cast<long>(entries.size())) return;
    obmgr::MiddleQuicksort(
        low, high, [&](long i) { return entries[static_cast<std::size_t>(i)]->length; },
        [&](long i, long j) { std::swap(entries[static_cast<std::size_t>(i)], entries[static_cast<std::size_t>(j)]); });
    auto next = entries.begin();
    for (POSITION position = chains.GetHeadPosition(); position; chains.GetNext(position))
        chains.SetAt(position, *next++);
}

void CObjectManager::SortRouteLengthForBuranchSortShort(SortBranches& chains) const
{
    SortRouteLength(chains, -1, -1);
}

void CObjectManager::SortRouteLengthForBuranchSortLong(SortBranches& chains) const
{
    SortRouteLength(chains, -1, -1);
    const std::vector<tagSortBranch*> rising(chains.begin(), chains.end());
    chains.RemoveAll();
    for (tagSortBranch* chain : rising)
        chains.AddHead(chain);
}

void CObjectManager::RunBuranchSort(tagSortBranch* chain, SortBranches& chains, CList<long, long>& out) const
{
    if (!chain) return;
    ChainRun run(*chain, chains, out);
    run.Run().Sort(run.First());
    obmgr::AppendAll(out, run.Run().Output());
}

void CObjectManager::RunBuranchMaxExtend(tagSortBranch* chain, SortBranches& chains, CList<long, long>& out) const
{
    if (!chain) return;
    ChainRun run(*chain, chains, out);
    run.Run().Extend(run.First());
    obmgr::AppendAll(out, run.Run().Output());
}

void CObjectManager::RunBuranchExtendReverse(tagSortBranch* chain, SortBranches& chains, CList<long, long>& out) const
{
    if (!chain) return;
    ChainRun run(*chain, chains, out);
    run.Run().ExtendReverse(run.First());
    obmgr::AppendAll(out, run.Run().Output());
}

bool CObjectManager::RunSetSplent(tagSortBranch* chain, SortBranches& chains, CList<long, long>& done)
{
    if (!chain) return true;
    ChainRun run(*chain, chains, done);
    return MeasureLines(run.Run(), run.First(), done);
}

tagSortBranch* CObjectManager::GetBuranchPoint(long routeId, const SortBranches& chains) const
{
    for (tagSortBranch* chain : chains)
        if (chain && chain->routeIds.Find(routeId)) return chain;
    return nullptr;
}

tagSortBranch* CObjectManager::GetAndRemoveBuranchPoint(long routeId, const SortBranches& chains,
                                                        const tagSortBranch* chain, const CList<long, long>& out) const
{
    for (tagSortBranch* candidate : chains) {
        POSITION position = candidate ? candidate->routeIds.Find(routeId) : nullptr;
        if (!position) continue;
        candidate->routeIds.GetNext(position);
        const long behind = position ? candidate->routeIds.GetAt(position) : routeId;
        if (!(chain && chain->routeIds.Find(behind)) && !out.Find(behind)) return candidate;
    }
    return nullptr;
}
