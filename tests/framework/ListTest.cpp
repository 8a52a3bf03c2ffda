#include "framework/List.h"

#include <list>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "framework/PtrList.h"
#include "framework/String.h"

namespace {

using Ids = CList<long, long>;

std::vector<long> valuesOf(const Ids& list)
{
    std::vector<long> values;
    for (POSITION position = list.GetHeadPosition(); position;)
        values.push_back(list.GetNext(position));
    return values;
}

std::vector<long> valuesBackwards(const Ids& list)
{
    std::vector<long> values;
    for (POSITION position = list.GetTailPosition(); position;)
        values.push_back(list.GetPrev(position));
    return values;
}

void fill(Ids& list, std::initializer_list<long> values)
{
    for (const long value : values)
        list.AddTail(value);
}

class Item : public CObject {
public:
    explicit Item(int number) : m_number(number) {}
    int m_number;
};

} // namespace

TEST(List, KeepsTheOrderOfBothEnds)
{
    Ids list;
    EXPECT_TRUE(list.IsEmpty());
    list.AddTail(2);
    list.AddTail(0); // the literal 0 is a value, not a list
    list.AddHead(1);
    EXPECT_EQ(valuesOf(list), (std::vector<long>{1, 2, 0}));
    EXPECT_EQ(valuesBackwards(list), (std::vector<long>{0, 2, 1}));
    EXPECT_EQ(list.GetCount(), 3);
    EXPECT_EQ(list.GetSize(), 3);
    EXPECT_EQ(list.GetHead(), 1);
    EXPECT_EQ(list.GetTail(), 0);
    EXPECT_EQ(list.RemoveHead(), 1);
    EXPECT_EQ(list.RemoveTail(), 0);
    EXPECT_EQ(valuesOf(list), std::vector<long>{2});
}

TEST(List, EmptyListHasNoEnds)
{
    Ids list;
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    EXPECT_EQ(list.GetTailPosition(), nullptr);
    EXPECT_THROW(list.GetHead(), CInvalidArgException);
    EXPECT_THROW(list.GetTail(), CInvalidArgException);
    EXPECT_THROW(list.RemoveHead(), CInvalidArgException);
    EXPECT_THROW(list.RemoveTail(), CInvalidArgException);
}

TEST(List, NullPositionIsAnInvalidArgument)
{
    Ids list;
    fill(list, {1});
    POSITION none = nullptr;
    EXPECT_THROW(list.GetNext(none), CInvalidArgException);
    EXPECT_THROW(list.GetPrev(none), CInvalidArgException);
    EXPECT_THROW(list.GetAt(nullptr), CInvalidArgException);
    EXPECT_THROW(list.SetAt(nullptr, 1), CInvalidArgException);
    EXPECT_THROW(list.RemoveAt(nullptr), CInvalidArgException);
    EXPECT_THROW(list.AddTail(static_cast<const Ids*>(nullptr)), CInvalidArgException);
    EXPECT_THROW(std::as_const(list).GetAt(nullptr), std::invalid_argument);
}

TEST(List, PositionsStayGoodWhileOthersAreRemoved)
{
    Ids list;
    std::vector<POSITION> positions;
    for (long value = 0; value < 1000; ++value)
        positions.push_back(list.AddTail(value));
    for (std::size_t i = 0; i < 1000; ++i)
        if (i % 3 != 0) list.RemoveAt(positions[i]);
    for (long value = 2000; value < 2500; ++value)
        list.AddHead(value); // takes the freed nodes
    for (std::size_t i = 0; i < 1000; i += 3)
        EXPECT_EQ(list.GetAt(positions[i]), static_cast<long>(i));
    POSITION position = positions[3];
    list.GetNext(position);
    EXPECT_EQ(position, positions[6]);
}

TEST(List, WalkMayRemoveWhatItHasJustPassed)
{
    Ids list;
    fill(list, {1, 2, 3, 4, 5, 6});
    for (POSITION position = list.GetHeadPosition(); position;) {
        const POSITION here = position;
        if (list.GetNext(position) % 2 == 0) list.RemoveAt(here);
    }
    EXPECT_EQ(valuesOf(list), (std::vector<long>{1, 3, 5}));
}

TEST(List, InsertBeforeAndAfter)
{
    Ids list;
    fill(list, {1, 3});
    const POSITION three = list.Find(3);
    const POSITION two = list.InsertBefore(three, 2);
    EXPECT_EQ(list.GetAt(two), 2);
    list.InsertAfter(three, 4);
    list.InsertBefore(nullptr, 0);
    list.InsertAfter(nullptr, 5);
    list.InsertBefore(list.GetHeadPosition(), -1);
    EXPECT_EQ(valuesOf(list), (std::vector<long>{-1, 0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(valuesBackwards(list), (std::vector<long>{5, 4, 3, 2, 1, 0, -1}));
}

TEST(List, FindStartsBehindAPosition)
{
    Ids list;
    fill(list, {1, 2, 1});
    const POSITION first = list.Find(1);
    EXPECT_EQ(first, list.GetHeadPosition());
    const POSITION second = list.Find(1, first);
    EXPECT_EQ(second, list.GetTailPosition());
    EXPECT_EQ(list.Find(1, second), nullptr);
    EXPECT_EQ(list.Find(9), nullptr);
}

TEST(List, FindIndexIsNullOutOfRange)
{
    Ids list;
    fill(list, {10, 11, 12});
    EXPECT_EQ(list.GetAt(list.FindIndex(2)), 12);
    EXPECT_EQ(list.FindIndex(3), nullptr);
    EXPECT_EQ(list.FindIndex(-1), nullptr);
}

TEST(List, AddsListsInOrderItselfToo)
{
    Ids list;
    Ids more;
    fill(list, {1, 2});
    fill(more, {3, 4});
    list.AddTail(&more);
    list.AddHead(&more);
    EXPECT_EQ(valuesOf(list), (std::vector<long>{3, 4, 1, 2, 3, 4}));
    more.AddTail(&more);
    EXPECT_EQ(valuesOf(more), (std::vector<long>{3, 4, 3, 4}));
    more.AddHead(&more);
    EXPECT_EQ(valuesOf(more), (std::vector<long>{3, 4, 3, 4, 3, 4, 3, 4}));
    Ids empty;
    more.AddTail(&empty);
    empty.AddTail(&empty);
    EXPECT_EQ(more.GetCount(), 8);
    EXPECT_TRUE(empty.IsEmpty());
}

TEST(List, ElementOfTheListMayBeAddedToIt)
{
    CList<CString> list;
    list.AddTail(L"a text that does not fit into small storage");
    for (int i = 0; i < 100; ++i)
        list.AddTail(list.GetHead());
    EXPECT_EQ(list.GetTail(), list.GetHead());
}

TEST(List, IsUsableAfterRemoveAll)
{
    Ids list;
    fill(list, {1, 2, 3});
    list.RemoveAll();
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    fill(list, {4});
    EXPECT_EQ(valuesOf(list), std::vector<long>{4});
}

TEST(List, RangeForReadsAndWrites)
{
    Ids list;
    fill(list, {1, 2});
    for (long& value : list)
        value *= 10;
    std::vector<long> values;
    for (const long value : std::as_const(list))
        values.push_back(value);
    EXPECT_EQ(values, (std::vector<long>{10, 20}));
    EXPECT_EQ(*std::prev(list.end()), 20);
}

TEST(List, FailedCopyOfAnElementLeavesTheList)
{
    struct Thrower {
        explicit Thrower(bool throws) : m_throws(throws) {}
        Thrower(const Thrower& other) : m_throws(other.m_throws)
        {
            if (m_throws) throw std::runtime_error("copy");
        }
        bool m_throws;
    };
    CList<Thrower> list;
    list.AddTail(Thrower(false));
    EXPECT_THROW(list.AddTail(Thrower(true)), std::runtime_error);
    EXPECT_EQ(list.GetCount(), 1);
    list.AddTail(Thrower(false));
    EXPECT_EQ(list.GetCount(), 2);
}

TEST(List, AgreesWithAPlainListThroughRandomEdits)
{
    std::mt19937 random(20240611);
    Ids list(1);
    std::list<long> model;
    for (int step = 0; step < 20000; ++step) {
        const long value = static_cast<long>(random() % 50);
        const auto index = static_cast<std::ptrdiff_t>(model.empty() ? 0 : random() % model.size());
        const auto place = std::next(model.begin(), index);
        switch (random() % 6) {
        case 0:
            list.AddHead(value);
            model.push_front(value);
            break;
        case 1:
            list.AddTail(value);
            model.push_back(value);
            break;
        case 2:
            if (model.empty()) break;
            list.RemoveAt(list.FindIndex(index));
            model.erase(place);
            break;
        case 3:
            if (model.empty()) break;
            list.InsertAfter(list.FindIndex(index), value);
            model.insert(std::next(place), value);
            break;
        case 4:
            if (model.empty()) break;
            list.InsertBefore(list.FindIndex(index), value);
            model.insert(place, value);
            break;
        default:
            if (model.size() > 100) {
                EXPECT_EQ(list.RemoveTail(), model.back());
                model.pop_back();
                EXPECT_EQ(list.RemoveHead(), model.front());
                model.pop_front();
            }
        }
        if (step % 100 == 0) {
            ASSERT_EQ(valuesOf(list), std::vector<long>(model.begin(), model.end()));
            ASSERT_EQ(valuesBackwards(list), std::vector<long>(model.rbegin(), model.rend()));
        }
    }
}

template <class List> class TypedPointerList : public testing::Test {
};

class ObjectListName {
public:
    template <class List> static std::string GetName(int)
    {
        return std::is_base_of_v<CObList, List> ? "CObList" : "CPtrList";
    }
};

using PointerLists = testing::Types<CTypedPtrList<CObList, Item*>, CTypedPtrList<CPtrList, Item*>>;
TYPED_TEST_SUITE(TypedPointerList, PointerLists, ObjectListName);

TYPED_TEST(TypedPointerList, GivesTypedPointersInOrder)
{
    Item a(1);
    Item b(2);
    Item c(3);
    TypeParam list;
    list.AddTail(&b);
    list.AddHead(&a);
    const POSITION last = list.InsertAfter(list.Find(&b), &c);
    EXPECT_EQ(list.GetHead()->m_number, 1);
    EXPECT_EQ(list.GetTail()->m_number, 3);
    EXPECT_EQ(list.GetAt(last)->m_number, 3);
    std::vector<int> numbers;
    for (POSITION position = list.GetHeadPosition(); position;)
        numbers.push_back(list.GetNext(position)->m_number);
    for (Item* item : list)
        numbers.push_back(item->m_number);
    EXPECT_EQ(numbers, (std::vector<int>{1, 2, 3, 1, 2, 3}));
    POSITION back = list.GetTailPosition();
    EXPECT_EQ(list.GetPrev(back), &c);
    EXPECT_EQ(list.RemoveHead(), &a);
    EXPECT_EQ(list.RemoveTail(), &c);
    EXPECT_EQ(list.GetCount(), 1);
}

TYPED_TEST(TypedPointerList, AddsListsAndKeepsPositions)
{
    Item a(1);
    Item b(2);
    TypeParam list;
    list.AddTail(&a);
    TypeParam more;
    const POSITION kept = more.AddTail(&b);
    more.AddTail(&list);
    more.AddHead(&list);
    EXPECT_EQ(more.GetCount(), 3);
    more.RemoveAt(more.GetHeadPosition());
    more.RemoveAt(more.GetTailPosition());
    EXPECT_EQ(more.GetAt(kept), &b);
    more.SetAt(kept, &a);
    EXPECT_EQ(more.GetHead(), &a);
    more.InsertBefore(kept, &b);
    EXPECT_EQ(more.GetHead(), &b);
    more.RemoveAll();
    EXPECT_THROW(more.GetHead(), CInvalidArgException);
}

TEST(PointerList, UntypedListsTakePointersAndLists)
{
    int number = 5;
    CPtrList list;
    list.AddTail(&number);
    list.AddTail(&list); // a list of the same sort is spliced in, not stored
    EXPECT_EQ(list.GetCount(), 2);
    EXPECT_EQ(list.GetTail(), &number);
    Item item(1);
    CObList objects;
    objects.AddTail(&item);
    objects.GetHead() = nullptr;
    EXPECT_EQ(objects.GetHead(), nullptr);
}
