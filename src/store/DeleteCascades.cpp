// Deletes that take along what hangs on the record. Those of spans, routes and webs are in network/.

#include "common/Id32.h"
#include "store/ObjectManager.h"

#include <vector>

namespace {

using Objects = std::vector<CPipeObject*>;

Objects OwnedBy(const obmgr::ObjectTable& table, long ownerId)
{
    Objects found;
    table.VisitByLink(0, obmgr::Id32(ownerId), [&](CPipeObject& object) {
        found.push_back(&object);
        return true;
    });
    return found;
}

} // namespace

bool CObjectManager::DeleteByText(obmgr::ObjectTable& table, const wchar_t* key, const CString& text)
{
    Objects found;
    table.VisitByText(key, text.View(), [&](CPipeObject& object) {
        found.push_back(&object);
        return true;
    });
    table.RemoveAll(found);
    return !found.empty();
}

bool CObjectManager::DeleteByNumber(obmgr::ObjectTable& table, const wchar_t* key, long number)
{
    Objects found;
    table.VisitByNumber(key, obmgr::Id32(number), [&](CPipeObject& object) {
        found.push_back(&object);
        return true;
    });
    return table.RemoveAll(found);
}

// False when the owner had none.
bool CObjectManager::DeleteOwned(obmgr::ObjectTable& table, long ownerId)
{
    const Objects found = OwnedBy(table, ownerId);
    table.RemoveAll(found);
    return !found.empty();
}

bool CObjectManager::DeleteNodeObject(long nodeId)
{
    if (!m_Nodeunit.Untyped().RemoveAll(OwnedBy(m_Nodeunit.Untyped(), nodeId))) return false;
    if (!DeleteIcpInqByNode(nodeId)) return false;
    return m_Node.Remove(m_Node.Find(nodeId));
}

bool CObjectManager::DeleteIcpInqByNode(long nodeId)
{
    return m_IcpInq.Untyped().RemoveAll(OwnedBy(m_IcpInq.Untyped(), nodeId));
}

bool CObjectManager::DeleteAreaInqObject(long id)
{
    const bool removed = m_AreaInq.Remove(m_AreaInq.Find(id));
    if (removed) DeleteAreaInqInareaset(id);
    return removed;
}

bool CObjectManager::DeleteAreaOutqObject(long id)
{
    const bool removed = m_AreaOutq.Remove(m_AreaOutq.Find(id));
    if (removed) DeleteAreaOutqOutareaset(id);
    return removed;
}

bool CObjectManager::DeleteAreaInqInareaset(long areaInqId)
{
    return DeleteOwned(m_Inareaset.Untyped(), areaInqId);
}

bool CObjectManager::DeleteAreaOutqOutareaset(long areaOutqId)
{
    return DeleteOwned(m_Outareaset.Untyped(), areaOutqId);
}

bool CObjectManager::DeleteSpanAreaset(long spanId)
{
    return DeleteOwned(m_AreaSet.Untyped(), spanId);
}

bool CObjectManager::DeleteSpanAreatset(long spanId)
{
    return DeleteOwned(m_Areatset.Untyped(), spanId);
}

bool CObjectManager::DeleteAreatset(long spanId)
{
    DeleteOwned(m_Areatset.Untyped(), spanId);
    return true;
}

bool CObjectManager::DeleteSpanSpdxfin(long spanId)
{
    return DeleteByNumber(m_Spdxfin.Untyped(), L"sdispanid", spanId);
}

bool CObjectManager::DeleteSpanDrawbelttx(long spanId)
{
    return DeleteByNumber(m_Drawbelttx.Untyped(), L"dbtspanid", spanId);
}

// A storm method goes with the assumed velocities under its name.
bool CObjectManager::DeleteWithVelocities(obmgr::ObjectTable& methods, const wchar_t* nameKey, long id)
{
    CPipeObject* const method = methods.Find(id);
    if (method) DeleteAreasupveObject(method->GetSubAttribute(nameKey));
    return methods.Remove(method);
}

bool CObjectManager::DeleteQrrationalObject(long id)
{
    return DeleteWithVelocities(m_Qrrational.Untyped(), L"qrname", id);
}

bool CObjectManager::DeleteQrexperimentObject(long id)
{
    return DeleteWithVelocities(m_Qrexperiment.Untyped(), L"qename", id);
}

bool CObjectManager::DeleteQrlineObject(long id)
{
    return DeleteWithVelocities(m_Qrline.Untyped(), L"qlname", id);
}

bool CObjectManager::DeleteQrriverObject(long id)
{
    return DeleteWithVelocities(m_Qrriver.Untyped(), L"qvname", id);
}

bool CObjectManager::DeleteQrmultiObject(long id)
{
    CQrmulti* const method = m_Qrmulti.Find(id);
    if (method) {
        const CString name = method->GetSubAttribute(L"qmname");
        DeleteQrmultidatObject(name);
        DeleteQrrivertimeObject(name);
    }
    return m_Qrmulti.Remove(method);
}

bool CObjectManager::DeleteAreasupveObject(const CString& methodName)
{
    return DeleteByText(m_Areasupve.Untyped(), L"qtqrname", methodName);
}

bool CObjectManager::DeleteQrmultidatObject(const CString& methodName)
{
    return DeleteByText(m_Qrmultidat.Untyped(), L"qmdqrmultiname", methodName);
}

bool CObjectManager::DeleteQrrivertimeObject(const CString& methodName)
{
    return DeleteByText(m_Qrrivertime.Untyped(), L"qtqrname", methodName);
}

bool CObjectManager::DeleteExecObject(long id)
{
    if (!m_Exec.Remove(m_Exec.Find(id))) return false;
    return m_Execdivide.Untyped().RemoveAll(OwnedBy(m_Execdivide.Untyped(), id)) &&
           m_Lcarry.Untyped().RemoveAll(OwnedBy(m_Lcarry.Untyped(), id));
}

bool CObjectManager::DeleteGeometryObject(long ownerId)
{
    return DeleteOwned(m_Geometry.Untyped(), ownerId);
}

bool CObjectManager::DeleteGeometrySelfObject(long id)
{
    return m_Geometry.Remove(m_Geometry.Find(id));
}
