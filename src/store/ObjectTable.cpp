#include "store/ObjectTable.h"

#include "common/Id32.h"
#include "common/Text2Number.h"
#include "common/Utf8.h"
#include "framework/Exception.h"

#include <algorithm>
#include <bit>

namespace obmgr {
namespace {

// Ids from here on are refused: 2147483647 less 100.
constexpr std::int32_t kIdLimit = 2147483547;
// Removed places are closed up when there are more of them than this and than objects.
constexpr std::size_t kSparse = 64;

std::uint64_t HashOfText(std::string_view text)
{
    return std::hash<std::string_view>()(text);
}

std::uint64_t HashOfNumber(long number)
{
    return static_cast<std::uint64_t>(number);
}

} // namespace

// ---- IdIndex ----

// Blocks of eight ids are scattered, the ids of a block stay together: designs number their objects in runs.
std::size_t IdIndex::Home(std::int32_t id) const
{
    const auto bits = static_cast<std::uint32_t>(id);
    const std::uint64_t block = (bits >> 3) * std::uint64_t{0x9E3779B97F4A7C15};
    return ((block >> m_shift) << 3) | (bits & 7);
}

std::uint32_t IdIndex::Find(std::int32_t id) const
{
    if (m_slots.empty()) return kNone;
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t at = Home(id);; at = (at + 1) & mask) {
        const Slot& slot = m_slots[at];
        if (slot.position == kNone) return kNone;
        if (slot.id == id) return slot.position;
    }
}

void IdIndex::Insert(std::int32_t id, std::uint32_t position)
{
    if ((m_count + 1) * 10 > m_slots.size() * 7) Grow();
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = Home(id);
    while (m_slots[at].position != kNone)
        at = (at + 1) & mask;
    m_slots[at] = {id, position};
    ++m_count;
}

void IdIndex::Replace(std::int32_t id, std::uint32_t position)
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = Home(id);
    while (m_slots[at].id != id || m_slots[at].position == kNone)
        at = (at + 1) & mask;
    m_slots[at].position = position;
}

// Closes the gap, so that no search ends at it too early.
void IdIndex::Erase(std::int32_t id)
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t gap = Home(id);
    while (m_slots[gap].id != id || m_slots[gap].position == kNone)
        gap = (gap + 1) & mask;
    for (std::size_t at = (gap + 1) & mask; m_slots[at].position != kNone; at = (at + 1) & mask) {
        const std::size_t home = Home(m_slots[at].id);
        if (((at - home) & mask) < ((at - gap) & mask)) continue;
        m_slots[gap] = m_slots[at];
        gap = at;
    }
    m_slots[gap] = {};
    --m_count;
}

void IdIndex::Clear()
{
    m_slots = {};
    m_count = 0;
}

void IdIndex::Grow()
{
    constexpr std::size_t kFirstSize = 16;
    std::vector<Slot> old(m_slots.empty() ? kFirstSize : m_slots.size() * 2);
    old.swap(m_slots);
    m_shift = 64 - static_cast<unsigned>(std::bit_width(m_slots.size() >> 4));
    m_count = 0;
    for (const Slot& slot : old)
        if (slot.position != kNone) Insert(slot.id, slot.position);
}

// ---- the list ----

ObjectTable::~ObjectTable()
{
    m_saved.reset();
    Clear();
}

bool ObjectTable::Add(long id, CPipeObject* object)
{
    const std::int32_t listed = Id32(id);
    if (!object || object->m_table || listed >= kIdLimit || IsOnIdList(listed)) return false;
    if (object->m_isRetired) {
        m_retired.erase(std::remove(m_retired.begin(), m_retired.end(), object), m_retired.end());
        object->m_isRetired = false;
    }
    const auto position = static_cast<std::uint32_t>(m_live.size());
    m_live.push_back(nullptr);
    try {
        Attach(object, position);
        if (listed != object->m_id) {
            ShiftIdList(listed, 1);
            ShiftIdList(object->m_id, -1);
        }
    } catch (...) {
        if (m_live.back()) Detach(*object);
        m_live.pop_back();
        throw;
    }
    return true;
}

bool ObjectTable::Remove(CPipeObject* object)
{
    if (!object) return false;
    const std::int32_t id = object->m_id;
    if (m_byId.Find(id) == IdIndex::kNone) AfxThrowInvalidArgException();
    // Every object with the id goes, and for each one entry of the id list, if there is one.
    for (std::uint32_t at = m_byId.Find(id); at != IdIndex::kNone; at = m_byId.Find(id)) {
        CPipeObject& removed = *m_live[at];
        BeforeChange(removed);
        m_retired.reserve(m_retired.size() + 1);
        const bool wasListed = IsOnIdList(id);
        Detach(removed);
        if (!wasListed) ShiftIdList(id, 1);
        Retire(&removed);
    }
    CompactIfSparse();
    return true;
}

CPipeObject* ObjectTable::Find(long id) const
{
    const std::uint32_t position = m_byId.Find(Id32(id));
    return position == IdIndex::kNone ? nullptr : m_live[position];
}

void ObjectTable::Clear()
{
    if (m_saved) {
        // The snapshot outlives the list, so it takes over what it shared with it, and its positions stay taken.
        for (CPipeObject* object : m_live)
            if (object) BeforeChange(*object);
        for (CPipeObject*& object : m_live) {
            delete object;
            object = nullptr;
        }
    } else {
        for (CPipeObject* object : m_live)
            delete object;
        m_live = {};
    }
    m_count = 0;
    m_byId.Clear();
    m_moreById.clear();
    m_idListDelta.clear();
    m_indexes.clear();
    wantsValueChange = false;
    DestroyRetired();
}

long ObjectTable::MaxId(long atLeast) const
{
    for (const CPipeObject* object : m_live)
        if (object) atLeast = std::max<long>(atLeast, object->m_id);
    return atLeast;
}

void ObjectTable::Retire(CPipeObject* object)
{
    if (!object || object->m_isRetired || object->m_table) return;
    m_retired.push_back(object);
    object->m_isRetired = true;
}

void ObjectTable::DestroyRetired()
{
    for (CPipeObject* object : m_retired)
        delete object;
    m_retired = {};
}

std::size_t ObjectTable::NextPosition(std::size_t position) const
{
    while (position < m_live.size() && !m_live[position])
        ++position;
    return position;
}

void ObjectTable::Attach(CPipeObject* object, std::uint32_t position)
{
    IndexId(object->m_id, position);
    m_live[position] = object;
    object->m_position = position;
    object->m_table = this;
    object->m_isSaved = false;
    ++m_count;
    if (wantsValueChange) AfterValueChange(*object);
}

void ObjectTable::Detach(CPipeObject& object)
{
    UnindexId(object.m_id, object.m_position);
    m_live[object.m_position] = nullptr;
    object.m_table = nullptr;
    object.m_isSaved = false;
    --m_count;
}

void ObjectTable::CompactIfSparse()
{
    const std::size_t gaps = m_live.size() - m_count;
    if (m_saved || m_walks > 0 || gaps <= kSparse || gaps <= m_count) return;
    m_live.erase(std::remove(m_live.begin(), m_live.end(), nullptr), m_live.end());
    m_byId.Clear();
    m_moreById.clear();
    m_indexes.clear();
    wantsValueChange = false;
    for (std::size_t i = 0; i < m_live.size(); ++i) {
        m_live[i]->m_position = static_cast<std::uint32_t>(i);
        IndexId(m_live[i]->m_id, static_cast<std::uint32_t>(i));
    }
}

// ---- ids ----

void ObjectTable::IndexId(std::int32_t id, std::uint32_t position)
{
    const std::uint32_t first = m_byId.Find(id);
    if (first == IdIndex::kNone) {
        m_byId.Insert(id, position);
        return;
    }
    std::vector<std::uint32_t>& more = m_moreById[id];
    const std::uint32_t later = std::max(first, position);
    more.insert(std::upper_bound(more.begin(), more.end(), later), later);
    if (position < first) m_byId.Replace(id, position);
}

void ObjectTable::UnindexId(std::int32_t id, std::uint32_t position)
{
    const auto more = m_moreById.find(id);
    if (more == m_moreById.end()) {
        m_byId.Erase(id);
        return;
    }
    std::vector<std::uint32_t>& positions = more->second;
    if (m_byId.Find(id) == position) {
        m_byId.Replace(id, positions.front());
        positions.erase(positions.begin());
    } else {
        positions.erase(std::find(positions.begin(), positions.end(), position));
    }
    if (positions.empty()) m_moreById.erase(more);
}

std::size_t ObjectTable::CountOfId(std::int32_t id) const
{
    if (m_byId.Find(id) == IdIndex::kNone) return 0;
    const auto more = m_moreById.find(id);
    return more == m_moreById.end() ? 1 : 1 + more->second.size();
}

bool ObjectTable::IsOnIdList(std::int32_t id) const
{
    const auto delta = m_idListDelta.find(id);
    const long listed = static_cast<long>(CountOfId(id)) + (delta == m_idListDelta.end() ? 0 : delta->second);
    return listed > 0;
}

void ObjectTable::ShiftIdList(std::int32_t id, int by)
{
    const auto delta = m_idListDelta.try_emplace(id, 0).first;
    delta->second += by;
    if (delta->second == 0) m_idListDelta.erase(delta);
}

void ObjectTable::AfterIdChange(CPipeObject& object, std::int32_t oldId)
{
    UnindexId(oldId, object.m_position);
    IndexId(object.m_id, object.m_position);
    ShiftIdList(oldId, 1);
    ShiftIdList(object.m_id, -1);
}

// ---- queries ----

void ObjectTable::AfterValueChange(CPipeObject& object)
{
    try {
        for (const auto& index : m_indexes)
            Note(*index, HashOf(*index, object), object.m_position);
    } catch (const std::bad_alloc&) {
        // An index that misses an object would change results; without one, the next query builds it anew.
        m_indexes.clear();
        wantsValueChange = false;
    }
}

std::uint64_t ObjectTable::HashOf(const ValueIndex& index, const CPipeObject& object) const
{
    switch (index.kind) {
    case ValueIndex::Kind::Link: return HashOfNumber(object.Links()[index.field]);
    case ValueIndex::Kind::Text: return HashOfText(object.GetAttributes().Find(index.field));
    default: return HashOfNumber(ToLong(object.GetAttributes().Find(index.field)));
    }
}

void ObjectTable::Note(ValueIndex& index, std::uint64_t hash, std::uint32_t position)
{
    std::vector<std::uint32_t>& positions = index.positions[hash];
    if (positions.empty() || positions.back() < position) {
        positions.push_back(position);
        return;
    }
    const auto place = std::lower_bound(positions.begin(), positions.end(), position);
    if (place == positions.end() || *place != position) positions.insert(place, position);
}

ObjectTable::ValueIndex& ObjectTable::IndexFor(ValueIndex::Kind kind, std::uint32_t field) const
{
    for (const auto& index : m_indexes)
        if (index->kind == kind && index->field == field) return *index;
    auto index = std::make_unique<ValueIndex>(ValueIndex{kind, field, {}});
    for (std::size_t i = 0; i < m_live.size(); ++i)
        if (m_live[i]) Note(*index, HashOf(*index, *m_live[i]), static_cast<std::uint32_t>(i));
    m_indexes.push_back(std::move(index));
    const_cast<ObjectTable*>(this)->wantsValueChange = true;
    return *m_indexes.back();
}

template <class Fits>
void ObjectTable::Query(ValueIndex::Kind kind, std::uint32_t field, std::uint64_t hash, Fits&& fits,
                        const Visitor& visit) const
{
    ValueIndex& index = IndexFor(kind, field);
    const auto found = index.positions.find(hash);
    if (found == index.positions.end()) return;
    std::vector<std::uint32_t>& positions = found->second;
    const auto isStale = [&](std::uint32_t position) {
        const CPipeObject* const object = At(position);
        return !object || HashOf(index, *object) != hash;
    };
    // A visitor may change the table: it gets the objects as they were when the query began.
    std::vector<CPipeObject*> hits;
    bool hasStale = false;
    for (const std::uint32_t position : positions) {
        CPipeObject* const object = At(position);
        if (object && fits(*object))
            hits.push_back(object);
        else
            hasStale = true;
    }
    if (hasStale) positions.erase(std::remove_if(positions.begin(), positions.end(), isStale), positions.end());
    if (positions.empty()) index.positions.erase(found);
    for (CPipeObject* object : hits)
        if (!visit(*object)) return;
}

void ObjectTable::VisitByLink(int link, std::int32_t id, const Visitor& visit) const
{
    const auto field = static_cast<std::uint32_t>(link);
    Query(
        ValueIndex::Kind::Link, field, HashOfNumber(id), [&](const CPipeObject& o) { return o.Links()[field] == id; },
        visit);
}

void ObjectTable::VisitByText(const wchar_t* key, std::wstring_view text, const Visitor& visit) const
{
    const KeyId field = InternKey(key);
    const Utf8Buffer utf8(text);
    Query(
        ValueIndex::Kind::Text, field, HashOfText(utf8.View()),
        [&](const CPipeObject& o) { return o.GetAttributes().Find(field) == utf8.View(); }, visit);
}

void ObjectTable::VisitByNumber(const wchar_t* key, long number, const Visitor& visit) const
{
    const KeyId field = InternKey(key);
    Query(
        ValueIndex::Kind::Number, field, HashOfNumber(number),
        [&](const CPipeObject& o) { return ToLong(o.GetAttributes().Find(field)) == number; }, visit);
}

// ---- transactions ----

void ObjectTable::WatchChanges()
{
    wantsBeforeChange = m_saved.has_value();
}

void ObjectTable::Begin()
{
    if (m_transactionCount == 0) {
        m_saved.emplace(Snapshot{static_cast<std::uint32_t>(m_live.size()), {}, m_idListDelta});
        WatchChanges();
    }
    ++m_transactionCount;
}

void ObjectTable::BeforeChange(CPipeObject& object)
{
    if (!m_saved || object.m_isSaved || object.m_position >= m_saved->size) return;
    m_saved->before.emplace(object.m_position, CloneObject(object));
    object.m_isSaved = true;
}

void ObjectTable::Commit()
{
    if (--m_transactionCount != 0) return;
    if (m_saved) {
        for (const auto& [position, copy] : m_saved->before)
            if (CPipeObject* const object = At(position)) object->m_isSaved = false;
        m_saved.reset();
        WatchChanges();
    }
    DestroyRetired();
    CompactIfSparse();
}

void ObjectTable::Abort()
{
    if (--m_transactionCount != 0) return;
    if (!m_saved) return;
    // Nothing below may note changes any more.
    Snapshot saved = std::move(*m_saved);
    m_saved.reset();
    WatchChanges();
    const auto destroy = [this](std::size_t position) {
        if (CPipeObject* const object = m_live[position]) {
            Detach(*object);
            delete object;
        }
    };
    for (std::size_t position = saved.size; position < m_live.size(); ++position)
        destroy(position);
    m_live.resize(saved.size, nullptr);
    for (auto& [position, copy] : saved.before)
        destroy(position);
    for (auto& [position, copy] : saved.before) {
        Attach(copy.get(), position);
        copy.release();
    }
    m_idListDelta = std::move(saved.idListDelta);
    CompactIfSparse();
}

} // namespace obmgr
