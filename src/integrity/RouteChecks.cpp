// Checks of the ways down by connect ids: that they end, and that each route meets the one that it flows into.

#include "control/DlgProgress.h"
#include "network/IdMap.h"
#include "network/RouteChain.h"
#include "resources/ResourceOverride.h"
#include "resources/Resources.h"

#include <optional>

using obmgr::ConnectOf;
using obmgr::Id32;

namespace {

// What GetAbnormalRoute gives.
enum RouteFault : int {
    kSound = 0,
    kCancelled = 1,
    kLoopOfRoutes = -1,
    kCorrected = -2,
    kNotJoined = -3,
    kOtherWeb = -4,
};

// Whether other code changes a table while this lives.
class EditWatch final : public obmgr::ValueWatch {
public:
    explicit EditWatch(obmgr::ObjectTable& table) : m_table(table) { m_table.Watch(*this); }
    ~EditWatch() { m_table.Unwatch(*this); }
    EditWatch(const EditWatch&) = delete;
    EditWatch& operator=(const EditWatch&) = delete;

    bool HasEdits() const { return m_hasEdits; }

    void BeforeValueChange(const obmgr::ObjectTable&, const CPipeObject&) noexcept override { m_hasEdits = true; }
    void AfterValueChange(const obmgr::ObjectTable&, const CPipeObject&) noexcept override { m_hasEdits = true; }
    void Cleared() noexcept override { m_hasEdits = true; }

private:
    obmgr::ObjectTable& m_table;
    bool m_hasEdits = false;
};

// Walks down from routes and puts "connectnum" right on the way.
//
// A way that was found sound to its end need not be walked again: nothing on it is left to correct, and no route above
// it can stand on it, since then it would have no end. So each route is looked at once, however many are above it.
class RouteWalks {
public:
    RouteWalks(const CObjectManager& manager, const CObjectDataBase<CRoute>& routes,
               const CObjectDataBase<CSpan>& spans, CList<long, long>& pairs, CList<long, long>& changed)
        : m_manager(manager), m_routes(routes), m_spans(spans), m_pairs(pairs), m_changed(changed)
    {
    }

    // kSound, or the fault that ended the walk. An id without a route has no way to walk.
    RouteFault Walk(std::int32_t routeId)
    {
        std::vector<std::int32_t> way;
        obmgr::IdSet visited;
        CRoute* current = m_sound.Contains(routeId) ? nullptr : m_routes.Find(routeId);
        while (current) {
            way.push_back(current->GetId32());
            visited.Insert(current->GetId32());
            const std::int32_t connectId = ConnectOf(*current);
            if (connectId == 0) break;
            CRoute* const connect = m_routes.Find(connectId);
            const RouteFault fault = visited.Contains(connectId) ? kLoopOfRoutes : CheckJoint(*current, connect);
            if (fault != kSound) {
                m_pairs.AddTail(current->GetId32());
                m_pairs.AddTail(connectId);
                return fault;
            }
            current = m_sound.Contains(connectId) ? nullptr : connect;
        }
        for (const std::int32_t id : way)
            m_sound.Insert(id);
        return kSound;
    }

    // To be called when something else changed the design.
    void ForgetWays()
    {
        m_sound = obmgr::IdSet();
        m_ends = obmgr::IdMap<std::optional<Ends>>();
    }

private:
    struct Ends {
        long lowestSpanId;
        long uppermostSpanId;
    };

    // A route that flows into one that is not there (null) does not meet it.
    RouteFault CheckJoint(CRoute& route, const CRoute* connect)
    {
        if (!connect) return kNotJoined;
        const CString number = connect->GetSubAttribute(L"routenum");
        if (route.GetSubAttribute(L"connectnum") != number) {
            route.WriteSubAttribute(L"connectnum", number);
            m_changed.AddTail(route.GetId32());
        }
        if (obmgr::WebOf(route) != obmgr::WebOf(*connect)) return kOtherWeb;
        const std::optional<Ends> ends = EndsOf(route.GetId32());
        const std::optional<Ends> connectEnds = EndsOf(connect->GetId32());
        long below = 0;
        const bool isJoined = ends && connectEnds && m_manager.GetLowerSpan(ends->lowestSpanId, below) &&
                              below == connectEnds->uppermostSpanId;
        return isJoined ? kSound : kNotJoined;
    }

    // The ends of GetSortSpanInRoute, lowest first; none when that fails. Kept, as many routes may flow into one.
    std::optional<Ends> EndsOf(std::int32_t routeId)
    {
        if (const std::optional<Ends>* const known = m_ends.Find(routeId)) return *known;
        const std::vector<CSpan*> walk = obmgr::WalkUp(obmgr::LinkedTo(m_spans, obmgr::kRouteOfSpan, routeId));
        std::optional<Ends> ends;
        if (!walk.empty()) ends = Ends{walk.front()->GetId32(), walk.back()->GetId32()};
        return m_ends[routeId] = ends;
    }

    const CObjectManager& m_manager;
    const CObjectDataBase<CRoute>& m_routes;
    const CObjectDataBase<CSpan>& m_spans;
    CList<long, long>& m_pairs;
    CList<long, long>& m_changed;
    obmgr::IdSet m_sound; // routes whose whole way down was found sound
    obmgr::IdMap<std::optional<Ends>> m_ends;
};

} // namespace

bool CObjectManager::CheckLoopRoute(long routeId) const
{
    const CRoute* route = m_Route.Find(routeId);
    if (!route) return false;
    obmgr::IdSet visited;
    // A connect id without a route leads no further.
    for (; route; route = m_Route.Find(ConnectOf(*route))) {
        visited.Insert(route->GetId32());
        if (ConnectOf(*route) == 0) break;
        if (visited.Contains(ConnectOf(*route))) return false;
    }
    return true;
}

int CObjectManager::GetAbnormalRoute(const CList<long, long>& routeIds, CList<long, long>& pairs,
                                     CList<long, long>& changed)
{
    const CObmgerResourceOverride texts;
    const std::vector<long> routes(routeIds.begin(), routeIds.end()); // the caller may hand in one list twice
    pairs.RemoveAll();
    changed.RemoveAll();
    CDlgProgress progress;
    progress.Create();
    progress.SetRange(0, static_cast<int>(routes.size()));
    progress.SetWindowText(obmgr::ResourceText(IDS_CHECK_ROUTE_TITLE));
    RouteWalks walks(*this, m_Route, m_Span, pairs, changed);
    for (std::size_t i = 0; i < routes.size(); ++i) {
        if (const RouteFault fault = walks.Walk(Id32(routes[i])); fault != kSound) return fault;
        // The dialog lets other code run.
        const EditWatch routeWatch(m_Route.Untyped());
        const EditWatch spanWatch(m_Span.Untyped());
        progress.SetPos(static_cast<int>(i));
        progress.PeekAndPump(1);
        const bool isContinue = progress.IsContinue();
        if (routeWatch.HasEdits() || spanWatch.HasEdits()) walks.ForgetWays();
        if (!isContinue) return kCancelled;
    }
    return changed.IsEmpty() ? kSound : kCorrected;
}
