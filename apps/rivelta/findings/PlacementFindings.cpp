// Records along a route that lie beyond it, and those whose place or level is not what was entered.
#include "Objects.h"
#include "Places.h"
#include "common/Text2Number.h"
#include "findings/Finders.h"

namespace obmgr::tool {

namespace {

// Where the place stands that was entered.
struct EnteredKeys {
    OBJECTTYPE type;
    std::string_view number;   // of the span in its route, from 1; 0 for a distance along the whole route
    std::string_view distance; // empty for records of a whole span
    std::string_view span;     // worked out
};

constexpr EnteredKeys kEntered[] = {
    {objectdata::GlChange, "glspannum", "glindist", "glspanid"},
    {objectdata::IntPos, "ipspannum", "ipindist", "ipspanid"},
    {objectdata::Lateral, "laspannum", "laindist", "laspanid"},
    {objectdata::Vjoint, "vjspnum", "vjindist", "vjspid"},
    {objectdata::AreaInq, "arspannum", "", ""},
    {objectdata::AreaOutq, "aospannum", "", ""},
    {objectdata::FixInq, "fxspannum", "", ""},
    {objectdata::MountInq, "mtspannum", "", ""},
    {objectdata::Outq, "oqspannum", "", ""},
};

std::string outside(std::string_view key, double distance, double length)
{
    return fmt::format("{}={:.10g}; 0..{:.10g}", key, distance, length);
}

// The route that the record lies along, null when there is none.
const CRoute* routeOf(const CObjectManager& manager, const CPipeObject& record)
{
    for (const std::int32_t id : record.Links())
        if (const CRoute* const route = manager.GetRouteDb().Find(id)) return route;
    return nullptr;
}

void findEntered(const FindContext& context, const CPipeObject& record, const EnteredKeys& keys, Findings& findings)
{
    const CRoute* const route = routeOf(context.manager, record);
    const RouteShape* const shape = route ? context.net.ShapeOf(route->GetId32()) : nullptr;
    if (!shape || !shape->isChain) return; // the route is what is wrong
    const long number = ToLong(ValueOf(record, keys.number));
    const auto count = static_cast<long>(shape->spans.size());
    if (number < 0 || number > count) {
        findings.Add(FindingKind::NumberOffRoute, record,
                     fmt::format("{}={}; route {}: {} x span", keys.number, number, route->GetId32(), count));
        return;
    }
    if (keys.distance.empty()) return;
    const double length = number == 0 ? shape->length : LengthOf(*shape->spans[static_cast<std::size_t>(number - 1)]);
    const double distance = ToDouble(ValueOf(record, keys.distance));
    if (distance < 0.0 || distance > length)
        findings.Add(FindingKind::DistanceOffRoute, record, outside(keys.distance, distance, length));
}

void findOnSpan(const FindContext& context, const ObjectTable& table, std::string_view spanKey,
                std::string_view distanceKey, Findings& findings)
{
    table.ForEach([&](const CPipeObject& record) {
        const CSpan* const span = context.manager.GetSpanDb().Find(ToLong(ValueOf(record, spanKey)));
        const double distance = ToDouble(ValueOf(record, distanceKey));
        if (span && (distance < 0.0 || distance > LengthOf(*span)))
            findings.Add(FindingKind::DistanceOffRoute, record, outside(distanceKey, distance, LengthOf(*span)));
    });
}

// Whether the record names a span that is not there: that is told of as a reference.
bool hasDanglingSpan(const CObjectManager& manager, const CPipeObject& record)
{
    for (const EnteredKeys& keys : kEntered)
        if (keys.type == record.GetObjectType() && !keys.span.empty()) {
            const std::string value = ValueOf(record, keys.span);
            return !value.empty() && value != "0" && !manager.GetSpanDb().Find(ToLong(value));
        }
    return false;
}

} // namespace

void FindOffRoute(const FindContext& context, Findings& findings)
{
    for (const EnteredKeys& keys : kEntered)
        context.manager.TableOf(keys.type).ForEach(
            [&](const CPipeObject& record) { findEntered(context, record, keys, findings); });
    findOnSpan(context, context.manager.GetSecvalveDb().Untyped(), "svspid", "svdist", findings);
    findOnSpan(context, context.manager.GetOhaulDb().Untyped(), "ohspid", "ohdist", findings);
}

void FindStalePlaces(const FindContext& context, Findings& findings)
{
    const Placement trial = PlaceRecords(context.manager, context.webs, Keep::No);
    for (std::size_t i = 0; i < trial.moves.size();) {
        const CPipeObject& record = *context.manager.TableOf(trial.moves[i].type).Find(trial.moves[i].id);
        std::vector<std::string> changes;
        for (; i < trial.moves.size() && trial.moves[i].type == record.GetObjectType() &&
               trial.moves[i].id == record.GetId32();
             ++i)
            changes.push_back(trial.moves[i].Shown());
        if (!hasDanglingSpan(context.manager, record)) findings.Add(FindingKind::PlaceStale, record, Listed(changes));
    }
}

} // namespace obmgr::tool
