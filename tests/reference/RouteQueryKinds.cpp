// Queries of the tree of routes, with random arguments.
#include "reference/LibrarySide.h"

namespace reference {

using namespace objectdata;

namespace {

// A route (or 0), candidates, and what the caller's list holds.
Args RouteAndCandidates(Choice& choice)
{
    const int route = choice.OneIn(4) ? 0 : choice.Route();
    Args args{{route}, {}};
    Choice::Pack(args.numbers, choice.OneIn(2) ? choice.RoutesOfWeb(choice.Web()) : choice.IdList(Route));
    Choice::Pack(args.numbers, choice.Before(Route));
    return args;
}

StepKind Tributaries()
{
    return MakeQuery("tributaries", 4, RouteAndCandidates, [](auto& side, Unpack& in, Outcome& outcome) {
        const int route = in.Number();
        const Ids candidates = in.List();
        const Ids before = in.List();
        Ids ids = before;
        outcome.Add(side.GetConnectRoute(route, candidates, ids));
        outcome.Add(ids);
        ids = before;
        outcome.Add(side.GetConnectRouteAll(route, ids));
        outcome.Add(ids);
        ids = before;
        outcome.Add(side.GetNextRouteId(route, candidates, ids));
        outcome.Add(ids);
        ids = before;
        outcome.Add(side.GetNextRouteIdAll(route, ids));
        outcome.Add(ids);
        ids = candidates;
        side.ReverseIdList(ids);
        outcome.Add(ids);
    });
}

StepKind TributaryArrays()
{
    return MakeQuery(
        "GetConnectRoute with arrays", 4,
        [](Choice& choice) {
            Args args = RouteAndCandidates(choice);
            args.numbers.push_back(choice.Pick(2));  // recursive
            args.numbers.push_back(choice.Pick(2));  // sort
            args.numbers.push_back(choice.OneIn(4)); // with a null entry
            return args;
        },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int route = in.Number();
            const Ids candidates = in.List();
            const Ids before = in.List();
            const bool recursive = in.Number() != 0;
            const bool sort = in.Number() != 0;
            const bool withNull = in.Number() != 0;
            for (const bool constForm : {false, true}) {
                auto routes = side.Some(Route, candidates);
                if (withNull) routes.insert(routes.begin(), nullptr);
                auto out = side.Some(Route, before);
                outcome.Add(side.GetConnectRoute(std::as_const(routes), route, out, constForm));
                side.Show(outcome, Route, out);
                out = side.Some(Route, before);
                outcome.Add(side.GetConnectRoute(routes, route, recursive, sort, out, constForm));
                side.Show(outcome, Route, out);
                side.Show(outcome, Route, routes);
            }
        });
}

StepKind Upstream()
{
    return MakeQuery("everything upstream", 4, RouteAndCandidates, [](auto& side, Unpack& in, Outcome& outcome) {
        const int route = in.Number();
        const Ids candidates = in.List();
        const Ids before = in.List();
        Ids ids = before;
        side.GetConnectRouteUpperAll(route, candidates, ids);
        outcome.Add(ids);
        ids = before;
        side.GetConnectRouteUpperAllByOrder(route, candidates, ids);
        outcome.Add(ids);
        ids = before;
        side.GetUpperRouteObjectList(route, ids);
        outcome.Add(ids);
    });
}

// The candidates by their real connect ids, or by any.
StepKind UpstreamByMap()
{
    return MakeQuery(
        "GetConnectRouteUpperAll by a map", 2,
        [](Choice& choice) {
            Args args{{choice.OneIn(3) ? 0 : choice.Route(), choice.Pick(4)}, {}};
            const int keys = args.numbers[1];
            for (int key = 0; key < keys; ++key) {
                args.numbers.push_back(choice.OneIn(3) ? 0 : choice.Route());
                Choice::Pack(args.numbers, choice.RoutesOfWeb(choice.Web()));
            }
            Choice::Pack(args.numbers, choice.Before(Route));
            return args;
        },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int route = in.Number();
            NodeMap map;
            for (int left = in.Number(); left > 0; --left) {
                const int key = in.Number();
                const Ids ids = in.List();
                bool isThere = false;
                for (const auto& entry : map)
                    isThere = isThere || entry.first == key;
                // Few entries a key: the ways through any map are many.
                if (!isThere)
                    map.emplace_back(key, Ids(ids.begin(), ids.begin() + std::min<std::ptrdiff_t>(3, std::ssize(ids))));
            }
            Ids out = in.List();
            side.GetConnectRouteUpperAll(route, map, out);
            outcome.Add(out);
        });
}

StepKind Downstream()
{
    return MakeQuery(
        "everything downstream", 4,
        [](Choice& choice) {
            Args args = RouteAndCandidates(choice);
            args.numbers.push_back(choice.Route());
            args.numbers.push_back(choice.Web());
            return args;
        },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int route = in.Number();
            const Ids candidates = in.List();
            const Ids before = in.List();
            const int to = in.Number();
            const int web = in.Number();
            Ids ids = before;
            side.GetConnectRouteLowerAll(route, candidates, ids);
            outcome.Add(ids);
            ids = before;
            outcome.Add(side.GetRouteIdListFromTo(route, to, web, ids));
            outcome.Add(ids);
        });
}

StepKind EndsOfSets()
{
    return MakeQuery("ends of a set of routes", 3, RouteAndCandidates, [](auto& side, Unpack& in, Outcome& outcome) {
        in.Number();
        const Ids candidates = in.List();
        const Ids before = in.List();
        Ids ids = before;
        outcome.Add(side.GetLowRouteId(candidates, ids));
        outcome.Add(ids);
        ids = before;
        outcome.Add(side.GetUpperRouteId(candidates, ids));
        outcome.Add(ids);
    });
}

StepKind MainLines()
{
    return MakeQuery(
        "main lines and branch order", 4,
        [](Choice& choice) {
            Args args{{choice.Web(), choice.OneIn(2) ? 0 : choice.Route()}, {}};
            Choice::Pack(args.numbers, choice.Before(Route));
            return args;
        },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int web = in.Number();
            const int route = in.Number();
            const Ids before = in.List();
            Ids ids = before;
            outcome.Add(side.GetRouteBySphst(web, ids));
            outcome.Add(ids);
            ids = before;
            outcome.Add(side.GetRouteBySphdt(web, ids));
            outcome.Add(ids);
            auto routes = side.Some(Route, before);
            side.GetConnectRouteSortOrder(web, route, routes);
            side.Show(outcome, Route, routes);
        });
}

StepKind Overlaps()
{
    return MakeQuery(
        "GetOverlapRouteFromWebs", 2,
        [](Choice& choice) {
            Args args{{choice.Web()}, {}};
            Choice::Pack(args.numbers, choice.IdList(Node));
            Choice::Pack(args.numbers, choice.Before(Span));
            Choice::Pack(args.numbers, choice.Before(Node));
            return args;
        },
        [](auto& side, Unpack& in, Outcome& outcome) {
            const int web = in.Number();
            const Ids nodes = in.List();
            Ids outSpans = in.List();
            Ids outNodes = in.List();
            outcome.Add(side.GetOverlapRouteFromWebs(web, nodes, outSpans, outNodes));
            outcome.Add(outSpans);
            outcome.Add(outNodes);
        });
}

} // namespace

std::vector<StepKind> RouteQueries()
{
    return {Tributaries(), TributaryArrays(), Upstream(),  UpstreamByMap(),
            Downstream(),  EndsOfSets(),      MainLines(), Overlaps()};
}

} // namespace reference
