// CObjectDataBase<T>: the table of one record type.
#pragma once

#include "store/ObjectTable.h"

#include <iterator>

// Owns its objects, in the order in which they were added. Lists and indexes belong to one thread.
template <class T> class CObjectDataBase {
public:
    CObjectDataBase() = default;
    CObjectDataBase(const CObjectDataBase&) = delete;
    CObjectDataBase& operator=(const CObjectDataBase&) = delete;
    virtual ~CObjectDataBase() = default;

    // Takes the object at the end of the list. False, with the object still the caller's, when the id is 2147483547
    // or greater or is on the table's id list.
    bool Add(long id, T* object) { return m_table.Add(id, object); }
    // Moves every object with this object's id to the retired list, where it stays readable until the next commit.
    // False for null. Raises CInvalidArgException when no object has the id.
    bool Remove(T* object) { return m_table.Remove(object); }
    // The first object in list order whose id is `id`, or null. Borrowed.
    T* Find(long id) const { return static_cast<T*>(m_table.Find(id)); }
    // Writes the objects in list order. With a counter and a dialog, moves the dialog on for each object and raises
    // CPipeObjectException when the user cancels. False when an object cannot be written.
    bool FileOutAll(CStdioFile& file, int* counter, CDlgProgress* progress, int dataver) const
    {
        return m_table.FileOutAll(file, counter, progress, dataver);
    }
    // Destroys all objects, retired ones too. A running transaction keeps its snapshot.
    void Clear() { m_table.Clear(); }
    int GetCount() const { return static_cast<int>(m_table.Count()); }
    bool IsEmpty() const { return m_table.Count() == 0; }

    // The objects in list order, for range-for. Objects may be added or removed during the walk outside and inside
    // a transaction, as long as nothing commits, aborts or clears.
    class Iterator {
    public:
        using value_type = T*;
        using difference_type = std::ptrdiff_t;
        using iterator_category = std::input_iterator_tag;
        using pointer = T* const*;
        using reference = T*;

        T* operator*() const { return static_cast<T*>(m_table->At(m_position)); }
        Iterator& operator++()
        {
            m_position = m_table->NextPosition(m_position + 1);
            return *this;
        }
        bool operator==(const Iterator& other) const
        {
            return IsAtEnd() == other.IsAtEnd() && (IsAtEnd() || m_position == other.m_position);
        }

    private:
        friend class CObjectDataBase;
        Iterator(const obmgr::ObjectTable* table, std::size_t position)
            : m_table(table), m_position(position), m_walk(table)
        {
        }
        bool IsAtEnd() const { return m_table->At(m_position) == nullptr; }

        const obmgr::ObjectTable* m_table;
        std::size_t m_position;
        obmgr::ObjectTable::Walk m_walk; // removals during the walk move nothing
    };
    Iterator begin() const { return {&m_table, m_table.NextPosition(0)}; }
    Iterator end() const { return {&m_table, static_cast<std::size_t>(-1)}; }

    // The untyped body, for what works on tables of any type.
    obmgr::ObjectTable& Untyped() { return m_table; }
    const obmgr::ObjectTable& Untyped() const { return m_table; }

private:
    obmgr::ObjectTable m_table;
};
