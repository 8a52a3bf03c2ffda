// CList: the doubly linked list of the interface. A position is a node of it.
// The lists of pointers (CObList, CPtrList, CTypedPtrList) are in PtrList.h.
#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <iterator>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

#include "framework/Exception.h"
#include "framework/Position.h"

namespace obmgr {

// The common body of all lists: nodes from blocks that double in size, removed nodes kept for the next element.
template <class Type> class LinkedList {
    struct Links {
        Links* next;
        Links* previous;
    };
    struct Node : Links {
        Type value;
        template <class Value> explicit Node(Value&& v) : value(std::forward<Value>(v)) {}
    };
    union Slot {
        Slot() noexcept : free(nullptr) {}
        ~Slot() {}
        Slot* free;
        Node node;
    };

    template <class Value, class NodePointer> class Walk {
    public:
        using iterator_category = std::bidirectional_iterator_tag;
        using value_type = Type;
        using difference_type = std::ptrdiff_t;
        using pointer = Value*;
        using reference = Value&;

        Walk() = default;
        explicit Walk(NodePointer links) : m_links(links) {}
        reference operator*() const { return NodeOf(m_links)->value; }
        pointer operator->() const { return &NodeOf(m_links)->value; }
        Walk& operator++()
        {
            m_links = m_links->next;
            return *this;
        }
        Walk operator++(int)
        {
            Walk before = *this;
            ++*this;
            return before;
        }
        Walk& operator--()
        {
            m_links = m_links->previous;
            return *this;
        }
        Walk operator--(int)
        {
            Walk before = *this;
            --*this;
            return before;
        }
        friend bool operator==(const Walk&, const Walk&) = default;

    private:
        NodePointer m_links = nullptr;
    };

public:
    using iterator = Walk<Type, Links*>;
    using const_iterator = Walk<const Type, const Links*>;
    using value_type = Type;

    explicit LinkedList(std::ptrdiff_t blockSize = 10)
        : m_blockSize(blockSize > 0 ? static_cast<std::size_t>(blockSize) : 10)
    {
    }
    ~LinkedList() { RemoveAll(); }
    LinkedList(const LinkedList&) = delete;
    LinkedList& operator=(const LinkedList&) = delete;

    std::ptrdiff_t GetCount() const noexcept { return m_count; }
    std::ptrdiff_t GetSize() const noexcept { return m_count; }
    bool IsEmpty() const noexcept { return m_count == 0; }

    // Head and tail of an empty list are an invalid argument.
    Type& GetHead() { return Checked(m_ends.next)->value; }
    const Type& GetHead() const { return Checked(m_ends.next)->value; }
    Type& GetTail() { return Checked(m_ends.previous)->value; }
    const Type& GetTail() const { return Checked(m_ends.previous)->value; }
    Type RemoveHead() { return Take(Checked(m_ends.next)); }
    Type RemoveTail() { return Take(Checked(m_ends.previous)); }

    POSITION AddHead(const Type& value) { return InsertNode(m_ends.next, value); }
    POSITION AddTail(const Type& value) { return InsertNode(&m_ends, value); }
    // Adds the elements of `list` in their order. The list may be this one. (Templates, so that AddTail(0) is a value.)
    template <std::derived_from<LinkedList> List> void AddHead(const List* list)
    {
        AddBefore(m_ends.next, Checked(list));
    }
    template <std::derived_from<LinkedList> List> void AddTail(const List* list) { AddBefore(&m_ends, Checked(list)); }

    void RemoveAll()
    {
        if constexpr (!std::is_trivially_destructible_v<Type>) {
            for (Links* links = m_ends.next; links != &m_ends;) {
                Node* const node = NodeOf(links);
                links = links->next;
                node->~Node();
            }
        }
        m_ends = {&m_ends, &m_ends};
        m_count = 0;
        m_free = nullptr;
        m_unused = m_blockEnd = nullptr;
        m_blocks.clear();
    }

    // Null when the list is empty.
    POSITION GetHeadPosition() const noexcept { return PositionOf(m_ends.next); }
    POSITION GetTailPosition() const noexcept { return PositionOf(m_ends.previous); }

    // The element at the position, which moves on; it becomes null behind the last (before the first) element.
    Type& GetNext(POSITION& position)
    {
        Node* const node = Checked(position);
        position = PositionOf(node->next);
        return node->value;
    }
    const Type& GetNext(POSITION& position) const { return const_cast<LinkedList*>(this)->GetNext(position); }
    Type& GetPrev(POSITION& position)
    {
        Node* const node = Checked(position);
        position = PositionOf(node->previous);
        return node->value;
    }
    const Type& GetPrev(POSITION& position) const { return const_cast<LinkedList*>(this)->GetPrev(position); }

    Type& GetAt(POSITION position) { return Checked(position)->value; }
    const Type& GetAt(POSITION position) const { return Checked(position)->value; }
    void SetAt(POSITION position, const Type& value) { Checked(position)->value = value; }
    void RemoveAt(POSITION position) { Release(Checked(position)); }

    // A null position stands for the head (InsertBefore) or the tail (InsertAfter).
    POSITION InsertBefore(POSITION position, const Type& value)
    {
        return InsertNode(position ? Checked(position) : m_ends.next, value);
    }
    POSITION InsertAfter(POSITION position, const Type& value)
    {
        return InsertNode(position ? Checked(position)->next : &m_ends, value);
    }

    // The first place behind `startAfter` (null: from the head) that holds the value, or null.
    POSITION Find(const Type& value, POSITION startAfter = nullptr) const
    {
        for (Links* links = startAfter ? Checked(startAfter)->next : m_ends.next; links != &m_ends; links = links->next)
            if (NodeOf(links)->value == value) return PositionOf(links);
        return nullptr;
    }
    // Null for an index out of range.
    POSITION FindIndex(std::ptrdiff_t index) const noexcept
    {
        if (index < 0 || index >= m_count) return nullptr;
        Links* links = m_ends.next;
        while (index-- > 0)
            links = links->next;
        return PositionOf(links);
    }

    iterator begin() noexcept { return iterator(m_ends.next); }
    iterator end() noexcept { return iterator(&m_ends); }
    const_iterator begin() const noexcept { return const_iterator(m_ends.next); }
    const_iterator end() const noexcept { return const_iterator(&m_ends); }

private:
    static constexpr std::size_t kLargestBlock = 8192;

    static Node* NodeOf(Links* links) noexcept { return static_cast<Node*>(links); }
    static const Node* NodeOf(const Links* links) noexcept { return static_cast<const Node*>(links); }
    POSITION PositionOf(Links* links) const noexcept
    {
        return links == &m_ends ? nullptr : reinterpret_cast<POSITION>(NodeOf(links));
    }
    static Node* Checked(POSITION position)
    {
        if (!position) AfxThrowInvalidArgException();
        return reinterpret_cast<Node*>(position);
    }
    Node* Checked(Links* links) const
    {
        if (links == &m_ends) AfxThrowInvalidArgException();
        return NodeOf(links);
    }
    static const LinkedList& Checked(const LinkedList* list)
    {
        if (!list) AfxThrowInvalidArgException();
        return *list;
    }

    template <class Value> POSITION InsertNode(Links* next, Value&& value)
    {
        Slot* const slot = TakeSlot();
        Node* node = nullptr;
        try {
            node = ::new (static_cast<void*>(slot)) Node(std::forward<Value>(value));
        } catch (...) {
            slot->free = m_free;
            m_free = slot;
            throw;
        }
        node->next = next;
        node->previous = next->previous;
        next->previous->next = node;
        next->previous = node;
        ++m_count;
        return reinterpret_cast<POSITION>(node);
    }

    // The count is taken first: the new nodes of a list that is added to itself are not walked.
    void AddBefore(Links* place, const LinkedList& list)
    {
        const Links* links = list.m_ends.next;
        for (std::ptrdiff_t left = list.m_count; left > 0; --left) {
            InsertNode(place, NodeOf(links)->value);
            links = links->next;
        }
    }

    void Release(Node* node)
    {
        node->previous->next = node->next;
        node->next->previous = node->previous;
        --m_count;
        node->~Node();
        Slot* const slot = ::new (static_cast<void*>(node)) Slot;
        slot->free = m_free;
        m_free = slot;
    }

    Type Take(Node* node)
    {
        Type value = std::move(node->value);
        Release(node);
        return value;
    }

    Slot* TakeSlot()
    {
        if (m_free) return std::exchange(m_free, m_free->free);
        if (m_unused == m_blockEnd) {
            m_blocks.push_back(std::make_unique<Slot[]>(m_blockSize));
            m_unused = m_blocks.back().get();
            m_blockEnd = m_unused + m_blockSize;
            m_blockSize = std::max(m_blockSize, std::min(m_blockSize * 2, kLargestBlock));
        }
        return m_unused++;
    }

    mutable Links m_ends = {&m_ends, &m_ends}; // mutable: the end marker of a const list closes its ring, too
    std::ptrdiff_t m_count = 0;
    Slot* m_free = nullptr;
    Slot* m_unused = nullptr;
    Slot* m_blockEnd = nullptr;
    std::size_t m_blockSize;
    std::vector<std::unique_ptr<Slot[]>> m_blocks;
};

} // namespace obmgr

// A list of values. Arg is the type in which elements are handed in.
template <class Type, class Arg = const Type&> class CList : public obmgr::LinkedList<Type> {
    using Base = obmgr::LinkedList<Type>;

public:
    explicit CList(std::ptrdiff_t blockSize = 10) : Base(blockSize) {}
};
