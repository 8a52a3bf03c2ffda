// The label functions for longitudinal drawings: routes shown, pages, scales.
#include "resources/Resources.h"

#include "macro/ShownLabel.h"
#include "support/Networks.h"

using namespace kelmacro;
using macros::kNoLabel;
using macros::shown;
using macros::shownBy;
using support::values;

namespace {

constexpr long kUnknown = 987654;

class LabelDrawings : public testing::Test {
protected:
    LabelDrawings()
    {
        EXPECT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::English));
        net.Set(L"routenum", {{"A", L"1"}, {"B", L"2"}, {"C", L"3"}});
    }
    ~LabelDrawings() override { EXPECT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::English)); }

    // A layout from one span to another, also added to the lists.
    CProfilelayout& AddLayout(long startSpan, long endSpan, const wchar_t* page = L"0", long owner = 0)
    {
        const std::wstring start = std::to_wstring(startSpan);
        const std::wstring end = std::to_wstring(endSpan);
        CProfilelayout& layout = *manager.CreateProfilelayout(
            owner, values({{L"ploutstspid", start.c_str()}, {L"ploutendspid", end.c_str()}, {L"ploutpage", page}}));
        array.Add(&layout);
        list.AddTail(&layout);
        return layout;
    }

    // The routes and the pages of the lists, which have to agree.
    std::wstring Routes() const
    {
        const std::wstring text = shownBy([&](CString& out) { return ResolveMcDrawnl(&manager, array, out); });
        EXPECT_EQ(text, shownBy([&](CString& out) { return ResolveMcDrawnl(&manager, list, out); }));
        return text;
    }
    std::wstring Pages() const
    {
        const std::wstring text = shownBy([&](CString& out) { return ResolveMcDrawpageall(&manager, array, out); });
        EXPECT_EQ(text, shownBy([&](CString& out) { return ResolveMcDrawpageall(&manager, list, out); }));
        return text;
    }
    std::wstring PagesOf(long webId) const
    {
        return shownBy([&](CString& out) { return ResolveMcDrawpageall(&manager, webId, out); });
    }
    std::wstring Scale(const CDrawformdat& format, bool horizontal) const
    {
        return shown(ResolveMcDrawscale, &manager, long{format.GetId32()}, horizontal);
    }

    support::Network net{"W: A = a-b-c; B>A = d-b; C>A = e-b; V: D = x-y"};
    CObjectManager& manager = net.manager;
    CArray<const CProfilelayout*> array;
    CTypedPtrList<CObList, CProfilelayout*> list;
};

} // namespace

// ---- Routes shown ----
TEST_F(LabelDrawings, LayoutsAreToldByTheirFirstAndLastRoute)
{
    AddLayout(net["a-b"], net["b-c"]);
    AddLayout(net["d-b"], net["e-b"]);
    EXPECT_EQ(Routes(), L"1,2~3");
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::Japanese));
    EXPECT_EQ(Routes(), L"1,2～3");
}

TEST_F(LabelDrawings, LayoutsKeepTheirOrderAndRepeatRoutes)
{
    AddLayout(net["e-b"], net["e-b"]);
    AddLayout(net["a-b"], net["a-b"]);
    AddLayout(net["e-b"], net["e-b"]);
    EXPECT_EQ(Routes(), L"3,1,3");
}

TEST_F(LabelDrawings, LayoutsWithoutSpansOrRouteAreLeftOut)
{
    AddLayout(0, net["a-b"]);
    AddLayout(net["a-b"], kUnknown);
    EXPECT_EQ(Routes(), kNoLabel);
    AddLayout(net["d-b"], net["d-b"]);
    net.Set(L"routenum", {{"A", L""}});
    AddLayout(net["a-b"], net["b-c"]);
    AddLayout(net["e-b"], net["e-b"]);
    EXPECT_EQ(Routes(), L"2,3");
    net.Span("e-b").SetRouteId(kUnknown);
    EXPECT_EQ(Routes(), L"2");
}

TEST_F(LabelDrawings, NoLayoutsAreNoRoutesAndNoPages)
{
    EXPECT_EQ(Routes(), kNoLabel);
    EXPECT_EQ(Pages(), kNoLabel);
    array.Add(nullptr);
    list.AddTail(static_cast<CProfilelayout*>(nullptr));
    EXPECT_EQ(Routes(), kNoLabel);
    EXPECT_EQ(Pages(), kNoLabel);
}

TEST_F(LabelDrawings, ListsNeedAManager)
{
    AddLayout(net["a-b"], net["b-c"], L"2");
    EXPECT_EQ(shownBy([&](CString& out) { return ResolveMcDrawnl(nullptr, array, out); }), kNoLabel);
    EXPECT_EQ(shownBy([&](CString& out) { return ResolveMcDrawnl(nullptr, list, out); }), kNoLabel);
    EXPECT_EQ(shownBy([&](CString& out) { return ResolveMcDrawpageall(nullptr, array, out); }), kNoLabel);
    EXPECT_EQ(shownBy([&](CString& out) { return ResolveMcDrawpageall(nullptr, list, out); }), kNoLabel);
    EXPECT_EQ(shownBy([&](CString& out) { return ResolveMcDrawpageall(nullptr, net["W"], out); }), kNoLabel);
}

// ---- Pages ----
TEST_F(LabelDrawings, TheHighestPageIsTheNumberOfPages)
{
    for (const wchar_t* page : {L"2", L"11", L"3"})
        AddLayout(0, 0, page);
    EXPECT_EQ(Pages(), L"11");
}

TEST_F(LabelDrawings, PagesThatAreAllZeroAreNoPages)
{
    AddLayout(0, 0, L"0");
    AddLayout(0, 0, L"0");
    EXPECT_EQ(Pages(), kNoLabel);
    AddLayout(0, 0, L"-4");
    EXPECT_EQ(Pages(), kNoLabel);
}

TEST_F(LabelDrawings, TheLayoutsOfAWebAreThoseOfItsArrangements)
{
    const long arrangement = manager.CreateProfilearang({})->GetId32();
    const long other = manager.CreateProfilearang({})->GetId32();
    const std::wstring web = std::to_wstring(net["W"]);
    AddLayout(net["a-b"], net["b-c"], L"4", arrangement);
    AddLayout(net["x-y"], net["x-y"], L"9", other);
    AddLayout(net["a-b"], net["b-c"], L"99", 0);
    EXPECT_EQ(PagesOf(net["W"]), kNoLabel);
    manager.CreateProfilearea(arrangement, values({{L"pareawebid", web.c_str()}}));
    manager.CreateProfilearea(arrangement, values({{L"pareawebid", web.c_str()}}));
    manager.CreateProfilearea(0, values({{L"pareawebid", web.c_str()}}));
    EXPECT_EQ(PagesOf(net["W"]), L"4");
    EXPECT_EQ(PagesOf(net["V"]), kNoLabel);
    manager.CreateProfilearea(other, values({{L"pareawebid", web.c_str()}}));
    EXPECT_EQ(PagesOf(net["W"]), L"9");
}

TEST_F(LabelDrawings, LayoutsThatTheWebItselfOwnsAreItsOwn)
{
    AddLayout(net["a-b"], net["b-c"], L"3", net["W"]);
    EXPECT_EQ(PagesOf(net["W"]), L"3");
    EXPECT_EQ(PagesOf(net["V"]), kNoLabel);
    EXPECT_EQ(PagesOf(0), kNoLabel);
    EXPECT_EQ(PagesOf(kUnknown), kNoLabel);
}

// ---- Scales ----
TEST_F(LabelDrawings, ScalesHaveTheDigitsOfTheirFormat)
{
    CDrawformdat& format =
        *manager.CreateDrawformdat(values({{L"dfdxacale", L"500.126"}, {L"dfdyscale", L"100"}, {L"sclmkfig", L"2"}}));
    EXPECT_EQ(Scale(format, true), L"500.13");
    EXPECT_EQ(Scale(format, false), L"100.00");
    EXPECT_EQ(shown(ResolveMcDrawhscale, &manager, long{format.GetId32()}), L"500.13");
    EXPECT_EQ(shown(ResolveMcDrawvscale, &manager, long{format.GetId32()}), L"100.00");
}

TEST_F(LabelDrawings, FormatsWithoutDigitsTakeThoseOfTheFirstRoundingRecord)
{
    CDrawformdat& format = *manager.CreateDrawformdat(values({{L"dfdxacale", L"2.6"}, {L"dfdyscale", L"1.25"}}));
    EXPECT_EQ(Scale(format, true), L"3");
    CList<long, long> ids;
    ASSERT_TRUE(manager.GetDrawfigIdList(net["W"], ids));
    manager.GetDrawfigObjectOriginal(ids.GetHead())->WriteSubAttribute(L"sclmkfig", L"1");
    EXPECT_EQ(Scale(format, true), L"2.6");
    format.WriteSubAttribute(L"sclmkfig", L"0");
    EXPECT_EQ(Scale(format, true), L"3");
}

TEST_F(LabelDrawings, UnknownFormatsHaveNoScale)
{
    const CDrawformdat& format = *manager.CreateDrawformdat(support::Values());
    for (const auto function : {ResolveMcDrawhscale, ResolveMcDrawvscale}) {
        EXPECT_EQ(shown(function, &manager, long{format.GetId32()}), L"0");
        EXPECT_EQ(shown(function, nullptr, long{format.GetId32()}), kNoLabel);
        for (const long wrong : {0L, kUnknown, net["W"]})
            EXPECT_EQ(shown(function, &manager, wrong), kNoLabel) << wrong;
    }
}
