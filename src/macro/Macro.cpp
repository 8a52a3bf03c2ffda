#include "macro/Macro.h"

#include "common/Numeric.h"
#include "common/Text2Number.h"
#include "macro/MacroManager.h"
#include "objects/PipeObject.h"
#include "resources/Resources.h"

IMPLEMENT_DYNAMIC(KelMacro, CObject)

namespace {

bool OutputsUnresolved(const KelMacroManager* manager)
{
    return manager && manager->IsOutputUnresolvedMacro();
}

bool ShowText(const CPipeObject* object, KelMacroItem& item)
{
    if (!object) return false;
    item.SetValue(object->GetSubAttribute(item.GetAttrib()));
    return true;
}

} // namespace

bool KelMacro::ResolveMacroValue(const KelMacroArgPipeObject*, const KelMacroManager* manager, const CPipeObject*,
                                 KelMacroItem& item) const
{
    item.SetValue(OutputsUnresolved(manager) ? item.GetMacro() : CString());
    return true;
}

bool KelMacro::ResolveIntAttribValue(const KelMacroArgPipeObject*, const KelMacroManager*, const CPipeObject* object,
                                     KelMacroItem& item) const
{
    return ShowText(object, item);
}

bool KelMacro::ResolveDoubleAttribValue(const KelMacroArgPipeObject*, const KelMacroManager*, const CPipeObject* object,
                                        KelMacroItem& item) const
{
    if (!object) return false;
    const int digits = item.GetRoundFig();
    double number = object->GetSubAttributeDouble(item.GetAttrib(), 0.0);
    if (item.GetRoundMode() != OrnRoundNone) number = orn_round_double(number, digits, item.GetRoundMode());
    item.SetValue(obmgr::FormatDouble(number, digits));
    return true;
}

bool KelMacro::ResolveCharAttribValue(const KelMacroArgPipeObject*, const KelMacroManager*, const CPipeObject* object,
                                      KelMacroItem& item) const
{
    return ShowText(object, item);
}

bool KelMacro::ResolveBoolAttribValue(const KelMacroArgPipeObject*, const KelMacroManager*, const CPipeObject* object,
                                      KelMacroItem& item) const
{
    if (!object) return false;
    const bool isSet = object->GetSubAttributeBool(item.GetAttrib(), false);
    item.SetValue(obmgr::ResourceText(isSet ? IDS_YES : IDS_NO));
    return true;
}

bool KelMacro::IsTargetObjectType(objectdata::OBJECTTYPE objectType) const
{
    return objectType == m_objectType;
}

int KelMacro::GetUIInfo(obmgr::MacroItems&) const
{
    return 0;
}

int KelMacro::GetUIInfo(const KelMacroArgPipeObject*, obmgr::MacroItems&) const
{
    return 0;
}

const KelMacro* KelMacro::Copy(const KelMacro*)
{
    return this;
}

bool KelMacro::SetParameter(const CObjectManager*, unsigned long, void*, KelMacroItem&)
{
    return false;
}

bool KelMacro::ResolveMacro(const KelMacroArgPipeObject* argument, const KelMacroManager* manager,
                            const CPipeObject* object, KelMacroItem& item) const
{
    if (ResolveItem(argument, manager, object, item)) return true;
    if (OutputsUnresolved(manager)) item.SetValue(item.GetMacro());
    return false;
}

bool KelMacro::ResolveItem(const KelMacroArgPipeObject* argument, const KelMacroManager* manager,
                           const CPipeObject* object, KelMacroItem& item) const
{
    if (item.GetAttrib().IsEmpty()) return item.IsMacro() && ResolveMacroValue(argument, manager, object, item);
    switch (item.GetDataType()) {
    case KelMacroItem::DATATYPE_INT: return ResolveIntAttribValue(argument, manager, object, item);
    case KelMacroItem::DATATYPE_DOUBLE: return ResolveDoubleAttribValue(argument, manager, object, item);
    case KelMacroItem::DATATYPE_BOOL: return ResolveBoolAttribValue(argument, manager, object, item);
    default: return ResolveCharAttribValue(argument, manager, object, item);
    }
}
