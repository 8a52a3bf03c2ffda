// Orders of record lists by one key, and numbering them anew.

#include "common/Numeric.h"
#include "network/FallingLevels.h"
#include "network/Links.h"
#include "store/OrderSort.h"

#include <cmath>
#include <numeric>

namespace {

void SortIds(const obmgr::ObjectTable& table, CList<long, long>& ids)
{
    std::vector<long> sorted(ids.begin(), ids.end());
    obmgr::SortByOrder(table, sorted);
    ids.RemoveAll();
    obmgr::AppendAll(ids, sorted);
}

// Equality within a tolerance does not carry over from pair to pair. When it does for these levels, their ranks, the
// highest first, stand for them; otherwise there are none.
std::vector<long> RanksOf(const std::vector<double>& levels)
{
    if (std::any_of(levels.begin(), levels.end(), [](double level) { return !std::isfinite(level); })) return {};
    std::vector<double> distinct = levels;
    std::sort(distinct.begin(), distinct.end());
    distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
    for (std::size_t i = 1; i < distinct.size(); ++i)
        if (orn_compare_double(distinct[i], distinct[i - 1], obmgr::kSameLevel) == 0) return {};
    std::vector<long> ranks;
    ranks.reserve(levels.size());
    for (const double level : levels)
        ranks.push_back(distinct.end() - std::lower_bound(distinct.begin(), distinct.end(), level));
    return ranks;
}

} // namespace

std::vector<std::size_t> obmgr::FallingLevels(std::vector<double> levels)
{
    if (const std::vector<long> ranks = RanksOf(levels); ranks.size() == levels.size()) return ExchangeSortOrder(ranks);
    std::vector<std::size_t> order(levels.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    for (std::size_t p = 0; p < levels.size(); ++p)
        for (std::size_t q = p + 1; q < levels.size(); ++q)
            if (orn_compare_double(levels[q], levels[p], kSameLevel) > 0) {
                std::swap(levels[p], levels[q]);
                std::swap(order[p], order[q]);
            }
    return order;
}

void CObjectManager::SortOrderSpanLowercentinv(CList<long, long>& ids) const
{
    const std::vector<long> before(ids.begin(), ids.end());
    std::vector<double> levels;
    for (const long id : before) {
        const CSpan* const span = m_Span.Find(id);
        levels.push_back(span ? span->GetSubAttributeDouble(L"lowercentinv", 0.0) : 0.0);
    }
    ids.RemoveAll();
    for (const std::size_t place : obmgr::FallingLevels(std::move(levels)))
        ids.AddTail(before[place]);
}

void CObjectManager::ReNumberOrderWeb(CList<long, long>& ids)
{
    SortOrderWeb(ids);
    int number = 0;
    for (const long id : ids)
        if (CWeb* const web = m_Web.Find(id)) web->WriteSubAttributeInt(L"order", ++number);
}

void CObjectManager::ReNumberOrderSecgrouprec(const CList<long, long>& ids)
{
    int number = 0;
    for (const long id : ids)
        if (CSectGroupRec* const record = m_SectGroupRec.Find(id)) record->WriteSubAttributeInt(L"order", ++number);
}

bool CObjectManager::SortPipeIDList(int pipeClass, CList<long, long>& ids, CList<long, long>& rest) const
{
    const obmgr::ObjectTable* const tables[] = {&m_Pipe.Untyped(), &m_Cbox.Untyped(), &m_Obox.Untyped(),
                                                &m_Ubox.Untyped(), &m_Egg.Untyped()};
    const bool isKnown = pipeClass >= 0 && pipeClass < static_cast<int>(std::size(tables));
    CList<long, long> sorted;
    std::vector<long> others;
    for (const long id : ids) {
        const CPipeObject* const section = isKnown ? tables[pipeClass]->Find(id) : nullptr;
        if (section && section->GetSubAttributeInt(L"order", 0) >= 0)
            sorted.AddTail(id);
        else
            others.push_back(id);
    }
    if (isKnown) obmgr::SortByNumber(*tables[pipeClass], L"order", sorted);
    rest.RemoveAll();
    obmgr::AppendAll(rest, others);
    ids.RemoveAll();
    obmgr::AppendAll(ids, sorted);
    return true;
}

// clang-format off

#define OBM_SORT_ORDER(T) \
    void CObjectManager::SortOrder##T(CList<long, long>& ids) const { SortIds(m_##T.Untyped(), ids); }
OBM_SORT_ORDER(Outq)
OBM_SORT_ORDER(AreaInq)
OBM_SORT_ORDER(AreaOutq)
OBM_SORT_ORDER(FixInq)
OBM_SORT_ORDER(IcpInq)
OBM_SORT_ORDER(MountInq)
OBM_SORT_ORDER(Web)
OBM_SORT_ORDER(Profilearea)
OBM_SORT_ORDER(Sheetarea)
OBM_SORT_ORDER(Profilelayout)
OBM_SORT_ORDER(Drawbeltdat)
OBM_SORT_ORDER(Drawsecinfodat)

#define OBM_SORT_ID_LIST(name, T, key) \
    bool CObjectManager::name(CList<long, long>& ids) const \
    { \
        obmgr::SortByNumber(m_##T.Untyped(), key, ids); \
        return true; \
    }
OBM_SORT_ID_LIST(SortInareasetIdList, Inareaset, L"iasratiosetnum")
OBM_SORT_ID_LIST(SortOutareasetIdList, Outareaset, L"oasratiosetnum")
OBM_SORT_ID_LIST(SortAreasetIDList, AreaSet, L"asratiosetnum")
OBM_SORT_ID_LIST(SortDrawbelttxIDList, Drawbelttx, L"order")
OBM_SORT_ID_LIST(SortExecutionIDList, Execution, L"ecnum")
OBM_SORT_ID_LIST(SortRetainIDList, Retain, L"ernum")
OBM_SORT_ID_LIST(SortTimberIDList, Timber, L"tbnum")
OBM_SORT_ID_LIST(SortFoundIDList, Foundation, L"fdnum")
OBM_SORT_ID_LIST(SortManholeIDList, ManHole, L"order")
OBM_SORT_ID_LIST(SortSectIDList, Section, L"order")
OBM_SORT_ID_LIST(SortSectGroupIDList, SectGroup, L"order")
OBM_SORT_ID_LIST(SortSectGroupRecIDList, SectGroupRec, L"order")

// clang-format on
