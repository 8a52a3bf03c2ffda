#include "framework/Map.h"

#include <map>
#include <random>

#include <gtest/gtest.h>

namespace {

std::wstring textOf(const CMapStringToString& map)
{
    std::wstring text;
    for (POSITION position = map.GetStartPosition(); position;) {
        CString key;
        CString value;
        map.GetNextAssoc(position, key, value);
        text += std::wstring(key.View()) + L"=" + std::wstring(value.View()) + L";";
    }
    return text;
}

} // namespace

TEST(Map, LooksUpWhatWasSet)
{
    CMap<long, long, CString, const wchar_t*> map;
    EXPECT_TRUE(map.IsEmpty());
    map.SetAt(5, L"five");
    map[6] = L"six";
    CString value(L"untouched");
    EXPECT_FALSE(map.Lookup(7, value));
    EXPECT_EQ(value, L"untouched");
    EXPECT_TRUE(map.Lookup(5, value));
    EXPECT_EQ(value, L"five");
    EXPECT_EQ(map.PLookup(6)->value, L"six");
    EXPECT_EQ(map.PLookup(7), nullptr);
    EXPECT_EQ(map.GetCount(), 2);
    EXPECT_EQ(map.GetSize(), 2);
}

TEST(Map, IndexMakesAnEmptyValue)
{
    CMap<CString, const wchar_t*, int, int> map;
    EXPECT_EQ(map[L"new"], 0);
    EXPECT_EQ(map.GetCount(), 1);
    map[L"new"] += 2;
    EXPECT_EQ(map[L"new"], 2);
}

TEST(Map, RemoveKeyTellsWhetherItWasThere)
{
    CMap<int, int, int, int> map;
    map[1] = 10;
    EXPECT_TRUE(map.RemoveKey(1));
    EXPECT_FALSE(map.RemoveKey(1));
    EXPECT_TRUE(map.IsEmpty());
    EXPECT_EQ(map.GetStartPosition(), nullptr);
    EXPECT_EQ(map.PGetFirstAssoc(), nullptr);
}

TEST(Map, HashTableSizeIsAHintThatIsRemembered)
{
    CMap<int, int, int, int> map;
    EXPECT_EQ(map.GetHashTableSize(), 17U);
    map.InitHashTable(1009);
    EXPECT_EQ(map.GetHashTableSize(), 1009U);
    for (int i = 0; i < 3000; ++i)
        map[i] = i;
    EXPECT_EQ(map[2999], 2999);
    EXPECT_THROW(map.InitHashTable(0), CInvalidArgException);
}

TEST(Map, PositionsStayGoodWhileOthersAreRemoved)
{
    CMap<int, int, int, int> map;
    for (int i = 0; i < 100; ++i)
        map[i] = i;
    int key = 0;
    int value = 0;
    int visited = 0;
    for (POSITION position = map.GetStartPosition(); position;) {
        map.GetNextAssoc(position, key, value);
        map.RemoveKey(key);
        map[1000 + key] = 0;
        map.RemoveKey(1000 + key);
        ++visited;
    }
    EXPECT_EQ(visited, 100);
    EXPECT_TRUE(map.IsEmpty());
    POSITION none = nullptr;
    EXPECT_THROW(map.GetNextAssoc(none, key, value), CInvalidArgException);
}

TEST(Map, AgreesWithAPlainMapThroughRandomEdits)
{
    std::mt19937 random(7);
    CMap<long, long, long, long> map;
    std::map<long, long> model;
    for (int step = 0; step < 20000; ++step) {
        const long key = static_cast<long>(random() % 500);
        if (random() % 3 == 0) {
            ASSERT_EQ(map.RemoveKey(key), model.erase(key) > 0);
        } else {
            map.SetAt(key, step);
            model[key] = step;
        }
        long value = -1;
        const long probe = static_cast<long>(random() % 500);
        const auto found = model.find(probe);
        ASSERT_EQ(map.Lookup(probe, value), found != model.end());
        if (found != model.end()) {
            ASSERT_EQ(value, found->second);
        }
        ASSERT_EQ(static_cast<std::size_t>(map.GetCount()), model.size());
    }
}

TEST(MapStringToString, WalksInTheOrderInWhichKeysWereFirstSet)
{
    CMapStringToString map;
    map.SetAt(L"z", L"1");
    map[L"a"] = L"2";
    map.SetAt(L"m", L"3");
    map.SetAt(L"z", L"4");
    EXPECT_EQ(textOf(map), L"z=4;a=2;m=3;");
    map.RemoveKey(L"z");
    map.SetAt(L"z", L"5");
    EXPECT_EQ(textOf(map), L"a=2;m=3;z=5;");
}

TEST(MapStringToString, KeysAreComparedExactly)
{
    CMapStringToString map;
    map.SetAt(L"key", L"lower");
    map.SetAt(L"KEY", L"upper");
    CString value;
    EXPECT_TRUE(map.Lookup(L"KEY", value));
    EXPECT_EQ(value, L"upper");
    EXPECT_FALSE(map.Lookup(L"Key", value));
}

TEST(MapStringToString, CopiesAreOnTheirOwn)
{
    CMapStringToString map;
    map.SetAt(L"b", L"1");
    map.SetAt(L"a", L"2");
    CMapStringToString copy(map);
    copy.SetAt(L"b", L"9");
    CMapStringToString assigned;
    assigned.SetAt(L"old", L"x");
    assigned = map;
    const CMapStringToString& itself = assigned;
    assigned = itself;
    EXPECT_EQ(textOf(map), L"b=1;a=2;");
    EXPECT_EQ(textOf(copy), L"b=9;a=2;");
    EXPECT_EQ(textOf(assigned), L"b=1;a=2;");
}

TEST(MapStringToString, RangeForGivesKeyAndValue)
{
    CMapStringToString map;
    map.SetAt(L"a", L"1");
    map.SetAt(L"b", L"2");
    for (auto& [key, value] : map)
        value += key;
    std::wstring text;
    for (const auto& [key, value] : std::as_const(map))
        text += value.View();
    EXPECT_EQ(text, L"1a2b");
}
