// The arguments of resolvers: for which object a label is made, with which rounding records and which ini file.
//
// An argument owns nothing of what it names. The object is looked up by its id at each use; object manager, rounding
// records and pipe section must outlive the argument.
#pragma once

#include "common/ArgHeader.h"
#include "common/Export.h"
#include "framework/PtrList.h"
#include "framework/String.h"
#include "objects/Records.h"

#include <cstdint>

class CObjectManager;

// The argument of a family that needs nothing beside its object; the base of the others.
class RIVELTA_API KelMacroArgPipeObject : public KelArgHeader {
    DECLARE_DYNAMIC(KelMacroArgPipeObject)

public:
    KelMacroArgPipeObject() = default;
    // A copy has no calculation rounding record: whatever needs one has to be given the original.
    KelMacroArgPipeObject(const KelMacroArgPipeObject& other);
    KelMacroArgPipeObject& operator=(const KelMacroArgPipeObject&) = delete;

    // The calculation rounding record stays as it is. Each class copies what it knows of the source and what its copy
    // constructor copies.
    void Copy(const KelArgHeader* source) override;
    // A new object of the same class, by its copy constructor; the caller owns it.
    virtual KelMacroArgPipeObject* Clone() const;
    // The live object, borrowed; null when there is none. The project is found by its type alone.
    virtual CPipeObject* GetPipeObject(const CObjectManager* manager) const;

    const CObjectManager* GetObjMan() const { return m_objMan; }
    void SetObjMan(const CObjectManager* manager) { m_objMan = manager; }
    const CDrawfig* GetDrawfig() const { return m_drawfig; }
    void SetDrawfig(const CDrawfig* drawfig) { m_drawfig = drawfig; }
    const CCalcfig* GetCalcfig() const { return m_calcfig; }
    void SetCalcfig(const CCalcfig* calcfig) { m_calcfig = calcfig; }
    objectdata::OBJECTTYPE GetPipeObjectType() const { return m_pipeObjectType; }
    void SetPipeObjectType(objectdata::OBJECTTYPE type) { m_pipeObjectType = type; }
    // 0 for none.
    unsigned long GetPipeObjectId() const { return m_pipeObjectId; }
    void SetPipeObjectId(unsigned long id) { m_pipeObjectId = static_cast<std::uint32_t>(id); }
    const CString& GetInifilePath() const { return m_inifilePath; }
    void SetInifilePath(const CString& path) { m_inifilePath = path; }

protected:
    // An argument of the type with what `source` (may be null) says, the calculation rounding record included. An id
    // of another type is not taken over.
    KelMacroArgPipeObject(objectdata::OBJECTTYPE type, const KelMacroArgPipeObject* source);

private:
    void CopyFields(const KelMacroArgPipeObject& source);

    const CObjectManager* m_objMan = nullptr;
    const CDrawfig* m_drawfig = nullptr;
    const CCalcfig* m_calcfig = nullptr;
    objectdata::OBJECTTYPE m_pipeObjectType = objectdata::NoOwner;
    std::uint32_t m_pipeObjectId = 0;
    CString m_inifilePath;
};

class RIVELTA_API KelMacroArgSpan : public KelMacroArgPipeObject {
    DECLARE_DYNAMIC(KelMacroArgSpan)

public:
    explicit KelMacroArgSpan(const KelMacroArgPipeObject* source = nullptr);
    // Of its own fields the direction alone.
    KelMacroArgSpan(const KelMacroArgSpan& other);

    void Copy(const KelArgHeader* source) override;
    KelMacroArgSpan* Clone() const override;
    CPipeObject* GetPipeObject(const CObjectManager* manager) const override;

    // Fills the upper ids from the spans of the same web that flow into this one, and the lower id. On equal levels
    // the first span counts. Without an inflow nothing is filled.
    void SetUpperAndLowerSpanId();

    // 0 or 1.
    int GetDir() const { return m_dir; }
    void SetDir(int dir) { m_dir = dir; }
    unsigned long GetSubSpanId() const { return m_subSpanId; }
    void SetSubSpanId(unsigned long id) { m_subSpanId = static_cast<std::uint32_t>(id); }
    // The inflows whose lower invert is lowest and highest; the one that is drawn.
    unsigned long GetUpperMinSpanId() const { return m_upperMinSpanId; }
    void SetUpperMinSpanId(unsigned long id) { m_upperMinSpanId = static_cast<std::uint32_t>(id); }
    unsigned long GetUpperMaxSpanId() const { return m_upperMaxSpanId; }
    void SetUpperMaxSpanId(unsigned long id) { m_upperMaxSpanId = static_cast<std::uint32_t>(id); }
    unsigned long GetUpperDrwSpanId() const { return m_upperDrwSpanId; }
    void SetUpperDrwSpanId(unsigned long id) { m_upperDrwSpanId = static_cast<std::uint32_t>(id); }
    unsigned long GetLowerSpanId() const { return m_lowerSpanId; }
    void SetLowerSpanId(unsigned long id) { m_lowerSpanId = static_cast<std::uint32_t>(id); }

private:
    int m_dir = 0;
    std::uint32_t m_subSpanId = 0;
    std::uint32_t m_upperMinSpanId = 0;
    std::uint32_t m_upperMaxSpanId = 0;
    std::uint32_t m_upperDrwSpanId = 0;
    std::uint32_t m_lowerSpanId = 0;
};

class RIVELTA_API KelMacroArgNode : public KelMacroArgPipeObject {
    DECLARE_DYNAMIC(KelMacroArgNode)

public:
    explicit KelMacroArgNode(const KelMacroArgPipeObject* source = nullptr);

    void Copy(const KelArgHeader* source) override;
    KelMacroArgNode* Clone() const override;
    CPipeObject* GetPipeObject(const CObjectManager* manager) const override;

    unsigned long GetLowerSpanId() const { return m_lowerSpanId; }
    void SetLowerSpanId(unsigned long id) { m_lowerSpanId = static_cast<std::uint32_t>(id); }
    bool IsFlowend() const { return m_isFlowend; }
    void SetFlowendFlag(bool isFlowend) { m_isFlowend = isFlowend; }

private:
    std::uint32_t m_lowerSpanId = 0;
    bool m_isFlowend = false;
};

class RIVELTA_API KelMacroArgSection : public KelMacroArgPipeObject {
    DECLARE_DYNAMIC(KelMacroArgSection)

public:
    explicit KelMacroArgSection(const KelMacroArgPipeObject* source = nullptr);

    void Copy(const KelArgHeader* source) override;
    KelMacroArgSection* Clone() const override;
    CPipeObject* GetPipeObject(const CObjectManager* manager) const override;

    unsigned long GetSpanId() const { return m_spanId; }
    void SetSpanId(unsigned long id) { m_spanId = static_cast<std::uint32_t>(id); }
    // The name of the section record, as the span has it.
    const CString& GetSecname() const { return m_secname; }
    void SetSecname(const CString& secname) { m_secname = secname; }
    // The record of the shape, borrowed, and its object type: Pipe, Obox, Cbox, Ubox or Egg; -1 for none.
    CPipeSection* GetPipeSection() const { return m_pipeSection; }
    void SetPipeSection(CPipeSection* pipeSection) { m_pipeSection = pipeSection; }
    int GetPipeSectionType() const { return m_pipeSectionType; }
    void SetPipeSectionType(int type) { m_pipeSectionType = type; }

    // The pipe section's id, 0 without one.
    unsigned long GetKandanmenId() const;
    // The pipe section's dimensions as it has loaded them; without one all of them are unset.
    const CPipeSection::tagSPEC& GetSpec() const;

private:
    std::uint32_t m_spanId = 0;
    CString m_secname;
    CPipeSection* m_pipeSection = nullptr;
    int m_pipeSectionType = objectdata::NoOwner;
};

class RIVELTA_API KelMacroArgProfilelayout : public KelMacroArgPipeObject {
    DECLARE_DYNAMIC(KelMacroArgProfilelayout)

public:
    explicit KelMacroArgProfilelayout(const KelMacroArgPipeObject* source = nullptr);
    KelMacroArgProfilelayout(const KelMacroArgProfilelayout& other);

    void Copy(const KelArgHeader* source) override;
    KelMacroArgProfilelayout* Clone() const override;
    CPipeObject* GetPipeObject(const CObjectManager* manager) const override;

    // The layouts, borrowed.
    const CTypedPtrList<CObList, CProfilelayout*>& GetDrawlayoutList() const { return m_drawlayouts; }
    // Replaces the list; null entries are left out.
    void SetDrawlayoutList(const CTypedPtrList<CObList, CProfilelayout*>& layouts);

private:
    CTypedPtrList<CObList, CProfilelayout*> m_drawlayouts;
};
