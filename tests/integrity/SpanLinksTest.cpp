// Spans on the way down from others, and the profile layouts of a page that rest on them.

#include "common/Numeric.h"
#include "support/Networks.h"

#include <gmock/gmock.h>

#include <random>

namespace {

using support::Network;
using support::values;

class SpanLinks : public testing::Test {
protected:
    bool Linked(const char* a, const char* b, int direction) const
    {
        return m_net.manager.CheckLinkSpan(m_net[a], m_net[b], direction);
    }

    Network m_net{"W: M = a-b-c-out; A>M = x-b; V: R = r-s-t-r"};
};

TEST_F(SpanLinks, GoDownFromTheFirstSpanToTheSecond)
{
    EXPECT_TRUE(Linked("a-b", "c-out", 0));
    EXPECT_TRUE(Linked("x-b", "b-c", 0));
    EXPECT_FALSE(Linked("c-out", "a-b", 0));
    EXPECT_FALSE(Linked("a-b", "x-b", 0));
    EXPECT_TRUE(Linked("a-b", "c-out", 2)) << "any direction but 1";
}

TEST_F(SpanLinks, GoTheOtherWayRoundInDirectionOne)
{
    EXPECT_TRUE(Linked("c-out", "a-b", 1));
    EXPECT_FALSE(Linked("a-b", "c-out", 1));
}

TEST_F(SpanLinks, JoinASpanWithItself)
{
    EXPECT_TRUE(Linked("a-b", "a-b", 0));
    EXPECT_TRUE(Linked("a-b", "a-b", 1));
    EXPECT_TRUE(m_net.manager.CheckLinkSpan(4711, 4711, 0));
}

TEST_F(SpanLinks, AreNoneForTheIdZero)
{
    const long span = m_net["a-b"];
    EXPECT_FALSE(m_net.manager.CheckLinkSpan(0, span, 0));
    EXPECT_FALSE(m_net.manager.CheckLinkSpan(span, 0, 0));
    EXPECT_FALSE(m_net.manager.CheckLinkSpan(0, 0, 0));
}

TEST_F(SpanLinks, AreNoneForIdsThatNoSpanHas)
{
    for (const long id : {-1L, 4711L, m_net["M"]})
        for (const int direction : {0, 1}) {
            EXPECT_FALSE(m_net.manager.CheckLinkSpan(m_net["a-b"], id, direction));
            EXPECT_FALSE(m_net.manager.CheckLinkSpan(id, m_net["a-b"], direction));
        }
}

TEST_F(SpanLinks, GoRoundARingOnce)
{
    EXPECT_TRUE(Linked("s-t", "r-s", 0));
    EXPECT_FALSE(Linked("s-t", "a-b", 0));
}

// ---- layouts of a page ----

class PageLayouts : public testing::Test {
protected:
    PageLayouts()
    {
        m_arrangement = m_net.manager.CreateProfilearang(values({}))->GetId32();
        m_other = m_net.manager.CreateProfilearang(values({}))->GetId32();
    }

    void Add(const char* name, long owner, int page, const char* from, const char* to, int direction,
             const wchar_t* position)
    {
        CProfilelayout* const layout = m_net.manager.CreateProfilelayout(owner, {});
        layout->WriteSubAttributeInt(L"ploutpage", page);
        layout->WriteSubAttributeInt(L"ploutstspid", static_cast<int>(m_net[from]));
        layout->WriteSubAttributeInt(L"ploutendspid", static_cast<int>(m_net[to]));
        layout->WriteSubAttributeInt(L"ploutdir", direction);
        layout->WriteSubAttribute(L"ploutstpos", position);
        m_net.Name(layout->GetId32(), name);
    }
    std::string Page(long owner, int page, bool sort) const
    {
        CArray<const CProfilelayout*> layouts;
        layouts.Add(nullptr); // goes
        const bool any = m_net.manager.GetProfilelayoutIdList(static_cast<unsigned long>(owner), page, sort, layouts);
        return (any ? "true: " : "false: ") + m_net.Names(layouts);
    }

    Network m_net{"W: M = a-b-c-out; A>M = x-b"};
    long m_arrangement = 0;
    long m_other = 0;
};

TEST_F(PageLayouts, AreThoseOfTheArrangementAndThePageWhoseSpansAreLinked)
{
    Add("down", m_arrangement, 2, "a-b", "c-out", 0, L"30");
    Add("up", m_arrangement, 2, "c-out", "a-b", 1, L"10");
    Add("one span", m_arrangement, 2, "b-c", "b-c", 0, L"20");
    Add("not linked", m_arrangement, 2, "a-b", "x-b", 0, L"1");
    Add("wrong way", m_arrangement, 2, "a-b", "c-out", 1, L"2");
    Add("other page", m_arrangement, 1, "a-b", "c-out", 0, L"3");
    Add("other arrangement", m_other, 2, "a-b", "c-out", 0, L"4");
    EXPECT_EQ(Page(m_arrangement, 2, false), "true: down up one span");
    EXPECT_EQ(Page(m_arrangement, 2, true), "true: up one span down");
    EXPECT_EQ(Page(m_other, 2, true), "true: other arrangement");
    EXPECT_EQ(Page(m_arrangement, 3, true), "false: ");
}

TEST_F(PageLayouts, AreNoneForTheIdZeroAndForPagesBelowOne)
{
    Add("pageless", m_arrangement, 0, "a-b", "c-out", 0, L"0");
    Add("ownerless", 0, 1, "a-b", "c-out", 0, L"0");
    EXPECT_EQ(Page(m_arrangement, 0, false), "false: ");
    EXPECT_EQ(Page(m_arrangement, -1, true), "false: ");
    EXPECT_EQ(Page(0, 1, false), "false: ");
    EXPECT_EQ(Page(4711, 1, false), "false: ");
    EXPECT_EQ(Page(m_net["W"], 1, false), "false: ");
}

TEST_F(PageLayouts, WithoutSpansAreNotLinked)
{
    m_net.manager.CreateProfilelayout(m_arrangement, {})->WriteSubAttributeInt(L"ploutpage", 1);
    EXPECT_EQ(Page(m_arrangement, 1, false), "false: ");
}

TEST_F(PageLayouts, WithinAHundredthOfAMillimetreKeepTheirOrder)
{
    Add("L1", m_arrangement, 1, "a-b", "a-b", 0, L"5.000009");
    Add("L2", m_arrangement, 1, "a-b", "a-b", 0, L"5");
    Add("L3", m_arrangement, 1, "a-b", "a-b", 0, L"4.99");
    Add("L4", m_arrangement, 1, "a-b", "a-b", 0, L"5.0");
    EXPECT_EQ(Page(m_arrangement, 1, true), "true: L3 L1 L2 L4");
}

TEST_F(PageLayouts, RiseByPositionWhateverTheirNumber)
{
    std::mt19937 random(support::testSeed(3102));
    for (int round = 0; round < 60; ++round) {
        const long owner = m_net.manager.CreateProfilearang(values({}))->GetId32();
        std::vector<std::pair<int, long>> expected;
        for (int left = static_cast<int>(random() % 40); left > 0; --left) {
            const int position = static_cast<int>(random() % 15);
            CProfilelayout* const layout = m_net.manager.CreateProfilelayout(owner, {});
            layout->WriteSubAttributeInt(L"ploutpage", 1);
            layout->WriteSubAttributeInt(L"ploutstspid", static_cast<int>(m_net["a-b"]));
            layout->WriteSubAttributeInt(L"ploutendspid", static_cast<int>(m_net["a-b"]));
            layout->WriteSubAttributeInt(L"ploutstpos", position);
            expected.emplace_back(position, layout->GetId32());
        }
        std::stable_sort(expected.begin(), expected.end(), [](auto& a, auto& b) { return a.first < b.first; });
        CArray<const CProfilelayout*> layouts;
        EXPECT_EQ(m_net.manager.GetProfilelayoutIdList(static_cast<unsigned long>(owner), 1, true, layouts),
                  !expected.empty());
        std::vector<long> ids;
        for (const auto& [position, id] : expected)
            ids.push_back(id);
        EXPECT_EQ(support::idsOfObjects(layouts), ids);
    }
}

TEST_F(PageLayouts, AllStandInTheListWhereNearnessGoesOnFromOneToTheNext)
{
    // Each is as good as equal to its neighbours, the first and the last are far apart.
    std::vector<long> ids;
    for (int i = 99; i >= 0; --i) {
        CProfilelayout* const layout = m_net.manager.CreateProfilelayout(m_arrangement, {});
        layout->WriteSubAttributeInt(L"ploutpage", 1);
        layout->WriteSubAttributeInt(L"ploutstspid", static_cast<int>(m_net["a-b"]));
        layout->WriteSubAttributeInt(L"ploutendspid", static_cast<int>(m_net["a-b"]));
        layout->WriteSubAttributeDouble(L"ploutstpos", i * 0.6e-5);
        ids.push_back(layout->GetId32());
    }
    CArray<const CProfilelayout*> layouts;
    ASSERT_TRUE(m_net.manager.GetProfilelayoutIdList(static_cast<unsigned long>(m_arrangement), 1, true, layouts));
    EXPECT_THAT(support::idsOfObjects(layouts), testing::UnorderedElementsAreArray(ids));
}

} // namespace
