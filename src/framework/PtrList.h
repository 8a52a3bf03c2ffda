// The lists of pointers: CObList, CPtrList and their typed form. They never own what they point to.
#pragma once

#include "framework/List.h"
#include "framework/Object.h"

class RIVELTA_API CObList : public obmgr::LinkedList<CObject*> {
public:
    explicit CObList(std::ptrdiff_t blockSize = 10) : LinkedList(blockSize) {}
};

class RIVELTA_API CPtrList : public obmgr::LinkedList<void*> {
public:
    explicit CPtrList(std::ptrdiff_t blockSize = 10) : LinkedList(blockSize) {}
};

// A CObList or CPtrList (Base) whose elements are all of the pointer type Type.
template <class Base, class Type> class CTypedPtrList : public Base {
    template <class BaseIterator> class Walk {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Type;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = Type;

        Walk() = default;
        explicit Walk(BaseIterator inner) : m_inner(inner) {}
        Type operator*() const { return static_cast<Type>(*m_inner); }
        Walk& operator++()
        {
            ++m_inner;
            return *this;
        }
        Walk operator++(int) { return Walk(m_inner++); }
        friend bool operator==(const Walk&, const Walk&) = default;

    private:
        BaseIterator m_inner;
    };

public:
    using iterator = Walk<typename Base::iterator>;
    using const_iterator = Walk<typename Base::const_iterator>;
    using value_type = Type;

    explicit CTypedPtrList(std::ptrdiff_t blockSize = 10) : Base(blockSize) {}

    Type GetHead() const { return static_cast<Type>(Base::GetHead()); }
    Type GetTail() const { return static_cast<Type>(Base::GetTail()); }
    Type RemoveHead() { return static_cast<Type>(Base::RemoveHead()); }
    Type RemoveTail() { return static_cast<Type>(Base::RemoveTail()); }
    Type GetNext(POSITION& position) const { return static_cast<Type>(Base::GetNext(position)); }
    Type GetPrev(POSITION& position) const { return static_cast<Type>(Base::GetPrev(position)); }
    Type GetAt(POSITION position) const { return static_cast<Type>(Base::GetAt(position)); }
    void SetAt(POSITION position, Type value) { Base::SetAt(position, value); }
    POSITION InsertBefore(POSITION position, Type value) { return Base::InsertBefore(position, value); }
    POSITION InsertAfter(POSITION position, Type value) { return Base::InsertAfter(position, value); }
    POSITION Find(Type value, POSITION startAfter = nullptr) const { return Base::Find(value, startAfter); }

    POSITION AddHead(Type value) { return Base::AddHead(value); }
    POSITION AddTail(Type value) { return Base::AddTail(value); }
    void AddHead(const CTypedPtrList* list) { Base::AddHead(list); }
    void AddTail(const CTypedPtrList* list) { Base::AddTail(list); }

    iterator begin() noexcept { return iterator(Base::begin()); }
    iterator end() noexcept { return iterator(Base::end()); }
    const_iterator begin() const noexcept { return const_iterator(Base::begin()); }
    const_iterator end() const noexcept { return const_iterator(Base::end()); }
};
