// The edits of the network as steps of random scripts: how arguments are chosen, and what the two calls give back.

#include "reference/LibraryEdits.h"

namespace reference {
namespace {

using namespace objectdata;

constexpr int kUntouched = -5;        // what an id result holds before the call
constexpr std::size_t kCrowded = 150; // with more spans than these nothing large is copied

// The removed, or the made, objects of either side.
Objects NoObjects(const OpenNetwork&)
{
    return {};
}

Records NoObjects(const Network&)
{
    return {};
}

void Show(const OpenNetwork& library, Outcome& outcome, Type, const CPipeObject* object)
{
    outcome.Add(library, object);
}

void Show(const Network& model, Outcome& outcome, Type type, const Record* record)
{
    outcome.Add(model, type, record);
}

// ---- single records ----

// How an object is asked for: with its id, without it, or as an object.
enum Form { WithId, WithoutId, AsObject, kForms };

struct Wanted {
    Type type;
    bool withArea; // for a span
    Ids links;
    Values values;
};

Wanted Take(Unpack& in)
{
    const auto type = static_cast<Type>(in.Number());
    const bool withArea = in.Number() != 0;
    const Ids links = in.List();
    return {type, withArea, links, in.Pairs()};
}

CPipeObject* MakeObject(OpenNetwork& library, const Wanted& wanted)
{
    const Ids& links = wanted.links;
    const support::Values values = ToValues(wanted.values);
    switch (wanted.type) {
    case Node: return library.CreateNode(values);
    case Web: return library.CreateWeb(links[0], values);
    case Route: return library.CreateRoute(links[0], links[1], values);
    default:
        if (wanted.withArea) return library.CreateSpan(links[0], links[1], links[2], values);
        return library.CreateSpanNoarea(links[0], links[1], links[2], values);
    }
}

bool Make(OpenNetwork& library, const Wanted& wanted, int form, int& newId)
{
    if (form == AsObject) {
        const CPipeObject* const made = MakeObject(library, wanted);
        if (made) newId = made->GetId32();
        return made != nullptr;
    }
    const Ids& links = wanted.links;
    const support::Values values = ToValues(wanted.values);
    PassedId passed(newId);
    long* const id = form == WithId ? &passed.Get() : nullptr;
    switch (wanted.type) {
    case Node: return library.CreateNode(values, id);
    case Web: return library.CreateWeb(links[0], values, id);
    case Route: return library.CreateRoute(links[0], links[1], values, id);
    default:
        if (wanted.withArea) return library.CreateSpan(links[0], links[1], links[2], values, id);
        return library.CreateSpanNoarea(links[0], links[1], links[2], values, id);
    }
}

bool Make(Network& model, const Wanted& wanted, int form, int& newId)
{
    const Ids& links = wanted.links;
    int id = newId;
    const auto make = [&] {
        switch (wanted.type) {
        case Node: return CreateNode(model, wanted.values, &id);
        case Web: return CreateWeb(model, links[0], wanted.values, &id);
        case Route: return CreateRoute(model, links[0], links[1], wanted.values, &id);
        default:
            if (wanted.withArea) return CreateSpan(model, links[0], links[1], links[2], wanted.values, &id);
            return CreateSpanNoarea(model, links[0], links[1], links[2], wanted.values, &id);
        }
    };
    const bool done = make();
    if (form == WithId || (form == AsObject && done)) newId = id;
    return done;
}

StepKind Creation(const char* name, int weight, Type type, std::function<Ids(Choice&)> links)
{
    return MakeStep(
        name, weight,
        [type, links](Choice& choice) {
            Args args{{choice.Pick(kForms), static_cast<int>(type), choice.Pick(3)}, {}};
            Choice::Pack(args.numbers, links(choice));
            Choice::Pack(args.texts, choice.SomeValues(type));
            return args;
        },
        [](auto& net, Unpack& in, Outcome& outcome) {
            const int form = in.Number();
            int id = kUntouched;
            outcome.Add(Make(net, Take(in), form, id));
            outcome.Add(id);
        });
}

std::vector<StepKind> Creations()
{
    return {
        Creation("CreateNode", 2, Node, [](Choice&) { return Ids(); }),
        Creation("CreateWeb", 2, Web, [](Choice& choice) { return Ids{choice.Pick(8) - 1}; }),
        Creation("CreateRoute", 3, Route,
                 [](Choice& choice) {
                     return Ids{choice.Web(), choice.OneIn(3) ? 0 : choice.Route()};
                 }),
        Creation("CreateSpan", 3, Span,
                 [](Choice& choice) {
                     return Ids{choice.Node(), choice.Node(), choice.Route()};
                 }),
    };
}

// ---- spans added to a route, and taken off ----

// What a new route hangs on: mostly a route of the web, or its flow end.
int ConnectIn(Choice& choice, int webId)
{
    if (choice.OneIn(4)) return 0;
    const Records routes = choice.Design().RoutesOf(webId);
    if (routes.empty() || choice.OneIn(6)) return choice.Route();
    return routes[static_cast<std::size_t>(choice.Pick(static_cast<int>(routes.size())))]->id;
}

StepKind SpanNode()
{
    return MakeStep(
        "CreateSpanNode", 4,
        [](Choice& choice) {
            Args args{{choice.Span(), choice.Pick(2), choice.Pick(4)}, {}};
            Choice::Pack(args.texts, choice.SomeValues(Span));
            return args;
        },
        [](auto& net, Unpack& in, Outcome& outcome) {
            const int span = in.Number();
            const bool below = in.Number() != 0;
            const int form = in.Number();
            const Values values = in.Pairs();
            int newSpan = kUntouched;
            int newNode = kUntouched;
            if (form == 0)
                outcome.Add(CreateSpanNode(net, span, values, &newSpan, below));
            else if (form == 1)
                outcome.Add(CreateSpanNode(net, span, values, nullptr, nullptr, below));
            else
                outcome.Add(CreateSpanNode(net, span, values, &newSpan, &newNode, below));
            outcome.Add(newSpan);
            outcome.Add(newNode);
        });
}

StepKind RouteSpanNode()
{
    return MakeStep(
        "CreateRouteSpanNode", 8,
        [](Choice& choice) {
            const int web = choice.Web();
            Args args{{web, ConnectIn(choice, web)}, {}};
            Choice::Pack(args.texts, choice.SomeValues(Route));
            return args;
        },
        [](auto& net, Unpack& in, Outcome& outcome) {
            const int web = in.Number();
            const int connect = in.Number();
            std::conditional_t<std::is_same_v<decltype(net), Network&>, Record*, CSpan*> span = nullptr;
            const auto* const route = CreateRouteSpanNode(net, web, connect, in.Pairs(), span);
            Show(net, outcome, Route, route);
            if (route) Show(net, outcome, Span, span);
        });
}

StepKind MultiSpanNode()
{
    return MakeStep(
        "CreateMultiSpanNode", 3,
        [](Choice& choice) {
            Args args{{choice.Route(), choice.Pick(5) - 1}, {}};
            Choice::Pack(args.numbers, choice.Before(Span));
            Choice::Pack(args.numbers, choice.Before(Node));
            Choice::Pack(args.texts, choice.SomeValues(Span));
            return args;
        },
        [](auto& net, Unpack& in, Outcome& outcome) {
            const int route = in.Number();
            const int count = in.Number();
            Ids spans = in.List();
            Ids nodes = in.List();
            outcome.Add(CreateMultiSpanNode(net, route, in.Pairs(), count, spans, nodes));
            outcome.Add(spans);
            outcome.Add(nodes);
        });
}

// Some ids, a count, and a list that gets the new spans.
template <class Step> StepKind SpanList(const char* name, std::function<Ids(Choice&)> ids, int counts, Step step)
{
    return MakeStep(
        name, 3,
        [ids, counts](Choice& choice) {
            Args args;
            Choice::Pack(args.numbers, ids(choice));
            args.numbers.push_back(choice.Pick(counts));
            Choice::Pack(args.numbers, choice.Before(Span));
            return args;
        },
        [step](auto& net, Unpack& in, Outcome& outcome) {
            const Ids given = in.List();
            const auto count = static_cast<unsigned>(in.Number());
            Ids spans = in.List();
            outcome.Add(step(net, given, count, spans));
            outcome.Add(spans);
        });
}

StepKind Removal()
{
    return MakeStep(
        "RemoveSpan", 2,
        [](Choice& choice) {
            return Args{{choice.Route(), choice.Pick(4)}, {}};
        },
        [](auto& net, Unpack& in, Outcome& outcome) {
            const int route = in.Number();
            const int count = in.Number();
            auto removed = NoObjects(net);
            outcome.Add(RemoveSpan(net, route, static_cast<unsigned>(count), removed));
            for (const auto* const span : removed)
                Show(net, outcome, Span, span);
        });
}

std::vector<StepKind> Extensions()
{
    return {
        SpanNode(),
        RouteSpanNode(),
        MultiSpanNode(),
        SpanList(
            "AddSpan", [](Choice& choice) { return Ids{choice.Route()}; }, 4,
            [](auto& net, const Ids& ids, unsigned count, Ids& spans) { return AddSpan(net, ids[0], count, spans); }),
        SpanList(
            "InsertSpan",
            [](Choice& choice) {
                return Ids{choice.Route(), choice.Span()};
            },
            4,
            [](auto& net, const Ids& ids, unsigned count, Ids& spans) {
                return InsertSpan(net, ids[0], ids[1], count, spans);
            }),
        SpanList(
            "DivideSpan", [](Choice& choice) { return Ids{choice.Span()}; }, 5,
            [](auto& net, const Ids& ids, unsigned count, Ids& spans) {
                return DivideSpan(net, ids[0], count, spans);
            }),
        Removal(),
    };
}

// ---- rewiring and flow ends ----

// The uppermost or lowest node of a route, now and then any other.
int EndNode(Choice& choice, int routeId)
{
    int node = 0;
    if (choice.OneIn(5)) return choice.Node();
    if (choice.OneIn(2))
        choice.Design().GetMostUpperNodeId(routeId, node);
    else
        choice.Design().GetMostLowerNodeId(routeId, node);
    return node;
}

Args RouteAndConnect(Choice& choice)
{
    return {{choice.Route(), choice.OneIn(3) ? 0 : choice.Route()}, {}};
}

// A step with nothing but ids, and with no result of its own.
template <class Step> StepKind Silent(const char* name, int weight, std::function<Args(Choice&)> choose, Step step)
{
    return MakeStep(name, weight, std::move(choose), [step](auto& net, Unpack& in, Outcome&) { step(net, in); });
}

std::vector<StepKind> Rewirings()
{
    return {
        MakeStep("ConnectRoute", 2, RouteAndConnect,
                 [](auto& net, Unpack& in, Outcome& outcome) {
                     const int route = in.Number();
                     outcome.Add(ConnectRoute(net, route, in.Number()));
                 }),
        MakeStep(
            "ChangeConnectRoute", 2,
            [](Choice& choice) {
                Args args = RouteAndConnect(choice);
                args.numbers.insert(args.numbers.end(), {choice.Web(), choice.Web()});
                return args;
            },
            [](auto& net, Unpack& in, Outcome& outcome) {
                const int route = in.Number();
                const int connect = in.Number();
                const int oldWeb = in.Number();
                outcome.Add(ChangeConnectRoute(net, route, connect, oldWeb, in.Number()));
            }),
        Silent(
            "UpdateConnectRouteNum", 2,
            [](Choice& choice) {
                return Args{{choice.Web()}, {}};
            },
            [](auto& net, Unpack& in) { UpdateConnectRouteNum(net, in.Number()); }),
        Silent(
            "ReverseSpanInRoute", 2,
            [](Choice& choice) {
                return Args{{choice.Route()}, {}};
            },
            [](auto& net, Unpack& in) { ReverseSpanInRoute(net, in.Number()); }),
        Silent(
            "SetUpperRouteObject", 1,
            [](Choice& choice) {
                return Args{{choice.Route(), choice.Web()}, {}};
            },
            [](auto& net, Unpack& in) {
                const int route = in.Number();
                SetUpperRouteObject(net, route, in.Number());
            }),
        Silent(
            "ReSetRouteSortOrder", 2,
            [](Choice& choice) {
                return Args{{choice.Web(), choice.OneIn(2) ? 0 : choice.Route()}, {}};
            },
            [](auto& net, Unpack& in) {
                const int web = in.Number();
                ReSetRouteSortOrder(net, web, in.Number());
            }),
        MakeStep(
            "UpdateManHoleNumSameRouteNum", 2,
            [](Choice& choice) {
                return Args{{choice.Route(), choice.Pick(2)}, {}};
            },
            [](auto& net, Unpack& in, Outcome& outcome) {
                const int route = in.Number();
                std::vector<std::wstring> oldNumbers = {L"before"};
                std::vector<std::wstring> newNumbers;
                UpdateManHoleNumSameRouteNum(net, route, oldNumbers, newNumbers, in.Number() != 0);
                outcome.Add(oldNumbers);
                outcome.Add(newNumbers);
            }),
        MakeStep(
            "ReSetFlowEndNode", 4,
            [](Choice& choice) {
                return Args{{choice.Route()}, {choice.Name()}};
            },
            [](auto& net, Unpack& in, Outcome& outcome) {
                const int route = in.Number();
                outcome.Add(ReSetFlowEndNode(net, route, in.Text()));
            }),
        MakeStep(
            "ReSetFlowEndNodeByNode", 4,
            [](Choice& choice) {
                const int route = choice.Route();
                Args args{{route, EndNode(choice, route)}, {choice.Name()}};
                Choice::Pack(args.numbers, choice.Before(Route));
                return args;
            },
            [](auto& net, Unpack& in, Outcome& outcome) {
                const int route = in.Number();
                const int node = in.Number();
                Ids rewired = in.List();
                Ids reversed = rewired;
                outcome.Add(ReSetFlowEndNodeByNode(net, route, node, in.Text(), rewired, reversed));
                outcome.Add(rewired);
                outcome.Add(reversed);
            }),
        MakeStep(
            "ReleaseDivideNode", 1,
            [](Choice& choice) {
                Args args{{choice.OneIn(2) ? choice.Pick(4) + 1 : choice.Node()}, {}};
                Choice::Pack(args.numbers, choice.Before(Node));
                return args;
            },
            [](auto& net, Unpack& in, Outcome& outcome) {
                const int owner = in.Number();
                Ids nodes = in.List();
                outcome.Add(ReleaseDivideNode(net, owner, nodes));
                outcome.Add(nodes);
            }),
    };
}

// ---- deletion ----

// bool f(id)
StepKind ById(const char* name, int weight, Type type, bool (CObjectManager::*library)(long),
              std::function<bool(Network&, int)> model)
{
    return {name, weight,
            [type](Choice& choice) {
                return Args{{choice.Id(type)}, {}};
            },
            [library](OpenNetwork& manager, const Args& args, Outcome& outcome) {
                outcome.Add((manager.*library)(args.numbers[0]));
            },
            [model](Network& net, const Args& args, Outcome& outcome) { outcome.Add(model(net, args.numbers[0])); }};
}

// bool f(id, bool)
StepKind ByIdAndFlag(const char* name, int weight, Type type, bool (CObjectManager::*library)(long, bool),
                     std::function<bool(Network&, int, bool)> model)
{
    return {name, weight,
            [type](Choice& choice) {
                return Args{{choice.Id(type), choice.Pick(2)}, {}};
            },
            [library](OpenNetwork& manager, const Args& args, Outcome& outcome) {
                outcome.Add((manager.*library)(args.numbers[0], args.numbers[1] != 0));
            },
            [model](Network& net, const Args& args, Outcome& outcome) {
                outcome.Add(model(net, args.numbers[0], args.numbers[1] != 0));
            }};
}

StepKind ByRoute(const char* name, Type type, bool (CObjectManager::*library)(long))
{
    return ById(name, 1, Route, library,
                [type](Network& net, int routeId) { return DeleteByRoute(net, type, routeId); });
}

StepKind Connection()
{
    return MakeStep(
        "ConnectSpan", 3,
        [](Choice& choice) {
            const int first = choice.Span();
            int second = choice.Span();
            if (!choice.OneIn(4)) choice.Design().GetLowerSpan(first, second);
            return choice.OneIn(8) ? Args{{second, first}, {}} : Args{{first, second}, {}};
        },
        [](auto& net, Unpack& in, Outcome& outcome) {
            const int first = in.Number();
            outcome.Add(ConnectSpan(net, first, in.Number()));
        });
}

StepKind RouteListDeletion()
{
    return MakeStep(
        "DeleteRouteObjectListAll", 1,
        [](Choice& choice) {
            const int web = choice.Web();
            Ids routes = choice.OneIn(4) ? choice.RoutesOfWeb(web) : Ids();
            for (int left = choice.Pick(3); left > 0; --left)
                routes.push_back(choice.Route());
            Args args{{web}, {}};
            Choice::Pack(args.numbers, routes);
            return args;
        },
        [](auto& net, Unpack& in, Outcome& outcome) {
            const int web = in.Number();
            outcome.Add(DeleteRouteObjectListAll(net, web, in.List()));
        });
}

std::vector<StepKind> Deletions()
{
    using M = CObjectManager;
    return {
        Connection(),
        ById("DeleteNodeObject", 1, Node, &M::DeleteNodeObject, DeleteNodeObject),
        ById("DeleteIcpInqByNode", 1, Node, &M::DeleteIcpInqByNode, DeleteIcpInqByNode),
        ByIdAndFlag("DeleteSpanObject", 4, Span, &M::DeleteSpanObject, DeleteSpanObject),
        ById("DeleteSpanObjectOnly", 1, Span, &M::DeleteSpanObjectOnly, DeleteSpanObjectOnly),
        ByIdAndFlag("DeleteRouteObject", 2, Route, &M::DeleteRouteObject, DeleteRouteObject),
        ById("DeleteRouteObjectConnectEnd", 1, Route, &M::DeleteRouteObjectConnectEnd, DeleteRouteObjectConnectEnd),
        ByIdAndFlag("DeleteRouteObjectUpperAll", 1, Route, &M::DeleteRouteObjectUpperAll,
                    [](Network& net, int routeId, bool) { return DeleteRouteObjectUpperAll(net, routeId); }),
        RouteListDeletion(),
        ById("DeleteWebObject", 1, Web, &M::DeleteWebObject, DeleteWebObject),
        ById("DeleteWebObjectForQ7Export", 1, Web, &M::DeleteWebObjectForQ7Export, DeleteWebObjectForQ7Export),
        ById("DeleteIntersAndPointByRoute", 1, Route, &M::DeleteIntersAndPointByRoute, DeleteIntersAndPointByRoute),
        ById("DeleteIntersAndPointByRouteForQ7Export", 1, Route, &M::DeleteIntersAndPointByRouteForQ7Export,
             DeleteIntersAndPointByRouteForQ7Export),
        ByRoute("DeleteGlchangeByRoute", GlChange, &M::DeleteGlchangeByRoute),
        ByRoute("DeleteLateralByRoute", Lateral, &M::DeleteLateralByRoute),
        ByRoute("DeleteVjointByRoute", Vjoint, &M::DeleteVjointByRoute),
        ByRoute("DeleteAreaInqByRoute", AreaInq, &M::DeleteAreaInqByRoute),
        ByRoute("DeleteAreaOutqByRoute", AreaOutq, &M::DeleteAreaOutqByRoute),
        ByRoute("DeleteFixInqByRoute", FixInq, &M::DeleteFixInqByRoute),
        ByRoute("DeleteMountInqByRoute", MountInq, &M::DeleteMountInqByRoute),
        ByRoute("DeleteOutqByRoute", Outq, &M::DeleteOutqByRoute),
        ById("DeleteSpanAreaset", 1, Span, &M::DeleteSpanAreaset, DeleteSpanAreaset),
        ById("DeleteSpanAreatset", 1, Span, &M::DeleteSpanAreatset, DeleteSpanAreatset),
        ById("DeleteSpanSpdxfin", 1, Span, &M::DeleteSpanSpdxfin, DeleteSpanSpdxfin),
        ById("DeleteSpanDrawbelttx", 1, Span, &M::DeleteSpanDrawbelttx, DeleteSpanDrawbelttx),
        ById("DeleteAreaInqInareaset", 1, AreaInq, &M::DeleteAreaInqInareaset, DeleteAreaInqInareaset),
        ById("DeleteAreaOutqOutareaset", 1, AreaOutq, &M::DeleteAreaOutqOutareaset, DeleteAreaOutqOutareaset),
    };
}

// ---- copying ----

// A source to copy, none when the design is large already.
int Source(Choice& choice, Type type)
{
    return choice.Design().All(Span).size() > kCrowded ? 0 : choice.Id(type);
}

// Ids, and a new id.
template <class Copy> StepKind Copying(const char* name, int weight, std::function<Args(Choice&)> choose, Copy copy)
{
    return MakeStep(name, weight, std::move(choose), [copy](auto& net, Unpack& in, Outcome& outcome) {
        int id = kUntouched;
        outcome.Add(copy(net, in, id));
        outcome.Add(id);
    });
}

template <class Copy> StepKind CopyUpper(const char* name, Copy copy)
{
    return MakeStep(
        name, 1,
        [](Choice& choice) {
            Args args{{Source(choice, Route), choice.OneIn(3) ? 0 : choice.Route()}, {}};
            Choice::Pack(args.numbers, choice.Before(Route));
            return args;
        },
        [copy](auto& net, Unpack& in, Outcome& outcome) {
            const int route = in.Number();
            const int connect = in.Number();
            Ids ids = in.List();
            outcome.Add(copy(net, route, connect, ids));
            outcome.Add(ids);
        });
}

bool CopyUpperSub(OpenNetwork& library, int routeId, int connectId, Ids& newIds)
{
    PassedList list(newIds);
    return library.CopyAllUpperRouteObjectSub(routeId, connectId, list.Get());
}

bool CopyUpperSub(Network& model, int routeId, int connectId, Ids& newIds)
{
    return CopyAllUpperRouteObject(model, routeId, connectId, newIds);
}

bool CopyAreaInq(OpenNetwork& library, int id, int& newId)
{
    PassedId passed(newId);
    return library.CopyAreaInqObject(id, passed.Get());
}

bool CopyAreaInq(Network&, int, int&)
{
    return true;
}

std::vector<StepKind> Copies()
{
    return {
        Copying(
            "CopyNodeObject", 1,
            [](Choice& choice) {
                return Args{{choice.Node()}, {}};
            },
            [](auto& net, Unpack& in, int& id) { return CopyNodeObject(net, in.Number(), id); }),
        Copying(
            "CopyAreaInqObject", 1,
            [](Choice& choice) {
                return Args{{choice.Id(AreaInq)}, {}};
            },
            [](auto& net, Unpack& in, int& id) { return CopyAreaInq(net, in.Number(), id); }),
        Copying(
            "CopySpanObject", 2,
            [](Choice& choice) {
                return Args{{choice.Span(), choice.OneIn(2) ? 0 : choice.Node()}, {}};
            },
            [](auto& net, Unpack& in, int& id) {
                const int span = in.Number();
                return CopySpanObject(net, span, in.Number(), id);
            }),
        Copying(
            "CopyAreasetObjectFromSpan", 1,
            [](Choice& choice) {
                return Args{{choice.Span(), choice.Span()}, {}};
            },
            [](auto& net, Unpack& in, int&) {
                const int from = in.Number();
                return CopyAreasetObjectFromSpan(net, from, in.Number());
            }),
        Copying(
            "CopyRouteObject", 2,
            [](Choice& choice) {
                return Args{{Source(choice, Route), choice.OneIn(3) ? 0 : choice.Route()}, {}};
            },
            [](auto& net, Unpack& in, int& id) {
                const int route = in.Number();
                return CopyRouteObject(net, route, in.Number(), id);
            }),
        Copying(
            "CopyWebObject", 2,
            [](Choice& choice) {
                return Args{{Source(choice, Web)}, {}};
            },
            [](auto& net, Unpack& in, int& id) { return CopyWebObject(net, in.Number(), id); }),
        CopyUpper("CopyAllUpperRouteObject",
                  [](auto& net, int route, int connect, Ids& ids) {
                      return CopyAllUpperRouteObject(net, route, connect, ids);
                  }),
        CopyUpper("CopyAllUpperRouteObjectSub",
                  [](auto& net, int route, int connect, Ids& ids) { return CopyUpperSub(net, route, connect, ids); }),
    };
}

} // namespace

std::vector<StepKind> NetworkEdits()
{
    std::vector<StepKind> kinds;
    for (const auto& part : {Creations(), Extensions(), Rewirings(), Deletions(), Copies()})
        kinds.insert(kinds.end(), part.begin(), part.end());
    return kinds;
}

} // namespace reference
