// Queries of spans in their route and of the neighbours of spans and nodes, with random arguments.
#include "reference/LibrarySide.h"

namespace reference {

using namespace objectdata;

namespace {

Args OneId(Type type, Choice& choice)
{
    return {{choice.Id(type)}, {}};
}

// An id, a flag and what the caller's list of `listType` holds.
auto IdFlagList(Type type, Type listType)
{
    return [=](Choice& choice) {
        Args args{{choice.Id(type), choice.Pick(2)}, {}};
        Choice::Pack(args.numbers, choice.Before(listType));
        return args;
    };
}

// Two ids and a list of candidates.
auto NodeAndSpans(Choice& choice)
{
    Args args{{choice.Node(), choice.Span()}, {}};
    Choice::Pack(args.numbers, choice.IdList(Span));
    Choice::Pack(args.numbers, choice.Before(Span));
    return args;
}

void AddContentsOf(Outcome& outcome, const Records& records, std::size_t from)
{
    for (std::size_t i = from; i < records.size(); ++i)
        outcome.AddContents(*records[i]);
}

StepKind EndsOfRoute()
{
    return MakeQuery(
        "ends of a route", 3, [](Choice& choice) { return OneId(Route, choice); },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int route = in.Number();
            int node = -5;
            outcome.Add(side.GetMostLowerNodeId(route, node));
            outcome.Add(node);
            node = -5;
            outcome.Add(side.GetMostUpperNodeId(route, node));
            outcome.Add(node);
            int span = -5;
            outcome.Add(side.GetLastSpanFromRoute(route, span));
            outcome.Add(span);
            outcome.Add(side.GetSpanNumInRoute(route));
            double length = -5;
            outcome.Add(side.GetRouteLength(route, length));
            outcome.Add(length);
        });
}

StepKind SortedSpans()
{
    return MakeQuery("GetSortSpanInRoute", 4, IdFlagList(Route, Span), [](auto& side, Unpack& in, Outcome& outcome) {
        const int route = in.Number();
        const bool lowestFirst = in.Number() != 0;
        const Ids before = in.List();
        Ids ids = before;
        outcome.Add(side.GetSortSpanInRoute(route, ids, lowestFirst));
        outcome.Add(ids);
        auto spans = side.Some(Span, before);
        outcome.Add(side.GetSortSpanInRoute(route, spans, lowestFirst));
        side.Show(outcome, Span, spans);
        spans = side.Some(Span, before);
        outcome.Add(side.GetSortSpanInRouteStrict(route, spans, lowestFirst));
        side.Show(outcome, Span, spans);
        for (const bool sorted : {false, true}) {
            spans = side.Some(Span, before);
            outcome.Add(side.GetSpanObjectListFromRoute(route, lowestFirst, spans, sorted));
            side.Show(outcome, Span, spans);
        }
        spans = side.Some(Span, before);
        outcome.Add(side.GetSpanObjectArrayFromRoute(route, spans));
        side.Show(outcome, Span, spans);
        ids = before;
        outcome.Add(side.GetSpanIdList(route, ids));
        outcome.Add(ids);
    });
}

StepKind SortedNodes()
{
    return MakeQuery(
        "GetSortUpNodeInRoute, GetSortSpanNodeInRoute", 3,
        [](Choice& choice) {
            Args args{{choice.Route(), choice.Route()}, {}};
            Choice::Pack(args.numbers, choice.Before(Node));
            return args;
        },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int route = in.Number();
            const int second = in.Number();
            const Ids before = in.List();
            Ids ids = before;
            outcome.Add(side.GetSortUpNodeInRoute(route, ids));
            outcome.Add(ids);
            auto nodes = side.Some(Node, before);
            auto spans = side.Some(Span, {});
            for (const int each : {route, second})
                outcome.Add(side.GetSortSpanNodeInRoute(each, spans, nodes));
            side.Show(outcome, Span, spans);
            side.Show(outcome, Node, nodes);
        });
}

StepKind OfSpan()
{
    return MakeQuery(
        "of a span", 4, [](Choice& choice) { return OneId(Span, choice); },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int span = in.Number();
            int other = -5;
            outcome.Add(side.IsFirstSpanAndGetSecondSpan(span, other));
            outcome.Add(other);
            other = -5;
            outcome.Add(side.GetLowerSpan(span, other));
            outcome.Add(other);
            outcome.Add(side.GetWbareasetflg(span));
            double number = -5;
            outcome.Add(side.GetSpanArea(span, number));
            outcome.Add(number);
            number = -5;
            outcome.Add(side.GetSpanSyakyori(span, number));
            outcome.Add(number);
            outcome.Add(side.GetWebIdFromSpan(span));
        });
}

StepKind LineDownstream()
{
    return MakeQuery(
        "GetLowerSpanObjectList", 3,
        [](Choice& choice) {
            Args args{{choice.Span(), choice.Span()}, {}};
            Choice::Pack(args.numbers, choice.Before(Span));
            return args;
        },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int from = in.Number();
            const int to = in.Number();
            const Ids before = in.List();
            Ids ids = before;
            side.GetLowerSpanObjectList(from, ids);
            outcome.Add(ids);
            const Ids line = ids;
            for (const int end : {to, from, line.empty() ? 0 : line.back()}) {
                ids = before;
                outcome.Add(side.GetLowerSpanObjectList(from, end, ids));
                outcome.Add(ids);
            }
        });
}

StepKind CopiesDownstream()
{
    return {"GetLowerSpanObjectList with copies", 2, IdFlagList(Span, Span),
            [](OpenNetwork& library, const Args& args, Outcome& outcome) {
                Unpack in(args);
                const int span = in.Number();
                in.Number();
                Objects live = LibrarySide(library).Some(Span, in.List());
                const std::size_t held = live.size();
                WithObjects<LibrarySide::Spans>(live, [&](auto& list) {
                    library.GetLowerSpanObjectList(span, list);
                    return true;
                });
                outcome.Add(static_cast<int>(live.size()));
                for (std::size_t i = 0; i < live.size(); ++i) {
                    if (i <= held) outcome.Add(library, live[i]);
                    if (i <= held) continue;
                    outcome.AddContents(*live[i]);
                    delete live[i];
                }
            },
            [](Network& model, const Args& args, Outcome& outcome) {
                Unpack in(args);
                const int span = in.Number();
                in.Number();
                Records records = ModelSide(model).Some(Span, in.List());
                const std::size_t held = records.size();
                model.GetLowerSpanObjectList(span, records);
                outcome.Add(static_cast<int>(records.size()));
                for (std::size_t i = 0; i <= held && i < records.size(); ++i)
                    outcome.Add(model, Span, records[i]);
                AddContentsOf(outcome, records, held + 1);
            }};
}

StepKind FlowIn()
{
    return MakeQuery(
        "flow into a span", 4,
        [](Choice& choice) {
            Args args{{choice.Web(), choice.Span()}, {}};
            Choice::Pack(args.numbers, choice.Before(Span));
            return args;
        },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int web = in.Number();
            const int span = in.Number();
            const Ids before = in.List();
            for (const int each : {web, side.GetWebIdFromSpan(span)}) {
                Ids ids = before;
                outcome.Add(side.GetFlowInSpanToSpan(each, span, ids));
                outcome.Add(ids);
                ids = before;
                side.GetUpperSpanObjectList(each, span, ids);
                outcome.Add(ids);
            }
            auto spans = side.Some(Span, before);
            outcome.Add(side.GetFlowInSpanToSpan(span, spans));
            side.Show(outcome, Span, spans);
            for (const bool sort : {false, true}) {
                Ids ids = before;
                outcome.Add(side.GetUpperSpan(span, sort, ids));
                outcome.Add(ids);
            }
        });
}

StepKind AtNode()
{
    return MakeQuery("at a node", 4, NodeAndSpans, [](auto& side, Unpack& in, Outcome& outcome) {
        const int node = in.Number();
        in.Number();
        const Ids candidates = in.List();
        const Ids before = in.List();
        Ids ids = before;
        outcome.Add(side.GetConnectALlSpanToNode(node, ids));
        outcome.Add(ids);
        int span = -5;
        outcome.Add(side.GetSpanConnectUpperNode(node, candidates, span));
        outcome.Add(span);
        span = -5;
        outcome.Add(side.GetSpanConnectLowerNode(node, candidates, span));
        outcome.Add(span);
        ids = before;
        outcome.Add(side.GetFlowInSpanToNode(node, candidates, ids));
        outcome.Add(ids);
        outcome.Add(side.IsConnectSpanToNode(node, candidates));
        outcome.Add(side.GetWebIdFromNode(node));
        int owner = -5;
        outcome.Add(side.IsDivideNode(node, owner));
        outcome.Add(owner);
        ids = before;
        outcome.Add(side.GetAllLowerNodeFromSpan(candidates, ids));
        outcome.Add(side.GetAllUpperNodeFromSpan(candidates, ids));
        outcome.Add(ids);
    });
}

StepKind AtNodeOfRoute()
{
    return MakeQuery(
        "GetSpanConnect...Node of a route", 3,
        [](Choice& choice) {
            return Args{{choice.Node(), choice.Route()}, {}};
        },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int node = in.Number();
            const int route = in.Number();
            int span = -5;
            outcome.Add(side.GetSpanConnectUpperNode(node, route, span));
            outcome.Add(span);
            span = -5;
            outcome.Add(side.GetSpanConnectLowerNode(node, route, span));
            outcome.Add(span);
        });
}

StepKind Coordinates()
{
    return MakeQuery(
        "equal coordinates", 3,
        [](Choice& choice) {
            Args args{{choice.Node(), choice.Node(), choice.Web(), choice.Id(IcpInq)}, {}};
            Choice::Pack(args.numbers, choice.Before(Node));
            return args;
        },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int node = in.Number();
            const int other = in.Number();
            const int web = in.Number();
            outcome.Add(side.IsEqualCoordNode(node, other));
            outcome.Add(side.GetIcpinqLowinvSpanID(in.Number()));
            Ids ids = in.List();
            outcome.Add(side.GetOverlapNodeFromOtherWebs(web, node, ids));
            outcome.Add(ids);
        });
}

} // namespace

std::vector<StepKind> SpanQueries()
{
    return {EndsOfRoute(),      SortedSpans(), SortedNodes(), OfSpan(),        LineDownstream(),
            CopiesDownstream(), FlowIn(),      AtNode(),      AtNodeOfRoute(), Coordinates()};
}

} // namespace reference
