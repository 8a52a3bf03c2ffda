// Making webs and spans. What they bring along: a web its digit settings, a span its area record.

#include "store/FamilyBodies.h"

bool CObjectManager::CreateWeb(int disposalType, const CArray<CKeyValue, CKeyValue>& values, long* newId)
{
    return obmgr::GiveId(CreateWeb(disposalType, values), newId);
}

CWeb* CObjectManager::CreateWeb(int disposalType, const CArray<CKeyValue, CKeyValue>& values)
{
    CWeb* const web = CreateIn(m_Web, values, disposalType);
    if (!web) return nullptr;
    const long webId = web->GetId32();
    const CArray<CKeyValue, CKeyValue> none;
    const bool complete = CreateCalcfig(webId, none) && CreateDrawfig(webId, none) && CreateSheetfig(webId, none);
    return complete ? web : nullptr;
}

bool CObjectManager::CreateSpan(long upperNodeId, long lowerNodeId, long routeId,
                                const CArray<CKeyValue, CKeyValue>& values, long* newId)
{
    // The id is told even when the area record then fails: the span stays.
    CSpan* const span = CreateSpanNoarea(upperNodeId, lowerNodeId, routeId, values);
    if (!obmgr::GiveId(span, newId)) return false;
    return CreateAreaSet(span->GetId32(), CArray<CKeyValue, CKeyValue>()) != nullptr;
}

CSpan* CObjectManager::CreateSpan(long upperNodeId, long lowerNodeId, long routeId,
                                  const CArray<CKeyValue, CKeyValue>& values)
{
    CSpan* const span = CreateSpanNoarea(upperNodeId, lowerNodeId, routeId, values);
    if (!span) return nullptr;
    return CreateAreaSet(span->GetId32(), CArray<CKeyValue, CKeyValue>()) ? span : nullptr;
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
