// The fast form of the exchange sort against the exchange sort itself.

#include "store/OrderSort.h"
#include "support/Store.h"

#include <gmock/gmock.h>

#include <numeric>
#include <random>

namespace {

std::vector<std::size_t> ExchangeSort(std::vector<long> keys)
{
    std::vector<std::size_t> order(keys.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    for (std::size_t i = 0; i < keys.size(); ++i) {
        for (std::size_t j = i + 1; j < keys.size(); ++j) {
            if (keys[i] <= keys[j]) continue;
            std::swap(keys[i], keys[j]);
            std::swap(order[i], order[j]);
        }
    }
    return order;
}

TEST(OrderSort, EqualKeysComeOutAsTheExchangeSortLeavesThem)
{
    // 2a 2b 1: the 1 changes places with 2a, which lands behind 2b.
    EXPECT_THAT(obmgr::ExchangeSortOrder({2, 2, 1}), testing::ElementsAre(2, 1, 0));
    EXPECT_THAT(obmgr::ExchangeSortOrder({}), testing::IsEmpty());
    EXPECT_THAT(obmgr::ExchangeSortOrder({5, 5, 5}), testing::ElementsAre(0, 1, 2));
}

TEST(OrderSort, AgreesForEveryShortListOfFewKeys)
{
    for (std::size_t length = 1; length <= 8; ++length) {
        std::vector<long> keys(length, 0);
        for (;;) {
            ASSERT_EQ(obmgr::ExchangeSortOrder(keys), ExchangeSort(keys)) << testing::PrintToString(keys);
            std::size_t at = 0;
            while (at < length && ++keys[at] == 4)
                keys[at++] = 0;
            if (at == length) break;
        }
    }
}

TEST(OrderSort, AgreesForRandomListsWithManyEqualKeys)
{
    const unsigned seed = support::testSeed(81);
    std::mt19937 random(seed);
    for (int round = 0; round < 400; ++round) {
        std::vector<long> keys(random() % 300);
        const long kinds = 1 + static_cast<long>(random() % 40);
        for (long& key : keys)
            key = static_cast<long>(random()) % kinds - kinds / 2;
        ASSERT_EQ(obmgr::ExchangeSortOrder(keys), ExchangeSort(keys)) << "seed " << seed << " round " << round;
    }
}

TEST(OrderSort, AgreesForFallingAndRotatedLists)
{
    std::vector<long> falling(257);
    std::iota(falling.rbegin(), falling.rend(), -100);
    EXPECT_EQ(obmgr::ExchangeSortOrder(falling), ExchangeSort(falling));
    std::vector<long> rotated(300);
    for (std::size_t i = 0; i < rotated.size(); ++i)
        rotated[i] = static_cast<long>((i + 77) % 300 / 7);
    EXPECT_EQ(obmgr::ExchangeSortOrder(rotated), ExchangeSort(rotated));
}

TEST(OrderSort, ALongListOfEqualKeysBehindGreaterOnesIsSorted)
{
    std::vector<long> keys(200'000);
    for (std::size_t i = 0; i < keys.size(); ++i)
        keys[i] = static_cast<long>((i * 7919) % 3);
    const std::vector<std::size_t> order = obmgr::ExchangeSortOrder(keys);
    std::vector<bool> seen(keys.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        ASSERT_FALSE(seen[order[i]]);
        seen[order[i]] = true;
        if (i > 0) {
            ASSERT_LE(keys[order[i - 1]], keys[order[i]]);
        }
    }
}

} // namespace
