// KelMacro: the base of the resolvers, one class per object family, that turn an item into its value.
//
// The base resolves items that show a sub-attribute as it is. A family overrides the operation of the data type when
// its items need more than that, and ResolveMacroValue for items without an attribute. The families also have a static
// get_uiinfo, which does the work of both GetUIInfo.
#pragma once

#include "common/Export.h"
#include "framework/Object.h"
#include "macro/MacroItem.h"

class CObjectManager;
class CPipeObject;
class KelMacroArgPipeObject;
class KelMacroManager;

class RIVELTA_API KelMacro : public CObject {
    DECLARE_DYNAMIC(KelMacro)

protected:
    // Each fills the item's value; false when it cannot. Without an object there is no attribute to show: false, with
    // the value as it was. The base of the first gives the macro token when the manager outputs unresolved macros,
    // else the empty text.
    virtual bool ResolveMacroValue(const KelMacroArgPipeObject* argument, const KelMacroManager* manager,
                                   const CPipeObject* object, KelMacroItem& item) const;
    virtual bool ResolveIntAttribValue(const KelMacroArgPipeObject* argument, const KelMacroManager* manager,
                                       const CPipeObject* object, KelMacroItem& item) const;
    // Rounded and printed with the item's digits.
    virtual bool ResolveDoubleAttribValue(const KelMacroArgPipeObject* argument, const KelMacroManager* manager,
                                          const CPipeObject* object, KelMacroItem& item) const;
    virtual bool ResolveCharAttribValue(const KelMacroArgPipeObject* argument, const KelMacroManager* manager,
                                        const CPipeObject* object, KelMacroItem& item) const;
    // "Yes" or "No" in the active language.
    virtual bool ResolveBoolAttribValue(const KelMacroArgPipeObject* argument, const KelMacroManager* manager,
                                        const CPipeObject* object, KelMacroItem& item) const;

public:
    explicit KelMacro(objectdata::OBJECTTYPE objectType = objectdata::NoOwner) : m_objectType(objectType) {}

    virtual bool IsTargetObjectType(objectdata::OBJECTTYPE objectType) const;
    // Fills `items` with the macros of the family and gives their number; the base has none and leaves `items` alone.
    virtual int GetUIInfo(obmgr::MacroItems& items) const;
    virtual int GetUIInfo(const KelMacroArgPipeObject* argument, obmgr::MacroItems& items) const;
    // Takes over the parameters of a resolver of the same family; gives this one. The base has none.
    virtual const KelMacro* Copy(const KelMacro* source);
    // The caller owns the copy.
    virtual KelMacro* Clone() const = 0;
    // Notes what the family needs to resolve the item; what `param` is, the family tells. False when it needs nothing.
    virtual bool SetParameter(const CObjectManager* manager, unsigned long id, void* param, KelMacroItem& item);
    // Resolves one item: by its data type when it has an attribute, whatever its macro type; else as a macro. When
    // that fails, the value becomes the token if the manager outputs unresolved macros, and the result is still false.
    virtual bool ResolveMacro(const KelMacroArgPipeObject* argument, const KelMacroManager* manager,
                              const CPipeObject* object, KelMacroItem& item) const;

    objectdata::OBJECTTYPE GetObjectType() const { return m_objectType; }
    void SetObjectType(objectdata::OBJECTTYPE objectType) { m_objectType = objectType; }

private:
    bool ResolveItem(const KelMacroArgPipeObject* argument, const KelMacroManager* manager, const CPipeObject* object,
                     KelMacroItem& item) const;

    objectdata::OBJECTTYPE m_objectType;
};
