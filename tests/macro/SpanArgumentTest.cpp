// The argument of a span: what its copies keep, and the spans above and below it.
#include "macro/MacroArguments.h"

#include "support/Networks.h"

#include <memory>

#include <gtest/gtest.h>

namespace {

using support::Network;

KelMacroArgSpan argumentOf(const Network& net, const std::string& span)
{
    KelMacroArgSpan argument;
    argument.SetObjMan(&net.manager);
    argument.SetPipeObjectId(static_cast<unsigned long>(net[span]));
    return argument;
}

// "min / max / drawn / lower"
std::string neighbours(const Network& net, const KelMacroArgSpan& argument)
{
    std::string text;
    for (const unsigned long id : {argument.GetUpperMinSpanId(), argument.GetUpperMaxSpanId(),
                                   argument.GetUpperDrwSpanId(), argument.GetLowerSpanId()})
        text += (text.empty() ? "" : " / ") + net.NameOf(static_cast<long>(id));
    return text;
}

std::string neighboursOf(const Network& net, const std::string& span)
{
    KelMacroArgSpan argument = argumentOf(net, span);
    argument.SetUpperAndLowerSpanId();
    return neighbours(net, argument);
}

// Three spans flow into x-y, which flows into y-z.
constexpr const char* kJunction = "W: M = a-x-y-z; A>M = b-x; B>M = c-x";

void expectIds(const KelMacroArgSpan& argument, const std::vector<unsigned long>& ids)
{
    EXPECT_EQ(
        (std::vector<unsigned long>{argument.GetSubSpanId(), argument.GetUpperMinSpanId(), argument.GetUpperMaxSpanId(),
                                    argument.GetUpperDrwSpanId(), argument.GetLowerSpanId()}),
        ids);
}

const std::vector<unsigned long> kNone(5, 0);

} // namespace

// ---- fields and copies ----

TEST(SpanArgument, StartsAtZero)
{
    const KelMacroArgSpan argument;
    EXPECT_EQ(argument.GetDir(), 0);
    expectIds(argument, kNone);
}

TEST(SpanArgument, KeepsWhatIsSet)
{
    KelMacroArgSpan argument;
    argument.SetDir(1);
    argument.SetSubSpanId(11);
    argument.SetUpperMinSpanId(12);
    argument.SetUpperMaxSpanId(13);
    argument.SetUpperDrwSpanId(14);
    argument.SetLowerSpanId(15);
    EXPECT_EQ(argument.GetDir(), 1);
    expectIds(argument, {11, 12, 13, 14, 15});
}

TEST(SpanArgument, CloneKeepsTheDirectionButNoSpanIds)
{
    KelMacroArgSpan argument;
    argument.SetDir(1);
    argument.SetUpperDrwSpanId(14);
    const std::unique_ptr<KelMacroArgSpan> clone(argument.Clone());
    EXPECT_EQ(clone->GetDir(), 1);
    EXPECT_EQ(clone->GetUpperDrwSpanId(), 0u);
    expectIds(*clone, kNone);
}

TEST(SpanArgument, CopyTakesTheDirectionAndLeavesTheTargetsSpanIds)
{
    KelMacroArgSpan source;
    source.SetSubSpanId(21);
    source.SetUpperMinSpanId(22);
    KelMacroArgSpan target;
    target.SetDir(1);
    target.SetSubSpanId(11);
    target.SetLowerSpanId(15);
    target.Copy(&source);
    EXPECT_EQ(target.GetDir(), 0);
    expectIds(target, {11, 0, 0, 0, 15});
}

TEST(SpanArgument, CopyOfAPlainArgumentLeavesTheDirection)
{
    const KelMacroArgPipeObject source;
    KelMacroArgSpan target;
    target.SetDir(1);
    target.Copy(&source);
    EXPECT_EQ(target.GetDir(), 1);
}

TEST(SpanArgument, MadeFromAnotherStartsWithItsOwnFieldsAtZero)
{
    KelMacroArgSpan source;
    source.SetDir(1);
    source.SetLowerSpanId(15);
    source.SetPipeObjectId(17);
    const KelMacroArgSpan argument(static_cast<const KelMacroArgPipeObject*>(&source));
    EXPECT_EQ(argument.GetPipeObjectId(), 17u);
    EXPECT_EQ(argument.GetDir(), 0);
    expectIds(argument, kNone);
}

// ---- the spans above and below ----

TEST(SpanArgument, FindsLowestAndHighestInflowAndTheSpanBelow)
{
    Network net(kJunction);
    net.Set(L"lowercentinv", {{"a-x", L"2.5"}, {"b-x", L"1.25"}, {"c-x", L"3"}});
    EXPECT_EQ(neighboursOf(net, "x-y"), "b-x / c-x / b-x / y-z");
}

TEST(SpanArgument, OnOneHeightTheFirstInflowIsBothLowestAndHighest)
{
    Network net(kJunction);
    net.Set(L"lowercentinv", {{"a-x", L"2"}, {"b-x", L"2"}, {"c-x", L"2"}});
    EXPECT_EQ(neighboursOf(net, "x-y"), "a-x / a-x / a-x / y-z");
}

TEST(SpanArgument, OnEqualGreatestHeightsTheFirstOfThemIsHighest)
{
    Network net(kJunction);
    net.Set(L"lowercentinv", {{"a-x", L"1"}, {"b-x", L"2"}, {"c-x", L"2"}});
    EXPECT_EQ(neighboursOf(net, "x-y"), "a-x / b-x / a-x / y-z");
}

TEST(SpanArgument, LevelThatIsNotSetIsZero)
{
    Network net(kJunction);
    net.Set(L"lowercentinv", {{"a-x", L"-1"}, {"c-x", L"1"}});
    EXPECT_EQ(neighboursOf(net, "x-y"), "a-x / c-x / a-x / y-z");
    net.Set(L"lowercentinv", {{"a-x", L"1"}});
    EXPECT_EQ(neighboursOf(net, "x-y"), "b-x / a-x / b-x / y-z");
}

TEST(SpanArgument, DrawnInflowThatIsSetStays)
{
    Network net(kJunction);
    KelMacroArgSpan argument = argumentOf(net, "x-y");
    argument.SetUpperDrwSpanId(static_cast<unsigned long>(net["c-x"]));
    argument.SetUpperAndLowerSpanId();
    EXPECT_EQ(neighbours(net, argument), "a-x / a-x / c-x / y-z");
}

TEST(SpanArgument, InflowsOfOtherWebsDoNotCount)
{
    Network net("W: M = a-x-y; V: R = b-x");
    net.Set(L"lowercentinv", {{"a-x", L"2"}, {"b-x", L"1"}});
    EXPECT_EQ(neighboursOf(net, "x-y"), "a-x / a-x / a-x / 0");
}

TEST(SpanArgument, WithoutAnInflowTheSpanBelowIsNotLookedFor)
{
    const Network net("W: M = a-x-y");
    EXPECT_EQ(neighboursOf(net, "a-x"), "0 / 0 / 0 / 0");
}

TEST(SpanArgument, LastSpanHasInflowsAlone)
{
    const Network net("W: M = a-x-y");
    EXPECT_EQ(neighboursOf(net, "x-y"), "a-x / a-x / a-x / 0");
}

TEST(SpanArgument, NothingIsFilledWithoutIdManagerSpanOrWeb)
{
    Network net("W: M = a-x-y");
    KelMacroArgSpan argument = argumentOf(net, "x-y");
    argument.SetObjMan(nullptr);
    argument.SetUpperAndLowerSpanId();
    expectIds(argument, kNone);

    argument.SetObjMan(&net.manager);
    for (const long id : {0l, net["M"], 987654l}) {
        argument.SetPipeObjectId(static_cast<unsigned long>(id));
        argument.SetUpperAndLowerSpanId();
        expectIds(argument, kNone);
    }

    net.Span("x-y").SetRouteId(0);
    argument.SetPipeObjectId(static_cast<unsigned long>(net["x-y"]));
    argument.SetUpperAndLowerSpanId();
    expectIds(argument, kNone);
}
