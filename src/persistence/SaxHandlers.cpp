#include "persistence/SaxHandlers.h"

#include <charconv>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include <xercesc/sax/AttributeList.hpp>

#include "common/Id32.h"
#include "common/Text2Number.h"
#include "persistence/PipeObjectException.h"
#include "resources/Resources.h"
#include "store/ObjectManager.h"

using obmgr::ElementNames;
using obmgr::Id32;

namespace {

constexpr int kSubAttributeDepth = 2;
constexpr std::int32_t kRefusedId = std::numeric_limits<std::int32_t>::max();

template <class Record> std::unique_ptr<CPipeObject> MakeRecord(std::int32_t id)
{
    return std::make_unique<Record>(static_cast<unsigned long>(id));
}

using RecordFactory = std::unique_ptr<CPipeObject> (*)(std::int32_t id);

constexpr RecordFactory kFactories[] = {
#define OBM_RECORD(T, ...) MakeRecord<C##T>,
#include "objects/ObjectTypes.def"
};

// The names of the link attributes in the parser's text.
const std::u16string& LinkName(objectdata::OBJECTTYPE type, std::size_t link)
{
    using Names = std::array<std::array<std::u16string, obmgr::kMaxLinks>, obmgr::kTypeCount>;
    static const Names names = [] {
        Names made;
        for (const obmgr::RecordInfo& row : obmgr::Records()) {
            auto* name = made[static_cast<std::size_t>(row.type)].data();
            for (const obmgr::LinkField& field : row.links.All())
                (name++)->assign(field.name.begin(), field.name.end());
        }
        return made;
    }();
    return names[static_cast<std::size_t>(type)][link];
}

// The text as a whole number held within 32 bits. False for one that is not made of digits behind an optional minus
// sign; the lone sign is 0.
bool ParseInteger(const XMLCh* text, long& value)
{
    if (!text || !*text) return false;
    const bool isNegative = *text == u'-';
    std::int64_t magnitude = 0;
    for (text += isNegative; *text; ++text) {
        if (*text < u'0' || *text > u'9') return false;
        constexpr std::int64_t kEnough = 1'000'000'000'000;
        if (magnitude < kEnough) magnitude = magnitude * 10 + (*text - u'0');
    }
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    value = isNegative ? -std::min(magnitude, kMost + 1) : std::min(magnitude, kMost);
    return true;
}

} // namespace

SAXHandlers::SAXHandlers(CObjectManager* manager, bool append) : m_pManager(manager), m_bAppend(append) {}

SAXHandlers::~SAXHandlers()
{
    FinishRecord();
}

void SAXHandlers::startElement(const XMLCh* const name, xercesc::AttributeList& attributes)
{
    ElementNames::Name& meaning = m_names.Of(name);
    if (meaning.isRoot) return;
    if (++m_nDepth == kSubAttributeDepth)
        ReadSubAttribute(name, meaning, attributes);
    else
        ReadRecord(name, meaning, attributes);
}

void SAXHandlers::endElement(const XMLCh* const name)
{
    if (ElementNames::IsRoot(name)) return;
    // The current object stays: what follows at the depth of sub-attributes goes to it.
    if (m_nDepth-- != kSubAttributeDepth) FinishRecord();
}

bool SAXHandlers::GetIntAttribute(const xercesc::AttributeList& attributes, const XMLCh* name, bool shift,
                                  long& value) const
{
    if (!ParseInteger(attributes.getValue(name), value)) return false;
    if (!shift || value == 0) return true;
    const long shifted = Shifted(value);
    if (shifted == kRefusedId) return false;
    value = shifted;
    return true;
}

// Every id of the file moves by the same distance, so that references stay true and meet none of the design.
long SAXHandlers::Shifted(long id) const
{
    return obmgr::AddIds(obmgr::AddIds(id, m_pManager->GetCurrentObjectId()), 1);
}

void SAXHandlers::ReadRecord(const XMLCh* name, const ElementNames::Name& meaning,
                             const xercesc::AttributeList& attributes)
{
    FinishRecord();
    long id = -1;
    const bool hasId = GetIntAttribute(attributes, u"id", m_bAppend, id);
    if (meaning.isProfile) {
        m_pCurrent = m_pManager->GetFileProfile();
        m_isFiltering = m_pCurrent->FiltersSubAttributes();
        return;
    }
    if (!hasId || !meaning.record || !AddRecord(*meaning.record, id, attributes))
        throw new CPipeObjectException(
            obmgr::ResourceTextOf(IDS_READ_RECORD_INVALID, obmgr::Shortened(obmgr::FromXml(name)), id));
}

bool SAXHandlers::AddRecord(const obmgr::RecordInfo& row, long id, const xercesc::AttributeList& attributes)
{
    if (row.reader == obmgr::Reader::Refuses) return false;
    obmgr::ObjectTable& table = m_pManager->TableOf(row.type);
    if (row.reader == obmgr::Reader::Merges) {
        if (CPipeObject* const known = table.Find(id)) {
            m_pCurrent = known;
            m_isFiltering = known->FiltersSubAttributes();
            return true;
        }
    }
    const auto fields = row.links.All();
    std::array<long, obmgr::kMaxLinks> links{};
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (!GetIntAttribute(attributes, LinkName(row.type, i).c_str(), m_bAppend && fields[i].isReference, links[i]))
            return false;

    const auto type = static_cast<std::size_t>(row.type);
    std::unique_ptr<CPipeObject> object = kFactories[type](Id32(id));
    for (std::size_t i = 0; i < fields.size(); ++i)
        object->SetLink(static_cast<int>(i), Id32(links[i]));
    object->ReserveAttributes(m_roomOfType[type]);
    if (!table.Add(id, object.get())) return false;
    m_pCurrent = object.release();
    m_isFiltering = m_pCurrent->FiltersSubAttributes();
    m_isGrowing = true;
    // Pens are noted twice; lists made from it have always had them so.
    if (row.type == objectdata::Drawpendat) m_pManager->SaveReadObject(m_pCurrent);
    m_pManager->SaveReadObject(m_pCurrent);
    return true;
}

void SAXHandlers::ReadSubAttribute(const XMLCh* name, ElementNames::Name& meaning,
                                   const xercesc::AttributeList& attributes)
{
    if (!m_pCurrent) return;
    const XMLCh* const contents = attributes.getValue(u"contents");
    if (m_isFiltering) {
        OfferSubAttribute(name, contents);
        return;
    }
    std::string_view value = contents ? m_value.Of(contents) : std::string_view("");
    char digits[16];
    if (m_bAppend && meaning.isShiftedKey) {
        const long id = obmgr::ToLong(value);
        const char* const end = std::to_chars(digits, std::end(digits), id == 0 ? id : Shifted(id)).ptr;
        value = {digits, static_cast<std::size_t>(end - digits)};
    }
    m_pCurrent->SetAttribute(ElementNames::KeyOf(meaning), value);
}

// For the classes that refuse or rewrite what a file holds.
void SAXHandlers::OfferSubAttribute(const XMLCh* name, const XMLCh* contents)
{
    CString key = obmgr::FromXml(name);
    CString value = obmgr::FromXml(contents);
    if (!m_pCurrent->AcceptSubAttribute(key, value)) return;
    if (m_bAppend && ElementNames::IsShiftedKey(obmgr::ToXml(key.View()).c_str())) {
        const long id = obmgr::ToLong(value.View());
        value = obmgr::FormatInt(id == 0 ? id : Shifted(id));
    }
    m_pCurrent->WriteSubAttribute(key, value);
}

// Gives back the room that the guess had too much. Not to have it back is no failure.
void SAXHandlers::FinishRecord() noexcept
{
    if (!m_isGrowing) return;
    m_isGrowing = false;
    const auto type = static_cast<std::size_t>(m_pCurrent->GetObjectType());
    try {
        m_roomOfType[type] = m_pCurrent->ShrinkAttributes();
    } catch (const std::bad_alloc&) {
        m_roomOfType[type] = 0;
    }
}
