// The arrays of pointers: CObArray, CPtrArray and their typed form. They never own what they point to.
#pragma once

#include "framework/Array.h"
#include "framework/Object.h"

class RIVELTA_API CObArray : public CArray<CObject*> {};
class RIVELTA_API CPtrArray : public CArray<void*> {};

// A CObArray or CPtrArray (Base) whose elements are all of the pointer type Type. Elements are set by SetAt.
template <class Base, class Type> class CTypedPtrArray : public Base {
    class Walk {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Type;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = Type;

        Walk() = default;
        explicit Walk(typename Base::const_iterator inner) : m_inner(inner) {}
        Type operator*() const { return static_cast<Type>(*m_inner); }
        Walk& operator++()
        {
            ++m_inner;
            return *this;
        }
        Walk operator++(int) { return Walk(m_inner++); }
        friend bool operator==(const Walk&, const Walk&) = default;

    private:
        typename Base::const_iterator m_inner;
    };

public:
    using const_iterator = Walk;
    using iterator = Walk;
    using value_type = Type;

    Type GetAt(std::ptrdiff_t index) const { return static_cast<Type>(Base::GetAt(index)); }
    Type operator[](std::ptrdiff_t index) const { return GetAt(index); }
    void SetAt(std::ptrdiff_t index, Type value) { Base::SetAt(index, value); }
    void SetAtGrow(std::ptrdiff_t index, Type value) { Base::SetAtGrow(index, value); }
    std::ptrdiff_t Add(Type value) { return Base::Add(value); }
    std::ptrdiff_t Append(const CTypedPtrArray& source) { return Base::Append(source); }
    void InsertAt(std::ptrdiff_t index, Type value, std::ptrdiff_t count = 1) { Base::InsertAt(index, value, count); }

    const_iterator begin() const noexcept { return Walk(Base::begin()); }
    const_iterator end() const noexcept { return Walk(Base::end()); }
};
