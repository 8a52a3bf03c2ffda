#include "persistence/ElementNames.h"

#include <algorithm>
#include <string_view>

#include "persistence/XmlText.h"

namespace obmgr {
namespace {

// The sub-attributes that hold ids of the file and are moved by an append read. All other references of that form
// keep the values of the file: files are written for readers that do so.
constexpr std::u16string_view kShiftedKeys[] = {u"ipspanid", u"glspanid",  u"glglid",   u"laspanid", u"launitid",
                                                u"vjspid",   u"vjinletid", u"svspid",   u"ohspid",   u"nuownspid",
                                                u"arspanid", u"fxspanid",  u"mtspanid", u"oqspanid", u"dbtspanid"};

} // namespace

bool ElementNames::IsRoot(const XMLCh* text)
{
    // Asked at the end of each element: nearly all names fail here.
    if (*text != u'p' && *text != u'P') return false;
    return EqualsIgnoringCase(text, u"pdroot") || EqualsIgnoringCase(text, u"pipedata");
}

bool ElementNames::IsShiftedKey(const XMLCh* text)
{
    return std::any_of(std::begin(kShiftedKeys), std::end(kShiftedKeys),
                       [text](std::u16string_view key) { return EqualsIgnoringCase(text, key); });
}

ElementNames::Name& ElementNames::Find(const XMLCh* text)
{
    std::uint64_t hash = 0xCBF29CE484222325;
    const XMLCh* end = text;
    for (; *end; ++end)
        hash = (hash ^ *end) * 0x100000001B3;
    hash ^= hash >> 32;
    const std::u16string_view view(text, static_cast<std::size_t>(end - text));
    if (m_slots.empty()) return Add(view, hash);
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t at = hash & mask; m_slots[at].name; at = (at + 1) & mask)
        if (m_slots[at].hash == hash && m_slots[at].name->text == view) return *m_slots[at].name;
    return Add(view, hash);
}

ElementNames::Name& ElementNames::Add(std::u16string_view text, std::uint64_t hash)
{
    if ((m_names.size() + 1) * 2 > m_slots.size()) Grow();
    Name name;
    name.text = text;
    name.isRoot = IsRoot(name.text.c_str());
    name.isProfile = EqualsIgnoringCase(name.text.c_str(), u"profile");
    name.isShiftedKey = IsShiftedKey(name.text.c_str());
    name.record = FindByTagIgnoringCase(name.text);
    m_names.push_back(std::move(name));
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = hash & mask;
    while (m_slots[at].name)
        at = (at + 1) & mask;
    m_slots[at] = {hash, &m_names.back()};
    return m_names.back();
}

void ElementNames::Grow()
{
    constexpr std::size_t kFirstSize = 1024;
    std::vector<Slot> old(m_slots.empty() ? kFirstSize : m_slots.size() * 2);
    old.swap(m_slots);
    const std::size_t mask = m_slots.size() - 1;
    for (const Slot& slot : old) {
        if (!slot.name) continue;
        std::size_t at = slot.hash & mask;
        while (m_slots[at].name)
            at = (at + 1) & mask;
        m_slots[at] = slot;
    }
}

void ElementNames::MakeKey(Name& name)
{
    Utf8Text utf8;
    name.key = InternKey(utf8.Of(name.text.c_str()));
    name.hasKey = true;
}

} // namespace obmgr
