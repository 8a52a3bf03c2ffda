// The untyped body of an object table: the list in its order, the indexes that answer queries without walking it,
// the retired objects, and what a running transaction needs to bring the list back.
//
// The meaning of every query is a walk of the list, first match first. Indexes only find the same objects sooner:
// they hold positions, and what an index gives is compared with the object itself before it counts.
#pragma once

#include "common/Export.h"
#include "common/FunctionRef.h"
#include "common/Id32.h"
#include "objects/PipeObject.h"
#include "store/IdIndex.h"
#include "store/PositionMap.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

class CDlgProgress;
class CStdioFile;

namespace obmgr {

class ObjectTable;

// Told of every change of an id, a link or an attribute in a table. A removal is told before it happens only, an
// addition after it.
class ValueWatch {
public:
    virtual void BeforeValueChange(const ObjectTable& table, const CPipeObject& object) noexcept = 0;
    virtual void AfterValueChange(const ObjectTable& table, const CPipeObject& object) noexcept = 0;
    // All objects went at once.
    virtual void Cleared() noexcept = 0;

protected:
    ~ValueWatch() = default;
};

class RIVELTA_API ObjectTable final : public TableListener {
public:
    ObjectTable() = default;
    ObjectTable(const ObjectTable&) = delete;
    ObjectTable& operator=(const ObjectTable&) = delete;
    virtual ~ObjectTable();

    // While one exists, positions stay as they are.
    class Walk {
    public:
        Walk() = default;
        explicit Walk(const ObjectTable* table) : m_table(table) { ++m_table->m_walks; }
        Walk(const Walk& other) : m_table(other.m_table)
        {
            if (m_table) ++m_table->m_walks;
        }
        Walk& operator=(Walk other)
        {
            std::swap(m_table, other.m_table);
            return *this;
        }
        ~Walk()
        {
            if (m_table) --m_table->m_walks;
        }

    private:
        const ObjectTable* m_table = nullptr;
    };

    // ---- the list ----
    bool Add(long id, CPipeObject* object);
    bool Remove(CPipeObject* object);
    // Each that is still there by its turn: an earlier removal takes all objects of its id along. False, with the rest
    // left in place, at a removal that fails.
    bool RemoveAll(const std::vector<CPipeObject*>& objects);
    CPipeObject* Find(long id) const
    {
        const std::uint32_t position = m_byId.Find(Id32(id));
        return position == IdIndex::kNone ? nullptr : m_live[position];
    }
    bool FileOutAll(CStdioFile& file, int* counter, CDlgProgress* progress, int dataver) const;
    void Clear();
    std::size_t Count() const { return m_count; }
    // The greatest id, compared as signed numbers, or `atLeast`.
    long MaxId(long atLeast) const;
    // Makes the id list that Add consults the list of the objects' present ids.
    void ResetIdList() { m_idListDelta.clear(); }
    // Keeps an object until the next commit, unless a table keeps or holds it already. Does not fail when there was
    // room made for it.
    void Retire(CPipeObject* object);
    void MakeRoomForRetired(std::size_t count);

    // Walks the list in its order. What is added during the walk is walked too, what is removed is not.
    template <class Visit> void ForEach(Visit&& visit) const
    {
        const Walk walk(this);
        for (std::size_t i = 0; i < m_live.size(); ++i)
            if (CPipeObject* const object = m_live[i]) visit(*object);
    }
    // Position of the next object at or after `position`; the list's length when there is none.
    std::size_t NextPosition(std::size_t position) const;
    CPipeObject* At(std::size_t position) const { return position < m_live.size() ? m_live[position] : nullptr; }
    CPipeObject* First() const { return At(NextPosition(0)); }
    // Which of two objects of this table comes first.
    bool IsBefore(const CPipeObject& a, const CPipeObject& b) const { return a.m_position < b.m_position; }
    // Whether two objects have one id, which a direct change of an id can bring about.
    bool HasSharedIds() const { return !m_moreById.empty(); }

    // ---- queries by link or value, in list order ----
    using Visitor = FunctionRef<bool(CPipeObject&)>; // false ends the query
    void VisitByLink(int link, std::int32_t id, Visitor visit) const;
    CPipeObject* FirstByLink(int link, std::int32_t id) const;
    std::size_t CountByLink(int link, std::int32_t id) const { return EntriesByLink(link, id).size(); }
    // Positions and ids, without a look at the objects. Good until the table changes or is asked for another id.
    std::span<const PositionMap::Entry> EntriesByLink(int link, std::int32_t id) const;
    void AppendIdsByLink(int link, std::int32_t id, CList<long, long>& ids) const;
    // An absent key reads as the empty text.
    void VisitByText(const wchar_t* key, std::wstring_view text, Visitor visit) const;
    CPipeObject* FirstByText(const wchar_t* key, std::wstring_view text) const;
    // The value read as an integer, 0 for an absent key.
    void VisitByNumber(const wchar_t* key, long number, Visitor visit) const;

    // ---- watches, borrowed ----
    void Watch(ValueWatch& watch);
    void Unwatch(ValueWatch& watch) noexcept;

    // ---- transactions ----
    void Begin();
    void Commit() noexcept;
    void Abort() noexcept;
    unsigned TransactionCount() const { return m_transactionCount; }
    // How many objects wait to be destroyed; how many have a copy from before the transaction. For tests.
    std::size_t RetiredCount() const { return m_retired.size(); }
    std::size_t SavedCount() const { return m_saved ? m_saved->before.size() : 0; }

    void BeforeChange(CPipeObject& object) override;
    void BeforeValueChange(CPipeObject& object) noexcept override;
    void ChangeId(CPipeObject& object, std::int32_t id) override;
    void AfterValueChange(CPipeObject& object) noexcept override;

private:
    // One query's index: the key of each object, hashed, to the positions that had it. Positions that no longer fit
    // are left in place and drop out when the key is next asked for.
    struct ValueIndex {
        enum class Kind { Link, Text, Number } kind;
        std::uint32_t field; // link number or key
        PositionMap positions;
        std::size_t noted = 0; // positions put in, those that no longer fit included
    };
    // What the outermost begin noted. An object gets its copy in `before` only when it is first changed or removed:
    // the rest of the list is its own snapshot.
    struct Snapshot {
        std::uint32_t size; // positions below it belong to the snapshot
        std::unordered_map<std::uint32_t, std::unique_ptr<CPipeObject>> before;
        std::unordered_map<std::int32_t, std::vector<std::uint32_t>> moreById;
        std::unordered_map<std::int32_t, int> idListDelta;
    };

    // What may fail fails before it has changed anything; the rest is noexcept.
    void Attach(CPipeObject* object, std::uint32_t position);
    void Place(CPipeObject* object, std::uint32_t position) noexcept;
    void Detach(CPipeObject& object) noexcept;
    void IndexId(std::int32_t id, std::uint32_t position);
    void UnindexId(std::int32_t id, std::uint32_t position) noexcept;
    std::size_t CountOfId(std::int32_t id) const;
    bool IsOnIdList(std::int32_t id) const;
    void MakeRoomForShift(std::int32_t added, std::int32_t removed);
    void ShiftIdList(std::int32_t added, std::int32_t removed) noexcept;
    void CompactIfSparse() noexcept;
    void DropValueIndexes() noexcept;
    void DestroyRetired() noexcept;
    void WatchChanges() noexcept;

    std::uint64_t HashOf(const ValueIndex& index, const CPipeObject& object) const;
    ValueIndex& IndexFor(ValueIndex::Kind kind, std::uint32_t field) const;
    static void Note(ValueIndex& index, std::uint64_t hash, const CPipeObject& object);
    void Refresh(ValueIndex& index, PositionMap::Slot& slot, std::uint64_t hash) const;
    template <class Fits, class Visit>
    void Query(ValueIndex::Kind kind, std::uint32_t field, std::uint64_t hash, Fits&& fits, Visit&& visit,
               bool firstOnly = false) const;

    std::vector<CPipeObject*> m_live; // owned; null where an object was removed
    std::size_t m_count = 0;
    IdIndex m_byId; // first position of each id
    // The further positions of ids that several objects have, after a direct change of an id.
    std::unordered_map<std::int32_t, std::vector<std::uint32_t>> m_moreById;
    // How often the id list, which only Add, Remove and ResetIdList write, has an id more than the objects do.
    std::unordered_map<std::int32_t, int> m_idListDelta;
    std::vector<CPipeObject*> m_retired; // owned
    mutable std::vector<std::unique_ptr<ValueIndex>> m_indexes;
    std::vector<ValueWatch*> m_watches;
    mutable unsigned m_walks = 0;
    unsigned m_transactionCount = 0;
    std::optional<Snapshot> m_saved;
};

} // namespace obmgr
