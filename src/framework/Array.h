// CArray: the growing array of the interface, over std::vector. An index out of range is an invalid argument.
#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>
#include <vector>

#include "framework/Exception.h"
#include "framework/String.h"

// Arg is the type in which elements are handed in. New elements are zero or default constructed.
template <class Type, class Arg = const Type&> class CArray {
    static_assert(!std::is_same_v<Type, bool>, "elements must be addressable: take int for flags");

public:
    using value_type = Type;
    using iterator = typename std::vector<Type>::iterator;
    using const_iterator = typename std::vector<Type>::const_iterator;

    std::ptrdiff_t GetSize() const noexcept { return static_cast<std::ptrdiff_t>(m_items.size()); }
    std::ptrdiff_t GetCount() const noexcept { return GetSize(); }
    // The last index; -1 for an empty array.
    std::ptrdiff_t GetUpperBound() const noexcept { return GetSize() - 1; }
    bool IsEmpty() const noexcept { return m_items.empty(); }
    // `growBy` is a hint of the interface that is not needed here.
    void SetSize(std::ptrdiff_t size, [[maybe_unused]] std::ptrdiff_t growBy = -1) { m_items.resize(Length(size)); }
    void FreeExtra() { m_items.shrink_to_fit(); }
    void RemoveAll() { std::vector<Type>().swap(m_items); }

    Type& GetAt(std::ptrdiff_t index) { return m_items[Checked(index)]; }
    const Type& GetAt(std::ptrdiff_t index) const { return m_items[Checked(index)]; }
    void SetAt(std::ptrdiff_t index, Arg value) { m_items[Checked(index)] = value; }
    Type& ElementAt(std::ptrdiff_t index) { return m_items[Checked(index)]; }
    const Type& ElementAt(std::ptrdiff_t index) const { return m_items[Checked(index)]; }
    Type& operator[](std::ptrdiff_t index) { return m_items[Checked(index)]; }
    const Type& operator[](std::ptrdiff_t index) const { return m_items[Checked(index)]; }
    // Null for an empty array.
    Type* GetData() noexcept { return m_items.empty() ? nullptr : m_items.data(); }
    const Type* GetData() const noexcept { return m_items.empty() ? nullptr : m_items.data(); }

    void SetAtGrow(std::ptrdiff_t index, Arg value)
    {
        Type copy(value); // the value may stand in this array, which moves
        if (Length(index) >= m_items.size()) m_items.resize(Length(index) + 1);
        m_items[Length(index)] = std::move(copy);
    }
    // The index of the new element, or of the first one.
    std::ptrdiff_t Add(Arg value)
    {
        m_items.push_back(value);
        return GetUpperBound();
    }
    std::ptrdiff_t Append(const CArray& source)
    {
        const std::ptrdiff_t first = GetSize();
        const std::size_t count = source.m_items.size();
        for (std::size_t i = 0; i < count; ++i) // the source may be this array, and the room grows by doubling
            m_items.push_back(source.m_items[i]);
        return first;
    }
    void Copy(const CArray& source) { m_items = source.m_items; }

    // Behind the end the array grows as far as needed.
    void InsertAt(std::ptrdiff_t index, Arg value, std::ptrdiff_t count = 1)
    {
        const Type copy(value);
        if (Length(index) > m_items.size()) m_items.resize(Length(index));
        m_items.insert(m_items.begin() + index, Length(count), copy);
    }
    void InsertAt(std::ptrdiff_t index, const CArray* source)
    {
        if (!source) AfxThrowInvalidArgException();
        const std::vector<Type> copy = source->m_items;
        if (Length(index) > m_items.size()) m_items.resize(Length(index));
        m_items.insert(m_items.begin() + index, copy.begin(), copy.end());
    }
    void RemoveAt(std::ptrdiff_t index, std::ptrdiff_t count = 1)
    {
        if (index < 0 || count < 0 || index > GetSize() || count > GetSize() - index) AfxThrowInvalidArgException();
        m_items.erase(m_items.begin() + index, m_items.begin() + index + count);
    }

    iterator begin() noexcept { return m_items.begin(); }
    iterator end() noexcept { return m_items.end(); }
    const_iterator begin() const noexcept { return m_items.begin(); }
    const_iterator end() const noexcept { return m_items.end(); }

private:
    static std::size_t Length(std::ptrdiff_t length)
    {
        if (length < 0) AfxThrowInvalidArgException();
        return static_cast<std::size_t>(length);
    }
    std::size_t Checked(std::ptrdiff_t index) const
    {
        if (index < 0 || index >= GetSize()) AfxThrowInvalidArgException();
        return static_cast<std::size_t>(index);
    }

    std::vector<Type> m_items;
};

class RIVELTA_API CStringArray : public CArray<CString, const CString&> {};
