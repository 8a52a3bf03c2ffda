#include "store/ObjectTable.h"

#include "common/Id32.h"
#include "common/LosslessUtf8.h"
#include "common/Text2Number.h"
#include "framework/Exception.h"

#include <algorithm>
#include <array>
#include <utility>

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
    const auto end = m_retired.end();
    const auto retired = object->m_isRetired ? std::find(m_retired.begin(), end, object) : end;
    if (object->m_isRetired && retired == end) return false; // another manager keeps it
    if (listed != object->m_id) MakeRoomForShift(listed, object->m_id);
    const auto position = static_cast<std::uint32_t>(m_live.size());
    m_live.push_back(nullptr);
    try {
        Attach(object, position);
    } catch (...) {
        m_live.pop_back();
        throw;
    }
    if (listed != object->m_id) ShiftIdList(listed, object->m_id);
    if (object->m_isRetired) m_retired.erase(retired);
    object->m_isRetired = false;
    return true;
}

bool ObjectTable::Remove(CPipeObject* object)
{
    if (!object) return false;
    const std::int32_t id = object->m_id;
    const std::size_t count = CountOfId(id);
    if (count == 0) AfxThrowInvalidArgException();
    // First all that may fail, for every object with the id.
    MakeRoomForRetired(count);
    BeforeChange(*m_live[m_byId.Find(id)]);
    if (const auto more = m_moreById.find(id); more != m_moreById.end())
        for (const std::uint32_t position : more->second)
            BeforeChange(*m_live[position]);
    for (std::size_t left = count; left > 0; --left) {
        CPipeObject& removed = *m_live[m_byId.Find(id)];
        Detach(removed);
        Retire(&removed);
    }
    // Each took one entry off the id list, as far as there was one.
    if (const auto delta = m_idListDelta.find(id); delta != m_idListDelta.end() && delta->second <= 0)
        m_idListDelta.erase(delta);
    CompactIfSparse();
    return true;
}

bool ObjectTable::RemoveAll(const std::vector<CPipeObject*>& objects)
{
    for (CPipeObject* object : objects)
        if (Find(object->GetId32()) && !Remove(object)) return false;
    return true;
}

void ObjectTable::Clear()
{
    if (m_saved) {
        // The snapshot outlives the list, so it takes over what it shared with it, and its positions stay taken.
        for (CPipeObject* object : m_live)
            if (object) BeforeChange(*object);
        for (CPipeObject*& object : m_live)
            delete std::exchange(object, nullptr);
        m_byId.ClearKeepingRoom(); // an abort must not fail
    } else {
        for (CPipeObject* object : m_live)
            delete object;
        m_live = {};
        m_byId.Clear();
    }
    m_count = 0;
    m_moreById.clear();
    m_idListDelta.clear();
    DropValueIndexes();
    for (ValueWatch* watch : m_watches)
        watch->Cleared();
    DestroyRetired();
}

long ObjectTable::MaxId(long atLeast) const
{
    for (const CPipeObject* object : m_live)
        if (object) atLeast = std::max<long>(atLeast, object->m_id);
    return atLeast;
}

void ObjectTable::MakeRoomForRetired(std::size_t count)
{
    const std::size_t wanted = m_retired.size() + count;
    if (wanted > m_retired.capacity()) m_retired.reserve(std::max(wanted, 2 * m_retired.capacity()));
}

void ObjectTable::Retire(CPipeObject* object)
{
    if (!object || object->m_isRetired || object->m_table) return;
    m_retired.push_back(object);
    object->m_isRetired = true;
}

void ObjectTable::DestroyRetired() noexcept
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
    Place(object, position);
}

void ObjectTable::Place(CPipeObject* object, std::uint32_t position) noexcept
{
    m_live[position] = object;
    object->m_position = position;
    object->m_table = this;
    object->m_isSaved = false;
    ++m_count;
    if (wantsValueChange) AfterValueChange(*object);
}

void ObjectTable::Detach(CPipeObject& object) noexcept
{
    if (wantsValueChange) BeforeValueChange(object);
    UnindexId(object.m_id, object.m_position);
    m_live[object.m_position] = nullptr;
    object.m_table = nullptr;
    object.m_isSaved = false;
    --m_count;
}

void ObjectTable::CompactIfSparse() noexcept
{
    const std::size_t gaps = m_live.size() - m_count;
    if (m_saved || m_walks > 0 || gaps <= kSparse || gaps <= m_count) return;
    m_live.erase(std::remove(m_live.begin(), m_live.end(), nullptr), m_live.end());
    DropValueIndexes();
    // The order stays, and no position grows: a position that was moved already is never taken for an old one.
    for (std::size_t i = 0; i < m_live.size(); ++i) {
        CPipeObject& object = *m_live[i];
        const std::uint32_t from = std::exchange(object.m_position, static_cast<std::uint32_t>(i));
        if (m_byId.Find(object.m_id) == from) {
            m_byId.Replace(object.m_id, object.m_position);
        } else {
            std::vector<std::uint32_t>& more = m_moreById.find(object.m_id)->second;
            *std::lower_bound(more.begin(), more.end(), from) = object.m_position;
        }
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
    const auto [more, isNew] = m_moreById.try_emplace(id);
    const std::uint32_t later = std::max(first, position);
    try {
        more->second.insert(std::upper_bound(more->second.begin(), more->second.end(), later), later);
    } catch (...) {
        if (isNew) m_moreById.erase(more);
        throw;
    }
    if (position < first) m_byId.Replace(id, position);
}

void ObjectTable::UnindexId(std::int32_t id, std::uint32_t position) noexcept
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
        positions.erase(std::lower_bound(positions.begin(), positions.end(), position));
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

void ObjectTable::MakeRoomForShift(std::int32_t added, std::int32_t removed)
{
    m_idListDelta.try_emplace(added, 0);
    m_idListDelta.try_emplace(removed, 0);
}

// The id list has `added` once more, and `removed` once less, than the objects say.
void ObjectTable::ShiftIdList(std::int32_t added, std::int32_t removed) noexcept
{
    const auto shift = [this](std::int32_t id, int by) {
        const auto delta = m_idListDelta.find(id);
        delta->second += by;
        if (delta->second == 0) m_idListDelta.erase(delta);
    };
    shift(added, 1);
    shift(removed, -1);
}

void ObjectTable::ChangeId(CPipeObject& object, std::int32_t id)
{
    const std::int32_t oldId = object.m_id;
    MakeRoomForShift(oldId, id);
    IndexId(id, object.m_position);
    UnindexId(oldId, object.m_position);
    object.m_id = id;
    ShiftIdList(oldId, id);
}

// ---- queries ----

void ObjectTable::AfterValueChange(CPipeObject& object) noexcept
{
    try {
        for (const auto& index : m_indexes)
            Note(*index, HashOf(*index, object), object);
        // So many positions that no longer fit cost more than building the index anew.
        constexpr std::size_t kMostPerObject = 4;
        constexpr std::size_t kAlways = 1024;
        const auto isWorn = [&](const auto& index) { return index->noted > kMostPerObject * m_count + kAlways; };
        if (std::any_of(m_indexes.begin(), m_indexes.end(), isWorn)) DropValueIndexes();
    } catch (...) {
        // An index that misses an object would change results; without one, the next query builds it anew.
        DropValueIndexes();
    }
    for (ValueWatch* watch : m_watches)
        watch->AfterValueChange(*this, object);
}

void ObjectTable::BeforeValueChange(CPipeObject& object) noexcept
{
    for (const auto& index : m_indexes)
        if (PositionMap::Slot* const slot = index->positions.Find(HashOf(*index, object))) slot->isDoubtful = true;
    for (ValueWatch* watch : m_watches)
        watch->BeforeValueChange(*this, object);
}

void ObjectTable::DropValueIndexes() noexcept
{
    m_indexes.clear();
    wantsValueChange = !m_watches.empty();
}

void ObjectTable::Watch(ValueWatch& watch)
{
    if (std::find(m_watches.begin(), m_watches.end(), &watch) == m_watches.end()) m_watches.push_back(&watch);
    wantsValueChange = true;
}

void ObjectTable::Unwatch(ValueWatch& watch) noexcept
{
    m_watches.erase(std::remove(m_watches.begin(), m_watches.end(), &watch), m_watches.end());
}

std::uint64_t ObjectTable::HashOf(const ValueIndex& index, const CPipeObject& object) const
{
    switch (index.kind) {
    case ValueIndex::Kind::Link: return HashOfNumber(object.Links()[index.field]);
    case ValueIndex::Kind::Text: return HashOfText(object.GetAttributes().Find(index.field));
    default: return HashOfNumber(ToLong(object.GetAttributes().Find(index.field)));
    }
}

void ObjectTable::Note(ValueIndex& index, std::uint64_t hash, const CPipeObject& object)
{
    const PositionMap::Entry entry{object.m_position, object.m_id};
    PositionMap::Entries& entries = index.positions.Get(hash).entries;
    const std::span<PositionMap::Entry> all = entries.All();
    auto place = all.end();
    if (!all.empty() && all.back().position >= entry.position) {
        const auto isBefore = [](const PositionMap::Entry& a, const PositionMap::Entry& b) {
            return a.position < b.position;
        };
        place = std::lower_bound(all.begin(), all.end(), entry, isBefore);
        if (place->position == entry.position) {
            place->id = entry.id;
            return;
        }
    }
    entries.Insert(static_cast<std::size_t>(place - all.begin()), entry);
    ++index.noted;
}

// Takes out what no longer fits and brings the ids up to date.
void ObjectTable::Refresh(ValueIndex& index, PositionMap::Slot& slot, std::uint64_t hash) const
{
    const auto isStale = [&](PositionMap::Entry& entry) {
        const CPipeObject* const object = At(entry.position);
        if (!object || HashOf(index, *object) != hash) return true;
        entry.id = object->m_id;
        return false;
    };
    const std::span<PositionMap::Entry> all = slot.entries.All();
    const auto last = std::remove_if(all.begin(), all.end(), isStale);
    index.noted -= static_cast<std::size_t>(all.end() - last);
    slot.entries.Shorten(static_cast<std::size_t>(last - all.begin()));
    slot.isDoubtful = false;
}

ObjectTable::ValueIndex& ObjectTable::IndexFor(ValueIndex::Kind kind, std::uint32_t field) const
{
    for (const auto& index : m_indexes)
        if (index->kind == kind && index->field == field) return *index;
    auto index = std::make_unique<ValueIndex>(ValueIndex{kind, field, {}, 0});
    for (std::size_t i = 0; i < m_live.size(); ++i)
        if (m_live[i]) Note(*index, HashOf(*index, *m_live[i]), *m_live[i]);
    m_indexes.push_back(std::move(index));
    const_cast<ObjectTable*>(this)->wantsValueChange = true;
    return *m_indexes.back();
}

template <class Fits, class Visit>
void ObjectTable::Query(ValueIndex::Kind kind, std::uint32_t field, std::uint64_t hash, Fits&& fits, Visit&& visit,
                        bool firstOnly) const
{
    ValueIndex& index = IndexFor(kind, field);
    PositionMap::Slot* const slot = index.positions.Find(hash);
    if (!slot) return;
    if (slot->isDoubtful) Refresh(index, *slot, hash);
    // A visitor may change the table: it gets the objects as they were when the query began.
    constexpr std::size_t kFew = 16;
    std::array<CPipeObject*, kFew> few{};
    std::vector<CPipeObject*> many;
    std::size_t hits = 0;
    if (!firstOnly && slot->entries.Size() > kFew) many.resize(slot->entries.Size());
    CPipeObject** const found = many.empty() ? few.data() : many.data();
    for (const PositionMap::Entry entry : slot->entries.All()) {
        CPipeObject* const object = m_live[entry.position];
        if (!fits(*object)) continue;
        found[hits++] = object;
        if (firstOnly) break;
    }
    for (std::size_t i = 0; i < hits; ++i)
        if (!visit(*found[i])) return;
}

std::span<const PositionMap::Entry> ObjectTable::EntriesByLink(int link, std::int32_t id) const
{
    ValueIndex& index = IndexFor(ValueIndex::Kind::Link, static_cast<std::uint32_t>(link));
    PositionMap::Slot* const slot = index.positions.Find(HashOfNumber(id));
    if (!slot) return {};
    if (slot->isDoubtful) Refresh(index, *slot, HashOfNumber(id));
    return slot->entries.All();
}

CPipeObject* ObjectTable::FirstByLink(int link, std::int32_t id) const
{
    const auto entries = EntriesByLink(link, id);
    return entries.empty() ? nullptr : m_live[entries.front().position];
}

void ObjectTable::AppendIdsByLink(int link, std::int32_t id, CList<long, long>& ids) const
{
    for (const PositionMap::Entry entry : EntriesByLink(link, id))
        ids.AddTail(entry.id);
}

void ObjectTable::VisitByLink(int link, std::int32_t id, Visitor visit) const
{
    const auto field = static_cast<std::uint32_t>(link);
    Query(
        ValueIndex::Kind::Link, field, HashOfNumber(id), [](const CPipeObject&) { return true; }, visit);
}

void ObjectTable::VisitByText(const wchar_t* key, std::wstring_view text, Visitor visit) const
{
    const KeyId field = InternKey(key);
    const Utf8Buffer utf8(text);
    Query(
        ValueIndex::Kind::Text, field, HashOfText(utf8.View()),
        [&](const CPipeObject& o) { return o.GetAttributes().Find(field) == utf8.View(); }, visit);
}

CPipeObject* ObjectTable::FirstByText(const wchar_t* key, std::wstring_view text) const
{
    const KeyId field = InternKey(key);
    const Utf8Buffer utf8(text);
    CPipeObject* first = nullptr;
    Query(
        ValueIndex::Kind::Text, field, HashOfText(utf8.View()),
        [&](const CPipeObject& o) { return o.GetAttributes().Find(field) == utf8.View(); },
        [&](CPipeObject& object) {
            first = &object;
            return false;
        },
        true);
    return first;
}

void ObjectTable::VisitByNumber(const wchar_t* key, long number, Visitor visit) const
{
    const KeyId field = InternKey(key);
    Query(
        ValueIndex::Kind::Number, field, HashOfNumber(Id32(number)), [](const CPipeObject&) { return true; }, visit);
}

// ---- transactions ----

void ObjectTable::WatchChanges() noexcept
{
    wantsBeforeChange = m_saved.has_value();
}

void ObjectTable::Begin()
{
    if (m_transactionCount == 0) {
        m_saved.emplace(Snapshot{static_cast<std::uint32_t>(m_live.size()), {}, m_moreById, m_idListDelta});
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

void ObjectTable::Commit() noexcept
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

void ObjectTable::Abort() noexcept
{
    if (--m_transactionCount != 0 || !m_saved) return;
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
    for (const auto& [position, copy] : saved.before)
        destroy(position);
    // What is left was not touched. The index by id had room for all of the snapshot's ids and has kept it.
    for (auto& [position, copy] : saved.before) {
        const std::uint32_t first = m_byId.Find(copy->m_id);
        if (first == IdIndex::kNone)
            m_byId.Insert(copy->m_id, position);
        else if (position < first)
            m_byId.Replace(copy->m_id, position);
        Place(copy.release(), position);
    }
    m_moreById = std::move(saved.moreById);
    m_idListDelta = std::move(saved.idListDelta);
    CompactIfSparse();
}

} // namespace obmgr
