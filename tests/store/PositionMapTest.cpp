// The index of positions by key, against a map of vectors.

#include "store/PositionMap.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

using obmgr::PositionMap;

std::vector<std::uint32_t> Positions(PositionMap& map, std::uint64_t key)
{
    std::vector<std::uint32_t> positions;
    if (PositionMap::Slot* const slot = map.Find(key))
        for (const PositionMap::Entry entry : slot->entries.All())
            positions.push_back(entry.position);
    return positions;
}

} // namespace

TEST(PositionMap, AnUnknownKeyHasNoSlot)
{
    PositionMap map;
    EXPECT_EQ(map.Find(7), nullptr);
    map.Get(8);
    EXPECT_EQ(map.Find(7), nullptr);
    EXPECT_NE(map.Find(8), nullptr);
}

TEST(PositionMap, EntriesStandWhereTheyWereInserted)
{
    PositionMap map;
    PositionMap::Entries& entries = map.Get(1).entries;
    entries.Insert(0, {20, 0});
    entries.Insert(0, {10, 0});
    entries.Insert(2, {40, 0});
    entries.Insert(2, {30, 0});
    EXPECT_EQ(Positions(map, 1), (std::vector<std::uint32_t>{10, 20, 30, 40}));
    entries.Shorten(1);
    EXPECT_EQ(Positions(map, 1), (std::vector<std::uint32_t>{10}));
}

TEST(PositionMap, GrowthKeepsRunsScatteredAndNegativeKeys)
{
    PositionMap map;
    std::map<std::uint64_t, std::vector<std::uint32_t>> expected;
    std::mt19937_64 random(1);
    for (std::uint32_t i = 0; i < 20'000; ++i) {
        const std::uint64_t keys[] = {i / 3, random(), static_cast<std::uint64_t>(-static_cast<std::int64_t>(i % 50)),
                                      std::uint64_t{1} << 63};
        const std::uint64_t key = keys[i % 4];
        PositionMap::Entries& entries = map.Get(key).entries;
        entries.Insert(entries.Size(), {i, 0});
        expected[key].push_back(i);
    }
    for (const auto& [key, positions] : expected)
        ASSERT_EQ(Positions(map, key), positions) << key;
}

TEST(PositionMap, KeysWithoutEntriesAreLeftBehindByGrowth)
{
    PositionMap map;
    map.Get(5).entries.Insert(0, {1, 1});
    map.Find(5)->entries.Shorten(0);
    for (std::uint64_t key = 100; key < 1100; ++key)
        map.Get(key).entries.Insert(0, {1, 1});
    EXPECT_EQ(map.Find(5), nullptr);
}
