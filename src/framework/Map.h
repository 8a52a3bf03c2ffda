// CMap and CMapStringToString: a hash index over entries that stand in the order in which their keys were first set.
// Walks go in that order. A position is an entry: it stays good while other entries are added and removed.
#pragma once

#include <cstddef>
#include <functional>
#include <unordered_set>
#include <utility>

#include "framework/List.h"
#include "framework/String.h"

// KeyArg and ValueArg are the types in which keys and values are handed in. Keys need std::hash and ==.
template <class Key, class KeyArg, class Value, class ValueArg> class CMap {
public:
    struct CPair {
        const Key key;
        Value value;
    };

private:
    using Entries = obmgr::LinkedList<CPair>;
    struct Entry {
        CPair* pair;
        POSITION position;
    };
    struct HashOfKey {
        using is_transparent = void;
        std::size_t operator()(const Key& key) const { return std::hash<Key>()(key); }
        std::size_t operator()(const Entry& entry) const { return (*this)(entry.pair->key); }
    };
    struct SameKey {
        using is_transparent = void;
        static const Key& KeyOf(const Key& key) { return key; }
        static const Key& KeyOf(const Entry& entry) { return entry.pair->key; }
        bool operator()(const auto& a, const auto& b) const { return KeyOf(a) == KeyOf(b); }
    };

public:
    using iterator = typename Entries::iterator;
    using const_iterator = typename Entries::const_iterator;
    using value_type = CPair;

    explicit CMap(std::ptrdiff_t blockSize = 10) : m_entries(blockSize) {}
    CMap(const CMap&) = delete;
    CMap& operator=(const CMap&) = delete;

    std::ptrdiff_t GetCount() const noexcept { return m_entries.GetCount(); }
    std::ptrdiff_t GetSize() const noexcept { return m_entries.GetCount(); }
    bool IsEmpty() const noexcept { return m_entries.IsEmpty(); }

    // False, with `value` untouched, when the key is not there.
    bool Lookup(KeyArg key, Value& value) const
    {
        const CPair* const pair = PLookup(key);
        if (!pair) return false;
        value = pair->value;
        return true;
    }
    // The entry of the key, or null.
    CPair* PLookup(KeyArg key)
    {
        const auto found = m_index.find(static_cast<const Key&>(key));
        return found == m_index.end() ? nullptr : found->pair;
    }
    const CPair* PLookup(KeyArg key) const { return const_cast<CMap*>(this)->PLookup(key); }

    // The value of the key; a new key gets a zero or default constructed one.
    Value& operator[](KeyArg key)
    {
        const Key& wanted = key;
        if (const auto found = m_index.find(wanted); found != m_index.end()) return found->pair->value;
        const POSITION position = m_entries.AddTail(CPair{wanted, Value()});
        CPair& pair = m_entries.GetAt(position);
        try {
            m_index.insert(Entry{&pair, position});
        } catch (...) {
            m_entries.RemoveAt(position);
            throw;
        }
        return pair.value;
    }
    void SetAt(KeyArg key, ValueArg value) { (*this)[key] = value; }
    bool RemoveKey(KeyArg key)
    {
        const auto found = m_index.find(static_cast<const Key&>(key));
        if (found == m_index.end()) return false;
        const POSITION position = found->position;
        m_index.erase(found);
        m_entries.RemoveAt(position);
        return true;
    }
    void RemoveAll()
    {
        m_index.clear();
        m_entries.RemoveAll();
    }

    // Null when the map is empty, and behind the last entry.
    POSITION GetStartPosition() const noexcept { return m_entries.GetHeadPosition(); }
    void GetNextAssoc(POSITION& position, Key& key, Value& value) const
    {
        const CPair& pair = m_entries.GetNext(position);
        key = pair.key;
        value = pair.value;
    }
    const CPair* PGetFirstAssoc() const { return IsEmpty() ? nullptr : &m_entries.GetHead(); }

    // `size` is a hint for the number of entries to come; with `allocate` room is made at once.
    void InitHashTable(unsigned size, bool allocate = true)
    {
        if (size == 0) AfxThrowInvalidArgException();
        m_hashTableSize = size;
        if (allocate) m_index.reserve(size);
    }
    unsigned GetHashTableSize() const noexcept { return m_hashTableSize; }

    iterator begin() noexcept { return m_entries.begin(); }
    iterator end() noexcept { return m_entries.end(); }
    const_iterator begin() const noexcept { return m_entries.begin(); }
    const_iterator end() const noexcept { return m_entries.end(); }

private:
    Entries m_entries;
    std::unordered_set<Entry, HashOfKey, SameKey> m_index;
    unsigned m_hashTableSize = 17;
};

class RIVELTA_API CMapStringToString : public CMap<CString, const CString&, CString, const CString&> {
    using Base = CMap<CString, const CString&, CString, const CString&>;

public:
    explicit CMapStringToString(std::ptrdiff_t blockSize = 10) : Base(blockSize) {}
    CMapStringToString(const CMapStringToString& other) : Base() { CopyFrom(other); }
    CMapStringToString& operator=(const CMapStringToString& other)
    {
        if (this == &other) return *this;
        RemoveAll();
        CopyFrom(other);
        return *this;
    }

private:
    void CopyFrom(const CMapStringToString& other)
    {
        for (const auto& [key, value] : other)
            SetAt(key, value);
    }
};
