// Placing the records that lie along a route. What the kinds have in common is the walk; where they differ is a table.

#include "integrity/Placement.h"

namespace obmgr {

namespace {

// How far down the last span a record stands that was entered, from the upper end, at the very end of the route.
enum class AtRouteEnd { Zero, SpanLength };

struct PlacementRow {
    OBJECTTYPE type;
    bool (CObjectManager::*idsOfRoute)(long, CList<long, long>&) const;
    const wchar_t* spanNumber; // entered: from 1 in route order, 0 for a distance along the whole route
    const wchar_t* entered;    // entered: the distance
    const wchar_t* direction;  // entered: 0 from the upper end; null for kinds that know no other
    const wchar_t* span;       // derived
    const wchar_t* distance;   // derived, from the upper end of the span
    AtRouteEnd atRouteEnd;
    bool levelsMissed = false; // whether a record that keeps its old place gets its level anew
};

// In the order of PlacedKind.
constexpr PlacementRow kPlacementRows[] = {
    {objectdata::GlChange, &CObjectManager::GetGlChangeIdList, L"glspannum", L"glindist", L"gldistdir", L"glspanid",
     L"gldist", AtRouteEnd::Zero, true},
    {objectdata::IntPos, &CObjectManager::GetIntPosIdList, L"ipspannum", L"ipindist", L"ipdistdir", L"ipspanid",
     L"ipdist", AtRouteEnd::SpanLength},
    {objectdata::Lateral, &CObjectManager::GetLateralIdList, L"laspannum", L"laindist", L"ladistdir", L"laspanid",
     L"ladist", AtRouteEnd::SpanLength},
    {objectdata::Vjoint, &CObjectManager::GetVjointIdList, L"vjspnum", L"vjindist", nullptr, L"vjspid", L"vjdist",
     AtRouteEnd::SpanLength},
};

struct Place {
    const CSpan* span = nullptr; // null off the route
    double distance = 0.0;
    bool isMissed = false; // neither on a span nor off the route
};

// No number and infinity are off the route.
bool IsWithin(double distance, double length)
{
    return distance <= length;
}

Place AlongRoute(const RouteLine& line, double distance, bool isFromBelow, AtRouteEnd atRouteEnd)
{
    if (!IsWithin(distance, line.length)) return {};
    double before = 0.0;
    for (std::size_t step = 0; step < line.spans.size(); ++step) {
        const std::size_t i = isFromBelow ? line.spans.size() - 1 - step : step;
        const double after = before + line.lengths[i];
        if (after > distance)
            return {line.spans[i], isFromBelow ? line.lengths[i] - (distance - before) : distance - before};
        before = after;
    }
    // The whole length. Upwards the sum may have missed it by a rounding error: such a record keeps the place that it
    // had. Settled so.
    if (before != line.length) return {nullptr, 0.0, true};
    if (isFromBelow) return {line.spans.front(), 0.0};
    return {line.spans.back(), atRouteEnd == AtRouteEnd::Zero ? 0.0 : line.lengths.back()};
}

Place OnSpan(const RouteLine& line, int number, double distance, bool isFromBelow)
{
    if (number < 0) AfxThrowInvalidArgException();
    const auto i = static_cast<std::size_t>(number) - 1;
    if (i >= line.spans.size() || !IsWithin(distance, line.lengths[i])) return {};
    return {line.spans[i], isFromBelow ? line.lengths[i] - distance : distance};
}

Place PlaceOf(const CPipeObject& record, const PlacementRow& row, const RouteLine& line)
{
    const int number = record.GetSubAttributeInt(row.spanNumber, 0);
    const double distance = record.GetSubAttributeDouble(row.entered, 0.0);
    const bool isFromBelow = row.direction && record.GetSubAttributeInt(row.direction, 0) != 0;
    return number == 0 ? AlongRoute(line, distance, isFromBelow, row.atRouteEnd)
                       : OnSpan(line, number, distance, isFromBelow);
}

} // namespace

RouteLine LineOfRoute(const CObjectManager& manager, long routeId)
{
    CTypedPtrList<CObList, CSpan*> spans;
    manager.GetSortSpanInRoute(routeId, spans, false);
    RouteLine line;
    for (CSpan* span : spans) {
        line.spans.push_back(span);
        line.lengths.push_back(span->GetSubAttributeDouble(L"splength", 0.0));
        line.length += line.lengths.back();
    }
    return line;
}

bool PlaceRecords(CObjectManager& manager, long webId, PlacedKind kind, FunctionRef<void(CPipeObject&)> onPlaced)
{
    const PlacementRow& row = kPlacementRows[static_cast<std::size_t>(kind)];
    CList<long, long> routeIds;
    if (!manager.GetRouteIdList(webId, routeIds)) return false;
    for (const long routeId : routeIds) {
        CList<long, long> ids;
        if (!(manager.*row.idsOfRoute)(routeId, ids)) continue;
        const RouteLine line = LineOfRoute(manager, routeId);
        if (line.spans.empty()) return false;
        for (const long id : ids) {
            CPipeObject* const record = manager.TableOf(row.type).Find(id);
            const Place place = PlaceOf(*record, row, line);
            if (!place.isMissed) record->WriteSubAttributeInt(row.span, place.span ? place.span->GetId32() : 0);
            if (place.span) record->WriteSubAttributeDouble(row.distance, place.distance);
            if (place.span || (place.isMissed && row.levelsMissed)) onPlaced(*record);
        }
    }
    return true;
}

} // namespace obmgr

bool CObjectManager::update_IntPos(long webId, bool setLevel)
{
    return obmgr::PlaceRecords(*this, webId, obmgr::PlacedKind::CrossingPoint, [&](const CPipeObject& point) {
        if (setLevel) update_IntPosLevel(point.GetId32());
    });
}

bool CObjectManager::update_Lateral(long webId, bool setLevel)
{
    return obmgr::PlaceRecords(*this, webId, obmgr::PlacedKind::Lateral, [&](const CPipeObject& lateral) {
        if (setLevel) update_LateralLevel(lateral.GetId32());
    });
}

bool CObjectManager::update_Vjoint(long webId, bool)
{
    return obmgr::PlaceRecords(*this, webId, obmgr::PlacedKind::VacuumJoint, [](const CPipeObject&) {});
}
