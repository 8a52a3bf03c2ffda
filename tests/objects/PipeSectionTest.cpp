// The dimensions of pipe sections.

#include "objects/Records.h"
#include "objects/UnsetNumber.h"

#include <gmock/gmock.h>

namespace {

using Spec = CPipeSection::tagSPEC;

constexpr double Spec::*kNumbers[] = {
    &Spec::nominalDiameter, &Spec::diameterOrTopWidth, &Spec::bottomWidth,     &Spec::thickness, &Spec::width,
    &Spec::height,          &Spec::topThickness,       &Spec::bottomThickness, &Spec::base,      &Spec::sideThickness};

TEST(PipeSection, BeforeLoadingNothingIsSet)
{
    const CPipe pipe(5);
    EXPECT_EQ(pipe.GetSpec().name, L"");
    EXPECT_EQ(pipe.GetSpec().sectionId, 0);
    for (const auto number : kNumbers)
        EXPECT_EQ(pipe.GetSpec().*number, obmgr::kUnsetNumber);
}

TEST(PipeSection, AKeyThatTheRecordLacksStaysUnset)
{
    CPipe pipe(5);
    ASSERT_TRUE(pipe.LoadSpec(false));
    for (const auto number : kNumbers)
        EXPECT_EQ(pipe.GetSpec().*number, obmgr::kUnsetNumber);
    EXPECT_EQ(pipe.GetSpec().sectionId, 5);
    EXPECT_EQ(pipe.GetSpec().kind, L"pipe");
    pipe.WriteSubAttribute(L"pethick", L"");
    ASSERT_TRUE(pipe.LoadSpec(false));
    EXPECT_EQ(pipe.GetSpec().thickness, 0.0) << "an empty value is no absent key";
}

TEST(PipeSection, APipeFillsItsNumbers)
{
    CPipe pipe(5);
    pipe.WriteSubAttribute(L"pename", L"VU200");
    pipe.WriteSubAttribute(L"pesectionkey", L"VU");
    pipe.WriteSubAttribute(L"pedia", L"0.2");
    pipe.WriteSubAttribute(L"pethick", L"0.0065");
    pipe.WriteSubAttribute(L"pebase", L"0.1");
    ASSERT_TRUE(pipe.LoadSpec(false));
    const Spec& spec = pipe.GetSpec();
    EXPECT_EQ(spec.name, L"VU200");
    EXPECT_EQ(spec.sectionKey, L"VU");
    EXPECT_EQ(spec.diameterOrTopWidth, 0.2);
    EXPECT_EQ(spec.thickness, 0.0065);
    EXPECT_EQ(spec.base, 0.1);
    EXPECT_EQ(spec.width, obmgr::kUnsetNumber);
    EXPECT_EQ(spec.height, obmgr::kUnsetNumber);
}

TEST(PipeSection, BoxesFillTheirNumbers)
{
    CObox open(1);
    CUbox ushape(2);
    CCbox closed(3);
    const wchar_t* const keys[] = {L"twidth", L"bwidth", L"height", L"tthick", L"bthick", L"base", L"width"};
    for (int i = 0; i < 7; ++i) {
        open.WriteSubAttributeInt(CString(L"ob") + keys[i], i + 1);
        ushape.WriteSubAttributeInt(CString(L"ub") + keys[i], i + 1);
        closed.WriteSubAttributeInt(CString(L"cb") + keys[i], i + 1);
    }
    for (CPipeSection* box : {static_cast<CPipeSection*>(&open), static_cast<CPipeSection*>(&ushape)}) {
        ASSERT_TRUE(box->LoadSpec(false));
        EXPECT_EQ(box->GetSpec().diameterOrTopWidth, 1.0);
        EXPECT_EQ(box->GetSpec().bottomWidth, 2.0);
        EXPECT_EQ(box->GetSpec().height, 3.0);
        EXPECT_EQ(box->GetSpec().topThickness, 4.0);
        EXPECT_EQ(box->GetSpec().bottomThickness, 5.0);
        EXPECT_EQ(box->GetSpec().base, 6.0);
        EXPECT_EQ(box->GetSpec().width, obmgr::kUnsetNumber);
    }
    ASSERT_TRUE(closed.LoadSpec(false));
    EXPECT_EQ(closed.GetSpec().width, 7.0);
    EXPECT_EQ(closed.GetSpec().height, 3.0);
    EXPECT_EQ(closed.GetSpec().bottomWidth, obmgr::kUnsetNumber);
    EXPECT_EQ(closed.GetSpec().kind, L"cbox");
}

TEST(PipeSection, LoadedDimensionsAreKeptWhenAskedTo)
{
    CEgg egg(4);
    egg.WriteSubAttribute(L"egdia", L"1");
    ASSERT_TRUE(egg.LoadSpec(true));
    egg.WriteSubAttribute(L"egdia", L"2");
    ASSERT_TRUE(egg.LoadSpec(true));
    EXPECT_EQ(egg.GetSpec().diameterOrTopWidth, 1.0);
    ASSERT_TRUE(egg.LoadSpec(false));
    EXPECT_EQ(egg.GetSpec().diameterOrTopWidth, 2.0);
}

TEST(PipeSection, AssigningForgetsTheDimensions)
{
    CPipe loaded(1);
    loaded.WriteSubAttribute(L"pedia", L"1");
    loaded.LoadSpec(false);
    CPipe other(2);
    other.WriteSubAttribute(L"pedia", L"2");
    loaded = other;
    ASSERT_TRUE(loaded.LoadSpec(true));
    EXPECT_EQ(loaded.GetSpec().diameterOrTopWidth, 2.0);
    EXPECT_EQ(loaded.GetSpec().sectionId, 2);
}

TEST(PipeSection, ASectionOfNoKindCannotBeLoaded)
{
    CPipeSection section(1);
    EXPECT_FALSE(section.LoadSpec(false));
    EXPECT_FALSE(section.LoadSpec(true));
}

} // namespace
