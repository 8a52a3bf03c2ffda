// KelMacroItem: one token of a label text, or one entry of the list of macros that an application offers.
#pragma once

#include "common/Export.h"
#include "framework/Array.h"
#include "framework/Object.h"
#include "framework/String.h"
#include "objects/ObjectTypes.h"

#include <cstdint>

class CObjectManager;
class CPipeObject;

class RIVELTA_API KelMacroItem : public CObject {
    DECLARE_DYNCREATE(KelMacroItem)

public:
    enum MACROTYPE : int {
        MACROTYPE_MACRO = 0,  // the token is fixed
        MACROTYPE_ATTRIB = 1, // the token is made from the attribute key
        MACROTYPE_TEXT = 2,   // plain text between macros, which stands in the value
    };
    enum DATATYPE : int {
        DATATYPE_INT = 0, // integer or code
        DATATYPE_DOUBLE = 1,
        DATATYPE_CHAR = 2,
        DATATYPE_BOOL = 3,
    };

    KelMacroItem() = default;
    KelMacroItem(MACROTYPE macroType, DATATYPE dataType) : m_macroType(macroType), m_dataType(dataType) {}

    // Back to the state of a new item.
    void Initislize(); // name as published
    // Fills every field; note that the rounding mode stands before the digits. `descId` is the description's number.
    void Set(MACROTYPE macroType, DATATYPE dataType, objectdata::OBJECTTYPE objectType, const CString& objectName,
             const CString& attrib, const CString& macro, unsigned descId, unsigned long objectId, int roundMode,
             int roundFig, const CString& defaultValue, const CString& value, int intptrParam, const CString& strParam);
    void Copy(const KelMacroItem& other) { *this = other; }

    bool IsMacro() const { return m_macroType == MACROTYPE_MACRO; }
    bool IsAttrib() const { return m_macroType == MACROTYPE_ATTRIB; }

    MACROTYPE GetMacroType() const { return m_macroType; }
    void SetMacroType(MACROTYPE macroType) { m_macroType = macroType; }
    DATATYPE GetDataType() const { return m_dataType; }
    void SetDataType(DATATYPE dataType) { m_dataType = dataType; }
    // The family whose resolver answers this item; -1 for none.
    objectdata::OBJECTTYPE GetObjectType() const { return m_objectType; }
    void SetObjectType(objectdata::OBJECTTYPE objectType) { m_objectType = objectType; }
    // The object that the item speaks of; an id of a span for a section item. 0 for none.
    unsigned long GetObjectId() const { return m_objectId; }
    void SetObjectId(unsigned long objectId) { m_objectId = static_cast<std::uint32_t>(objectId); }
    // The family's name as the user sees it.
    const CString& GetObjectName() const { return m_objectName; }
    void SetObjectName(const CString& objectName) { m_objectName = objectName; }
    // The key of the sub-attribute that feeds the value; empty for a computed macro.
    const CString& GetAttrib() const { return m_attrib; }
    void SetAttrib(const CString& attrib) { m_attrib = attrib; }
    // The whole token in upper case: "[M:SECDISP]".
    const CString& GetMacro() const { return m_macro; }
    void SetMacro(const CString& macro) { m_macro = macro; }
    // What the user is told of the macro; the second form takes the number of a text of this library.
    const CString& GetDesc() const { return m_desc; }
    void SetDesc(const CString& desc) { m_desc = desc; }
    void SetDesc(unsigned descId) { m_desc = GetDescFromRes(descId); }
    // The text inside the label of a crossing before the user has set one.
    const CString& GetDefaultValue() const { return m_defaultValue; }
    void SetDefaultValue(const CString& defaultValue) { m_defaultValue = defaultValue; }
    // The resolved text, or the literal text of a text item.
    const CString& GetValue() const { return m_value; }
    void SetValue(const CString& value) { m_value = value; }
    // Decimal digits and rounding mode (OrnRoundMode) of a number.
    int GetRoundFig() const { return m_roundFig; }
    void SetRoundFig(int roundFig) { m_roundFig = roundFig; }
    int GetRoundMode() const { return m_roundMode; }
    void SetRoundMode(int roundMode) { m_roundMode = roundMode; }
    // Parameters of the caller, whose meaning each resolver tells.
    std::intptr_t GetINTPTRParam() const { return m_intptrParam; }
    void SetINTPTRParam(std::intptr_t intptrParam) { m_intptrParam = intptrParam; }
    const CString& GetStrParam() const { return m_strParam; }
    void SetStrParam(const CString& strParam) { m_strParam = strParam; }

    // "webname" gives "[M:WEBNAME]".
    static CString GetMacroFromAttrib(const CString& attrib);
    // The text of this library in the active language, whatever texts the application has made current; empty for an
    // unknown number.
    static CString GetDescFromRes(unsigned id);

    // The live object that the item speaks of, borrowed; null when there is none.
    CPipeObject* GetPipeObject(const CObjectManager* manager) const;

private:
    MACROTYPE m_macroType = MACROTYPE_MACRO;
    DATATYPE m_dataType = DATATYPE_CHAR;
    objectdata::OBJECTTYPE m_objectType = objectdata::NoOwner;
    std::uint32_t m_objectId = 0;
    CString m_objectName;
    CString m_attrib;
    CString m_macro;
    CString m_desc;
    CString m_defaultValue;
    CString m_value;
    int m_roundFig = 4;
    int m_roundMode = 0;
    std::intptr_t m_intptrParam = 0;
    CString m_strParam;
};

namespace obmgr {
using MacroItems = CArray<KelMacroItem, const KelMacroItem&>;
}
