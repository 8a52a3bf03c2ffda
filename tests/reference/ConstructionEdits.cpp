// Making and reshaping the network. Nothing is undone: a failing edit leaves the steps before the failure.

#include "reference/NetworkEdits.h"

namespace reference {
namespace {

// "calcstylename" becomes the project's default method for the disposal type of the web.
void WriteDefaultStyle(Network& net, Record& span, int webId)
{
    static constexpr const wchar_t* kKeys[] = {L"defsv",    L"defrural", L"defqr",
                                               L"defcombi", L"defsvvac", L"defruralvac"};
    const Records projects = net.All(objectdata::Project);
    const Record* const web = net.Web(webId);
    if (!web || projects.empty()) return;
    const int kind = web->links[0];
    span.Set(L"calcstylename", kind < 0 || kind > 5 ? L"" : projects.front()->Get(kKeys[kind]));
}

int WebOfRoute(Network& net, int routeId)
{
    Record* const route = net.Route(routeId);
    return route ? WebOf(*route) : 0;
}

bool Tell(const Record* made, int* newId)
{
    if (made && newId) *newId = made->id;
    return made != nullptr;
}

// `count` spans below `spanId`, one after the other.
bool AppendBelow(Network& net, int spanId, unsigned count, Ids& spanIds)
{
    for (unsigned i = 0; i < count; ++i) {
        int made = 0;
        if (!CreateSpanNode(net, spanId, {}, &made, true)) return false;
        spanIds.push_back(made);
        spanId = made;
    }
    return true;
}

} // namespace

bool CreateNode(Network& net, const Values& values, int* newId)
{
    return Tell(net.Create(objectdata::Node, {}, values), newId);
}

bool CreateRoute(Network& net, int webId, int connectId, const Values& values, int* newId)
{
    return Tell(net.Create(objectdata::Route, {webId, connectId}, values), newId);
}

bool CreateWeb(Network& net, int disposalType, const Values& values, int* newId)
{
    Record* const web = net.Create(objectdata::Web, {disposalType}, values);
    if (!web) return false;
    for (const Type type : {objectdata::Calcfig, objectdata::Drawfig, objectdata::Sheetfig})
        if (!net.Create(type, {web->id})) return false;
    return Tell(web, newId);
}

bool CreateSpan(Network& net, int upperNodeId, int lowerNodeId, int routeId, const Values& values, int* newId)
{
    Record* const span = net.Create(objectdata::Span, {upperNodeId, lowerNodeId, routeId}, values);
    if (!Tell(span, newId)) return false;
    return net.Create(objectdata::AreaSet, {span->id}) != nullptr;
}

bool CreateSpanNoarea(Network& net, int upperNodeId, int lowerNodeId, int routeId, const Values& values, int* newId)
{
    return Tell(net.Create(objectdata::Span, {upperNodeId, lowerNodeId, routeId}, values), newId);
}

bool CreateSpanNode(Network& net, int spanId, const Values& values, int* newSpanId, bool below)
{
    Record* const span = net.Span(spanId);
    if (!span) return false;
    int node = 0;
    if (!CreateNode(net, {}, &node)) return false;
    int lower = 0;
    if (below) {
        lower = LowerNode(*span);
        LowerNode(*span) = node;
    } else {
        lower = UpperNode(*span);
    }
    return CreateSpan(net, node, lower, RouteOf(*span), values, newSpanId);
}

bool CreateSpanNode(Network& net, int spanId, const Values& values, int* newSpanId, int* newNodeId, bool below)
{
    Record* const span = net.Span(spanId);
    if (!span) return false;
    const int web = WebOfRoute(net, RouteOf(*span));
    const int count = net.GetSpanNumInWeb(web);
    int node = 0;
    if (!CreateNode(net, {}, &node)) return false;
    int lower = 0;
    if (below) {
        lower = LowerNode(*span);
        LowerNode(*span) = node;
    } else {
        lower = UpperNode(*span);
    }
    net.Node(node)->Set(L"order", IntText(count + 1));
    if (newNodeId) *newNodeId = node;
    int made = 0;
    const bool done = CreateSpan(net, node, lower, RouteOf(*span), values, &made);
    if (made != 0 && newSpanId) *newSpanId = made;
    if (!done) return false;
    Record& newSpan = *net.Span(made);
    newSpan.Set(L"order", IntText(count + 1));
    WriteDefaultStyle(net, newSpan, web);
    return true;
}

Record* CreateRouteSpanNode(Network& net, int webId, int connectId, const Values& values, Record*& span)
{
    if (!net.Web(webId)) return nullptr;
    const int count = net.GetSpanNumInWeb(webId);
    int upper = 0;
    int newSpan = 0;
    if (connectId != 0) {
        int top = 0;
        int topSpan = 0;
        if (!net.GetMostUpperNodeId(connectId, top)) return nullptr;
        if (!net.GetSpanConnectUpperNode(top, connectId, topSpan)) return nullptr;
        if (!CreateSpanNode(net, topSpan, {}, &newSpan, &upper, false)) return nullptr;
    } else {
        int flowEnd = 0;
        if (!net.GetFlowEndNodeId(webId, flowEnd) && !CreateNode(net, {}, &flowEnd)) return nullptr;
        if (!CreateNode(net, {}, &upper)) return nullptr;
        if (!CreateSpan(net, upper, flowEnd, 0, {}, &newSpan)) return nullptr;
    }
    net.Node(upper)->Set(L"order", IntText(count + 1));
    Record* const route = net.Create(objectdata::Route, {webId, connectId}, values);
    if (!route) return nullptr;
    span = net.Span(newSpan);
    RouteOf(*span) = route->id;
    span->Set(L"order", IntText(count + 1));
    span->Set(L"spno", L"1");
    WriteDefaultStyle(net, *span, webId);
    return route;
}

bool CreateMultiSpanNode(Network& net, int routeId, const Values& values, int count, Ids& spanIds, Ids& nodeIds)
{
    int current = 0;
    if (!net.GetLastSpanFromRoute(routeId, current)) return false;
    int number = net.Span(current)->Int(L"spno");
    const int web = WebOfRoute(net, routeId);
    int order = net.GetSpanNumInWeb(web);
    for (int i = 0; i < count; ++i) {
        int newSpan = 0;
        int newNode = 0;
        if (!CreateSpanNode(net, current, values, &newSpan, &newNode, true)) return false;
        spanIds.push_back(newSpan);
        nodeIds.push_back(newNode);
        number = static_cast<int>(static_cast<unsigned>(number) + 1); // the number in the data may be the greatest
        ++order;
        Record& span = *net.Span(newSpan);
        span.Set(L"order", IntText(order));
        WriteDefaultStyle(net, span, web);
        span.Set(L"spno", IntText(number));
        net.Node(newNode)->Set(L"order", IntText(order));
        current = newSpan;
    }
    return true;
}

bool AddSpan(Network& net, int routeId, unsigned count, Ids& spanIds)
{
    int lowest = 0;
    int lowestNode = 0;
    if (!net.GetLastSpanFromRoute(routeId, lowest)) return false;
    if (!net.GetMostLowerNodeId(routeId, lowestNode)) return false;
    return AppendBelow(net, lowest, count, spanIds);
}

bool InsertSpan(Network& net, int, int spanId, unsigned count, Ids& spanIds)
{
    return AppendBelow(net, spanId, count, spanIds);
}

bool DivideSpan(Network& net, int spanId, unsigned parts, Ids& spanIds)
{
    if (parts == 0 || !net.Span(spanId)) return false;
    spanIds.push_back(spanId);
    for (unsigned i = 1; i < parts; ++i) {
        int node = 0;
        if (!CreateNode(net, {{L"planesetflg", L"0"}}, &node)) return false;
        Record& span = *net.Span(spanId);
        const int lower = LowerNode(span);
        LowerNode(span) = node;
        int made = 0;
        if (!CreateSpan(net, node, lower, RouteOf(span), {}, &made)) return false;
        spanIds.push_back(made);
        spanId = made;
    }
    return true;
}

bool RemoveSpan(Network& net, int routeId, unsigned count, Records& removed)
{
    Records spans;
    if (!net.GetSortSpanInRoute(routeId, spans, true)) return false;
    if (spans.size() <= count) return false;
    const int lowest = LowerNode(*spans.front());
    for (unsigned i = 0; i < count; ++i) {
        // A broken chain has a span twice, which then is gone already.
        if (!net.Span(spans[i]->id)) return false;
        DeleteNodeObject(net, UpperNode(*spans[i])); // a dangling node id does not keep the span
        net.Remove(objectdata::Span, spans[i]->id);
        removed.push_back(spans[i]);
    }
    if (!net.Span(spans[count]->id)) return false;
    LowerNode(*spans[count]) = lowest;
    return true;
}

} // namespace reference
