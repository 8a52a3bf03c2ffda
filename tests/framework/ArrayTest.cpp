#include "framework/Array.h"

#include <gtest/gtest.h>

namespace {

using Numbers = CArray<int, int>;

std::vector<int> valuesOf(const Numbers& array)
{
    return {array.begin(), array.end()};
}

void fill(Numbers& array, std::initializer_list<int> values)
{
    for (const int value : values)
        array.Add(value);
}

} // namespace

TEST(Array, AddGivesTheIndex)
{
    Numbers array;
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_EQ(array.GetUpperBound(), -1);
    EXPECT_EQ(array.GetData(), nullptr);
    EXPECT_EQ(array.Add(5), 0);
    EXPECT_EQ(array.Add(6), 1);
    EXPECT_EQ(array.GetSize(), 2);
    EXPECT_EQ(array.GetCount(), 2);
    EXPECT_EQ(array.GetUpperBound(), 1);
    EXPECT_EQ(array.GetData()[1], 6);
}

TEST(Array, NewElementsAreZeroOrEmpty)
{
    Numbers numbers;
    numbers.SetSize(3);
    EXPECT_EQ(valuesOf(numbers), (std::vector<int>{0, 0, 0}));
    numbers.SetAtGrow(5, 9);
    EXPECT_EQ(valuesOf(numbers), (std::vector<int>{0, 0, 0, 0, 0, 9}));
    numbers.SetAtGrow(0, 1);
    numbers.SetSize(1, 100);
    EXPECT_EQ(valuesOf(numbers), std::vector<int>{1});
    CStringArray texts;
    texts.SetSize(2);
    EXPECT_EQ(texts[1], L"");
}

TEST(Array, IndexOutOfRangeIsAnInvalidArgument)
{
    Numbers array;
    fill(array, {1, 2});
    EXPECT_THROW(array.GetAt(2), CInvalidArgException);
    EXPECT_THROW(array[-1], CInvalidArgException);
    EXPECT_THROW(array.ElementAt(2), CInvalidArgException);
    EXPECT_THROW(array.SetAt(2, 0), CInvalidArgException);
    EXPECT_THROW(std::as_const(array)[2], CInvalidArgException);
    EXPECT_THROW(array.SetSize(-1), CInvalidArgException);
    EXPECT_THROW(array.SetAtGrow(-1, 0), CInvalidArgException);
    EXPECT_THROW(array.InsertAt(-1, 0), CInvalidArgException);
    EXPECT_THROW(array.RemoveAt(1, 2), CInvalidArgException);
    EXPECT_THROW(array.RemoveAt(-1), CInvalidArgException);
    EXPECT_THROW(array.RemoveAt(0, -1), CInvalidArgException);
    EXPECT_EQ(valuesOf(array), (std::vector<int>{1, 2}));
}

TEST(Array, InsertsAndRemovesRanges)
{
    Numbers array;
    fill(array, {1, 4});
    array.InsertAt(1, 2);
    array.InsertAt(2, 3);
    array.InsertAt(0, 0, 2);
    EXPECT_EQ(valuesOf(array), (std::vector<int>{0, 0, 1, 2, 3, 4}));
    array.InsertAt(8, 9);
    EXPECT_EQ(valuesOf(array), (std::vector<int>{0, 0, 1, 2, 3, 4, 0, 0, 9}));
    array.RemoveAt(6, 3);
    array.RemoveAt(0);
    EXPECT_EQ(valuesOf(array), (std::vector<int>{0, 1, 2, 3, 4}));
    array.InsertAt(1, &array);
    EXPECT_EQ(valuesOf(array), (std::vector<int>{0, 0, 1, 2, 3, 4, 1, 2, 3, 4}));
}

TEST(Array, AppendsAndCopiesItselfToo)
{
    Numbers array;
    fill(array, {1, 2});
    EXPECT_EQ(array.Append(array), 2);
    EXPECT_EQ(valuesOf(array), (std::vector<int>{1, 2, 1, 2}));
    Numbers other;
    other.Copy(array);
    other.Copy(other);
    EXPECT_EQ(valuesOf(other), valuesOf(array));
    array.RemoveAll();
    EXPECT_TRUE(array.IsEmpty());
    array.FreeExtra();
    EXPECT_EQ(other.GetSize(), 4);
}

TEST(Array, ElementOfTheArrayMayBeAddedToIt)
{
    CStringArray texts;
    texts.Add(L"a text that does not fit into small storage");
    for (int i = 0; i < 20; ++i) {
        texts.Add(texts[0]);
        texts.InsertAt(0, texts[0], 3);
        texts.SetAtGrow(texts.GetSize() + 7, texts[0]);
    }
    EXPECT_EQ(texts[texts.GetUpperBound()], texts[0]);
}
