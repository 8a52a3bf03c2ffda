// Records that hang on the routes, spans and nodes of a web.
#include "reference/Network.h"

namespace reference {

using namespace objectdata;

namespace {

bool IsSorted(Type type)
{
    return type == AreaInq || type == AreaOutq || type == FixInq || type == IcpInq || type == MountInq || type == Outq;
}

Records SpansOfRoutes(const Network& network, const Ids& routes)
{
    Records spans;
    for (Record* const span : network.All(Span))
        if (Contains(routes, RouteOf(*span))) spans.push_back(span);
    return spans;
}

Ids NodesOf(const Records& spans)
{
    Ids nodes;
    for (Record* const span : spans) {
        nodes.push_back(UpperNode(*span));
        nodes.push_back(LowerNode(*span));
    }
    return nodes;
}

// The other end of each crossing point that lies on one of the routes.
Ids CrossingsOn(const Network& network, const Ids& routes)
{
    Ids crossings;
    for (const Record* const point : network.All(IntPos)) {
        if (Contains(routes, point->links[0]))
            crossings.push_back(point->links[1]);
        else if (Contains(routes, point->links[1]))
            crossings.push_back(point->links[0]);
    }
    return crossings;
}

// The numbers of runoff coefficients that area records of the web name.
std::set<std::wstring> RatioNumbers(const Network& network, const Ids& routes, const Ids& spans)
{
    std::set<std::wstring> numbers;
    for (Record* const area : network.All(AreaSet))
        if (Contains(spans, OwnerOf(*area))) numbers.insert(area->Get(L"asratiosetnum"));
    for (Record* const inflow : network.All(AreaInq))
        if (Contains(routes, OwnerOf(*inflow)))
            for (const Record* const area : network.Linked(Inareaset, 0, inflow->id))
                numbers.insert(area->Get(L"iasratiosetnum"));
    for (Record* const outflow : network.All(AreaOutq))
        if (Contains(routes, OwnerOf(*outflow)))
            for (const Record* const area : network.Linked(Outareaset, 0, outflow->id))
                numbers.insert(area->Get(L"oasratiosetnum"));
    return numbers;
}

} // namespace

bool Network::GetObjectListFromWeb(Type type, int webId, Records& objects) const
{
    const Ids routes = IdsOf(RoutesOf(webId));
    const Records spans = SpansOfRoutes(*this, routes);
    const Ids spanIds = IdsOf(spans);
    const auto belongs = [&](Record& record) {
        switch (type) {
        case IcpInq: return Contains(NodesOf(spans), OwnerOf(record));
        case Secvalve: return Contains(spanIds, record.Int(L"svspid"));
        case Ohaul: return Contains(spanIds, record.Int(L"ohspid"));
        case IntPos: return Contains(routes, record.links[0]) || Contains(routes, record.links[1]);
        case Inters: return Find(Inters, record.id) == &record && Contains(CrossingsOn(*this, routes), record.id);
        case RaitoSet: return RatioNumbers(*this, routes, spanIds).contains(record.Get(L"rtnumber"));
        default: return Contains(routes, OwnerOf(record));
        }
    };
    bool any = false;
    for (Record* const record : All(type)) {
        if (!belongs(*record)) continue;
        objects.push_back(record);
        any = true;
    }
    return any;
}

bool Network::GetIdListFromWeb(Type type, int webId, Ids& ids) const
{
    Records objects;
    GetObjectListFromWeb(type, webId, objects);
    const Ids found = IsSorted(type) ? SortedByOrder((*this)[type], IdsOf(objects)) : IdsOf(objects);
    ids.insert(ids.end(), found.begin(), found.end());
    return !found.empty();
}

bool Network::GetIcpInqIdListFromRoute(int routeId, Ids& ids) const
{
    Ids nodes; // the lowest node of a route belongs to the route below
    for (Record* const span : SpansOf(routeId))
        nodes.push_back(UpperNode(*span));
    Ids found;
    for (Record* const inflow : All(IcpInq))
        if (Contains(nodes, OwnerOf(*inflow))) found.push_back(inflow->id);
    found = SortedByOrder((*this)[IcpInq], found);
    ids.insert(ids.end(), found.begin(), found.end());
    return !found.empty();
}

bool Network::GetGlChangeIdListFromSpan(int spanId, Ids& ids) const
{
    bool any = false;
    for (const Record* const change : All(GlChange)) {
        if (change->Int(L"glspanid") != spanId) continue;
        ids.push_back(change->id);
        any = true;
    }
    return any;
}

} // namespace reference
