// The attribute block: order, replacing in place, sharing, large records.

#include "objects/Attributes.h"

#include <gmock/gmock.h>

#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

using obmgr::Attributes;
using obmgr::InternKey;
using obmgr::KeyId;

KeyId Key(int number)
{
    return InternKey("attributes test " + std::to_string(number));
}

std::vector<std::pair<KeyId, std::string>> Contents(const Attributes& attributes)
{
    std::vector<std::pair<KeyId, std::string>> entries;
    for (const Attributes::Entry entry : attributes)
        entries.emplace_back(entry.key, std::string(entry.value));
    return entries;
}

TEST(Attributes, KeepTheOrderOfTheFirstSet)
{
    Attributes attributes;
    attributes.Set(Key(3), "c");
    attributes.Set(Key(1), "a");
    attributes.Set(Key(2), "b");
    attributes.Set(Key(3), "changed");
    EXPECT_THAT(Contents(attributes), testing::ElementsAre(testing::Pair(Key(3), "changed"), testing::Pair(Key(1), "a"),
                                                           testing::Pair(Key(2), "b")));
}

TEST(Attributes, ReplaceInPlaceWithTextsOfAnyLength)
{
    for (const std::size_t before : {0u, 1u, 127u, 128u, 5000u, 16383u, 16384u}) {
        for (const std::size_t after : {0u, 1u, 127u, 128u, 5000u, 16383u, 16384u}) {
            Attributes attributes;
            attributes.Set(Key(1), "first");
            attributes.Set(Key(2), std::string(before, 'x'));
            attributes.Set(Key(3), "last");
            attributes.Set(Key(2), std::string(after, 'y'));
            EXPECT_THAT(Contents(attributes), testing::ElementsAre(testing::Pair(Key(1), "first"),
                                                                   testing::Pair(Key(2), std::string(after, 'y')),
                                                                   testing::Pair(Key(3), "last")))
                << before << " to " << after;
        }
    }
}

TEST(Attributes, AnAbsentKeyIsToldFromAnEmptyValue)
{
    Attributes attributes;
    EXPECT_EQ(attributes.Find(Key(1)).data(), nullptr);
    EXPECT_TRUE(attributes.IsEmpty());
    attributes.Set(Key(1), {});
    EXPECT_TRUE(attributes.Contains(Key(1)));
    EXPECT_NE(attributes.Find(Key(1)).data(), nullptr);
    EXPECT_FALSE(attributes.Contains(Key(2)));
    EXPECT_EQ(attributes.Count(), 1u);
}

TEST(Attributes, ACopySharesTheBlockUntilOneIsWritten)
{
    Attributes original;
    original.Set(Key(1), "one");
    original.Set(Key(2), "two");
    Attributes copy(original);
    EXPECT_TRUE(copy.SharesWith(original));
    copy.Set(Key(1), "one"); // the same value writes nothing
    EXPECT_TRUE(copy.SharesWith(original));
    copy.Set(Key(1), "changed");
    EXPECT_FALSE(copy.SharesWith(original));
    EXPECT_EQ(original.Find(Key(1)), "one");
    EXPECT_EQ(copy.Find(Key(1)), "changed");
    EXPECT_EQ(copy.Find(Key(2)), "two");
    original.Set(Key(3), "three");
    EXPECT_FALSE(copy.Contains(Key(3)));
}

TEST(Attributes, SharedBlocksOutliveTheirFirstOwner)
{
    Attributes copy;
    {
        Attributes original;
        original.Set(Key(1), "one");
        copy = original;
    }
    EXPECT_EQ(copy.Find(Key(1)), "one");
    const Attributes moved(std::move(copy));
    EXPECT_EQ(moved.Find(Key(1)), "one");
}

TEST(Attributes, SelfAssignmentKeepsTheValues)
{
    Attributes attributes;
    attributes.Set(Key(1), "one");
    Attributes& same = attributes;
    attributes = same;
    EXPECT_EQ(attributes.Find(Key(1)), "one");
    attributes = std::move(same);
    EXPECT_EQ(attributes.Find(Key(1)), "one");
}

TEST(Attributes, AValueMayComeFromTheSameRecord)
{
    for (const std::size_t length : {3u, 200u, 9000u, 20000u, 40000u}) {
        Attributes attributes;
        attributes.Set(Key(1), std::string(length, 'a'));
        attributes.Set(Key(2), "short");
        attributes.Set(Key(3), attributes.Find(Key(1)));
        attributes.Set(Key(2), attributes.Find(Key(1)).substr(1));
        attributes.Set(Key(1), attributes.Find(Key(1)).substr(2));
        EXPECT_EQ(attributes.Find(Key(1)), std::string(length - 2, 'a'));
        EXPECT_EQ(attributes.Find(Key(2)), std::string(length - 1, 'a'));
        EXPECT_EQ(attributes.Find(Key(3)), std::string(length, 'a'));
    }
}

TEST(Attributes, AValueMayComeFromARecordThatSharesTheBlock)
{
    Attributes original;
    original.Set(Key(1), "a longer value");
    original.Set(Key(2), "b");
    Attributes copy(original);
    copy.Set(Key(2), original.Find(Key(1)));
    original = Attributes();
    EXPECT_EQ(copy.Find(Key(2)), "a longer value");
}

TEST(Attributes, KeyNumbersMayBeLarge)
{
    Attributes attributes;
    const std::vector<KeyId> keys = {0, 127, 128, 16383, 16384, 65535, 65536, 70000, 2'000'000, 0xFFFFFFFF};
    for (const KeyId key : keys)
        attributes.Set(key, std::to_string(key));
    for (const KeyId key : keys)
        EXPECT_EQ(attributes.Find(key), std::to_string(key));
    for (const KeyId key : keys)
        attributes.Set(key, "x" + std::to_string(key));
    EXPECT_EQ(attributes.Count(), keys.size());
    EXPECT_EQ(attributes.Find(65536), "x65536");
}

TEST(Attributes, HalfAMillionKeysFitInOneRecord)
{
    constexpr KeyId kCount = 500'000;
    Attributes attributes;
    for (KeyId key = 0; key < kCount; ++key)
        attributes.Set(key, "v");
    for (KeyId key = 0; key < kCount; ++key)
        attributes.Set(key, std::to_string(key));
    EXPECT_EQ(attributes.Count(), kCount);
    KeyId expected = 0;
    for (const Attributes::Entry entry : attributes) {
        ASSERT_EQ(entry.key, expected);
        ASSERT_EQ(entry.value, std::to_string(expected));
        ++expected;
    }
    EXPECT_EQ(expected, kCount);
}

TEST(Attributes, ALargeRecordIsSharedLikeASmallOne)
{
    Attributes original;
    for (int i = 0; i < 1000; ++i)
        original.Set(Key(i), "v");
    Attributes copy(original);
    EXPECT_TRUE(copy.SharesWith(original));
    copy.Set(Key(5), "changed");
    copy.Set(Key(2000), "new");
    EXPECT_EQ(original.Find(Key(5)), "v");
    EXPECT_EQ(original.Count(), 1000u);
    EXPECT_EQ(copy.Find(Key(5)), "changed");
    EXPECT_EQ(copy.Count(), 1001u);
}

TEST(Attributes, ReservingAndShrinkingKeepTheValues)
{
    Attributes attributes;
    EXPECT_EQ(attributes.ShrinkToFit(), 0u);
    attributes.Reserve(4000);
    EXPECT_TRUE(attributes.IsEmpty());
    EXPECT_THAT(Contents(attributes), testing::IsEmpty());
    attributes.Set(Key(1), "one");
    EXPECT_GT(attributes.ShrinkToFit(), 0u);
    attributes.Reserve(1'000'000);
    attributes.Set(Key(2), "two");
    const Attributes copy(attributes);
    attributes.ShrinkToFit();
    EXPECT_TRUE(copy.SharesWith(attributes));
    EXPECT_THAT(Contents(copy), testing::ElementsAre(testing::Pair(Key(1), "one"), testing::Pair(Key(2), "two")));
}

TEST(Attributes, RandomEditsAgreeWithAMap)
{
    std::mt19937 random(20240601);
    std::vector<Attributes> records(8);
    std::vector<std::map<KeyId, std::string>> models(8);
    for (int step = 0; step < 20000; ++step) {
        const std::size_t at = random() % records.size();
        if (random() % 10 == 0) {
            const std::size_t from = random() % records.size();
            records[at] = records[from];
            models[at] = models[from];
            continue;
        }
        const auto key = static_cast<KeyId>(random() % 400);
        const std::string value(random() % 100 == 0 ? random() % 30000 : random() % 200,
                                static_cast<char>('a' + random() % 26));
        records[at].Set(key, value);
        models[at][key] = value;
        if (random() % 50 == 0) records[at].ShrinkToFit();
        if (random() % 500 == 0) {
            records[at] = Attributes();
            models[at].clear();
        }
    }
    for (std::size_t i = 0; i < records.size(); ++i) {
        ASSERT_EQ(records[i].Count(), models[i].size());
        for (const auto& [key, value] : models[i])
            ASSERT_EQ(records[i].Find(key), value);
    }
}

TEST(KeyNames, AKeyIsGivenOneNumberAndKeepsItsName)
{
    const KeyId id = InternKey("key names test");
    EXPECT_EQ(InternKey(L"key names test"), id);
    EXPECT_EQ(obmgr::LookUpKey("key names test"), id);
    EXPECT_EQ(obmgr::NameOfKey(id).text, "key names test");
    EXPECT_FALSE(obmgr::LookUpKey("key names test: never seen"));
}

TEST(KeyNames, NumbersGoBeyondSixteenBits)
{
    std::vector<KeyId> ids;
    for (int i = 0; i < 70000; ++i)
        ids.push_back(InternKey("many keys " + std::to_string(i)));
    EXPECT_GT(ids.back(), 65535u);
    for (int i = 0; i < 70000; i += 7)
        ASSERT_EQ(obmgr::NameOfKey(ids[static_cast<std::size_t>(i)]).text, "many keys " + std::to_string(i));
    Attributes attributes;
    attributes.Set(ids.back(), "x");
    EXPECT_EQ(attributes.Find(ids.back()), "x");
    EXPECT_FALSE(attributes.Contains(ids.back() & 0xFFFF));
}

TEST(KeyNames, WhatCanStandAsAnElementNameIsKnown)
{
    for (const char* name : {"order", "_x", "a-b.c1", "\u7BA1\u5F84", "\u30D1\u30A4\u30D7"})
        EXPECT_TRUE(obmgr::NameOfKey(InternKey(name)).isXmlName) << name;
    for (const char* name : {"", "1a", "a b", "-a", "a<b", "\u3000", "a&b"})
        EXPECT_FALSE(obmgr::NameOfKey(InternKey(name)).isXmlName) << name;
    EXPECT_TRUE(obmgr::NameOfKey(InternKey("order")).isAscii);
    EXPECT_FALSE(obmgr::NameOfKey(InternKey("\u7BA1")).isAscii);
}

} // namespace
