// What a manager is as a whole: start and end, ids, the list of everything, recording of reads.

#include "common/Id32.h"
#include "framework/Exception.h"
#include "resources/LibraryStart.h"
#include "store/ObjectManager.h"

#include <cmath>

IMPLEMENT_DYNCREATE(CObjectManager, CDocument)

CObjectManager::CObjectManager()
    : m_touchedRoutes({{&m_Span.Untyped(), obmgr::kRouteOfSpan}, {&m_Route.Untyped(), obmgr::TouchedIds::kOwnId}}),
      m_touchedNodes({{&m_Node.Untyped(), obmgr::TouchedIds::kOwnId},
                      {&m_Span.Untyped(), obmgr::kUpperNode},
                      {&m_Span.Untyped(), obmgr::kLowerNode}})
{
    obmgr::EnsureLibraryStarted();
}

CObjectManager::~CObjectManager() = default;

obmgr::ObjectTable& CObjectManager::TableOf(objectdata::OBJECTTYPE type)
{
    // clang-format off
    switch (type) {
#define OBM_RECORD(T, ...) case objectdata::T: return m_##T.Untyped();
#include "objects/ObjectTypes.def"
    default: AfxThrowInvalidArgException();
    }
    // clang-format on
}

const obmgr::ObjectTable& CObjectManager::TableOf(objectdata::OBJECTTYPE type) const
{
    return const_cast<CObjectManager*>(this)->TableOf(type);
}

void CObjectManager::Initialize()
{
    if (m_isReading) return;
    m_lastObjectId = 0;
    m_idStack.RemoveAll();
    for (const auto type : obmgr::CanonicalOrder())
        TableOf(type).Clear();
    m_savedRead.RemoveAll();
}

long CObjectManager::GetNextObjectId() const
{
    return obmgr::AddIds(m_lastObjectId, 1);
}

long CObjectManager::IssueObjectId()
{
    m_lastObjectId = obmgr::AddIds(m_lastObjectId, 1);
    return m_lastObjectId;
}

void CObjectManager::SetObjectId(long id)
{
    m_lastObjectId = obmgr::Id32(id);
}

long CObjectManager::GetMaxObjectId() const
{
    long greatest = 0;
    for (const auto type : obmgr::CanonicalOrder())
        greatest = TableOf(type).MaxId(greatest);
    return greatest;
}

void CObjectManager::ResetObjectIdList()
{
    for (const auto type : obmgr::CanonicalOrder())
        TableOf(type).ResetIdList();
}

void CObjectManager::GetAllObject(CTypedPtrList<CObList, CPipeObject*>& objects) const
{
    for (const auto type : obmgr::CanonicalOrder())
        TableOf(type).ForEach([&](CPipeObject& object) { objects.AddTail(&object); });
}

int CObjectManager::GetAllDataCount() const
{
    std::size_t count = 0;
    for (const auto type : obmgr::CanonicalOrder())
        count += TableOf(type).Count();
    return static_cast<int>(count);
}

void CObjectManager::SaveReadObject(CPipeObject* object)
{
    if (m_isRecording) m_savedRead.AddTail(object);
}

void CObjectManager::GetSaveReadObject(CTypedPtrList<CObList, CPipeObject*>& objects) const
{
    for (CPipeObject* object : m_savedRead)
        objects.AddTail(object);
}

bool CObjectManager::IsIdContain(long id, const CList<long, long>& list) const
{
    return list.Find(id) != nullptr;
}

double CObjectManager::GetDistancePtPt(double x1, double y1, double z1, double x2, double y2, double z2) const
{
    const double dx = x2 - x1;
    const double dy = y2 - y1;
    const double dz = z2 - z1;
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}
