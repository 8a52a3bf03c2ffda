// The steps in which the town becomes a design. Each stands in a source of its own, best read in this order.
#pragma once

#include "Plan.h"

#include "store/ObjectManager.h"

namespace town {

// The form of the files: UTF-16.
inline constexpr int kDataVersion = 14;

// The names of the calculation methods that the nets are calculated by.
inline constexpr const wchar_t* kSanitaryMethod = L"汚水面積原単位（瑞穂）";
inline constexpr const wchar_t* kStormMethod = L"合理式（5年確率）";
inline constexpr const wchar_t* kVacuumMethod = L"真空汚水原単位";

inline const wchar_t* MethodOf(int disposalType)
{
    return disposalType == 0 ? kSanitaryMethod : disposalType == 2 ? kStormMethod : kVacuumMethod;
}

// Project, manhole classes, pipe sections, methods, works: what records name instead of describing it.
void MakeLibrary(CObjectManager& design);
// Webs, routes, spans, nodes. Writes the ids that the records got into the plan. False when a step fails.
bool MakeNetwork(CObjectManager& design, Plan& plan);
// Inflows and outflows.
void MakeFlows(CObjectManager& design, const Plan& plan);
// Ground line changes, house connections, crossings, valves.
void MakeAlongside(CObjectManager& design, const Plan& plan);
// Drawing formats, sheet layouts, work areas.
void MakeDrawings(CObjectManager& design, const Plan& plan);
// The map beneath the plan: a file of its own, made under the scratch path, read into the design and removed.
bool AddMap(CObjectManager& design, const Plan& plan, const CString& scratchPath, CString& error);

} // namespace town
