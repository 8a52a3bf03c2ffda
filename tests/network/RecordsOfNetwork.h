// Records that hang on the nodes, spans, routes and webs of a small network, made in sets and counted.
#pragma once

#include "support/FamilyTable.h"
#include "support/Networks.h"

namespace support {

// One record of each kind that hangs on a span.
inline void addSpanRecords(Network& net, const std::string& span)
{
    const std::wstring id = std::to_wstring(net[span]);
    net.manager.CreateAreaSet(net[span], {});
    net.manager.CreateAreatset(net[span], {});
    net.manager.CreateSpdxfin(0, values({{L"sdispanid", id.c_str()}}));
    net.manager.CreateDrawbelttx(0, values({{L"dbtspanid", id.c_str()}}));
}

inline void addNodeRecords(Network& net, const std::string& node)
{
    net.manager.CreateNodeunit(net[node], {});
    net.manager.CreateIcpInq(net[node], {});
}

// One record of each kind that hangs on a route, a crossing with it and an area record with each area flow.
inline void addRouteRecords(Network& net, const std::string& route)
{
    const long id = net[route];
    CObjectManager& manager = net.manager;
    manager.CreateIntPos(id, manager.CreateInters({})->GetId32(), {});
    manager.CreateGlChange(id, {});
    manager.CreateLateral(id, {});
    manager.CreateVjoint(id, {});
    manager.CreateInareaset(manager.CreateAreaInq(id, {})->GetId32(), {});
    manager.CreateOutareaset(manager.CreateAreaOutq(id, {})->GetId32(), {});
    manager.CreateFixInq(id, {});
    manager.CreateMountInq(id, {});
    manager.CreateOutq(id, {});
}

// One record of each kind that belongs to a web, beside the three settings that every web is made with.
inline void addWebRecords(Network& net, const std::string& web)
{
    net.manager.CreateDivideSpanRec(net[web], {});
    net.manager.CreateSubSecRec(net[web], {});
}

// The class name without its leading C.
inline std::string typeName(const Family& family)
{
    return family.name + 1;
}

// The record types of which there are any, with their numbers, in type order: "AreaSet 2, GlChange 1". Without nodes,
// spans, routes, webs and projects.
inline std::string recordCounts(const Network& net)
{
    std::string result;
    for (const Family& family : families()) {
        if (family.type <= objectdata::Web) continue;
        const std::size_t count = net.manager.TableOf(family.type).Count();
        if (count == 0) continue;
        result += (result.empty() ? "" : ", ") + typeName(family) + ' ' + std::to_string(count);
    }
    return result;
}

} // namespace support
