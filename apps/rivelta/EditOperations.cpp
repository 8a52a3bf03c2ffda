#include "EditOperations.h"

#include "Objects.h"

#include <algorithm>

namespace obmgr::tool {

namespace {

using Ids = CList<long, long>;
constexpr bool kList = true;
constexpr bool kOptional = false;

std::string done()
{
    return {};
}

std::string doneIf(bool isDone)
{
    return isDone ? std::string() : TextOf(Text::WhyRefused);
}

long webOf(const CObjectManager& design, long routeId)
{
    return design.GetRouteDb().Find(routeId)->Links()[0];
}

long connectOf(const CObjectManager& design, long routeId)
{
    return design.GetRouteDb().Find(routeId)->Links()[1];
}

// Why a route has no upper and lower end.
std::string refuseWithoutEnds(const CObjectManager& design, long routeId)
{
    if (design.GetSpanNumInRoute(routeId) == 0) return Say(Text::WhyNoSpans, routeId);
    long node = 0;
    const bool hasEnds = design.GetMostLowerNodeId(routeId, node) && design.GetMostUpperNodeId(routeId, node);
    return hasEnds ? std::string() : Say(Text::WhyRingOfSpans, routeId);
}

// Why no route of the web can flow into the route.
std::string refuseConnect(const CObjectManager& design, long webId, long connectId)
{
    if (connectId == 0) return {};
    if (webOf(design, connectId) != webId) return Say(Text::WhyOtherWeb, connectId);
    return refuseWithoutEnds(design, connectId);
}

// The route and those below it, as far as they belong to its web.
std::vector<long> wayDown(const CObjectManager& design, long routeId)
{
    Ids routeIds;
    design.GetRouteIdList(webOf(design, routeId), routeIds);
    Ids below;
    design.GetConnectRouteLowerAll(routeId, routeIds, below);
    std::vector<long> way = {routeId};
    way.insert(way.end(), below.begin(), below.end());
    return way;
}

// Why the route cannot be copied by its spans.
std::string refuseCopy(const CObjectManager& design, long routeId)
{
    if (std::string why = refuseWithoutEnds(design, routeId); !why.empty()) return why;
    Ids spanIds;
    design.GetSpanIdList(routeId, spanIds);
    for (const long spanId : spanIds)
        if (Ids areaIds; !design.GetAreaSetIdList(spanId, areaIds)) return Say(Text::WhyNoArea, spanId);
    return {};
}

std::string createProject(Step& step)
{
    long id = 0;
    if (step.Design().GetProjectId(id)) return Say(Text::WhyProjectExists, id);
    if (!step.Design().CreateProject(step.Values(), &id)) return TextOf(Text::WhyRefused);
    step.Give("project", id);
    return done();
}

std::string createWeb(Step& step)
{
    long id = 0;
    if (!step.Design().CreateWeb(step.Count("disposaltype"), step.Values(), &id)) return TextOf(Text::WhyRefused);
    step.Give("web", id);
    return done();
}

std::string createRoute(Step& step)
{
    const long web = step.Id("web");
    const long connect = step.Id("connect");
    if (std::string why = refuseConnect(step.Design(), web, connect); !why.empty()) return why;
    CSpan* span = nullptr;
    const CRoute* const route = step.Design().CreateRouteSpanNode(web, connect, step.Values(), span);
    if (!route) return TextOf(Text::WhyRefused);
    step.Give("route", route->GetId32());
    step.Give("span", span->GetId32());
    step.Give("node", span->Links()[0]);
    return done();
}

std::string createSpanNode(Step& step)
{
    long span = 0;
    long node = 0;
    if (!step.Design().CreateSpanNode(step.Id("span"), step.Values(), &span, &node, step.Flag("below", true)))
        return TextOf(Text::WhyRefused);
    step.Give("span", span);
    step.Give("node", node);
    return done();
}

std::string addSpans(Step& step)
{
    const long route = step.Id("route");
    if (std::string why = refuseWithoutEnds(step.Design(), route); !why.empty()) return why;
    Ids spans;
    if (!step.Design().AddSpan(route, static_cast<unsigned>(step.Count("count")), spans))
        return TextOf(Text::WhyRefused);
    step.Give("spans", spans);
    return done();
}

std::string createSpans(Step& step)
{
    const long route = step.Id("route");
    if (std::string why = refuseWithoutEnds(step.Design(), route); !why.empty()) return why;
    Ids spans;
    Ids nodes;
    if (!step.Design().CreateMultiSpanNode(route, step.Values(), step.Count("count"), spans, nodes))
        return TextOf(Text::WhyRefused);
    step.Give("spans", spans);
    step.Give("nodes", nodes);
    return done();
}

std::string insertSpans(Step& step)
{
    const long span = step.Id("span");
    const long route = step.Design().GetSpanDb().Find(span)->Links()[2];
    Ids spans;
    if (!step.Design().InsertSpan(route, span, static_cast<unsigned>(step.Count("count")), spans))
        return TextOf(Text::WhyRefused);
    step.Give("spans", spans);
    return done();
}

std::string divideSpan(Step& step)
{
    Ids spans;
    if (!step.Design().DivideSpan(step.Id("span"), static_cast<unsigned>(step.Count("parts")), spans))
        return TextOf(Text::WhyRefused);
    step.Give("spans", spans);
    return done();
}

std::string removeSpans(Step& step)
{
    const long route = step.Id("route");
    if (std::string why = refuseWithoutEnds(step.Design(), route); !why.empty()) return why;
    const int present = step.Design().GetSpanNumInRoute(route);
    if (step.Count("count") >= present) return Say(Text::WhyFewSpans, route, present);
    return doneIf(step.Design().RemoveSpan(route, static_cast<unsigned>(step.Count("count"))));
}

std::string setValues(Step& step)
{
    const OBJECTTYPE type = FindObjects(step.Design(), step.Id("object")).front()->GetObjectType();
    CPipeObject& object = *step.Design().TableOf(type).Find(step.Id("object"));
    CMapStringToString values;
    object.GetSubAttribute(values);
    for (const auto& [key, text] : step.Changes())
        if (text)
            values.SetAt(FromUtf8(key), FromUtf8(*text));
        else
            values.RemoveKey(FromUtf8(key));
    object.SetSubAttribute(values);
    return done();
}

std::string deleteSpan(Step& step)
{
    return doneIf(step.Design().DeleteSpanObject(step.Id("span"), step.Flag("leave_route", false)));
}

std::string deleteSpanOnly(Step& step)
{
    return doneIf(step.Design().DeleteSpanObjectOnly(step.Id("span")));
}

std::string refuseWithoutSpans(const CObjectManager& design, long routeId)
{
    return design.GetSpanNumInRoute(routeId) == 0 ? Say(Text::WhyNoSpans, routeId) : std::string();
}

std::string deleteRoute(Step& step)
{
    if (std::string why = refuseWithoutSpans(step.Design(), step.Id("route")); !why.empty()) return why;
    return doneIf(step.Design().DeleteRouteObject(step.Id("route"), false));
}

std::string deleteRouteConnectEnd(Step& step)
{
    if (std::string why = refuseWithoutSpans(step.Design(), step.Id("route")); !why.empty()) return why;
    return doneIf(step.Design().DeleteRouteObjectConnectEnd(step.Id("route")));
}

std::string deleteUpstream(Step& step)
{
    const long web = webOf(step.Design(), step.Id("route"));
    if (long node = 0; !step.Design().GetFlowEndNodeId(web, node)) return Say(Text::WhyNoFlowEnd, web);
    return doneIf(step.Design().DeleteRouteObjectUpperAll(step.Id("route"), true));
}

std::string deleteWeb(Step& step)
{
    Ids routeIds;
    step.Design().GetRouteIdList(step.Id("web"), routeIds);
    for (const long routeId : routeIds)
        if (std::string why = refuseWithoutSpans(step.Design(), routeId); !why.empty()) return why;
    return doneIf(step.Design().DeleteWebObject(step.Id("web")));
}

std::string connect(Step& step)
{
    const long route = step.Id("route");
    const long to = step.Id("connect");
    if (std::string why = refuseWithoutEnds(step.Design(), route); !why.empty()) return why;
    if (std::string why = refuseConnect(step.Design(), webOf(step.Design(), route), to); !why.empty()) return why;
    if (to != 0)
        for (const long below : wayDown(step.Design(), to))
            if (below == route) return Say(Text::WhyLoop, route);
    return doneIf(step.Design().ConnectRoute(route, to));
}

std::string updateConnectNumbers(Step& step)
{
    step.Design().UpdateConnectRouteNum(step.Id("web"));
    return done();
}

std::string refuseOutlet(const CObjectManager& design, long routeId, const std::string& name)
{
    const std::vector<long> way = wayDown(design, routeId);
    for (const long id : way)
        if (std::string why = refuseWithoutEnds(design, id); !why.empty()) return why;
    if (connectOf(design, way.back()) != 0) return Say(Text::WhyDoesNotReachEnd, routeId);
    return design.CheckDuplicateFlowEndName(webOf(design, routeId), FromUtf8(name)) ? std::string()
                                                                                    : Say(Text::WhyNameTaken, name);
}

std::string moveOutlet(Step& step)
{
    if (std::string why = refuseOutlet(step.Design(), step.Id("route"), step.Text("name")); !why.empty()) return why;
    Ids unused;
    return doneIf(step.Design().ReSetFlowEndNode(step.Id("route"), FromUtf8(step.Text("name")), unused));
}

std::string moveOutletToNode(Step& step)
{
    const CObjectManager& design = step.Design();
    const long route = step.Id("route");
    const long node = step.Id("node");
    if (std::string why = refuseOutlet(design, route, step.Text("name")); !why.empty()) return why;
    long lower = 0;
    long upper = 0;
    design.GetMostLowerNodeId(route, lower);
    design.GetMostUpperNodeId(route, upper);
    if (node != lower && node != upper) return Say(Text::WhyNoEndNode, node, route);
    Ids rewired;
    Ids reversed;
    if (!step.Design().ReSetFlowEndNodeByNode(route, node, FromUtf8(step.Text("name")), rewired, reversed))
        return TextOf(Text::WhyRefused);
    step.Give("rewired", rewired);
    step.Give("reversed", reversed);
    return done();
}

std::string connectSpans(Step& step)
{
    const CSpan& first = *step.Design().GetSpanDb().Find(step.Id("first"));
    const CSpan& second = *step.Design().GetSpanDb().Find(step.Id("second"));
    if (first.GetRouteId() != second.GetRouteId() || first.GetLowerNodeId() != second.GetUpperNodeId())
        return Say(Text::WhyNotNeighbours, first.GetId32(), second.GetId32());
    return doneIf(step.Design().ConnectSpan(step.Id("first"), step.Id("second")));
}

std::string copyRoute(Step& step)
{
    const CObjectManager& design = step.Design();
    const long route = step.Id("route");
    const long to = step.Id("connect");
    if (std::string why = refuseCopy(design, route); !why.empty()) return why;
    if (std::string why = refuseConnect(design, webOf(design, route), to); !why.empty()) return why;
    long copy = 0;
    if (!step.Design().CopyRouteObject(route, to, copy)) return TextOf(Text::WhyRefused);
    step.Give("route", copy);
    return done();
}

std::string copyUpstream(Step& step)
{
    const CObjectManager& design = step.Design();
    const long route = step.Id("route");
    const long to = step.Id("connect");
    Ids all;
    Ids sources;
    design.GetRouteIdList(webOf(design, route), all);
    sources.AddTail(route);
    design.GetConnectRouteUpperAll(route, all, sources);
    for (const long source : sources)
        if (std::string why = refuseCopy(design, source); !why.empty()) return why;
    if (std::string why = refuseConnect(design, webOf(design, route), to); !why.empty()) return why;
    Ids copies;
    if (!step.Design().CopyAllUpperRouteObject(route, to, copies)) return TextOf(Text::WhyRefused);
    step.Give("routes", copies);
    return done();
}

std::string copyWeb(Step& step)
{
    Ids routeIds;
    step.Design().GetRouteIdList(step.Id("web"), routeIds);
    for (const long routeId : routeIds)
        if (std::string why = refuseCopy(step.Design(), routeId); !why.empty()) return why;
    long copy = 0;
    if (!step.Design().CopyWebObject(step.Id("web"), copy)) return TextOf(Text::WhyRefused);
    step.Give("web", copy);
    return done();
}

using enum FieldKind;
constexpr auto kProject = objectdata::Project;
constexpr auto kWeb = objectdata::Web;
constexpr auto kRoute = objectdata::Route;
constexpr auto kSpan = objectdata::Span;
constexpr auto kNode = objectdata::Node;

constexpr Field kValues = {"values", Values, kOptional};
constexpr Field kConnect = {"connect", Connect, kOptional};
constexpr Field kRouteField = {"route", Route};
constexpr Field kSpanField = {"span", Span};
constexpr Field kWebField = {"web", Web};
constexpr Field kCount = {"count", Count};
constexpr Field kName = {"name", FieldKind::Text};

// clang-format off
const OperationInfo kOperations[] = {
    // name, meaning, function, default attributes that it needs,
    //     fields, results
    {"create_project", Text::OpCreateProject, createProject, {"project"},
        {kValues}, {{"project", kProject}}},
    {"create_web", Text::OpCreateWeb, createWeb, {"web", "calcfig", "drawfig", "sheetfig"},
        {{"disposaltype", Disposal}, kValues}, {{"web", kWeb}}},
    {"create_route", Text::OpCreateRoute, createRoute, {"route", "span", "node", "areaset"},
        {kWebField, kConnect, kValues}, {{"route", kRoute}, {"span", kSpan}, {"node", kNode}}},
    {"create_span_node", Text::OpCreateSpanNode, createSpanNode, {"span", "node", "areaset"},
        {kSpanField, {"below", Flag, kOptional}, kValues}, {{"span", kSpan}, {"node", kNode}}},
    {"add_spans", Text::OpAddSpans, addSpans, {"span", "node", "areaset"},
        {kRouteField, kCount}, {{"spans", kSpan, kList}}},
    {"create_spans", Text::OpCreateSpans, createSpans, {"span", "node", "areaset"},
        {kRouteField, kCount, kValues}, {{"spans", kSpan, kList}, {"nodes", kNode, kList}}},
    {"insert_spans", Text::OpInsertSpans, insertSpans, {"span", "node", "areaset"},
        {kSpanField, kCount}, {{"spans", kSpan, kList}}},
    {"divide_span", Text::OpDivideSpan, divideSpan, {"span", "node", "areaset"},
        {kSpanField, {"parts", Count}}, {{"spans", kSpan, kList}}},
    {"remove_spans", Text::OpRemoveSpans, removeSpans, {},
        {kRouteField, kCount}, {}},
    {"set", Text::OpSet, setValues, {},
        {{"object", Object}, {"values", Changes}}, {}},
    {"delete_span", Text::OpDeleteSpan, deleteSpan, {},
        {kSpanField, {"leave_route", Flag, kOptional}}, {}},
    {"delete_span_only", Text::OpDeleteSpanOnly, deleteSpanOnly, {},
        {kSpanField}, {}},
    {"delete_route", Text::OpDeleteRoute, deleteRoute, {},
        {kRouteField}, {}},
    {"delete_route_connect_end", Text::OpDeleteRouteConnectEnd, deleteRouteConnectEnd, {},
        {kRouteField}, {}},
    {"delete_upstream", Text::OpDeleteUpstream, deleteUpstream, {},
        {kRouteField}, {}},
    {"delete_web", Text::OpDeleteWeb, deleteWeb, {},
        {kWebField}, {}},
    {"connect", Text::OpConnect, connect, {},
        {kRouteField, {"connect", Connect}}, {}},
    {"connect_spans", Text::OpConnectSpans, connectSpans, {},
        {{"first", Span}, {"second", Span}}, {}},
    {"move_outlet", Text::OpMoveOutlet, moveOutlet, {},
        {kRouteField, kName}, {}},
    {"move_outlet_to_node", Text::OpMoveOutletToNode, moveOutletToNode, {},
        {kRouteField, {"node", Node}, kName}, {{"rewired", kRoute, kList}, {"reversed", kRoute, kList}}},
    {"update_connect_numbers", Text::OpUpdateConnectNumbers, updateConnectNumbers, {},
        {kWebField}, {}},
    {"copy_route", Text::OpCopyRoute, copyRoute, {"areaset"},
        {kRouteField, kConnect}, {{"route", kRoute}}},
    {"copy_upstream", Text::OpCopyUpstream, copyUpstream, {"areaset"},
        {kRouteField, kConnect}, {{"routes", kRoute, kList}}},
    {"copy_web", Text::OpCopyWeb, copyWeb, {"areaset", "node"},
        {kWebField}, {{"web", kWeb}}},
};
// clang-format on

const char* placeFor(FieldKind kind)
{
    switch (kind) {
    case Object: return "OBJECT";
    case Web: return "WEB";
    case Route: return "ROUTE";
    case Span: return "SPAN";
    case Node: return "NODE";
    case Connect: return "ROUTE|0";
    case Count: return "1...";
    case Disposal: return "0...5";
    case Flag: return "true|false";
    case FieldKind::Text: return "TEXT";
    case Values:
    case Changes: return "VALUES";
    }
    return "";
}

} // namespace

std::span<const OperationInfo> Operations()
{
    return kOperations;
}

const OperationInfo* FindOperation(std::string_view name)
{
    const auto found = std::find_if(std::begin(kOperations), std::end(kOperations),
                                    [name](const OperationInfo& info) { return info.name == name; });
    return found == std::end(kOperations) ? nullptr : &*found;
}

OBJECTTYPE TypeOf(FieldKind kind)
{
    switch (kind) {
    case Object: return objectdata::Any;
    case Web: return kWeb;
    case Route:
    case Connect: return kRoute;
    case Span: return kSpan;
    case Node: return kNode;
    default: return objectdata::NoOwner;
    }
}

std::string OperationsHelp()
{
    std::string help;
    for (const OperationInfo& info : kOperations) {
        help += "  " + std::string(info.name);
        for (const Field& field : info.fields) {
            const std::string text = std::string(field.name) + "=" + placeFor(field.kind);
            help += field.isRequired ? " " + text : " [" + text + "]";
        }
        for (const ResultInfo& result : info.results)
            help += (&result == info.results.data() ? " -> " : ", ") + std::string(result.name);
        help += "\n      " + std::string(TextOf(info.meaning)) + "\n";
    }
    return help;
}

Step::Step(CObjectManager& design, const Operation& operation, std::vector<long> ids)
    : m_design(design), m_operation(operation), m_ids(std::move(ids)), m_made(operation.info->results.size())
{
}

std::size_t Step::IndexOf(std::string_view field) const
{
    const std::vector<Field>& fields = m_operation.info->fields;
    const auto found = std::find_if(fields.begin(), fields.end(), [field](const Field& f) { return f.name == field; });
    return static_cast<std::size_t>(found - fields.begin());
}

bool Step::Flag(std::string_view field, bool whenLeftOut) const
{
    const bool* const value = std::get_if<bool>(&Value(field));
    return value ? *value : whenLeftOut;
}

CKeyValueArray Step::Values() const
{
    CKeyValueArray values;
    if (const auto* const given = std::get_if<std::vector<Change>>(&Value("values")))
        for (const auto& [key, text] : *given)
            values.Add(CKeyValue(FromUtf8(key), FromUtf8(*text)));
    return values;
}

void Step::Give(std::string_view result, long id)
{
    const std::vector<ResultInfo>& results = m_operation.info->results;
    const auto found =
        std::find_if(results.begin(), results.end(), [result](const ResultInfo& r) { return r.name == result; });
    m_made[static_cast<std::size_t>(found - results.begin())].push_back(id);
}

void Step::Give(std::string_view result, const CList<long, long>& ids)
{
    for (const long id : ids)
        Give(result, id);
}

} // namespace obmgr::tool
