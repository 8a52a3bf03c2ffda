// CPipeObject: what every record of a design is: an id, a status word, link ids and named text values. Also the few
// bases between it and the record classes. The record classes are in Records.h.
#pragma once

#include "common/Export.h"
#include "framework/Collections.h"
#include "framework/Object.h"
#include "framework/String.h"
#include "objects/Attributes.h"
#include "objects/KeyValue.h"
#include "objects/ObjectTypes.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>

class CPipeObject;
class CStdioFile;

// What a conversion of old drawing formats found to be missing; handed to every record of a table.
struct CVersionConvertFlags {
    bool openpipetop = false;
    bool lvlmemotxbase = false;
    bool rtablerfracex = false;
    bool drawsecinfoleaderbase = false;
    bool drawcodezeromhole = false;
    bool dbdgcin = false;
    bool dbddrawmode = false;
    bool dsidgcin = false;
    bool pen37 = false;
    bool pen38 = false;
    bool pen44 = false;
    bool pen50 = false;
    CPipeObject* format = nullptr; // the first drawing format; borrowed
};

namespace obmgr {

// The table that holds an object, as the object sees it. A copy and a removed object belong to no table.
class RIVELTA_API TableListener {
public:
    virtual void BeforeChange(CPipeObject& object) = 0;
    // Gives the object another id. When it fails nothing has changed.
    virtual void ChangeId(CPipeObject& object, std::int32_t id) = 0;
    // A link, an attribute or the id that an index may use is about to get a new value; has got it.
    virtual void BeforeValueChange(CPipeObject& object) noexcept = 0;
    virtual void AfterValueChange(CPipeObject& object) noexcept = 0;

    bool wantsBeforeChange = false;
    bool wantsValueChange = false;

protected:
    ~TableListener() = default;
};

class ObjectTable;
RIVELTA_API std::unique_ptr<CPipeObject> CloneObject(const CPipeObject& object);

} // namespace obmgr

// Values are text; numbers are parsed where they are read and never depend on the locale. Lengths are metres.
class RIVELTA_API CPipeObject : public CObject {
    DECLARE_DYNAMIC(CPipeObject)

public:
    explicit CPipeObject(unsigned long objectId = 0);
    // The copy belongs to no table.
    CPipeObject(const CPipeObject& other);
    // Takes over id, status and attributes; the object stays where it is.
    CPipeObject& operator=(const CPipeObject& other);
    ~CPipeObject() override;

    // Whether the object is of the class with this name ("CSpan"), or of one derived from it.
    virtual bool IsObjectClass(const wchar_t* className) const;
    // The type number, -1 for an object that is no record.
    virtual objectdata::OBJECTTYPE GetObjectType() const { return objectdata::NoOwner; }

    // Unique in a design; 0 means none. Ids behave as signed 32-bit values.
    unsigned long GetObjectId() const;
    // For renumbering and reading; the table's own id list learns of it by ResetObjectIdList.
    void SetObjectId(unsigned long objectId);
    int GetStatus() const { return m_status; }
    void SetStatus(int status);

    // The value, empty when the key is absent. Keys are compared exactly.
    CString GetSubAttribute(const wchar_t* key) const;
    // Replaces what `values` holds by a copy of all pairs, in the order in which the keys were first set.
    void GetSubAttribute(CMapStringToString& values) const;
    // The default is for an absent key; a text that is no number reads as 0.
    int GetSubAttributeInt(const wchar_t* key, int defaultValue) const;
    double GetSubAttributeDouble(const wchar_t* key, double defaultValue) const;
    bool GetSubAttributeBool(const wchar_t* key, bool defaultValue) const;
    bool IsSubAttribute(const wchar_t* key) const;
    void WriteSubAttribute(const wchar_t* key, const wchar_t* value);
    void WriteSubAttributeInt(const wchar_t* key, int value);
    // Written with 13 decimals, as everywhere in the data.
    void WriteSubAttributeDouble(const wchar_t* key, double value);
    // Drops every key that `values` does not hold.
    void SetSubAttribute(const CMapStringToString& values);
    void AddSubAttribute(const CArray<CKeyValue, CKeyValue>& values);

    // Asked by the reader for each pair of a file: whether to keep it; both texts may be rewritten. A class that
    // overrides it also overrides FiltersSubAttributes, so that the others cost nothing.
    virtual bool AcceptSubAttribute(CString& key, CString& value);
    virtual bool FiltersSubAttributes() const { return false; }
    // Adds the keys that the flags call missing; true when the object changed.
    virtual bool ConvertVersion(const CVersionConvertFlags& flags);

    // Writes the object's element in the form of the data version; `flag` is not used. False when the object holds
    // what no file can, with a line for GetFileOutErrorString. Raises CFileException when the file fails.
    virtual bool FileOut(CStdioFile& file, int dataver, bool flag) const;

    // ---- for the store, the reader and the writer ----
    std::int32_t GetId32() const { return m_id; }
    virtual std::span<const std::int32_t> Links() const { return {}; }
    void SetLink(int index, std::int32_t id);
    const obmgr::Attributes& GetAttributes() const { return m_attributes; }
    // Takes the block of `values` as it is.
    void SetAttributes(const obmgr::Attributes& values);
    void SetAttribute(obmgr::KeyId key, std::string_view utf8);
    void ReserveAttributes(std::size_t bytes) { m_attributes.Reserve(bytes); }
    std::size_t ShrinkAttributes() { return m_attributes.ShrinkToFit(); }

protected:
    virtual std::span<std::int32_t> MutableLinks() { return {}; }
    // A copy by the class's copy constructor.
    virtual CPipeObject* Clone() const { return new CPipeObject(*this); }
    // To be called around every change of a member that a transaction has to bring back.
    void BeforeChange();
    void AfterValueChange() noexcept;
    void AssignLinks(std::span<const std::int32_t> links);

private:
    friend class obmgr::ObjectTable;
    friend std::unique_ptr<CPipeObject> obmgr::CloneObject(const CPipeObject& object);

    obmgr::Attributes m_attributes;
    obmgr::TableListener* m_table = nullptr;
    std::int32_t m_id = 0;
    int m_status = 0;
    std::uint32_t m_position = 0; // in the list of its table
    bool m_isRetired = false;     // on a retired list
    bool m_isSaved = false;       // the running transaction has a copy from before its first change
};

// A record with N link ids.
template <int N> class CLinkedObject : public CPipeObject {
public:
    std::span<const std::int32_t> Links() const override { return m_links; }

protected:
    CLinkedObject(unsigned long objectId, const std::array<std::int32_t, N>& links)
        : CPipeObject(objectId), m_links(links)
    {
    }
    CLinkedObject(const CLinkedObject&) = default;
    CLinkedObject& operator=(const CLinkedObject& other)
    {
        if (this != &other) {
            CPipeObject::operator=(other);
            AssignLinks(other.m_links);
        }
        return *this;
    }
    std::span<std::int32_t> MutableLinks() override { return m_links; }

    unsigned long GetLink(int index) const
    {
        return static_cast<std::uint32_t>(m_links[static_cast<std::size_t>(index)]);
    }

private:
    std::array<std::int32_t, N> m_links;
};

// A record built with a disposal type or another code: 0 sanitary, 1 agricultural, 2 storm, 3 combined,
// 4 vacuum sanitary, 5 vacuum agricultural.
class RIVELTA_API CDisposalPipeObject : public CLinkedObject<1> {
    DECLARE_DYNAMIC(CDisposalPipeObject)

public:
    explicit CDisposalPipeObject(unsigned long objectId = 0, int disposalType = 0);

    int GetDisposalType() const { return Links()[0]; }
    void SetDisposalType(int disposalType) { SetLink(0, disposalType); }
};

// A pipe section: the shape of a span's cross-section.
class RIVELTA_API CPipeSection : public CPipeObject {
    DECLARE_DYNAMIC(CPipeSection)

public:
    // Dimensions in metres; the unset number (2.2250738585072014e-308) where the record has no such key.
    struct RIVELTA_API tagSPEC {
        tagSPEC();

        CString sectionKey;
        CString name;
        long sectionId = 0;        // object id of the section record
        CString kind;              // tag of the section class
        double nominalDiameter;    // pipe, egg
        double diameterOrTopWidth; // pipe, egg: diameter; open box, U-shape: width at the top
        double bottomWidth;        // open box, U-shape
        double thickness;          // pipe, egg
        double width;              // closed box
        double height;             // boxes, U-shape
        double topThickness;       // boxes, U-shape
        double bottomThickness;    // boxes, U-shape
        double base;               // thickness of the base below the section
        double sideThickness;      // no record has it yet
    };

    explicit CPipeSection(unsigned long objectId = 0) : CPipeObject(objectId) {}
    CPipeSection(const CPipeSection&) = default;
    // The dimensions are not copied: they belong to the attributes as they were when they were loaded.
    CPipeSection& operator=(const CPipeSection& other);

    // Fills the dimensions from the attributes; with `keepLoaded` those that were loaded before stay. False for a
    // section that is of none of the five kinds.
    bool LoadSpec(bool keepLoaded);
    const tagSPEC& GetSpec() const { return m_spec ? *m_spec : EmptySpec(); }

private:
    static const tagSPEC& EmptySpec();

    struct SpecHolder {
        SpecHolder() = default;
        SpecHolder(const SpecHolder& other) : value(other.value ? std::make_unique<tagSPEC>(*other.value) : nullptr) {}
        SpecHolder& operator=(const SpecHolder&) = delete;
        explicit operator bool() const { return value != nullptr; }
        const tagSPEC& operator*() const { return *value; }
        std::unique_ptr<tagSPEC> value;
    };
    SpecHolder m_spec;
};

// A storm method with the area that several methods are combined over.
class RIVELTA_API CQrMultiArea : public CPipeObject {
    DECLARE_DYNAMIC(CQrMultiArea)

public:
    explicit CQrMultiArea(unsigned long objectId = 0) : CPipeObject(objectId) {}
    CQrMultiArea(const CQrMultiArea&) = default;
    CQrMultiArea& operator=(const CQrMultiArea& other);

    double GetMultiArea() const { return m_multiArea; }
    void SetMultiArea(double area);

private:
    double m_multiArea = 0.0;
};
