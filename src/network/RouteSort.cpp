// Routes by one of their attributes: flow order, input order, number.

#include "network/Links.h"
#include "network/MiddleQuicksort.h"
#include "store/OrderSort.h"

#include <cwctype>
#include <map>

using obmgr::Id32;

namespace {

// Puts the entries into the order; the nodes of the list stay.
template <class List, class Value>
void Reorder(List& list, const std::vector<Value>& values, const std::vector<std::size_t>& order)
{
    auto next = order.begin();
    for (POSITION position = list.GetHeadPosition(); position; list.GetNext(position))
        list.SetAt(position, values[*next++]);
}

// The exchange sort of the list on one key.
template <class Value, class List, class KeyOf> void ExchangeSort(List& list, KeyOf&& keyOf)
{
    const std::vector<Value> values(list.begin(), list.end());
    std::vector<long> keys;
    keys.reserve(values.size());
    for (const Value& value : values)
        keys.push_back(keyOf(value));
    Reorder(list, values, obmgr::ExchangeSortOrder(keys));
}

int FlowOrderOf(const CRoute* route)
{
    return route ? route->GetSubAttributeInt(L"floworder", 0) : 0;
}

template <class Element> void SortByFlowOrder(CArray<Element*>& routes, long low, long high)
{
    obmgr::MiddleQuicksort(
        low, high, [&](long i) { return FlowOrderOf(routes[i]); },
        [&](long i, long j) { std::swap(routes[i], routes[j]); });
}

// Low and high of a sort over a list: negative means its ends. False when there is nothing to sort.
bool Bounds(std::size_t size, long& low, long& high)
{
    if (low < 0) low = 0;
    if (high < 0) high = static_cast<long>(size) - 1;
    return low < high && high < static_cast<long>(size);
}

} // namespace

void CObjectManager::SortFlowOrder(CList<long, long>& routeIds) const
{
    ExchangeSort<long>(routeIds, [&](long id) { return FlowOrderOf(m_Route.Find(id)); });
}

void CObjectManager::SortFlowOrder(CTypedPtrList<CObList, CRoute*>& routes) const
{
    ExchangeSort<CRoute*>(routes, FlowOrderOf);
}

void CObjectManager::sort_route_by_floworder(CArray<const CRoute*>& routes, long low, long high)
{
    SortByFlowOrder(routes, low, high);
}

void CObjectManager::sort_route_by_floworder(CArray<CRoute*>& routes, long low, long high)
{
    SortByFlowOrder(routes, low, high);
}

void CObjectManager::SortOrderRoute(CList<long, long>& routeIds, long low, long high) const
{
    std::vector<std::pair<long, const CRoute*>> entries;
    for (const long id : routeIds)
        entries.emplace_back(id, m_Route.Find(id));
    if (!Bounds(entries.size(), low, high)) return;
    struct UnknownId {};
    try {
        obmgr::MiddleQuicksort(
            low, high,
            [&](long i) {
                const CRoute* const route = entries[static_cast<std::size_t>(i)].second;
                if (!route) throw UnknownId(); // the order as it stands by then counts
                return route->GetSubAttributeInt(L"order", 0);
            },
            [&](long i, long j) {
                std::swap(entries[static_cast<std::size_t>(i)], entries[static_cast<std::size_t>(j)]);
            });
    } catch (const UnknownId&) {
    }
    routeIds.RemoveAll();
    for (const auto& entry : entries)
        routeIds.AddTail(entry.first);
}

void CObjectManager::SortOrderRoute(CTypedPtrList<CObList, CRoute*>& routes, long low, long high) const
{
    std::vector<std::pair<int, CRoute*>> entries;
    for (CRoute* route : routes)
        entries.emplace_back(route ? route->GetSubAttributeInt(L"order", 0) : 0, route);
    if (!Bounds(entries.size(), low, high)) return;
    obmgr::MiddleQuicksort(
        low, high, [&](long i) { return entries[static_cast<std::size_t>(i)].first; },
        [&](long i, long j) { std::swap(entries[static_cast<std::size_t>(i)], entries[static_cast<std::size_t>(j)]); });
    routes.RemoveAll();
    for (const auto& entry : entries)
        routes.AddTail(entry.second);
}

void CObjectManager::SortRouteInputNumber(const CList<long, long>& in, CList<long, long>& out) const
{
    CList<long, long> sorted;
    obmgr::AppendAll(sorted, in);
    SortOrderRoute(sorted, -1, -1);
    obmgr::AppendAll(out, sorted);
}

void CObjectManager::SortRouteRouteNumber(const CList<long, long>& in, CList<long, long>& out) const
{
    // The rank of each text among all stands for it.
    std::map<std::wstring, long> ranks;
    const auto numberOf = [&](long id) {
        const CRoute* const route = m_Route.Find(id);
        return route ? std::wstring(route->GetSubAttribute(L"routenum").View()) : std::wstring();
    };
    CList<long, long> sorted;
    obmgr::AppendAll(sorted, in);
    for (const long id : in)
        ranks[numberOf(id)];
    long rank = 0;
    for (auto& entry : ranks)
        entry.second = rank++;
    ExchangeSort<long>(sorted, [&](long id) { return ranks[numberOf(id)]; });
    obmgr::AppendAll(out, sorted);
}

void CObjectManager::SortRouteRouteNumberN3(const CList<long, long>& in, CList<long, long>& out) const
{
    // The comparison puts no order on all texts: a text that runs out equals every continuation of it. So what comes
    // out depends on each exchange, and they are made.
    struct Entry {
        long id;
        CString number;
    };
    std::vector<Entry> entries;
    for (const long id : in) {
        const CRoute* const route = m_Route.Find(id);
        entries.push_back({id, route ? route->GetSubAttribute(L"routenum") : CString()});
    }
    for (std::size_t p = 0; p < entries.size(); ++p)
        for (std::size_t q = p + 1; q < entries.size(); ++q)
            if (StrNumCmp(entries[q].number, entries[p].number) < 0) std::swap(entries[p], entries[q]);
    for (const Entry& entry : entries)
        out.AddTail(entry.id);
}

namespace {

bool IsDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

} // namespace

int CObjectManager::StrNumCmp(const wchar_t* a, const wchar_t* b)
{
    if (!a || !b || *a == L'\0') return 0;
    int result = 0;
    while (*a != L'\0' && *b != L'\0' && result == 0) {
        result = obmgr::AddIds(_fatoi(a), -static_cast<long>(_fatoi(b)));
        if (result != 0) break;
        a = SkipDigit(a);
        b = SkipDigit(b);
        if (*a == L'\0') break;
        while (*b != L'\0' && !IsDigit(*a) && !IsDigit(*b)) {
            result = static_cast<int>(*a) - static_cast<int>(*b);
            if (result != 0) break;
            ++a;
            if (*a == L'\0') return result;
            ++b;
        }
    }
    return result;
}

int CObjectManager::_fatoi(const wchar_t* text)
{
    if (!text) return 0;
    while (std::iswspace(static_cast<std::wint_t>(*text)))
        ++text;
    const bool isNegative = *text == L'-';
    if (*text == L'-' || *text == L'+') ++text;
    std::uint32_t value = 0;
    for (; IsDigit(*text); ++text)
        value = value * 10 + static_cast<std::uint32_t>(*text - L'0');
    return Id32(isNegative ? std::uint32_t{0} - value : value);
}

const wchar_t* CObjectManager::SkipDigit(const wchar_t* text)
{
    while (text && IsDigit(*text))
        ++text;
    return text;
}
