// Loops of spans: what is reported, what the dialog shows, and the literal matrix against the library.

#include "integrity/SpanLoops.h"
#include "control/DlgProgress.h"
#include "integrity/LiteralChecks.h"
#include "integrity/ProgressLog.h"
#include "resources/Resources.h"
#include "support/Dump.h"
#include "support/Networks.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <optional>
#include <random>
#include <type_traits>

namespace {

using integrity::ProgressLog;
using support::Network;

class SpanLoops : public testing::Test {
protected:
    SpanLoops() { EXPECT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::English)); }

    static std::string Check(const Network& net, const char* before = "")
    {
        return net.After(before, [&](auto& out) { return net.manager.CheckSpanLoop(net["W"], out); });
    }

    ProgressLog m_log;
};

TEST_F(SpanLoops, AreNotInAPlainTree)
{
    EXPECT_EQ(Check(Network("W: M = a-b-c-d; A>M = e-b; B>M = f-g-c")), "0:");
}

TEST_F(SpanLoops, OfARingWithATailAreTheSpansOfTheRing)
{
    EXPECT_EQ(Check(Network("W: M = a-b-c-a; T>M = t-u-a; L = b-x-out")), "1: b-c a-b c-a");
}

TEST_F(SpanLoops, AreAppendedByTheNumbersOfTheirNodes)
{
    // d gets number 0, c 1, b 2, a 3: the lower node of a span is numbered before the upper one.
    EXPECT_EQ(Check(Network("W: M = c-d, b-c, a-b, d-a"), "W"), "1: W d-a c-d b-c a-b");
}

TEST_F(SpanLoops, OfTwoNodesAreFound)
{
    EXPECT_EQ(Check(Network("W: M = a-b; B = b-a")), "1: b-a a-b");
}

TEST_F(SpanLoops, AreReportedWithTheSpansThatLinkThem)
{
    EXPECT_EQ(Check(Network("W: A = a-b-a; L = b-x-c; C = c-d-c; T = d-out")), "1: b-a b-x a-b x-c c-d d-c");
}

TEST_F(SpanLoops, NameOneSpanOfTwoBetweenTheSameNodes)
{
    EXPECT_EQ(Check(Network("W: A = a-b-a; B = a-b, b-a")), "1: b-a a-b");
}

TEST_F(SpanLoops, AreNotMadeByOneSpanFromANodeToItself)
{
    EXPECT_EQ(Check(Network("W: M = a-b-c; S = b-b")), "0:");
}

TEST_F(SpanLoops, OfOneNodeKeepWhatLeadsFromOneToAnother)
{
    EXPECT_EQ(Check(Network("W: A = a-a; M = a-b-c; C = c-c; T = c-out")), "1: a-b b-c");
}

TEST_F(SpanLoops, OfOtherWebsDoNotCount)
{
    EXPECT_EQ(Check(Network("V: R = a-b-c-a; W: M = x-y")), "0:");
    // The ring closes over two webs: each has a line of its own.
    EXPECT_EQ(Check(Network("V: R = a-b-c; W: M = c-a")), "0:");
}

TEST_F(SpanLoops, OfAWebWithoutSpansCannotBeChecked)
{
    Network net("W: M; V: R = a-b");
    EXPECT_EQ(Check(net, "M"), "-1: M");
    for (const long id : {0L, -1L, net["R"], 4711L})
        EXPECT_EQ(net.After("", [&](auto& out) { return net.manager.CheckSpanLoop(id, out); }), "-1:");
    EXPECT_TRUE(m_log.events.empty()) << "no dialog for nothing";
}

TEST_F(SpanLoops, CannotBeCheckedWhereASpanWithoutARouteEndsTheListOfSpans)
{
    Network net("W: M = a-b-c-a; L");
    net.AddSpan("a", "c", net["L"]);
    net.manager.GetRouteDb().Remove(&net.Route("L"));
    EXPECT_EQ(Check(net), "-1:");
}

TEST_F(SpanLoops, AreFoundWhereNodesAreMissing)
{
    Network net("W: M = a-b-c-a");
    net.manager.GetNodeDb().Remove(&net.Node("b"));
    net.Span("c-a").SetLowerNodeId(0);
    net.Span("a-b").SetUpperNodeId(0);
    EXPECT_EQ(Check(net), "1: b-c a-b c-a");
}

TEST_F(SpanLoops, LeaveTheDesignAsItIs)
{
    const Network net("W: M = a-b-c-a; T>M = t-a");
    const std::string before = support::dump(net.manager);
    EXPECT_EQ(Check(net), "1: b-c a-b c-a");
    EXPECT_EQ(support::dump(net.manager), before);
}

// ---- the dialog ----

TEST_F(SpanLoops, ShowFourStages)
{
    // Node b is 0, a 1, c 2. The passes: a and c; nothing.
    EXPECT_EQ(Check(Network("W: M = a-b-c")), "0:");
    EXPECT_EQ(m_log.Calls(), "open "
                             "[Loop check of span - While retrieving data span ...] 0..2 0 "
                             "[Loop check of span - In the span data ...] 0 "
                             "[Loop check of span - During the test loop ...] 0..3 0 0 0 "
                             "[Loop check of span - During the evaluation of the results ...] 0..3 0 close");
    EXPECT_EQ(m_log.questions, 2 + 2 + 2);
}

TEST_F(SpanLoops, LetInputThroughEveryTwentyUnitsOfAStage)
{
    std::string chain = "W: M = n0";
    for (int i = 1; i <= 41; ++i)
        chain += "-n" + std::to_string(i);
    EXPECT_EQ(Check(Network(chain)), "0:");
    // n1 has the number 0, n0 the number 1: the first pass zeroes both ends of the line, the second goes down from n1.
    EXPECT_EQ(m_log.Calls(), "open [Loop check of span - While retrieving data span ...] 0..41 0 20 pump 40 pump "
                             "[Loop check of span - In the span data ...] 0 20 pump 40 pump "
                             "[Loop check of span - During the test loop ...] 0..42 0 0 0 20 pump 40 pump 0 "
                             "[Loop check of span - During the evaluation of the results ...] 0..42 0 close");
}

TEST_F(SpanLoops, AskAfterEveryUnitWhetherToGoOn)
{
    const Network net("W: M = a-b-c-a; T>M = t-u-a");
    ASSERT_EQ(Check(net), "1: b-c a-b c-a");
    const int units = m_log.questions;
    EXPECT_EQ(units, 5 + 5 + 2 + 3);
    for (int unit = 1; unit <= units; ++unit) {
        ProgressLog log;
        log.cancelAt = unit;
        // The spans of the last stage are appended one by one.
        const char* const expected[] = {"2: b-c", "2: b-c a-b", "2: b-c a-b c-a"};
        EXPECT_EQ(Check(net), unit > 12 ? expected[unit - 13] : "2:") << unit;
        EXPECT_EQ(log.questions, unit);
        EXPECT_EQ(log.events.back().kind, ProgressLog::Event::Close);
    }
}

TEST_F(SpanLoops, ShowTheTextsOfThisLibraryAndPutTheHandleBack)
{
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::Japanese));
    struct : obmgr::ResourceSource {
        const wchar_t* Find(unsigned) const override { return L"the application's"; }
    } application;
    AfxSetResourceHandle(&application);
    const Network net("W: M = a-b-a");
    for (const int cancelAt : {1, 1000}) {
        ProgressLog log;
        log.cancelAt = cancelAt;
        Check(net);
        EXPECT_EQ(log.textsInUse, obmgr::LibraryResourceHandle());
        EXPECT_EQ(log.events[1].text, L"スパンのループチェック - スパンデータを取得しています...");
        EXPECT_EQ(AfxGetResourceHandle(), &application);
    }
    AfxSetResourceHandle(nullptr);
}

TEST_F(SpanLoops, HaveATextForApplicationsThatAreToldOfACancel)
{
    EXPECT_EQ(obmgr::ResourceText(IDS_CHECK_SPAN_CANCELLED), L"Check the integrity of the span is canceled.");
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::Japanese));
    EXPECT_EQ(obmgr::ResourceText(IDS_CHECK_SPAN_CANCELLED), L"スパンの整合性チェックを中止しました。");
}

TEST_F(SpanLoops, AreThoseFromBeforeWhenInputDeletesTheSpans)
{
    std::string ring = "W: M = n0";
    for (int i = 1; i < 25; ++i)
        ring += "-n" + std::to_string(i);
    Network net(ring + "-n0");
    m_log.onPump = [&] { net.manager.GetSpanDb().Clear(); };
    EXPECT_EQ(net.manager.GetSpanDb().GetCount(), 25);
    support::Ids found;
    EXPECT_EQ(net.manager.CheckSpanLoop(net["W"], found), 1);
    EXPECT_EQ(found.GetCount(), 25);
    EXPECT_EQ(net.manager.GetSpanDb().GetCount(), 0);
}

TEST_F(SpanLoops, AreWorkedOutByAnObjectWithAVirtualDestructor)
{
    static_assert(std::has_virtual_destructor_v<CLoopSpan>);
    const Network net("W: M = a-b-a");
    support::Spans spans;
    ASSERT_TRUE(net.manager.GetSpanFromWeb(net["W"], spans));
    CDlgProgress progress;
    support::Ids found;
    EXPECT_EQ(CLoopSpan(spans).Check(progress, found), CLoopSpan::kLoop);
    EXPECT_EQ(net.Names(found), "b-a a-b");
}

// ---- against the matrix ----

// Into the route R: nodes, spans between them, and what makes loops likely or not.
void addRandomSpans(Network& net, std::mt19937& random)
{
    const auto upTo = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const int nodes = 1 + upTo(60);
    for (int i = 0; i < nodes; ++i)
        net.AddNode("n" + std::to_string(i));
    const auto name = [](int node) { return "n" + std::to_string(node); };
    std::vector<std::pair<int, int>> ends;
    switch (upTo(3)) {
    case 0: // anything, from a few spans to many
        for (int left = upTo(nodes * 2) + 1; left > 0; --left)
            ends.emplace_back(upTo(nodes), upTo(nodes));
        break;
    case 1: // a tree down to node 0
        for (int i = 1; i < nodes; ++i)
            ends.emplace_back(i, upTo(i));
        break;
    default: // rings with lines between them, and lines in and out
        for (int i = 0; i + 1 < nodes; ++i)
            ends.emplace_back(i, i + 1);
        for (int rings = upTo(4); rings > 0; --rings) {
            const int from = upTo(nodes);
            ends.emplace_back(from, upTo(from + 1));
        }
    }
    for (int more = upTo(3); more > 0; --more) {
        const int node = upTo(nodes);
        ends.emplace_back(node, upTo(2) ? node : upTo(nodes));
    }
    if (!ends.empty())
        for (int twins = upTo(3); twins > 0; --twins)
            ends.push_back(ends[static_cast<std::size_t>(upTo(static_cast<int>(ends.size())))]);
    if (upTo(4) > 0) std::shuffle(ends.begin(), ends.end(), random);
    for (const auto& [upper, lower] : ends)
        net.AddSpan(name(upper), name(lower), net["R"]);
}

struct Outcome {
    int code = 0;
    std::vector<long> spans;
    std::vector<ProgressLog::Event> events;

    bool operator==(const Outcome&) const = default;
};

template <class Call> Outcome run(int cancelAt, Call&& call)
{
    ProgressLog log;
    log.cancelAt = cancelAt;
    Outcome outcome;
    support::Ids out{7};
    outcome.code = call(out);
    outcome.spans = toVector(out);
    outcome.events = log.events;
    return outcome;
}

TEST_F(SpanLoops, AgreeWithTheMatrixWhateverTheNetworkAndTheCancel)
{
    const unsigned seed = support::testSeed(3101);
    int counts[3] = {};
    for (unsigned round = 0; round < 3000; ++round) {
        std::mt19937 random(seed + round);
        Network net("W: R");
        addRandomSpans(net, random);
        const auto both = [&](int cancelAt) {
            const Outcome library = run(cancelAt, [&](auto& out) { return net.manager.CheckSpanLoop(net["W"], out); });
            const Outcome literal =
                run(cancelAt, [&](auto& out) { return integrity::literalCheckSpanLoop(net.manager, net["W"], out); });
            EXPECT_EQ(library.code, literal.code);
            EXPECT_EQ(library.spans, literal.spans);
            EXPECT_TRUE(library.events == literal.events) << "the dialog shows something else";
            if (library.code >= 0) ++counts[library.code];
            return library == literal ? std::optional(library) : std::nullopt;
        };
        const auto whole = both(std::numeric_limits<int>::max());
        ASSERT_TRUE(whole) << "RIVELTA_SEED=" << seed + round << '\n' << net.Shape();
        const auto questions = std::count_if(whole->events.begin(), whole->events.end(),
                                             [](auto& event) { return event.kind == ProgressLog::Event::Question; });
        if (questions == 0) continue;
        const int cancelAt = 1 + static_cast<int>(random() % static_cast<unsigned>(questions));
        ASSERT_TRUE(both(cancelAt)) << "cancel at " << cancelAt << ", RIVELTA_SEED=" << seed + round << '\n'
                                    << net.Shape();
    }
    for (const int count : counts)
        EXPECT_GT(count, 500) << "hardly tried";
}

// ---- size ----

// A line of nodes 0 to `spans` whose numbers fall towards its middle, so that each pass of the peeling takes only the
// two ends: the middle span is made first and then those around it.
std::unique_ptr<Network> lineNumberedInwards(int spans)
{
    auto net = std::make_unique<Network>("W: R");
    std::vector<long> nodes;
    for (int i = 0; i <= spans; ++i)
        nodes.push_back(net->manager.CreateNode({})->GetId32());
    const auto addSpan = [&](int place) {
        const auto upper = static_cast<std::size_t>(place);
        net->manager.CreateSpanNoarea(nodes[upper], nodes[upper + 1], (*net)["R"], {});
    };
    int up = spans / 2;
    int down = up + 1;
    while (up >= 0 || down < spans) {
        if (up >= 0) addSpan(up--);
        if (down < spans) addSpan(down++);
    }
    return net;
}

TEST_F(SpanLoops, OfAHundredThousandSpansNumberedInwardsTakeAQuestionAUnit)
{
    constexpr int kSpans = 100'000;
    const std::unique_ptr<Network> net = lineNumberedInwards(kSpans);
    support::Ids found;
    EXPECT_EQ(net->manager.CheckSpanLoop((*net)["W"], found), 0);
    EXPECT_TRUE(found.IsEmpty());
    EXPECT_EQ(m_log.questions, 3 * kSpans);
    const auto starts = std::count_if(m_log.events.begin(), m_log.events.end(), [](auto& event) {
        return event.kind == ProgressLog::Event::Position && event.number == 0;
    });
    EXPECT_EQ(starts, 4 + kSpans / 2 + 1) << "four stages, and the passes";
}

} // namespace
