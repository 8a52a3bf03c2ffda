#include "integrity/LiteralChecks.h"

#include "control/DlgProgress.h"

#include <algorithm>
#include <map>

namespace integrity {

namespace {

bool contains(const auto& list, const auto& value)
{
    return std::find(list.begin(), list.end(), value) != list.end();
}

} // namespace

int literalCheckSpanLoop(const CObjectManager& manager, long webId, CList<long, long>& out)
{
    CTypedPtrList<CObList, CSpan*> spans;
    if (!manager.GetSpanFromWeb(webId, spans)) return -1;
    CDlgProgress progress;
    progress.Create();
    int units = 0;
    const auto goesOn = [&] {
        ++units;
        if (units % 20 == 0) {
            progress.SetPos(units);
            progress.PeekAndPump(1);
        }
        return progress.IsContinue();
    };

    progress.SetWindowText(L"Loop check of span - While retrieving data span ...");
    progress.SetRange(0, static_cast<int>(spans.GetCount()));
    progress.SetPos(0);
    std::map<long, std::size_t> indexes;
    for (const CSpan* span : spans) {
        for (const unsigned long node : {span->GetLowerNodeId(), span->GetUpperNodeId()})
            indexes.try_emplace(static_cast<long>(node), indexes.size());
        if (!goesOn()) return 2;
    }

    progress.SetWindowText(L"Loop check of span - In the span data ...");
    progress.SetPos(0);
    units = 0;
    const std::size_t n = indexes.size();
    std::vector<std::vector<int>> matrix(n, std::vector<int>(n));
    for (const CSpan* span : spans) {
        const std::size_t i = indexes.at(static_cast<long>(span->GetUpperNodeId()));
        const std::size_t j = indexes.at(static_cast<long>(span->GetLowerNodeId()));
        matrix[i][j] = 1;
        if (!goesOn()) return 2;
    }

    progress.SetWindowText(L"Loop check of span - During the test loop ...");
    progress.SetRange(0, static_cast<int>(n));
    progress.SetPos(0);
    units = 0;
    for (bool isChanged = true; isChanged;) {
        isChanged = false;
        progress.SetPos(0);
        for (std::size_t k = 0; k < n; ++k) {
            bool in = false;
            bool out1 = false;
            for (std::size_t i = 0; i < n; ++i) {
                in = in || matrix[i][k] == 1;
                out1 = out1 || matrix[k][i] == 1;
            }
            if (in == out1) continue;
            for (std::size_t i = 0; i < n; ++i)
                matrix[i][k] = matrix[k][i] = 0;
            isChanged = true;
            if (!goesOn()) return 2;
        }
    }

    progress.SetWindowText(L"Loop check of span - During the evaluation of the results ...");
    progress.SetRange(0, static_cast<int>(n));
    progress.SetPos(0);
    units = 0;
    const auto nodeOf = [&](std::size_t index) {
        return std::find_if(indexes.begin(), indexes.end(), [&](auto& entry) { return entry.second == index; })->first;
    };
    bool any = false;
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j) {
            if (matrix[i][j] != 1 || i == j) continue;
            const auto upper = static_cast<unsigned long>(nodeOf(i));
            const auto lower = static_cast<unsigned long>(nodeOf(j));
            const auto found = std::find_if(spans.begin(), spans.end(), [&](const CSpan* span) {
                return span->GetUpperNodeId() == upper && span->GetLowerNodeId() == lower;
            });
            if (found == spans.end()) return -1;
            out.AddTail((*found)->GetId32());
            any = true;
            if (!goesOn()) return 2;
        }
    return any ? 1 : 0;
}

int literalGetAbnormalRoute(CObjectManager& manager, const CList<long, long>& routes, CList<long, long>& pairs,
                            CList<long, long>& changed)
{
    pairs.RemoveAll();
    changed.RemoveAll();
    CDlgProgress progress;
    progress.Create();
    progress.SetRange(0, static_cast<int>(routes.GetCount()));
    progress.SetWindowText(L"Checking the integrity of Route ...");
    bool isChanged = false;
    int finished = 0;
    for (const long routeId : routes) {
        std::vector<long> visited{routeId};
        long current = routeId;
        const CRoute* const start = manager.GetRouteObjectOriginal(routeId);
        long connect = start ? start->Links()[obmgr::kConnect] : 0;
        const auto fault = [&](int code) {
            pairs.AddTail(current);
            pairs.AddTail(connect);
            return code;
        };
        while (connect != 0) {
            if (contains(visited, connect)) return fault(-1);
            CRoute* const currentRoute = manager.GetRouteObjectOriginal(current);
            const CRoute* const connectRoute = manager.GetRouteObjectOriginal(connect);
            if (!connectRoute) return fault(-3);
            if (connectRoute->GetSubAttribute(L"routenum") != currentRoute->GetSubAttribute(L"connectnum")) {
                currentRoute->WriteSubAttribute(L"connectnum", connectRoute->GetSubAttribute(L"routenum"));
                changed.AddTail(current);
                isChanged = true;
            }
            if (currentRoute->GetWebId() != connectRoute->GetWebId()) return fault(-4);
            CList<long, long> spans;
            CList<long, long> connectSpans;
            if (!manager.GetSortSpanInRoute(current, spans, true)) return fault(-3);
            if (!manager.GetSortSpanInRoute(connect, connectSpans, true)) return fault(-3);
            long below = 0;
            if (!manager.GetLowerSpan(spans.GetHead(), below) || below != connectSpans.GetTail()) return fault(-3);
            visited.push_back(connect);
            current = connect;
            connect = connectRoute->Links()[obmgr::kConnect];
        }
        progress.SetPos(finished++);
        progress.PeekAndPump(1);
        if (!progress.IsContinue()) return 1;
    }
    return isChanged ? -2 : 0;
}

bool literalFirstPair(const std::vector<std::wstring>& names, std::size_t& first, std::size_t& second)
{
    for (first = 0; first < names.size(); ++first)
        for (second = first + 1; second < names.size(); ++second)
            if (names[first] == names[second]) return true;
    return false;
}

namespace {

template <class T> bool removeIds(CObjectDataBase<T>& table, const std::vector<long>& ids)
{
    for (const long id : ids)
        if (T* const object = table.Find(id)) table.Remove(object);
    return !ids.empty();
}

} // namespace

bool literalDuplicateCheckSecgroup(CObjectManager& manager, CStringArray& names)
{
    names.RemoveAll();
    std::vector<CString> seen;
    std::vector<CString> reported;
    std::vector<long> removed;
    for (const CSectGroup* group : manager.GetSectGroupDb()) {
        const CString name = group->GetSubAttribute(L"sgname");
        if (name.IsEmpty()) removed.push_back(group->GetId32());
        if (!contains(seen, name)) {
            seen.push_back(name);
            continue;
        }
        removed.push_back(group->GetId32());
        if (contains(reported, name)) continue;
        reported.push_back(name);
        names.Add(name);
    }
    for (const CString& name : names) {
        CList<long, long> records;
        if (!manager.GetSecgrouprecIdList(name, records)) continue;
        manager.SortSectGroupRecIDList(records);
        int number = 0;
        for (const long id : records)
            manager.GetSectGroupRecObjectOriginal(id)->WriteSubAttributeInt(L"order", ++number);
    }
    return removeIds(manager.GetSectGroupDb(), removed);
}

bool literalDuplicateCheckSecgrouprec(CObjectManager& manager, CStringArray& names)
{
    names.RemoveAll();
    std::vector<std::vector<CString>> seen;
    std::vector<CString> reported;
    std::vector<long> removed;
    for (const CSectGroupRec* record : manager.GetSectGroupRecDb()) {
        std::vector<CString> key;
        for (const wchar_t* field : {L"srsecgroupname", L"srsectionkey", L"srstsecname", L"srendsecname"})
            key.push_back(record->GetSubAttribute(field));
        if (!contains(seen, key)) {
            seen.push_back(key);
            continue;
        }
        removed.push_back(record->GetId32());
        if (contains(reported, key[1])) continue;
        reported.push_back(key[1]);
        names.Add(key[1]);
    }
    return removeIds(manager.GetSectGroupRecDb(), removed);
}

} // namespace integrity
