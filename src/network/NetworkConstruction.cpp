// Making webs, spans and routes. What they bring along: a web its digit settings, a span its area record.

#include "network/Links.h"
#include "store/FamilyBodies.h"

namespace {

const CArray<CKeyValue, CKeyValue> kNoValues;

} // namespace

bool CObjectManager::CreateWeb(int disposalType, const CArray<CKeyValue, CKeyValue>& values, long* newId)
{
    return obmgr::GiveId(CreateWeb(disposalType, values), newId);
}

CWeb* CObjectManager::CreateWeb(int disposalType, const CArray<CKeyValue, CKeyValue>& values)
{
    CWeb* const web = CreateIn(m_Web, values, disposalType);
    if (!web) return nullptr;
    const long webId = web->GetId32();
    const bool complete =
        CreateCalcfig(webId, kNoValues) && CreateDrawfig(webId, kNoValues) && CreateSheetfig(webId, kNoValues);
    return complete ? web : nullptr;
}

bool CObjectManager::CreateSpan(long upperNodeId, long lowerNodeId, long routeId,
                                const CArray<CKeyValue, CKeyValue>& values, long* newId)
{
    // The id is told even when the area record then fails: the span stays.
    CSpan* const span = CreateSpanNoarea(upperNodeId, lowerNodeId, routeId, values);
    if (!obmgr::GiveId(span, newId)) return false;
    return CreateAreaSet(span->GetId32(), kNoValues) != nullptr;
}

CSpan* CObjectManager::CreateSpan(long upperNodeId, long lowerNodeId, long routeId,
                                  const CArray<CKeyValue, CKeyValue>& values)
{
    CSpan* const span = CreateSpanNoarea(upperNodeId, lowerNodeId, routeId, values);
    if (!span) return nullptr;
    return CreateAreaSet(span->GetId32(), kNoValues) ? span : nullptr;
}

bool CObjectManager::CreateSpanNoarea(long upperNodeId, long lowerNodeId, long routeId,
                                      const CArray<CKeyValue, CKeyValue>& values, long* newId)
{
    return obmgr::GiveId(CreateSpanNoarea(upperNodeId, lowerNodeId, routeId, values), newId);
}

CSpan* CObjectManager::CreateSpanNoarea(long upperNodeId, long lowerNodeId, long routeId,
                                        const CArray<CKeyValue, CKeyValue>& values)
{
    return CreateIn(m_Span, values, upperNodeId, lowerNodeId, routeId);
}

CRoute* CObjectManager::CreateRouteSpanNode(long webId, long connectId, const CArray<CKeyValue, CKeyValue>& values,
                                            CSpan*& span)
{
    if (!m_Web.Find(webId)) return nullptr;
    const int number = GetSpanNumInWeb(webId) + 1;
    long spanId = 0;
    long upperNode = 0;
    if (obmgr::Id32(connectId) != 0) {
        long top = 0;
        long topSpan = 0;
        if (!GetMostUpperNodeId(connectId, top) || !GetSpanConnectUpperNode(top, connectId, topSpan)) return nullptr;
        // For the time being the span is one of the connect route's web.
        const long topWebId = GetWebIdFromSpan(topSpan);
        const int topNumber = topWebId == webId ? number : GetSpanNumInWeb(topWebId) + 1;
        if (!CreateNumberedSpan(*m_Span.Find(topSpan), kNoValues, false, topNumber, &spanId, &upperNode))
            return nullptr;
        WriteDefaultCalcStyle(*m_Span.Find(spanId), topWebId);
    } else {
        long flowEnd = 0;
        if (!GetFlowEndNodeId(webId, flowEnd) && !CreateNode(kNoValues, &flowEnd)) return nullptr;
        if (!CreateNode(kNoValues, &upperNode) || !CreateSpan(upperNode, flowEnd, 0, kNoValues, &spanId))
            return nullptr;
    }
    m_Node.Find(upperNode)->WriteSubAttributeInt(L"order", number);
    CRoute* const route = CreateRoute(webId, connectId, values);
    if (!route) return nullptr; // the span keeps the route id that it had for the time being
    CSpan* const made = m_Span.Find(spanId);
    made->SetRouteId(route->GetObjectId());
    made->WriteSubAttributeInt(L"order", number);
    made->WriteSubAttribute(L"spno", L"1");
    WriteDefaultCalcStyle(*made, webId);
    span = made;
    return route;
}

void CObjectManager::WriteDefaultCalcStyle(CSpan& span, long webId)
{
    const CWeb* const web = m_Web.Find(webId);
    if (web && !m_Project.IsEmpty())
        span.WriteSubAttribute(L"calcstylename", GetDefFunctionName(web->GetDisposalType()));
}
