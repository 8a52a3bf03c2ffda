// Where a record lies on its route: the one walk behind update_GlChange, update_IntPos, update_Lateral and
// update_Vjoint. For the sources of this folder; not installed.
#pragma once

#include "common/FunctionRef.h"
#include "store/ObjectManager.h"

#include <vector>

namespace obmgr {

// The spans of a route from the top down, with their lengths.
struct RouteLine {
    std::vector<CSpan*> spans;
    std::vector<double> lengths;
    double length = 0.0; // the sum from the top down
};
// Without spans when they have no order.
RouteLine LineOfRoute(const CObjectManager& manager, long routeId);

enum class PlacedKind { GroundChange, CrossingPoint, Lateral, VacuumJoint };

// Writes span and distance of the records on the routes of a web, by what was entered; `onPlaced` then gets each that
// was placed, and each ground change that is not off its route. False without a route, and at once at a route that has
// records but no order of spans. Raises CInvalidArgException for a negative span number.
bool PlaceRecords(CObjectManager& manager, long webId, PlacedKind kind, FunctionRef<void(CPipeObject&)> onPlaced);

} // namespace obmgr
