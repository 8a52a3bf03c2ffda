// Orders of a set of routes that follow the tree from the longest line outward.

#include "network/BranchRun.h"
#include "network/MiddleQuicksort.h"
#include "network/RouteChain.h"

#include <optional>
#include <utility>

using obmgr::BranchRun;
using obmgr::Id32;

namespace {

std::vector<std::int32_t> IdsOf(const CList<long, long>& list)
{
    std::vector<std::int32_t> ids;
    ids.reserve(static_cast<std::size_t>(list.GetCount()));
    for (const long id : list)
        ids.push_back(Id32(id));
    return ids;
}

// A run over chains of a caller, which loses those that the run takes.
class ChainRun {
public:
    ChainRun(tagSortBranch& first, CObjectManager::SortBranches& chains, const CList<long, long>& listed)
        : m_chains(chains)
    {
        std::vector<BranchRun::Line> lines;
        for (POSITION position = chains.GetHeadPosition(); position;) {
            const POSITION here = position;
            const tagSortBranch* const chain = chains.GetNext(position);
            if (chain == &first && m_first == BranchRun::kNone) m_first = lines.size();
            m_positions.push_back(here);
            lines.push_back(chain ? IdsOf(chain->routeIds) : BranchRun::Line());
        }
        if (m_first == BranchRun::kNone) {
            m_first = lines.size();
            lines.push_back(IdsOf(first.routeIds));
            m_isFirstApart = true;
        }
        m_run.emplace(std::move(lines), IdsOf(listed));
        if (m_isFirstApart) m_run->Hide(m_first);
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
    bool m_isFirstApart = false;
    std::optional<BranchRun> m_run;
};

} // namespace

// The lines of the set, the longest first. False for an empty set and when a line has a route without spans.
bool CObjectManager::LinesOf(const CList<long, long>& set, bool fromBelow,
                             std::vector<std::vector<std::int32_t>>& lines) const
{
    CList<long, long> heads;
    if (!GetUpperRouteId(set, heads)) return false;
    if (heads.IsEmpty()) return true; // a ring has no head, and so no line

    struct Member {
        std::int32_t below = 0; // 0 where the set ends
        double length = 0.0;
        bool hasSpans = false;
    };
    const obmgr::IdSet inSet = obmgr::IdSet::Of(set);
    obmgr::IdMap<Member> members(static_cast<std::size_t>(set.GetCount()));
    for (const long id : set) {
        Member& member = members[Id32(id)];
        member.hasSpans = GetRouteLength(id, member.length);
        const CRoute* const route = m_Route.Find(id);
        if (route && inSet.Contains(obmgr::ConnectOf(*route))) member.below = obmgr::ConnectOf(*route);
    }

    std::vector<std::pair<double, std::size_t>> byLength;
    std::vector<BranchRun::Line> found;
    for (const long head : heads) {
        BranchRun::Line line = obmgr::FollowLine(Id32(head), [&](std::int32_t id) { return members.Find(id)->below; });
        if (fromBelow) std::reverse(line.begin(), line.end());
        double length = 0.0;
        for (const std::int32_t id : line) {
            const Member& member = *members.Find(id);
            if (!member.hasSpans) return false;
            length += member.length;
        }
        byLength.emplace_back(length, found.size());
        found.push_back(std::move(line));
    }
    obmgr::MiddleQuicksort(
        0, static_cast<long>(byLength.size()) - 1, [&](long i) { return byLength[static_cast<std::size_t>(i)].first; },
        [&](long i, long j) {
            std::swap(byLength[static_cast<std::size_t>(i)], byLength[static_cast<std::size_t>(j)]);
        });
    for (auto entry = byLength.rbegin(); entry != byLength.rend(); ++entry)
        lines.push_back(std::move(found[entry->second]));
    return true;
}

bool CObjectManager::SortByBranches(const CList<long, long>& in, CList<long, long>& out, bool fromBelow,
                                    void (BranchRun::*take)(std::size_t)) const
{
    std::vector<BranchRun::Line> lines;
    if (!LinesOf(in, fromBelow, lines)) return false;
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
    std::vector<BranchRun::Line> lines;
    if (!GetRouteIdList(webId, routes) || !LinesOf(routes, false, lines)) return false;
    if (lines.empty()) return false; // rings only
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
