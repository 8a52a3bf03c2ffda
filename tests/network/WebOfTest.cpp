// From a record to the web that it belongs to.

#include "support/Networks.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using support::Network;
using support::values;

// A web before and one behind the web of each record, so that neither the first nor the last web is found by chance.
class WebOf : public testing::Test {
protected:
    Network m_net{"U: K = k-l; W: M = j-o; A>M = a-j; V: X = x-y; F = lonely"};
    support::OpenManager& m_manager = m_net.manager;

    std::string Web(long id) const { return m_net.NameOf(id); }
};

CString number(long value)
{
    return std::to_wstring(value).c_str();
}

TEST_F(WebOf, ASpanIsOfItsRoutesWeb)
{
    EXPECT_EQ(Web(m_manager.GetWebIdFromSpan(m_net["a-j"])), "W");
    EXPECT_EQ(Web(m_manager.GetWebIdFromSpan(&m_net.Span("x-y"))), "V");
}

TEST_F(WebOf, ASpanWithoutARouteIsOfNone)
{
    m_net.AddSpan("o", "a", 9999);
    EXPECT_EQ(m_manager.GetWebIdFromSpan(m_net["o-a"]), 0);
    EXPECT_EQ(m_manager.GetWebIdFromSpan(0L), 0);
    EXPECT_EQ(m_manager.GetWebIdFromSpan(m_net["M"]), 0);
}

TEST_F(WebOf, ANodeIsOfTheWebOfItsSpan)
{
    EXPECT_EQ(Web(m_manager.GetWebIdFromNode(m_net["a"])), "W");
    EXPECT_EQ(Web(m_manager.GetWebIdFromNode(m_net["o"])), "W");
    EXPECT_EQ(Web(m_manager.GetWebIdFromNode(&m_net.Node("y"))), "V");
}

TEST_F(WebOf, ANodeOfTwoWebsIsOfThatOfTheFirstSpanInTheTable)
{
    m_net.Add("V: X = o-x; U: K = l-y");
    EXPECT_EQ(Web(m_manager.GetWebIdFromNode(m_net["o"])), "W");
    EXPECT_EQ(Web(m_manager.GetWebIdFromNode(m_net["y"])), "V");
}

TEST_F(WebOf, ANodeThatNoSpanTouchesIsOfNone)
{
    EXPECT_EQ(m_manager.GetWebIdFromNode(m_net["lonely"]), 0);
    EXPECT_EQ(m_manager.GetWebIdFromNode(&m_net.Node("lonely")), 0);
    EXPECT_EQ(m_manager.GetWebIdFromNode(0L), 0);
}

TEST_F(WebOf, AnInterceptorInflowIsOfTheWebOfItsNode)
{
    const CIcpInq* const inflow = m_manager.CreateIcpInq(m_net["a"], values({}));
    EXPECT_EQ(Web(m_manager.GetWebIdFromIcpInq(inflow)), "W");
    EXPECT_EQ(Web(m_manager.GetWebIdFromIcpInq(inflow->GetId32())), "W");
    EXPECT_EQ(m_manager.GetWebIdFromIcpInq(m_manager.CreateIcpInq(m_net["lonely"], values({}))), 0);
    EXPECT_EQ(m_manager.GetWebIdFromIcpInq(0L), 0);
}

TEST_F(WebOf, AnAreaRecordIsOfTheWebOfItsSpan)
{
    const CAreaSet* const area = m_manager.CreateAreaSet(m_net["a-j"], values({}));
    EXPECT_EQ(Web(m_manager.GetWebIdFromAreaSet(area)), "W");
    EXPECT_EQ(Web(m_manager.GetWebIdFromAreaSet(area->GetId32())), "W");
    EXPECT_EQ(m_manager.GetWebIdFromAreaSet(m_manager.CreateAreaSet(0, values({}))), 0);
    EXPECT_EQ(m_manager.GetWebIdFromAreaSet(0L), 0);
}

TEST_F(WebOf, AnOutflowIsOfTheWebOfItsRoute)
{
    const COutq* const outflow = m_manager.CreateOutq(m_net["A"], values({}));
    EXPECT_EQ(Web(m_manager.GetWebIdFromOutq(outflow)), "W");
    EXPECT_EQ(Web(m_manager.GetWebIdFromOutq(outflow->GetId32())), "W");
    EXPECT_EQ(m_manager.GetWebIdFromOutq(m_manager.CreateOutq(0, values({}))), 0);
    EXPECT_EQ(m_manager.GetWebIdFromOutq(0L), 0);
}

TEST_F(WebOf, ACrossingIsOfTheWebThatItHasAPointIn)
{
    const CInters* const first = m_manager.CreateInters(values({}));
    const CInters* const second = m_manager.CreateInters(values({}));
    const CInters* const unused = m_manager.CreateInters(values({}));
    m_manager.CreateIntPos(m_net["A"], first->GetId32(), values({}));
    m_manager.CreateIntPos(second->GetId32(), m_net["X"], values({}));
    EXPECT_EQ(Web(m_manager.GetWebIdFromInters(first)), "W");
    EXPECT_EQ(Web(m_manager.GetWebIdFromInters(second->GetId32())), "V");
    EXPECT_EQ(m_manager.GetWebIdFromInters(unused), 0);
    EXPECT_EQ(m_manager.GetWebIdFromInters(0L), 0);
}

TEST_F(WebOf, ACrossingOfTwoWebsIsOfTheFirst)
{
    const CInters* const crossing = m_manager.CreateInters(values({}));
    m_manager.CreateIntPos(m_net["A"], crossing->GetId32(), values({}));
    m_manager.CreateIntPos(m_net["X"], crossing->GetId32(), values({}));
    EXPECT_EQ(Web(m_manager.GetWebIdFromInters(crossing)), "W");
}

TEST_F(WebOf, AHouseUnitIsOfTheWebOfTheFirstLateralThatNamesIt)
{
    const CLaunit* const unit = m_manager.CreateLaunit(values({}));
    EXPECT_EQ(m_manager.GetWebIdFromLaunit(unit), 0);
    m_manager.CreateLateral(m_net["X"], values({{L"launitid", L"1"}}));
    const CString id = number(unit->GetId32());
    m_manager.CreateLateral(m_net["A"], values({{L"launitid", id}}));
    m_manager.CreateLateral(m_net["X"], values({{L"launitid", id}}));
    EXPECT_EQ(Web(m_manager.GetWebIdFromLaunit(unit)), "W");
    EXPECT_EQ(Web(m_manager.GetWebIdFromLaunit(unit->GetId32())), "W");
    EXPECT_EQ(m_manager.GetWebIdFromLaunit(0L), 0);
}

TEST_F(WebOf, AVacuumUnitIsOfTheWebOfTheFirstJointThatNamesIt)
{
    const CVacunit* const unit = m_manager.CreateVacunit(values({}));
    EXPECT_EQ(m_manager.GetWebIdFromVacunit(unit), 0);
    m_manager.CreateVjoint(m_net["X"], values({{L"vjinletid", L"1"}}));
    const CString id = number(unit->GetId32());
    m_manager.CreateVjoint(m_net["A"], values({{L"vjinletid", id}}));
    m_manager.CreateVjoint(m_net["X"], values({{L"vjinletid", id}}));
    EXPECT_EQ(Web(m_manager.GetWebIdFromVacunit(unit)), "W");
    EXPECT_EQ(Web(m_manager.GetWebIdFromVacunit(unit->GetId32())), "W");
    EXPECT_EQ(m_manager.GetWebIdFromVacunit(0L), 0);
}

TEST_F(WebOf, ASectionValveIsOfTheWebOfItsSpan)
{
    const CSecvalve* const valve = m_manager.CreateSecvalve(values({{L"svspid", number(m_net["a-j"])}}));
    EXPECT_EQ(Web(m_manager.GetWebIdFromSecvalve(valve)), "W");
    EXPECT_EQ(Web(m_manager.GetWebIdFromSecvalve(valve->GetId32())), "W");
    EXPECT_EQ(m_manager.GetWebIdFromSecvalve(m_manager.CreateSecvalve(values({}))), 0);
    EXPECT_EQ(m_manager.GetWebIdFromSecvalve(0L), 0);
}

TEST_F(WebOf, AnOverhaulPlaceIsOfTheWebOfItsSpan)
{
    const COhaul* const place = m_manager.CreateOhaul(values({{L"ohspid", number(m_net["a-j"])}}));
    EXPECT_EQ(Web(m_manager.GetWebIdFromOhaul(place)), "W");
    EXPECT_EQ(Web(m_manager.GetWebIdFromOhaul(place->GetId32())), "W");
    EXPECT_EQ(m_manager.GetWebIdFromOhaul(m_manager.CreateOhaul(values({}))), 0);
    EXPECT_EQ(m_manager.GetWebIdFromOhaul(0L), 0);
}

TEST_F(WebOf, ANameLeadsToTheFirstWebThatHasExactlyThat)
{
    m_net.Set(L"webname", {{"U", L"North"}, {"W", L"South"}, {"V", L"South"}});
    EXPECT_EQ(Web(m_manager.GetWebIdFormName(L"South")), "W");
    EXPECT_EQ(m_manager.GetWebIdFormName(L"south"), 0);
    EXPECT_EQ(m_manager.GetWebIdFormName(L"South "), 0);
    EXPECT_EQ(m_manager.GetWebIdFormName(L""), 0);
}

TEST_F(WebOf, ANameLeadsToTheFirstWebInTheTableWhateverTheOrder)
{
    m_net.Set(L"webname", {{"W", L"South"}, {"V", L"South"}});
    m_net.Set(L"order", {{"W", L"2"}, {"V", L"1"}});
    EXPECT_EQ(Web(m_manager.GetWebIdFormName(L"South")), "W");
}

} // namespace
