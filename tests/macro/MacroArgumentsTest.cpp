// Arguments: what they hold, what their copies leave out, and the objects that they find.
// The neighbours of a span are in SpanArgumentTest.cpp.
#include "macro/MacroArguments.h"

#include "macro/LabelledObjects.h"

#include <memory>

#include <gtest/gtest.h>

namespace {

using macros::LabelledNetwork;
using Layouts = CTypedPtrList<CObList, CProfilelayout*>;

// What the arguments of a test refer to.
class MacroArguments : public testing::Test {
protected:
    void Fill(KelMacroArgPipeObject& argument, objectdata::OBJECTTYPE type) const
    {
        argument.SetObjMan(&m_manager);
        argument.SetDrawfig(&m_drawfig);
        argument.SetCalcfig(&m_calcfig);
        argument.SetPipeObjectType(type);
        argument.SetPipeObjectId(17);
        argument.SetInifilePath(L"label.ini");
    }
    void ExpectCommonFields(const KelMacroArgPipeObject& argument, objectdata::OBJECTTYPE type, unsigned long id) const
    {
        EXPECT_EQ(argument.GetObjMan(), &m_manager);
        EXPECT_EQ(argument.GetDrawfig(), &m_drawfig);
        EXPECT_EQ(argument.GetPipeObjectType(), type);
        EXPECT_EQ(argument.GetPipeObjectId(), id);
        EXPECT_EQ(argument.GetInifilePath(), L"label.ini");
    }

    CObjectManager m_manager;
    CDrawfig m_drawfig{1, 0};
    CCalcfig m_calcfig{2, 0};
};

template <class Argument> Argument made(const KelMacroArgPipeObject* source)
{
    return Argument(source);
}

std::vector<const CProfilelayout*> members(const Layouts& layouts)
{
    return {layouts.begin(), layouts.end()};
}

} // namespace

// ---- any object ----

TEST_F(MacroArguments, NewArgumentIsAboutNothing)
{
    const KelMacroArgPipeObject argument;
    EXPECT_EQ(argument.GetObjMan(), nullptr);
    EXPECT_EQ(argument.GetDrawfig(), nullptr);
    EXPECT_EQ(argument.GetCalcfig(), nullptr);
    EXPECT_EQ(argument.GetPipeObjectType(), -1);
    EXPECT_EQ(argument.GetPipeObjectId(), 0u);
    EXPECT_EQ(argument.GetInifilePath(), L"");
    EXPECT_TRUE(argument.IsKindOf(RUNTIME_CLASS(KelArgHeader)));
}

TEST_F(MacroArguments, KeepWhatIsSet)
{
    KelMacroArgPipeObject argument;
    Fill(argument, objectdata::Route);
    ExpectCommonFields(argument, objectdata::Route, 17);
    EXPECT_EQ(argument.GetCalcfig(), &m_calcfig);
    argument.SetPipeObjectId(0x1'0000'0002UL);
    EXPECT_EQ(argument.GetPipeObjectId(), 2u);
}

TEST_F(MacroArguments, CopiesHaveNoCalculationRoundingRecord)
{
    KelMacroArgPipeObject argument;
    Fill(argument, objectdata::Route);

    const KelMacroArgPipeObject constructed(argument);
    ExpectCommonFields(constructed, objectdata::Route, 17);
    EXPECT_EQ(constructed.GetCalcfig(), nullptr);

    KelMacroArgPipeObject copied;
    copied.Copy(&argument);
    ExpectCommonFields(copied, objectdata::Route, 17);
    EXPECT_EQ(copied.GetCalcfig(), nullptr);

    const std::unique_ptr<KelMacroArgPipeObject> clone(argument.Clone());
    ExpectCommonFields(*clone, objectdata::Route, 17);
    EXPECT_EQ(clone->GetCalcfig(), nullptr);
}

TEST_F(MacroArguments, CopyLeavesTheTargetsCalculationRoundingRecord)
{
    const CCalcfig other;
    KelMacroArgPipeObject source;
    source.SetCalcfig(&other);
    KelMacroArgPipeObject target;
    target.SetCalcfig(&m_calcfig);
    target.Copy(&source);
    EXPECT_EQ(target.GetCalcfig(), &m_calcfig);
}

TEST_F(MacroArguments, CopyOfNothingOrOfAnotherRecordChangesNothing)
{
    KelMacroArgPipeObject argument;
    Fill(argument, objectdata::Route);
    argument.Copy(nullptr);
    const KelArgHeader header;
    argument.Copy(&header);
    ExpectCommonFields(argument, objectdata::Route, 17);
}

TEST_F(MacroArguments, FindTheLiveObjectOfTheirFamily)
{
    LabelledNetwork net;
    std::vector<objectdata::OBJECTTYPE> types(std::begin(macros::kLabelledTypes), std::end(macros::kLabelledTypes));
    types.insert(types.end(), {objectdata::Section, objectdata::Drawformdat, objectdata::Profilelayout});
    for (const objectdata::OBJECTTYPE type : types) {
        KelMacroArgPipeObject argument;
        argument.SetPipeObjectType(type);
        argument.SetPipeObjectId(net.IdOf(type));
        CPipeObject* const live = net.manager.TableOf(type).Find(static_cast<long>(argument.GetPipeObjectId()));
        ASSERT_NE(live, nullptr) << type;
        EXPECT_EQ(argument.GetPipeObject(&net.manager), live) << type;
        argument.SetPipeObjectId(macros::kUnknownId);
        EXPECT_EQ(argument.GetPipeObject(&net.manager), nullptr) << type;
    }
}

TEST_F(MacroArguments, ProjectArgumentFindsTheFirstProjectWhateverTheId)
{
    LabelledNetwork net;
    KelMacroArgPipeObject argument;
    argument.SetPipeObjectType(objectdata::Project);
    argument.SetPipeObjectId(macros::kUnknownId);
    EXPECT_EQ(argument.GetPipeObject(&net.manager), nullptr) << "there is no project yet";
    const unsigned long first = net.IdOf(objectdata::Project);
    const unsigned long second = net.IdOf(objectdata::Project);
    for (const unsigned long id : {first, second, macros::kUnknownId}) {
        argument.SetPipeObjectId(id);
        ASSERT_NE(argument.GetPipeObject(&net.manager), nullptr) << id;
        EXPECT_EQ(argument.GetPipeObject(&net.manager)->GetObjectId(), first) << id;
    }
    argument.SetPipeObjectId(0);
    EXPECT_EQ(argument.GetPipeObject(&net.manager), nullptr);
}

TEST_F(MacroArguments, WithoutFamilyIdOrManagerThereIsNoObject)
{
    LabelledNetwork net;
    KelMacroArgPipeObject argument;
    argument.SetPipeObjectId(net.IdOf(objectdata::ManHole));
    for (const int type : {-1, -2, static_cast<int>(objectdata::ManHole), 12345}) {
        argument.SetPipeObjectType(static_cast<objectdata::OBJECTTYPE>(type));
        EXPECT_EQ(argument.GetPipeObject(&net.manager), nullptr) << type;
    }
    argument.SetPipeObjectType(objectdata::Web);
    argument.SetPipeObjectId(0);
    EXPECT_EQ(argument.GetPipeObject(&net.manager), nullptr);
    argument.SetPipeObjectId(net.IdOf(objectdata::Web));
    EXPECT_EQ(argument.GetPipeObject(nullptr), nullptr);
}

// ---- the family arguments alike ----

template <class Argument, int Type> struct FamilyCase {
    using type = Argument;
    static constexpr auto objectType = static_cast<objectdata::OBJECTTYPE>(Type);
};

template <class Case> class FamilyArgument : public MacroArguments {
};
using FamilyCases = testing::Types<FamilyCase<KelMacroArgSpan, 2>, FamilyCase<KelMacroArgNode, 1>,
                                   FamilyCase<KelMacroArgSection, 6>, FamilyCase<KelMacroArgProfilelayout, 51>>;
TYPED_TEST_SUITE(FamilyArgument, FamilyCases);

TYPED_TEST(FamilyArgument, NewOneHasTheFamilysType)
{
    const typename TypeParam::type argument;
    EXPECT_EQ(argument.GetPipeObjectType(), TypeParam::objectType);
    EXPECT_EQ(argument.GetPipeObjectId(), 0u);
    const auto fromNothing = made<typename TypeParam::type>(nullptr);
    EXPECT_EQ(fromNothing.GetPipeObjectType(), TypeParam::objectType);
    EXPECT_EQ(fromNothing.GetObjMan(), nullptr);
}

TYPED_TEST(FamilyArgument, FromAnArgumentOfTheFamilyItTakesTheId)
{
    KelMacroArgPipeObject source;
    this->Fill(source, TypeParam::objectType);
    const typename TypeParam::type argument(&source);
    this->ExpectCommonFields(argument, TypeParam::objectType, 17);
}

TYPED_TEST(FamilyArgument, FromAnArgumentOfAnotherFamilyItLosesTheIdAlone)
{
    KelMacroArgPipeObject source;
    this->Fill(source, objectdata::Web);
    const typename TypeParam::type argument(&source);
    this->ExpectCommonFields(argument, TypeParam::objectType, 0);
}

TYPED_TEST(FamilyArgument, FromAnArgumentItTakesBothRoundingRecords)
{
    for (const auto type : {TypeParam::objectType, objectdata::Web}) {
        KelMacroArgPipeObject source;
        this->Fill(source, type);
        const typename TypeParam::type argument(&source);
        EXPECT_EQ(argument.GetDrawfig(), &this->m_drawfig);
        EXPECT_EQ(argument.GetCalcfig(), &this->m_calcfig);
    }
}

TYPED_TEST(FamilyArgument, CopiesHaveTheCommonFieldsWithoutTheCalculationRoundingRecord)
{
    typename TypeParam::type argument;
    this->Fill(argument, TypeParam::objectType);
    const typename TypeParam::type constructed(argument);
    typename TypeParam::type copied;
    copied.Copy(&argument);
    for (const KelMacroArgPipeObject* copy : {&constructed, const_cast<const typename TypeParam::type*>(&copied)}) {
        this->ExpectCommonFields(*copy, TypeParam::objectType, 17);
        EXPECT_EQ(copy->GetCalcfig(), nullptr);
    }
    EXPECT_EQ(argument.GetCalcfig(), &this->m_calcfig);
}

TYPED_TEST(FamilyArgument, CloneIsOfTheDynamicClass)
{
    typename TypeParam::type argument;
    this->Fill(argument, TypeParam::objectType);
    const KelMacroArgPipeObject& base = argument;
    const std::unique_ptr<KelMacroArgPipeObject> clone(base.Clone());
    EXPECT_EQ(clone->GetRuntimeClass(), TypeParam::type::GetThisClass());
    EXPECT_TRUE(clone->IsKindOf(RUNTIME_CLASS(KelMacroArgPipeObject)));
    this->ExpectCommonFields(*clone, TypeParam::objectType, 17);
    EXPECT_EQ(clone->GetCalcfig(), nullptr);
}

TYPED_TEST(FamilyArgument, CopyOfNothingOrOfAnotherRecordChangesNothing)
{
    typename TypeParam::type argument;
    this->Fill(argument, TypeParam::objectType);
    argument.Copy(nullptr);
    const KelArgHeader header;
    argument.Copy(&header);
    this->ExpectCommonFields(argument, TypeParam::objectType, 17);
}

TYPED_TEST(FamilyArgument, CopyOfAPlainArgumentTakesTheCommonFields)
{
    KelMacroArgPipeObject source;
    this->Fill(source, TypeParam::objectType);
    typename TypeParam::type argument;
    argument.Copy(&source);
    this->ExpectCommonFields(argument, TypeParam::objectType, 17);
}

TYPED_TEST(FamilyArgument, SearchesItsOwnTableWhateverItsType)
{
    LabelledNetwork net;
    typename TypeParam::type argument;
    argument.SetPipeObjectId(net.IdOf(TypeParam::objectType));
    argument.SetPipeObjectType(objectdata::Web);
    const KelMacroArgPipeObject& base = argument;
    const auto& table = net.manager.TableOf(TypeParam::objectType);
    CPipeObject* const live = table.Find(static_cast<long>(argument.GetPipeObjectId()));
    ASSERT_NE(live, nullptr);
    EXPECT_EQ(base.GetPipeObject(&net.manager), live);
    EXPECT_EQ(base.GetPipeObject(nullptr), nullptr);
    for (const unsigned long id : {0ul, net.IdOf(objectdata::Web)}) {
        argument.SetPipeObjectId(id);
        EXPECT_EQ(base.GetPipeObject(&net.manager), nullptr);
    }
}

// ---- node ----

TEST_F(MacroArguments, NodeCopiesHaveItsOwnFields)
{
    KelMacroArgNode argument;
    EXPECT_EQ(argument.GetLowerSpanId(), 0u);
    EXPECT_FALSE(argument.IsFlowend());
    argument.SetLowerSpanId(5);
    argument.SetFlowendFlag(true);
    KelMacroArgNode copied;
    copied.Copy(&argument);
    const std::unique_ptr<KelMacroArgNode> clone(argument.Clone());
    for (const KelMacroArgNode* copy : {&copied, clone.get()}) {
        EXPECT_EQ(copy->GetLowerSpanId(), 5u);
        EXPECT_TRUE(copy->IsFlowend());
    }
}

TEST_F(MacroArguments, NodeMadeFromAnotherStartsWithItsOwnFieldsAtZero)
{
    KelMacroArgNode source;
    source.SetLowerSpanId(5);
    source.SetFlowendFlag(true);
    const KelMacroArgNode argument(static_cast<const KelMacroArgPipeObject*>(&source));
    EXPECT_EQ(argument.GetLowerSpanId(), 0u);
    EXPECT_FALSE(argument.IsFlowend());
}

// ---- section ----

TEST_F(MacroArguments, SectionCopiesHaveItsOwnFields)
{
    CEgg egg(31);
    KelMacroArgSection argument;
    argument.SetSpanId(5);
    argument.SetSecname(L"E 600");
    argument.SetPipeSection(&egg);
    argument.SetPipeSectionType(objectdata::Egg);
    KelMacroArgSection copied;
    copied.Copy(&argument);
    const std::unique_ptr<KelMacroArgSection> clone(argument.Clone());
    for (const KelMacroArgSection* copy : {&copied, clone.get()}) {
        EXPECT_EQ(copy->GetSpanId(), 5u);
        EXPECT_EQ(copy->GetSecname(), L"E 600");
        EXPECT_EQ(copy->GetPipeSection(), &egg);
        EXPECT_EQ(copy->GetPipeSectionType(), 11);
        EXPECT_EQ(copy->GetKandanmenId(), 31u);
    }
}

TEST_F(MacroArguments, SectionMadeFromAnotherStartsWithItsOwnFieldsAtZero)
{
    CPipe pipe(31);
    KelMacroArgSection source;
    source.SetSpanId(5);
    source.SetSecname(L"HP 200");
    source.SetPipeSection(&pipe);
    source.SetPipeSectionType(objectdata::Pipe);
    const KelMacroArgSection argument(static_cast<const KelMacroArgPipeObject*>(&source));
    EXPECT_EQ(argument.GetSpanId(), 0u);
    EXPECT_EQ(argument.GetSecname(), L"");
    EXPECT_EQ(argument.GetPipeSection(), nullptr);
    EXPECT_EQ(argument.GetPipeSectionType(), -1);
}

TEST_F(MacroArguments, SectionGivesTheDimensionsThatThePipeSectionHasLoaded)
{
    CPipe pipe(31);
    pipe.WriteSubAttribute(L"pename", L"HP 200");
    pipe.LoadSpec(false);
    KelMacroArgSection argument;
    argument.SetPipeSection(&pipe);
    EXPECT_EQ(&argument.GetSpec(), &pipe.GetSpec());
    EXPECT_EQ(argument.GetSpec().kind, L"pipe");
}

TEST_F(MacroArguments, SectionWithoutAPipeSectionHasNoIdAndUnsetDimensions)
{
    const KelMacroArgSection argument;
    EXPECT_EQ(argument.GetKandanmenId(), 0u);
    EXPECT_EQ(argument.GetSpec().kind, L"");
    EXPECT_EQ(argument.GetSpec().width, CPipeSection::tagSPEC().width);
}

// ---- profile layout ----

TEST_F(MacroArguments, LayoutListTakesTheMembersInOrderWithoutNulls)
{
    CProfilelayout first(1), second(2), third(3);
    Layouts layouts;
    for (CProfilelayout* layout : {&second, static_cast<CProfilelayout*>(nullptr), &first, &second})
        layouts.AddTail(layout);
    KelMacroArgProfilelayout argument;
    EXPECT_TRUE(argument.GetDrawlayoutList().IsEmpty());
    argument.SetDrawlayoutList(layouts);
    EXPECT_EQ(members(argument.GetDrawlayoutList()), (std::vector<const CProfilelayout*>{&second, &first, &second}));

    Layouts others;
    others.AddTail(&third);
    argument.SetDrawlayoutList(others);
    EXPECT_EQ(members(argument.GetDrawlayoutList()), (std::vector<const CProfilelayout*>{&third}));
    argument.SetDrawlayoutList(Layouts());
    EXPECT_TRUE(argument.GetDrawlayoutList().IsEmpty());
}

TEST_F(MacroArguments, LayoutListSetToItselfStays)
{
    CProfilelayout layout(1);
    Layouts layouts;
    layouts.AddTail(&layout);
    KelMacroArgProfilelayout argument;
    argument.SetDrawlayoutList(layouts);
    argument.SetDrawlayoutList(argument.GetDrawlayoutList());
    argument.Copy(&argument);
    EXPECT_EQ(members(argument.GetDrawlayoutList()), (std::vector<const CProfilelayout*>{&layout}));
}

TEST_F(MacroArguments, LayoutCopiesHaveAListOfTheirOwn)
{
    CProfilelayout first(1), second(2);
    Layouts layouts;
    layouts.AddTail(&first);
    layouts.AddTail(&second);
    KelMacroArgProfilelayout argument;
    argument.SetDrawlayoutList(layouts);
    KelMacroArgProfilelayout copied;
    copied.Copy(&argument);
    const std::unique_ptr<KelMacroArgProfilelayout> clone(argument.Clone());
    const KelMacroArgProfilelayout fromBase(static_cast<const KelMacroArgPipeObject*>(&argument));
    argument.SetDrawlayoutList(Layouts());
    const std::vector<const CProfilelayout*> both = {&first, &second};
    EXPECT_EQ(members(copied.GetDrawlayoutList()), both);
    EXPECT_EQ(members(clone->GetDrawlayoutList()), both);
    EXPECT_TRUE(fromBase.GetDrawlayoutList().IsEmpty());
}
