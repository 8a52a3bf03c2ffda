// Records, numbers and the sorts that queries need.
#include "reference/Network.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <cwchar>

namespace reference {

using namespace objectdata;

double ReadDouble(const std::wstring& text)
{
    std::string number;
    std::size_t at = 0;
    const auto skip = [&](auto&& wanted) {
        const std::size_t from = at;
        while (at < text.size() && wanted(text[at]))
            number += static_cast<char>(text[at++]);
        return at - from;
    };
    const auto isDigit = [](wchar_t c) { return c >= L'0' && c <= L'9'; };
    const auto isSign = [](wchar_t c) { return c == L'-' || c == L'+'; };
    while (at < text.size() && text[at] == L' ')
        ++at;
    if (at < text.size() && isSign(text[at])) number += static_cast<char>(text[at++]);
    std::size_t digits = skip(isDigit);
    if (at < text.size() && text[at] == L'.') {
        number += static_cast<char>(text[at++]);
        digits += skip(isDigit);
    }
    if (digits == 0) return 0;
    if (at < text.size() && (text[at] == L'e' || text[at] == L'E')) {
        const std::string mantissa = number;
        number += static_cast<char>(text[at++]);
        if (at < text.size() && isSign(text[at])) number += static_cast<char>(text[at++]);
        if (skip(isDigit) == 0) number = mantissa;
    }
    return std::clamp(std::strtod(number.c_str(), nullptr), -DBL_MAX, DBL_MAX);
}

double Double(const Record& record, const wchar_t* key)
{
    return ReadDouble(record.Get(key));
}

std::wstring IntText(int number)
{
    return std::to_wstring(number);
}

std::wstring DoubleText(double number)
{
    wchar_t text[400];
    std::swprintf(text, std::size(text), L"%.13f", number);
    return text;
}

bool Contains(const Ids& ids, int id)
{
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

int CompareDouble(double a, double b, double tolerance)
{
    if (a - b > tolerance) return 1;
    return b - a > tolerance ? -1 : 0;
}

// ---- records ----

Records Network::All(Type type) const
{
    Records records;
    for (const RecordPtr& record : m_model[type].live)
        records.push_back(record.get());
    return records;
}

Records Network::Linked(Type type, std::size_t link, int id) const
{
    Records records;
    for (const RecordPtr& record : m_model[type].live)
        if (record->links[link] == id) records.push_back(record.get());
    return records;
}

Ids Network::IdsOf(const Records& records)
{
    Ids ids;
    for (const Record* const record : records)
        ids.push_back(record->id);
    return ids;
}

Record* Network::Create(Type type, const Ids& links, const Values& values)
{
    const auto record = std::make_shared<Record>();
    record->id = ++m_model.lastId;
    record->links = links;
    if (!m_model[type].Add(record->id, record)) return nullptr;
    if (withoutDefaults.contains(type)) return nullptr;
    for (const auto& [key, value] : DefaultsOf(type))
        record->Set(key, value);
    for (const auto& [key, value] : values)
        record->Set(key, value);
    return record.get();
}

bool Network::Remove(Type type, int id)
{
    if (!Find(type, id)) return false;
    m_model[type].Remove(id);
    return true;
}

Values Network::DefaultsOf(Type type)
{
    switch (type) {
    case objectdata::Node: return {{L"order", L"0"}, {L"divno", L"0"}};
    case objectdata::Span: return {{L"order", L"0"}, {L"splength", L"2.25"}};
    case objectdata::Route: return {{L"order", L"0"}, {L"rtstate", L"0"}, {L"floworder", L"1"}};
    case objectdata::Web: return {{L"order", L"0"}, {L"wbareasetflg", L"0"}, {L"wbendrname", L"E"}};
    default: return {{L"def", L"d"}};
    }
}

// ---- sorts ----

void Network::SortFlowOrder(Ids& routeIds) const
{
    const auto key = [&](int id) {
        const Record* const route = Route(id);
        return route ? route->Int(L"floworder") : 0;
    };
    for (std::size_t p = 0; p < routeIds.size(); ++p)
        for (std::size_t q = p + 1; q < routeIds.size(); ++q)
            if (key(routeIds[p]) > key(routeIds[q])) std::swap(routeIds[p], routeIds[q]);
}

void Network::SortFlowOrder(Records& routes) const
{
    for (std::size_t p = 0; p < routes.size(); ++p)
        for (std::size_t q = p + 1; q < routes.size(); ++q)
            if (routes[p]->Int(L"floworder") > routes[q]->Int(L"floworder")) std::swap(routes[p], routes[q]);
}

namespace {

void MiddleQuicksort(Records& records, int low, int high, const wchar_t* key)
{
    const auto keyAt = [&](int at) { return records.at(static_cast<std::size_t>(at))->Int(key); };
    for (;;) {
        const int pivot = keyAt((low + high) / 2);
        int i = low;
        int j = high;
        for (;;) {
            while (keyAt(i) < pivot)
                ++i;
            while (keyAt(j) > pivot)
                --j;
            if (i >= j) break;
            std::swap(records[static_cast<std::size_t>(i)], records[static_cast<std::size_t>(j)]);
            ++i;
            --j;
        }
        if (low < i - 1) MiddleQuicksort(records, low, i - 1, key);
        low = j + 1;
        if (low >= high) return;
    }
}

} // namespace

void Network::SortRoutesByFlowOrder(Records& routes, int low, int high) const
{
    MiddleQuicksort(routes, low, high, L"floworder");
}

void Network::SortOrderRoute(Records& routes) const
{
    if (routes.empty()) return;
    MiddleQuicksort(routes, 0, static_cast<int>(routes.size()) - 1, L"order");
}

void Network::SortOrderSpanLowercentinv(Ids& spanIds) const
{
    const auto key = [&](int id) {
        const Record* const span = Span(id);
        return span ? Double(*span, L"lowercentinv") : 0.0;
    };
    for (std::size_t p = 0; p < spanIds.size(); ++p)
        for (std::size_t q = p + 1; q < spanIds.size(); ++q)
            if (CompareDouble(key(spanIds[q]), key(spanIds[p]), 1e-5) > 0) std::swap(spanIds[p], spanIds[q]);
}

} // namespace reference
