#include "reference/NetworkSorts.h"

#include <algorithm>

namespace reference {
namespace {

struct UnknownRoute {};

void AddOnce(Ids& out, int id)
{
    if (!Contains(out, id)) out.push_back(id);
}

void RemoveChain(Chains& chains, const Chain& chain)
{
    const auto at = std::find(chains.begin(), chains.end(), &chain);
    if (at != chains.end()) chains.erase(at);
}

// The chains of a set, one for each head route, the longest first. `owned` keeps them.
bool MakeChains(Network& net, const Ids& set, bool fromLowest, std::deque<Chain>& owned, Chains& chains)
{
    Ids heads;
    if (!net.GetUpperRouteId(set, heads)) return false;
    for (const int head : heads) {
        Chain chain;
        chain.routes.push_back(head);
        net.GetConnectRouteLowerAll(head, set, chain.routes);
        if (fromLowest) net.ReverseIdList(chain.routes);
        for (const int route : chain.routes) {
            double length = 0.0;
            if (!net.GetRouteLength(route, length)) return false;
            chain.length += length;
        }
        owned.push_back(chain);
        chains.push_back(&owned.back());
    }
    SortRouteLengthForBuranchSortLong(chains);
    return true;
}

template <class Run> bool SortBranches(Network& net, const Ids& in, bool fromLowest, Ids& out, Run run)
{
    std::deque<Chain> owned;
    Chains working;
    if (!MakeChains(net, in, fromLowest, owned, working)) return false;
    while (!working.empty())
        run(*working.front(), working, out);
    return true;
}

bool IsDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

int Difference(int x, int y)
{
    return static_cast<int>(static_cast<unsigned>(x) - static_cast<unsigned>(y));
}

} // namespace

void StableSort(std::vector<std::pair<int, int>>& idsAndKeys)
{
    std::vector<std::pair<int, int>> sorted;
    for (const auto& entry : idsAndKeys) {
        std::size_t place = 0;
        for (std::size_t i = 0; i < sorted.size(); ++i)
            if (!(entry.second < sorted[i].second)) place = i + 1;
        sorted.insert(sorted.begin() + static_cast<std::ptrdiff_t>(place), entry);
    }
    idsAndKeys = sorted;
}

// ---- branch sorts ----

const Chain* GetBuranchPoint(int routeId, const Chains& chains)
{
    for (const Chain* const chain : chains)
        if (Contains(chain->routes, routeId)) return chain;
    return nullptr;
}

const Chain* GetAndRemoveBuranchPoint(int routeId, const Chains& chains, const Chain& chain, const Ids& out)
{
    for (const Chain* const other : chains) {
        const auto at = std::find(other->routes.begin(), other->routes.end(), routeId);
        if (at == other->routes.end()) continue;
        const int next = at + 1 == other->routes.end() ? routeId : *(at + 1);
        if (!Contains(chain.routes, next) && !Contains(out, next)) return other;
    }
    return nullptr;
}

void SortRouteLength(Chains& chains, int low, int high)
{
    MiddleQuicksort(chains, low, high, [](const Chain* chain) { return chain->length; });
}

void SortRouteLengthForBuranchSortLong(Chains& chains)
{
    Chains rising = chains;
    SortRouteLength(rising, -1, -1);
    chains.clear();
    for (const Chain* const chain : rising)
        chains.insert(chains.begin(), chain);
}

void SortRouteLengthForBuranchSortShort(Chains& chains)
{
    SortRouteLength(chains, -1, -1);
}

void RunBuranchSort(const Chain& chain, Chains& chains, Ids& out)
{
    RemoveChain(chains, chain);
    for (const int route : chain.routes) {
        const Chain* const joining = GetBuranchPoint(route, chains);
        if (joining) RunBuranchSort(*joining, chains, out);
        AddOnce(out, route);
    }
}

void RunBuranchMaxExtend(const Chain& chain, Chains& chains, Ids& out)
{
    const Chain* current = &chain;
    while (current) {
        RemoveChain(chains, *current);
        if (current->routes.empty()) return;
        const Chain* next = nullptr;
        for (const int route : current->routes) {
            if (!next) next = GetBuranchPoint(route, chains);
            AddOnce(out, route);
        }
        current = next;
    }
}

void RunBuranchExtendReverse(const Chain& chain, Chains& chains, Ids& out)
{
    RemoveChain(chains, chain);
    std::vector<const Chain*> pending;
    for (const int route : chain.routes) {
        const Chain* const branch = GetAndRemoveBuranchPoint(route, chains, chain, out);
        if (branch) pending.push_back(branch);
        AddOnce(out, route);
    }
    for (const Chain* const branch : pending)
        RunBuranchExtendReverse(*branch, chains, out);
}

bool RunSetSplent(Network& net, const Chain& chain, Chains& chains, Ids& done)
{
    RemoveChain(chains, chain);
    if (chain.routes.empty()) return true;
    double distance = 0.0;
    const Chain* next = nullptr;
    for (const int route : chain.routes) {
        if (!next) next = GetBuranchPoint(route, chains);
        if (Contains(done, route)) continue;
        Records spans;
        if (!net.GetSortSpanInRoute(route, spans, false)) return false;
        for (Record* const span : spans) {
            distance += Double(*span, L"splength");
            span->Set(L"splent", DoubleText(distance));
        }
        done.push_back(route);
    }
    if (next) RunSetSplent(net, *next, chains, done);
    return true;
}

bool SortRouteBranchUpper(Network& net, const Ids& in, Ids& out)
{
    return SortBranches(net, in, false, out, RunBuranchSort);
}

bool SortRouteBranchLower(Network& net, const Ids& in, Ids& out)
{
    if (!SortRouteBranchUpper(net, in, out)) return false;
    net.ReverseIdList(out);
    return true;
}

bool SortRouteMaxExtendUpper(Network& net, const Ids& in, Ids& out)
{
    return SortBranches(net, in, false, out, RunBuranchMaxExtend);
}

bool SortRouteMaxExtendLower(Network& net, const Ids& in, Ids& out)
{
    return SortBranches(net, in, true, out, RunBuranchExtendReverse);
}

bool SetSpanMaxExtend(Network& net, int webId)
{
    const Ids routes = Network::IdsOf(net.RoutesOf(webId));
    std::deque<Chain> owned;
    Chains working;
    if (routes.empty() || !MakeChains(net, routes, false, owned, working)) return false;
    if (working.empty()) return false; // rings only
    Ids done;
    return RunSetSplent(net, *working.front(), working, done);
}

// ---- sorts by a key ----

void SortRouteRouteNumber(Network& net, const Ids& in, Ids& out)
{
    const auto number = [&](int id) {
        const Record* const route = net.Route(id);
        return route ? route->Get(L"routenum") : L"";
    };
    Ids ids = in;
    ExchangeSort(ids, [&](int p, int q) { return number(p) > number(q); });
    out.insert(out.end(), ids.begin(), ids.end());
}

void SortRouteRouteNumberN3(Network& net, const Ids& in, Ids& out)
{
    const auto number = [&](int id) {
        const Record* const route = net.Route(id);
        return route ? route->Get(L"routenum") : L"";
    };
    Ids ids = in;
    ExchangeSort(ids, [&](int p, int q) { return StrNumCmp(number(q).c_str(), number(p).c_str()) < 0; });
    out.insert(out.end(), ids.begin(), ids.end());
}

void SortRouteInputNumber(Network& net, const Ids& in, Ids& out)
{
    Ids ids = in;
    SortOrderRoute(net, ids, -1, -1);
    out.insert(out.end(), ids.begin(), ids.end());
}

void SortOrderRoute(Network& net, Ids& routeIds, int low, int high)
{
    try {
        MiddleQuicksort(routeIds, low, high, [&](int id) {
            const Record* const route = net.Route(id);
            if (!route) throw UnknownRoute();
            return route->Int(L"order");
        });
    } catch (const UnknownRoute&) { // the list stays as it stands by then
    }
}

void SortOrderRoute(Records& routes, int low, int high)
{
    MiddleQuicksort(routes, low, high, [](const Record* route) { return route->Int(L"order"); });
}

void SortOrder(Network& net, Type type, Ids& ids)
{
    const auto order = [&](int id) {
        const Record* const record = net.Find(type, id);
        return record ? record->Int(L"order") : 0;
    };
    ExchangeSort(ids, [&](int p, int q) { return order(p) > order(q); });
}

void ReNumberOrderWeb(Network& net, Ids& ids)
{
    SortOrder(net, objectdata::Web, ids);
    int number = 0;
    for (const int id : ids)
        if (Record* const web = net.Web(id)) web->Set(L"order", IntText(++number));
}

void ReNumberOrderSecgrouprec(Network& net, const Ids& ids)
{
    int number = 0;
    for (const int id : ids)
        if (Record* const record = net.Find(objectdata::SectGroupRec, id)) record->Set(L"order", IntText(++number));
}

bool SortIdList(Network& net, Type type, const wchar_t* key, Ids& ids)
{
    std::vector<std::pair<int, int>> pairs;
    for (const int id : ids)
        if (const Record* const record = net.Find(type, id)) pairs.emplace_back(id, record->Int(key));
    StableSort(pairs);
    ids.clear();
    for (const auto& pair : pairs)
        ids.push_back(pair.first);
    return true;
}

bool SortPipeIDList(Network& net, int pipeClass, Ids& ids, Ids& rest)
{
    static constexpr Type kTypes[] = {objectdata::Pipe, objectdata::Cbox, objectdata::Obox, objectdata::Ubox,
                                      objectdata::Egg};
    rest.clear();
    std::vector<std::pair<int, int>> pairs;
    for (const int id : ids) {
        const Record* record = nullptr;
        if (pipeClass >= 0 && pipeClass <= 4) record = net.Find(kTypes[pipeClass], id);
        if (record && record->Int(L"order") >= 0)
            pairs.emplace_back(id, record->Int(L"order"));
        else
            rest.push_back(id);
    }
    StableSort(pairs);
    ids.clear();
    for (const auto& pair : pairs)
        ids.push_back(pair.first);
    return true;
}

// ---- texts with numbers in them ----

int Fatoi(const wchar_t* text)
{
    while (*text == L' ' || (*text >= L'\t' && *text <= L'\r'))
        ++text;
    bool negative = false;
    if (*text == L'-' || *text == L'+') negative = *text++ == L'-';
    unsigned value = 0;
    for (; IsDigit(*text); ++text)
        value = value * 10 + static_cast<unsigned>(*text - L'0');
    return static_cast<int>(negative ? 0 - value : value);
}

const wchar_t* SkipDigit(const wchar_t* text)
{
    while (IsDigit(*text))
        ++text;
    return text;
}

int StrNumCmp(const wchar_t* a, const wchar_t* b)
{
    int r = 0;
    if (*a == L'\0') return 0;
    while (*a != L'\0' && *b != L'\0' && r == 0) {
        const int x = Fatoi(a);
        const int y = Fatoi(b);
        r = Difference(x, y);
        if (x != y) continue;
        a = SkipDigit(a);
        b = SkipDigit(b);
        if (*a == L'\0') break;
        while (*b != L'\0' && !IsDigit(*a) && !IsDigit(*b)) {
            r = *a - *b;
            if (r != 0) break;
            ++a;
            if (*a == L'\0') return r;
            ++b;
        }
    }
    return r;
}

} // namespace reference
