#include "objects/PipeObject.h"

#include "common/Id32.h"
#include "common/LosslessUtf8.h"
#include "common/Text2Number.h"
#include "objects/UnsetNumber.h"

#include <algorithm>
#include <cwchar>

IMPLEMENT_DYNAMIC(CPipeObject, CObject)
IMPLEMENT_DYNAMIC(CDisposalPipeObject, CPipeObject)
IMPLEMENT_DYNAMIC(CPipeSection, CPipeObject)
IMPLEMENT_DYNAMIC(CQrMultiArea, CPipeObject)

namespace {

CString ToText(std::string_view utf8)
{
    // Most values are short: they need no room but the result's own.
    constexpr std::size_t kShort = 64;
    if (utf8.size() <= kShort) {
        wchar_t text[kShort];
        int length = 0;
        for (std::size_t at = 0; at < utf8.size();)
            text[length++] = static_cast<wchar_t>(obmgr::DecodeLossless(utf8, at));
        return CString(text, length);
    }
    std::wstring text;
    text.reserve(utf8.size());
    obmgr::AppendWide(text, utf8);
    return CString(std::move(text));
}

std::wstring_view ViewOf(const wchar_t* text)
{
    return text ? std::wstring_view(text) : std::wstring_view();
}

constexpr int kDecimals = 13;

} // namespace

std::unique_ptr<CPipeObject> obmgr::CloneObject(const CPipeObject& object)
{
    return std::unique_ptr<CPipeObject>(object.Clone());
}

CPipeObject::CPipeObject(unsigned long objectId) : m_id(obmgr::Id32(objectId)) {}

CPipeObject::CPipeObject(const CPipeObject& other)
    : CObject(other), m_attributes(other.m_attributes), m_id(other.m_id), m_status(other.m_status)
{
}

CPipeObject& CPipeObject::operator=(const CPipeObject& other)
{
    if (this == &other) return *this;
    SetObjectId(other.GetObjectId());
    BeforeChange();
    m_attributes = other.m_attributes;
    m_status = other.m_status;
    AfterValueChange();
    return *this;
}

CPipeObject::~CPipeObject() = default;

bool CPipeObject::IsObjectClass(const wchar_t* className) const
{
    const std::wstring_view wanted = ViewOf(className);
    for (const CRuntimeClass* type = GetRuntimeClass(); type; type = type->m_pBaseClass) {
        const std::string_view name = type->m_lpszClassName;
        if (std::equal(name.begin(), name.end(), wanted.begin(), wanted.end(),
                       [](char a, wchar_t b) { return static_cast<wchar_t>(a) == b; }))
            return true;
    }
    return false;
}

unsigned long CPipeObject::GetObjectId() const
{
    return static_cast<std::uint32_t>(m_id);
}

void CPipeObject::SetObjectId(unsigned long objectId)
{
    const std::int32_t id = obmgr::Id32(objectId);
    if (id == m_id) return;
    BeforeChange();
    if (m_table)
        m_table->ChangeId(*this, id);
    else
        m_id = id;
    AfterValueChange();
}

void CPipeObject::SetStatus(int status)
{
    if (status == m_status) return;
    BeforeChange();
    m_status = status;
}

CString CPipeObject::GetSubAttribute(const wchar_t* key) const
{
    const auto id = obmgr::LookUpKey(key);
    return id ? ToText(m_attributes.Find(*id)) : CString();
}

void CPipeObject::GetSubAttribute(CMapStringToString& values) const
{
    values.RemoveAll();
    for (const auto entry : m_attributes)
        values.SetAt(ToText(obmgr::NameOfKey(entry.key).text), ToText(entry.value));
}

int CPipeObject::GetSubAttributeInt(const wchar_t* key, int defaultValue) const
{
    const auto id = obmgr::LookUpKey(key);
    const std::string_view value = id ? m_attributes.Find(*id) : std::string_view();
    return value.data() ? static_cast<int>(obmgr::ToLong(value)) : defaultValue;
}

double CPipeObject::GetSubAttributeDouble(const wchar_t* key, double defaultValue) const
{
    const auto id = obmgr::LookUpKey(key);
    const std::string_view value = id ? m_attributes.Find(*id) : std::string_view();
    return value.data() ? obmgr::ToDouble(value) : defaultValue;
}

bool CPipeObject::GetSubAttributeBool(const wchar_t* key, bool defaultValue) const
{
    const auto id = obmgr::LookUpKey(key);
    const std::string_view value = id ? m_attributes.Find(*id) : std::string_view();
    return value.data() ? obmgr::ToLong(value) != 0 : defaultValue;
}

bool CPipeObject::IsSubAttribute(const wchar_t* key) const
{
    const auto id = obmgr::LookUpKey(key);
    return id && m_attributes.Contains(*id);
}

void CPipeObject::WriteSubAttribute(const wchar_t* key, const wchar_t* value)
{
    const obmgr::Utf8Buffer utf8(ViewOf(value));
    SetAttribute(obmgr::InternKey(key), utf8.View());
}

void CPipeObject::WriteSubAttributeInt(const wchar_t* key, int value)
{
    WriteSubAttribute(key, obmgr::FormatInt(value));
}

void CPipeObject::WriteSubAttributeDouble(const wchar_t* key, double value)
{
    WriteSubAttribute(key, obmgr::FormatDouble(value, kDecimals));
}

void CPipeObject::SetSubAttribute(const CMapStringToString& values)
{
    obmgr::Attributes attributes;
    for (const auto& [key, value] : values) {
        const obmgr::Utf8Buffer utf8(value.View());
        attributes.Set(obmgr::InternKey(key), utf8.View());
    }
    attributes.ShrinkToFit();
    SetAttributes(attributes);
}

void CPipeObject::AddSubAttribute(const CArray<CKeyValue, CKeyValue>& values)
{
    if (values.IsEmpty()) return;
    obmgr::Attributes attributes = m_attributes;
    for (const CKeyValue& pair : values) {
        const obmgr::Utf8Buffer utf8(pair.GetValue().View());
        attributes.Set(obmgr::InternKey(pair.GetKey()), utf8.View());
    }
    SetAttributes(attributes);
}

bool CPipeObject::AcceptSubAttribute(CString&, CString&)
{
    return true;
}

bool CPipeObject::ConvertVersion(const CVersionConvertFlags&)
{
    return false;
}

void CPipeObject::SetLink(int index, std::int32_t id)
{
    std::int32_t& link = MutableLinks()[static_cast<std::size_t>(index)];
    if (link == id) return;
    BeforeChange();
    link = id;
    AfterValueChange();
}

void CPipeObject::AssignLinks(std::span<const std::int32_t> links)
{
    BeforeChange();
    std::copy(links.begin(), links.end(), MutableLinks().begin());
    AfterValueChange();
}

void CPipeObject::SetAttributes(const obmgr::Attributes& values)
{
    BeforeChange();
    m_attributes = values;
    AfterValueChange();
}

void CPipeObject::SetAttribute(obmgr::KeyId key, std::string_view utf8)
{
    BeforeChange();
    m_attributes.Set(key, utf8);
    AfterValueChange();
}

void CPipeObject::BeforeChange()
{
    if (!m_table) return;
    if (m_table->wantsBeforeChange) m_table->BeforeChange(*this);
    if (m_table->wantsValueChange) m_table->BeforeValueChange(*this);
}

void CPipeObject::AfterValueChange() noexcept
{
    if (m_table && m_table->wantsValueChange) m_table->AfterValueChange(*this);
}

CDisposalPipeObject::CDisposalPipeObject(unsigned long objectId, int disposalType)
    : CLinkedObject<1>(objectId, {disposalType})
{
}

CQrMultiArea& CQrMultiArea::operator=(const CQrMultiArea& other)
{
    if (this == &other) return *this;
    CPipeObject::operator=(other);
    m_multiArea = other.m_multiArea;
    return *this;
}

void CQrMultiArea::SetMultiArea(double area)
{
    BeforeChange();
    m_multiArea = area;
}

CPipeSection& CPipeSection::operator=(const CPipeSection& other)
{
    if (this == &other) return *this;
    CPipeObject::operator=(other);
    m_spec.value.reset();
    return *this;
}

CPipeSection::tagSPEC::tagSPEC()
    : nominalDiameter(obmgr::kUnsetNumber), diameterOrTopWidth(obmgr::kUnsetNumber), bottomWidth(obmgr::kUnsetNumber),
      thickness(obmgr::kUnsetNumber), width(obmgr::kUnsetNumber), height(obmgr::kUnsetNumber),
      topThickness(obmgr::kUnsetNumber), bottomThickness(obmgr::kUnsetNumber), base(obmgr::kUnsetNumber),
      sideThickness(obmgr::kUnsetNumber)
{
}

const CPipeSection::tagSPEC& CPipeSection::EmptySpec()
{
    static const tagSPEC empty;
    return empty;
}

namespace {

using Spec = CPipeSection::tagSPEC;

struct Dimension {
    const wchar_t* key;
    double Spec::*field;
};

// How each kind of section names its values.
struct SectionKeys {
    objectdata::OBJECTTYPE type;
    const wchar_t* name;
    const wchar_t* sectionKey;
    std::array<Dimension, 6> dimensions;
};

constexpr SectionKeys kSectionKeys[] = {
    {objectdata::Pipe,
     L"pename",
     L"pesectionkey",
     {{{L"pedia2", &Spec::nominalDiameter},
       {L"pedia", &Spec::diameterOrTopWidth},
       {L"pethick", &Spec::thickness},
       {L"pebase", &Spec::base}}}},
    {objectdata::Obox,
     L"obname",
     L"obsectionkey",
     {{{L"obtwidth", &Spec::diameterOrTopWidth},
       {L"obbwidth", &Spec::bottomWidth},
       {L"obheight", &Spec::height},
       {L"obtthick", &Spec::topThickness},
       {L"obbthick", &Spec::bottomThickness},
       {L"obbase", &Spec::base}}}},
    {objectdata::Cbox,
     L"cbname",
     L"cbsectionkey",
     {{{L"cbwidth", &Spec::width},
       {L"cbheight", &Spec::height},
       {L"cbtthick", &Spec::topThickness},
       {L"cbbthick", &Spec::bottomThickness},
       {L"cbbase", &Spec::base}}}},
    {objectdata::Ubox,
     L"ubname",
     L"ubsectionkey",
     {{{L"ubtwidth", &Spec::diameterOrTopWidth},
       {L"ubbwidth", &Spec::bottomWidth},
       {L"ubheight", &Spec::height},
       {L"ubtthick", &Spec::topThickness},
       {L"ubbthick", &Spec::bottomThickness},
       {L"ubbase", &Spec::base}}}},
    {objectdata::Egg,
     L"egname",
     L"egsectionkey",
     {{{L"egdia2", &Spec::nominalDiameter},
       {L"egdia", &Spec::diameterOrTopWidth},
       {L"egthick", &Spec::thickness},
       {L"egbase", &Spec::base}}}},
};

} // namespace

bool CPipeSection::LoadSpec(bool keepLoaded)
{
    if (keepLoaded && m_spec) return true;
    const auto keys = std::find_if(std::begin(kSectionKeys), std::end(kSectionKeys),
                                   [&](const SectionKeys& row) { return row.type == GetObjectType(); });
    if (keys == std::end(kSectionKeys)) return false;
    auto spec = std::make_unique<tagSPEC>();
    spec->sectionKey = GetSubAttribute(keys->sectionKey);
    spec->name = GetSubAttribute(keys->name);
    spec->sectionId = GetId32();
    spec->kind = ToText(obmgr::RecordOf(GetObjectType()).tag);
    for (const Dimension& dimension : keys->dimensions)
        if (dimension.key) (*spec).*dimension.field = GetSubAttributeDouble(dimension.key, obmgr::kUnsetNumber);
    BeforeChange();
    m_spec.value = std::move(spec);
    return true;
}
