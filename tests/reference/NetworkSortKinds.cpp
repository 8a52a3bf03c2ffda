// The sorts as steps of random scripts: how arguments are chosen, and what the two calls give back.

#include "reference/LibraryEdits.h"

#include <algorithm>

namespace reference {
namespace {

using namespace objectdata;
using IdList = CList<long, long>;

// Two lists: the input, and what stands in the result before.
Args InAndOut(Choice& choice)
{
    Args args;
    Choice::Pack(args.numbers, choice.OneIn(3) ? choice.IdList(Route) : choice.RoutesOfWeb(choice.Web()));
    Choice::Pack(args.numbers, choice.Before(Route));
    return args;
}

// ---- from one list to another ----

template <class Member, class Sort> StepKind FromList(const char* name, Member library, Sort model)
{
    const auto add = [](const Ids& in, const Ids& out, Outcome& outcome) {
        outcome.Add(in);
        outcome.Add(out);
    };
    return {name, 2, InAndOut,
            [=](OpenNetwork& manager, const Args& args, Outcome& outcome) {
                Unpack unpack(args);
                Ids in = unpack.List();
                Ids out = unpack.List();
                {
                    PassedList inList(in);
                    PassedList outList(out);
                    if constexpr (std::is_void_v<decltype((manager.*library)(inList.Get(), outList.Get()))>)
                        (manager.*library)(inList.Get(), outList.Get());
                    else
                        outcome.Add((manager.*library)(inList.Get(), outList.Get()));
                }
                add(in, out, outcome);
            },
            [=](Network& net, const Args& args, Outcome& outcome) {
                Unpack unpack(args);
                const Ids in = unpack.List();
                Ids out = unpack.List();
                if constexpr (std::is_void_v<decltype(model(net, in, out))>)
                    model(net, in, out);
                else
                    outcome.Add(model(net, in, out));
                add(in, out, outcome);
            }};
}

std::vector<StepKind> ListSorts()
{
    using M = CObjectManager;
    return {
        FromList("SortRouteBranchUpper", &M::SortRouteBranchUpper, SortRouteBranchUpper),
        FromList("SortRouteBranchLower", &M::SortRouteBranchLower, SortRouteBranchLower),
        FromList("SortRouteMaxExtendUpper", &M::SortRouteMaxExtendUpper, SortRouteMaxExtendUpper),
        FromList("SortRouteMaxExtendLower", &M::SortRouteMaxExtendLower, SortRouteMaxExtendLower),
        FromList("SortRouteRouteNumber", &M::SortRouteRouteNumber, SortRouteRouteNumber),
        FromList("SortRouteRouteNumberN3", &M::SortRouteRouteNumberN3, SortRouteRouteNumberN3),
        FromList("SortRouteInputNumber", &M::SortRouteInputNumber, SortRouteInputNumber),
    };
}

// ---- steps of the branch sorts, over chains of the caller's ----

// Number of chains, then length and routes of each; the chain to run; what stands in the result before.
Args RandomChains(Choice& choice)
{
    Args args;
    const int count = 1 + choice.Pick(5);
    args.numbers.push_back(count);
    for (int i = 0; i < count; ++i) {
        args.numbers.push_back(choice.Pick(4));
        Ids routes;
        for (int left = choice.Pick(6); left > 0; --left)
            routes.push_back(choice.Route());
        Choice::Pack(args.numbers, routes);
    }
    args.numbers.push_back(choice.Pick(count));
    args.numbers.push_back(choice.OneIn(6)); // the chain is off the list already
    args.numbers.push_back(choice.Route());
    Choice::Pack(args.numbers, choice.Before(Route));
    return args;
}

struct ModelChains {
    explicit ModelChains(Unpack& in)
    {
        for (int left = in.Number(); left > 0; --left) {
            const int length = in.Number();
            owned.push_back({in.List(), static_cast<double>(length)});
        }
        for (const Chain& each : owned)
            list.push_back(&each);
        chain = list[static_cast<std::size_t>(in.Number())];
        if (in.Number() != 0) list.erase(std::find(list.begin(), list.end(), chain));
        route = in.Number();
        out = in.List();
    }
    int PlaceOf(const Chain* wanted) const
    {
        for (std::size_t i = 0; i < owned.size(); ++i)
            if (&owned[i] == wanted) return static_cast<int>(i);
        return -1;
    }
    void Show(Outcome& outcome) const
    {
        Ids places;
        for (const Chain* each : list)
            places.push_back(PlaceOf(each));
        outcome.Add(places);
        outcome.Add(out);
    }

    std::deque<Chain> owned;
    Chains list;
    const Chain* chain;
    int route;
    Ids out;
};

struct LibraryChains {
    explicit LibraryChains(const Args& args)
    {
        Unpack in(args);
        const ModelChains given(in);
        for (const Chain& each : given.owned) {
            owned.emplace_back();
            ToList(each.routes, owned.back().routeIds);
            owned.back().length = each.length;
        }
        for (const Chain* each : given.list)
            list.AddTail(&owned[static_cast<std::size_t>(given.PlaceOf(each))]);
        chain = &owned[static_cast<std::size_t>(given.PlaceOf(given.chain))];
        route = given.route;
        ToList(given.out, out);
    }
    int PlaceOf(const tagSortBranch* wanted) const
    {
        for (std::size_t i = 0; i < owned.size(); ++i)
            if (&owned[i] == wanted) return static_cast<int>(i);
        return -1;
    }
    void Show(Outcome& outcome) const
    {
        Ids places;
        for (const tagSortBranch* each : list)
            places.push_back(PlaceOf(each));
        outcome.Add(places);
        outcome.Add(out);
    }

    std::deque<tagSortBranch> owned;
    CObjectManager::SortBranches list;
    tagSortBranch* chain;
    int route;
    CList<long, long> out;
};

template <class InLibrary, class InModel> StepKind OverChains(const char* name, InLibrary inLibrary, InModel inModel)
{
    return {name, 1, RandomChains,
            [inLibrary](OpenNetwork& library, const Args& args, Outcome& outcome) {
                LibraryChains chains(args);
                inLibrary(library, chains, outcome);
                chains.Show(outcome);
            },
            [inModel](Network& net, const Args& args, Outcome& outcome) {
                Unpack in(args);
                ModelChains chains(in);
                inModel(net, chains, outcome);
                chains.Show(outcome);
            }};
}

using L = LibraryChains;
using R = ModelChains;

std::vector<StepKind> ChainSteps()
{
    using M = OpenNetwork;
    return {
        OverChains(
            "RunBuranchSort", [](M& m, L& c, Outcome&) { m.RunBuranchSort(c.chain, c.list, c.out); },
            [](Network&, R& c, Outcome&) { RunBuranchSort(*c.chain, c.list, c.out); }),
        OverChains(
            "RunBuranchMaxExtend", [](M& m, L& c, Outcome&) { m.RunBuranchMaxExtend(c.chain, c.list, c.out); },
            [](Network&, R& c, Outcome&) { RunBuranchMaxExtend(*c.chain, c.list, c.out); }),
        OverChains(
            "RunBuranchExtendReverse", [](M& m, L& c, Outcome&) { m.RunBuranchExtendReverse(c.chain, c.list, c.out); },
            [](Network&, R& c, Outcome&) { RunBuranchExtendReverse(*c.chain, c.list, c.out); }),
        OverChains(
            "GetBuranchPoint",
            [](M& m, L& c, Outcome& outcome) { outcome.Add(c.PlaceOf(m.GetBuranchPoint(c.route, c.list))); },
            [](Network&, R& c, Outcome& outcome) { outcome.Add(c.PlaceOf(GetBuranchPoint(c.route, c.list))); }),
        OverChains(
            "GetAndRemoveBuranchPoint",
            [](M& m, L& c, Outcome& outcome) {
                outcome.Add(c.PlaceOf(m.GetAndRemoveBuranchPoint(c.route, c.list, c.chain, c.out)));
            },
            [](Network&, R& c, Outcome& outcome) {
                outcome.Add(c.PlaceOf(GetAndRemoveBuranchPoint(c.route, c.list, *c.chain, c.out)));
            }),
        OverChains(
            "SortRouteLengthForBuranchSortLong",
            [](M& m, L& c, Outcome&) { m.SortRouteLengthForBuranchSortLong(c.list); },
            [](Network&, R& c, Outcome&) { SortRouteLengthForBuranchSortLong(c.list); }),
        OverChains(
            "SortRouteLengthForBuranchSortShort",
            [](M& m, L& c, Outcome&) { m.SortRouteLengthForBuranchSortShort(c.list); },
            [](Network&, R& c, Outcome&) { SortRouteLengthForBuranchSortShort(c.list); }),
        OverChains(
            "SortRouteLength", [](M& m, L& c, Outcome&) { m.SortRouteLength(c.list, -1, -1); },
            [](Network&, R& c, Outcome&) { SortRouteLength(c.list, -1, -1); }),
    };
}

StepKind Splent()
{
    return OverChains(
        "RunSetSplent",
        [](OpenNetwork& m, L& c, Outcome& outcome) { outcome.Add(m.RunSetSplent(c.chain, c.list, c.out)); },
        [](Network& net, R& c, Outcome& outcome) { outcome.Add(RunSetSplent(net, *c.chain, c.list, c.out)); });
}

// ---- one list in place ----

using InPlace = void (CObjectManager::*)(IdList&) const;

StepKind Sorted(const char* name, Type type, InPlace library, std::function<void(Network&, Ids&)> model)
{
    return {name, 1,
            [type](Choice& choice) {
                Args args;
                Choice::Pack(args.numbers, choice.IdList(type));
                return args;
            },
            [library](OpenNetwork& manager, const Args& args, Outcome& outcome) {
                CList<long, long> list;
                ToList(Unpack(args).List(), list);
                (manager.*library)(list);
                outcome.Add(list);
            },
            [model](Network& net, const Args& args, Outcome& outcome) {
                Ids ids = Unpack(args).List();
                model(net, ids);
                outcome.Add(ids);
            }};
}

StepKind ByOrder(const char* name, Type type, InPlace library)
{
    return Sorted(name, type, library, [type](Network& net, Ids& ids) { SortOrder(net, type, ids); });
}

StepKind ByNumber(const char* name, Type type, const wchar_t* key, bool (CObjectManager::*library)(IdList&) const)
{
    return {name, 1,
            [type](Choice& choice) {
                Args args;
                Choice::Pack(args.numbers, choice.IdList(type));
                return args;
            },
            [library](OpenNetwork& manager, const Args& args, Outcome& outcome) {
                CList<long, long> list;
                ToList(Unpack(args).List(), list);
                outcome.Add((manager.*library)(list));
                outcome.Add(list);
            },
            [type, key](Network& net, const Args& args, Outcome& outcome) {
                Ids ids = Unpack(args).List();
                outcome.Add(SortIdList(net, type, key, ids));
                outcome.Add(ids);
            }};
}

StepKind PipeList()
{
    static constexpr Type kTypes[] = {Pipe, Cbox, Obox, Ubox, Egg};
    return {"SortPipeIDList", 1,
            [](Choice& choice) {
                Args args{{choice.Pick(7) - 1}, {}};
                Choice::Pack(args.numbers, choice.IdList(kTypes[choice.Pick(5)]));
                Choice::Pack(args.numbers, choice.Before(Route));
                return args;
            },
            [](OpenNetwork& library, const Args& args, Outcome& outcome) {
                Unpack in(args);
                const int pipeClass = in.Number();
                CList<long, long> ids;
                CList<long, long> rest;
                ToList(in.List(), ids);
                ToList(in.List(), rest);
                outcome.Add(library.SortPipeIDList(pipeClass, ids, rest));
                outcome.Add(ids);
                outcome.Add(rest);
            },
            [](Network& net, const Args& args, Outcome& outcome) {
                Unpack in(args);
                const int pipeClass = in.Number();
                Ids ids = in.List();
                Ids rest = in.List();
                outcome.Add(SortPipeIDList(net, pipeClass, ids, rest));
                outcome.Add(ids);
                outcome.Add(rest);
            }};
}

// The bounds of a part of a list, or negative ones.
Args ListAndBounds(Choice& choice)
{
    Args args;
    const Ids ids = choice.IdList(Route);
    Choice::Pack(args.numbers, ids);
    const int size = static_cast<int>(ids.size());
    const int low = size == 0 ? -1 : choice.Pick(size + 1) - 1;
    const int high = size == 0 ? -1 : std::max(low, 0) + choice.Pick(size - std::max(low, 0));
    args.numbers.push_back(low);
    args.numbers.push_back(choice.OneIn(2) ? -1 : high);
    return args;
}

StepKind OrderOfIds()
{
    return {"SortOrderRoute", 2, ListAndBounds,
            [](OpenNetwork& library, const Args& args, Outcome& outcome) {
                Unpack in(args);
                CList<long, long> ids;
                ToList(in.List(), ids);
                const int low = in.Number();
                library.SortOrderRoute(ids, low, in.Number());
                outcome.Add(ids);
            },
            [](Network& net, const Args& args, Outcome& outcome) {
                Unpack in(args);
                Ids ids = in.List();
                const int low = in.Number();
                SortOrderRoute(net, ids, low, in.Number());
                outcome.Add(ids);
            }};
}

// The object forms: SortOrderRoute, SortFlowOrder and sort_route_by_floworder over the same routes.
StepKind OrderOfObjects()
{
    return {"sorts of route objects", 2, ListAndBounds,
            [](OpenNetwork& library, const Args& args, Outcome& outcome) {
                Unpack in(args);
                CArray<const CRoute*> constArray;
                CArray<CRoute*> array;
                CTypedPtrList<CObList, CRoute*> byOrder;
                CTypedPtrList<CObList, CRoute*> byFlow;
                for (const int id : in.List()) {
                    auto* const route = static_cast<CRoute*>(library.TableOf(Route).Find(id));
                    if (!route) continue;
                    constArray.Add(route);
                    array.Add(route);
                    byOrder.AddTail(route);
                    byFlow.AddTail(route);
                }
                library.SortOrderRoute(byOrder, -1, -1);
                library.SortFlowOrder(byFlow);
                outcome.AddObjects(library, byOrder);
                outcome.AddObjects(library, byFlow);
                if (array.GetSize() == 0) return;
                const long last = static_cast<long>(array.GetSize()) - 1;
                OpenNetwork::sort_route_by_floworder(constArray, 0, last);
                OpenNetwork::sort_route_by_floworder(array, last / 3, last);
                for (const CRoute* route : constArray)
                    outcome.Add(library, route);
                for (const CRoute* route : array)
                    outcome.Add(library, route);
                OpenNetwork::sort_route_by_floworder(array, 0, last + 1); // raises
            },
            [](Network& net, const Args& args, Outcome& outcome) {
                Unpack in(args);
                Records routes;
                for (const int id : in.List())
                    if (Record* const route = net.Route(id)) routes.push_back(route);
                Records byOrder = routes;
                Records byFlow = routes;
                SortOrderRoute(byOrder, -1, -1);
                net.SortFlowOrder(byFlow);
                outcome.AddObjects(net, Route, byOrder);
                outcome.AddObjects(net, Route, byFlow);
                if (routes.empty()) return;
                const int last = static_cast<int>(routes.size()) - 1;
                const auto key = [](const Record* route) { return route->Int(L"floworder"); };
                Records part = routes;
                MiddleQuicksort(routes, 0, last, key);
                MiddleQuicksort(part, last / 3, last, key);
                for (const Record* route : routes)
                    outcome.Add(net, Route, route);
                for (const Record* route : part)
                    outcome.Add(net, Route, route);
                throw Raised();
            }};
}

std::vector<StepKind> InPlaceSorts()
{
    using M = CObjectManager;
    return {
        Sorted("SortFlowOrder", Route, &M::SortFlowOrder, [](Network& net, Ids& ids) { net.SortFlowOrder(ids); }),
        Sorted("SortOrderSpanLowercentinv", Span, &M::SortOrderSpanLowercentinv,
               [](Network& net, Ids& ids) { net.SortOrderSpanLowercentinv(ids); }),
        OrderOfIds(),
        OrderOfObjects(),
        ByOrder("SortOrderOutq", Outq, &M::SortOrderOutq),
        ByOrder("SortOrderAreaInq", AreaInq, &M::SortOrderAreaInq),
        ByOrder("SortOrderAreaOutq", AreaOutq, &M::SortOrderAreaOutq),
        ByOrder("SortOrderFixInq", FixInq, &M::SortOrderFixInq),
        ByOrder("SortOrderIcpInq", IcpInq, &M::SortOrderIcpInq),
        ByOrder("SortOrderMountInq", MountInq, &M::SortOrderMountInq),
        ByOrder("SortOrderWeb", Web, &M::SortOrderWeb),
        ByOrder("SortOrderProfilearea", Profilearea, &M::SortOrderProfilearea),
        ByOrder("SortOrderSheetarea", Sheetarea, &M::SortOrderSheetarea),
        ByOrder("SortOrderProfilelayout", Profilelayout, &M::SortOrderProfilelayout),
        ByOrder("SortOrderDrawbeltdat", Drawbeltdat, &M::SortOrderDrawbeltdat),
        ByOrder("SortOrderDrawsecinfodat", Drawsecinfodat, &M::SortOrderDrawsecinfodat),
        ByNumber("SortInareasetIdList", Inareaset, L"iasratiosetnum", &M::SortInareasetIdList),
        ByNumber("SortOutareasetIdList", Outareaset, L"oasratiosetnum", &M::SortOutareasetIdList),
        ByNumber("SortAreasetIDList", AreaSet, L"asratiosetnum", &M::SortAreasetIDList),
        ByNumber("SortDrawbelttxIDList", Drawbelttx, L"order", &M::SortDrawbelttxIDList),
        ByNumber("SortExecutionIDList", Execution, L"ecnum", &M::SortExecutionIDList),
        ByNumber("SortRetainIDList", Retain, L"ernum", &M::SortRetainIDList),
        ByNumber("SortTimberIDList", Timber, L"tbnum", &M::SortTimberIDList),
        ByNumber("SortFoundIDList", Foundation, L"fdnum", &M::SortFoundIDList),
        ByNumber("SortManholeIDList", ManHole, L"order", &M::SortManholeIDList),
        ByNumber("SortSectIDList", Section, L"order", &M::SortSectIDList),
        ByNumber("SortSectGroupIDList", SectGroup, L"order", &M::SortSectGroupIDList),
        ByNumber("SortSectGroupRecIDList", SectGroupRec, L"order", &M::SortSectGroupRecIDList),
        PipeList(),
    };
}

// ---- sorts that write ----

StepKind MaxExtend()
{
    return {
        "SetSpanMaxExtend", 2,
        [](Choice& choice) {
            return Args{{choice.Web()}, {}};
        },
        [](OpenNetwork& library, const Args& args, Outcome& outcome) {
            outcome.Add(library.SetSpanMaxExtend(args.numbers[0]));
        },
        [](Network& net, const Args& args, Outcome& outcome) { outcome.Add(SetSpanMaxExtend(net, args.numbers[0])); }};
}

StepKind WebNumbers()
{
    return {"ReNumberOrderWeb", 1,
            [](Choice& choice) {
                Args args;
                Choice::Pack(args.numbers, choice.IdList(Web));
                return args;
            },
            [](OpenNetwork& library, const Args& args, Outcome& outcome) {
                CList<long, long> ids;
                ToList(Unpack(args).List(), ids);
                library.ReNumberOrderWeb(ids);
                outcome.Add(ids);
            },
            [](Network& net, const Args& args, Outcome& outcome) {
                Ids ids = Unpack(args).List();
                ReNumberOrderWeb(net, ids);
                outcome.Add(ids);
            }};
}

StepKind RecordNumbers()
{
    return {"ReNumberOrderSecgrouprec", 1,
            [](Choice& choice) {
                Args args;
                Choice::Pack(args.numbers, choice.IdList(SectGroupRec));
                return args;
            },
            [](OpenNetwork& library, const Args& args, Outcome&) {
                CList<long, long> ids;
                ToList(Unpack(args).List(), ids);
                library.ReNumberOrderSecgrouprec(ids);
            },
            [](Network& net, const Args& args, Outcome&) { ReNumberOrderSecgrouprec(net, Unpack(args).List()); }};
}

} // namespace

std::vector<StepKind> SortQueries()
{
    std::vector<StepKind> kinds;
    for (const auto& part : {ListSorts(), ChainSteps(), InPlaceSorts()})
        kinds.insert(kinds.end(), part.begin(), part.end());
    return kinds;
}

std::vector<StepKind> SortEdits()
{
    return {MaxExtend(), Splent(), WebNumbers(), RecordNumbers()};
}

} // namespace reference
