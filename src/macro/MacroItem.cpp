#include "macro/MacroItem.h"

#include "macro/MacroObjects.h"
#include "resources/Resources.h"
#include "store/ObjectManager.h"

IMPLEMENT_DYNCREATE(KelMacroItem, CObject)

void KelMacroItem::Initislize()
{
    Copy(KelMacroItem());
}

void KelMacroItem::Set(MACROTYPE macroType, DATATYPE dataType, objectdata::OBJECTTYPE objectType,
                       const CString& objectName, const CString& attrib, const CString& macro, unsigned descId,
                       unsigned long objectId, int roundMode, int roundFig, const CString& defaultValue,
                       const CString& value, int intptrParam, const CString& strParam)
{
    SetMacroType(macroType);
    SetDataType(dataType);
    SetObjectType(objectType);
    SetObjectName(objectName);
    SetAttrib(attrib);
    SetMacro(macro);
    SetDesc(descId);
    SetObjectId(objectId);
    SetRoundMode(roundMode);
    SetRoundFig(roundFig);
    SetDefaultValue(defaultValue);
    SetValue(value);
    SetINTPTRParam(intptrParam);
    SetStrParam(strParam);
}

CString KelMacroItem::GetMacroFromAttrib(const CString& attrib)
{
    CString macro;
    macro.Format(L"[M:%s]", attrib);
    return macro.MakeUpper();
}

CString KelMacroItem::GetDescFromRes(unsigned id)
{
    return obmgr::ResourceText(id);
}

CPipeObject* KelMacroItem::GetPipeObject(const CObjectManager* manager) const
{
    if (!manager || m_objectId == 0) return nullptr;
    const auto type = m_objectType == objectdata::Section ? objectdata::Span : m_objectType;
    return obmgr::IsLabelledType(type) ? manager->TableOf(type).Find(m_objectId) : nullptr;
}
