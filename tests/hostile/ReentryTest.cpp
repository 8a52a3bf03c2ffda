// What an application may do to a design while the dialog of a check lets input through: anything but destroy it.
// The same for a read is in tests/persistence/ReadProgressTest.cpp.
#include "hostile/HostileTest.h"
#include "support/Networks.h"

using namespace hostile;
using support::Ids;
using support::Network;

namespace {

class Reentry : public HostileTest {
protected:
    // Calls `action` the n-th time that the dialog lets input through, and no other time.
    void AtPump(int n, std::function<void()> action)
    {
        m_pump = 0;
        interface.onPump = [this, n, action = std::move(action)] {
            if (++m_pump == n) action();
        };
    }
    bool WasPumped(int n) const { return m_pump >= n; }

    static int CheckRoutes(CObjectManager& manager, const Ids& routes, Ids& changed)
    {
        Ids pairs;
        return manager.GetAbnormalRoute(routes, pairs, changed);
    }
    static int CheckSpans(const CObjectManager& manager, long web, Ids& spans)
    {
        return manager.CheckSpanLoop(web, spans);
    }

private:
    int m_pump = 0;
};

// So many spans that their check lets input through.
const std::string kRing = [] {
    std::string text = "W: M = n0";
    for (int i = 1; i < 25; ++i)
        text += "-n" + std::to_string(i);
    return text + "-n0";
}();
const std::string kTree = "W: M = m-out; A>M = a-m; B>A = b-a";

class ReentryActions : public Reentry {
protected:
    struct Action {
        std::string name;
        std::function<void(Network&)> run;
    };

    std::vector<Action> Actions()
    {
        return {
            {"both checks",
             [](Network& net) {
                 Ids found;
                 Ids changed;
                 CheckSpans(net.manager, net["W"], found);
                 CheckRoutes(net.manager, net.List("M"), changed);
             }},
            {"begin and abort",
             [](Network& net) {
                 net.manager.BeginTransaction();
                 net.manager.GetSpanDb().Clear();
                 net.manager.GetRouteDb().Clear();
                 net.manager.AbortTransaction();
             }},
            {"Initialize", [](Network& net) { net.manager.Initialize(); }},
            {"another design in its place",
             [this](Network& net) {
                 net.manager.Initialize();
                 EXPECT_TRUE(readRecords(net.manager, "<node id=\"70001\"/>")) << error;
             }},
            {"an appended design",
             [this](Network& net) { EXPECT_TRUE(readRecords(net.manager, "<node id=\"1\"/>", true)) << error; }},
            {"a save", [this](Network& net) { EXPECT_FALSE(save(net.manager, 14).empty()) << error; }},
        };
    }

    // The manager takes a new design and checks it.
    void ExpectUsable(CObjectManager& manager)
    {
        interface.onPump = nullptr;
        manager.Initialize();
        ASSERT_TRUE(readRecords(manager, "<node id=\"1\"/><node id=\"2\"/><web id=\"3\" disposaltype=\"0\"/>"
                                         "<route id=\"4\" webid=\"3\" connectid=\"4\"/>"
                                         "<span id=\"5\" uppernode=\"1\" lowernode=\"2\" routeid=\"4\"/>"
                                         "<span id=\"6\" uppernode=\"2\" lowernode=\"1\" routeid=\"4\"/>"))
            << error;
        Ids found;
        EXPECT_EQ(CheckSpans(manager, 3, found), 1);
        EXPECT_EQ(found.GetCount(), 2);
        Ids changed;
        EXPECT_EQ(CheckRoutes(manager, Ids{4}, changed), -1);
    }
};

} // namespace

TEST_F(ReentryActions, InACheckOfSpansGiveTheLoopsFromBefore)
{
    for (const Action& action : Actions())
        for (int n = 1; n <= 3; ++n) {
            SCOPED_TRACE(action.name + " at " + std::to_string(n));
            Network net(kRing);
            AtPump(n, [&] { action.run(net); });
            Ids found;
            EXPECT_EQ(CheckSpans(net.manager, net["W"], found), 1);
            EXPECT_EQ(found.GetCount(), 25);
            ASSERT_TRUE(WasPumped(n));
            ExpectUsable(net.manager);
        }
}

TEST_F(ReentryActions, InACheckOfRoutesLeaveNothingThatIsWrong)
{
    for (const Action& action : Actions())
        for (int n = 1; n <= 3; ++n) {
            SCOPED_TRACE(action.name + " at " + std::to_string(n));
            Network net(kTree);
            net.Set(L"connectnum", {{"A", L"M"}, {"B", L"A"}});
            AtPump(n, [&] { action.run(net); });
            Ids changed;
            EXPECT_EQ(CheckRoutes(net.manager, net.List("A B M"), changed), 0);
            EXPECT_TRUE(changed.IsEmpty());
            ASSERT_TRUE(WasPumped(n));
            ExpectUsable(net.manager);
        }
}

TEST_F(Reentry, AnAbortTakesBackWhatACheckHasMendedAndTheCheckMendsItAgain)
{
    Network net(kTree);
    net.manager.BeginTransaction();
    AtPump(1, [&] { net.manager.AbortTransaction(); });
    Ids changed;
    EXPECT_EQ(CheckRoutes(net.manager, net.List("A B"), changed), -2);
    EXPECT_EQ(net.Names(changed), "A B A");
    EXPECT_EQ(net.Get(L"connectnum", "A B"), L"M A");
}

TEST_F(Reentry, RoutesThatLoseTheirSpansMeetNoLongerFromThenOn)
{
    Network net(kTree);
    net.Set(L"connectnum", {{"A", L"M"}, {"B", L"A"}});
    AtPump(1, [&] { net.manager.GetSpanDb().Clear(); });
    Ids changed;
    EXPECT_EQ(CheckRoutes(net.manager, net.List("A B"), changed), -3);
}
