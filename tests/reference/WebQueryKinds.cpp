// Queries of whole webs, of records and their web, and of flow ends, with random arguments.
#include "reference/LibrarySide.h"

namespace reference {

using namespace objectdata;

namespace {

constexpr Type kIdLists[] = {AreaInq,  AreaOutq, FixInq, IcpInq,  MountInq, Outq,
                             GlChange, Inters,   IntPos, Lateral, Secvalve, Ohaul};
constexpr Type kObjectLists[] = {AreaInq, AreaOutq, FixInq,  IcpInq, MountInq, Outq,  GlChange,
                                 Inters,  IntPos,   Lateral, Vjoint, Secvalve, Ohaul, RaitoSet};

// A web and what the caller's list of `listType` holds.
auto WebAndList(Type listType)
{
    return [=](Choice& choice) {
        Args args{{choice.Web()}, {}};
        Choice::Pack(args.numbers, choice.Before(listType));
        return args;
    };
}

StepKind SpanLists()
{
    return MakeQuery("spans of a web", 4, WebAndList(Span), [](auto& side, Unpack& in, Outcome& outcome) {
        const int web = in.Number();
        const Ids before = in.List();
        Ids ids = before;
        outcome.Add(side.GetSpanFromWeb(web, ids));
        outcome.Add(ids);
        auto spans = side.Some(Span, before);
        outcome.Add(side.GetSpanFromWeb(web, spans));
        side.Show(outcome, Span, spans);
        spans = side.Some(Span, before);
        outcome.Add(side.GetSpanObjectListFromWeb(web, spans));
        side.Show(outcome, Span, spans);
        ids = before;
        side.GetSpanFormProject(ids);
        outcome.Add(ids);
        outcome.Add(side.GetSpanNumInWeb(web));
    });
}

StepKind SpanCopies()
{
    return {"GetSpanObjectListFromWebCopy", 2, WebAndList(Span),
            [](OpenNetwork& library, const Args& args, Outcome& outcome) {
                Unpack in(args);
                const int web = in.Number();
                Objects objects = LibrarySide(library).Some(Span, in.List());
                const std::size_t held = objects.size();
                outcome.Add(WithObjects<LibrarySide::Spans>(
                    objects, [&](auto& list) { return library.GetSpanObjectListFromWebCopy(web, list); }));
                for (std::size_t i = 0; i < objects.size(); ++i) {
                    outcome.AddContents(*objects[i]);
                    if (i >= held) delete objects[i];
                }
            },
            [](Network& model, const Args& args, Outcome& outcome) {
                Unpack in(args);
                const int web = in.Number();
                Records records = ModelSide(model).Some(Span, in.List());
                outcome.Add(model.GetSpanObjectListFromWebCopy(web, records));
                for (const Record* const record : records)
                    outcome.AddContents(*record);
            }};
}

StepKind RouteLists()
{
    return MakeQuery("routes of a web", 4, WebAndList(Route), [](auto& side, Unpack& in, Outcome& outcome) {
        const int web = in.Number();
        const Ids before = in.List();
        Ids ids = before;
        outcome.Add(side.GetRouteIdList(web, ids));
        outcome.Add(ids);
        for (const bool rising : {false, true}) {
            for (const bool sorted : {false, true}) {
                auto routes = side.Some(Route, before);
                outcome.Add(side.GetRouteObjectListFromWeb(web, routes, rising, sorted));
                side.Show(outcome, Route, routes);
            }
        }
        for (const bool constForm : {false, true}) {
            auto routes = side.Some(Route, before);
            outcome.Add(side.GetRouteObjectArrayFromWeb(web, routes, constForm));
            side.Show(outcome, Route, routes);
        }
        outcome.Add(side.GetRouteNumInWeb(web));
        ids = before;
        outcome.Add(side.GetFlowEndFixedRoute(web, ids));
        outcome.Add(ids);
        ids = before;
        outcome.Add(side.GetMostUpperRouteByNode(web, ids));
        outcome.Add(ids);
    });
}

StepKind NodeLists()
{
    return MakeQuery("nodes of a web", 4, WebAndList(Node), [](auto& side, Unpack& in, Outcome& outcome) {
        const int web = in.Number();
        const Ids before = in.List();
        Ids ids = before;
        outcome.Add(side.GetNodeIdList(web, ids));
        outcome.Add(ids);
        for (const bool sorted : {false, true}) {
            auto nodes = side.Some(Node, before);
            outcome.Add(side.GetNodeObjectListFromWeb(web, nodes, sorted));
            side.Show(outcome, Node, nodes);
        }
        int node = -5;
        outcome.Add(side.GetFlowEndNodeId(web, node));
        outcome.Add(node);
        ids = before;
        outcome.Add(side.GetFlowEndNodeIdList(web, ids));
        outcome.Add(ids);
        ids = before;
        outcome.Add(side.GetMostUpperNode(web, ids));
        outcome.Add(ids);
    });
}

StepKind LowNodeMap()
{
    return MakeQuery(
        "CreateMapLowNodeSpan", 2,
        [](Choice& choice) {
            Args args{{choice.Web(), choice.OneIn(4) ? choice.Node() : 0}, {}};
            Choice::Pack(args.numbers, choice.Before(Span));
            return args;
        },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int web = in.Number();
            const int node = in.Number();
            const Ids before = in.List();
            NodeMap map;
            if (node != 0) map.emplace_back(node, before);
            outcome.Add(side.CreateMapLowNodeSpan(web, map));
            for (const auto& [key, ids] : map) {
                outcome.Add(key);
                outcome.Add(ids);
            }
        });
}

StepKind Areas()
{
    return MakeQuery(
        "areas", 3,
        [](Choice& choice) {
            return Args{{choice.Web(), choice.Route(), choice.Pick(2)}, {}};
        },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int web = in.Number();
            const int route = in.Number();
            const bool flag = in.Number() != 0;
            double area = 100; // added to
            outcome.Add(side.GetWebArea(web, area));
            outcome.Add(area);
            area = -5;
            outcome.Add(side.GetRouteArea(route, area));
            outcome.Add(area);
            area = -5;
            outcome.Add(side.GetRouteAreaT(route, area, flag));
            outcome.Add(area);
        });
}

StepKind WebOfRecord()
{
    return MakeQuery(
        "web of a record", 4,
        [](Choice& choice) {
            Args args;
            for (const Type type : {IcpInq, AreaSet, Outq, Inters, Launit, Vacunit, Secvalve, Ohaul})
                args.numbers.push_back(choice.Id(type));
            args.texts.push_back(choice.Name());
            return args;
        },
        [](auto& side, Unpack& in, Outcome& outcome) {
            outcome.Add(side.GetWebIdFromIcpInq(in.Number()));
            outcome.Add(side.GetWebIdFromAreaSet(in.Number()));
            outcome.Add(side.GetWebIdFromOutq(in.Number()));
            outcome.Add(side.GetWebIdFromInters(in.Number()));
            outcome.Add(side.GetWebIdFromLaunit(in.Number()));
            outcome.Add(side.GetWebIdFromVacunit(in.Number()));
            outcome.Add(side.GetWebIdFromSecvalve(in.Number()));
            outcome.Add(side.GetWebIdFromOhaul(in.Number()));
            outcome.Add(side.GetWebIdFormName(in.Text()));
        });
}

StepKind FlowEndNames()
{
    return MakeQuery(
        "CheckDuplicateFlowEndName", 1,
        [](Choice& choice) {
            return Args{{choice.Web()}, {choice.Name()}};
        },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int web = in.Number();
            outcome.Add(side.CheckDuplicateFlowEndName(web, in.Text()));
        });
}

StepKind RecordsOfWeb()
{
    return MakeQuery(
        "records of a web", 4,
        [](Choice& choice) {
            const auto id = static_cast<int>(kIdLists[choice.Pick(std::size(kIdLists))]);
            const auto object = static_cast<int>(kObjectLists[choice.Pick(std::size(kObjectLists))]);
            Args args{{choice.Web(), id, object}, {}};
            Choice::Pack(args.numbers, choice.Before(Span));
            Choice::Pack(args.numbers, choice.Before(static_cast<Type>(object)));
            return args;
        },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int web = in.Number();
            const auto idType = static_cast<Type>(in.Number());
            const auto objectType = static_cast<Type>(in.Number());
            Ids ids = in.List();
            outcome.Add(side.GetIdListFromWeb(idType, web, ids));
            outcome.Add(ids);
            auto objects = side.Some(objectType, in.List());
            outcome.Add(side.GetObjectListFromWeb(objectType, web, objects));
            side.Show(outcome, objectType, objects);
        });
}

StepKind RecordsOfRouteOrSpan()
{
    return MakeQuery(
        "records of a route or span", 2,
        [](Choice& choice) {
            Args args{{choice.Route(), choice.Span()}, {}};
            Choice::Pack(args.numbers, choice.Before(Span));
            return args;
        },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int route = in.Number();
            const int span = in.Number();
            const Ids before = in.List();
            Ids ids = before;
            outcome.Add(side.GetIcpInqIdListFromRoute(route, ids));
            outcome.Add(ids);
            ids = before;
            outcome.Add(side.GetGlChangeIdListFromSpan(span, ids));
            outcome.Add(ids);
        });
}

} // namespace

std::vector<StepKind> WebQueries()
{
    return {SpanLists(), SpanCopies(),  RouteLists(),   NodeLists(),    LowNodeMap(),
            Areas(),     WebOfRecord(), FlowEndNames(), RecordsOfWeb(), RecordsOfRouteOrSpan()};
}

} // namespace reference
