// The record classes: run-time class, constructors with their links, accessors, copies.

#include "common/Id32.h"
#include "objects/Records.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <type_traits>

namespace {

using RecordPtr = std::unique_ptr<CPipeObject>;

template <class Record> RecordPtr MakeWithLinks()
{
    if constexpr (std::is_constructible_v<Record, unsigned long, unsigned long, unsigned long, unsigned long>)
        return std::make_unique<Record>(7ul, 101ul, 102ul, 103ul);
    else if constexpr (std::is_constructible_v<Record, unsigned long, unsigned long, unsigned long>)
        return std::make_unique<Record>(7ul, 101ul, 102ul);
    else if constexpr (std::is_same_v<Record, CIcpInq>)
        return std::make_unique<Record>(7l, 101l);
    else if constexpr (std::is_base_of_v<CDisposalPipeObject, Record>)
        return std::make_unique<Record>(7ul, 101);
    else if constexpr (std::is_constructible_v<Record, unsigned long, unsigned long>)
        return std::make_unique<Record>(7ul, 101ul);
    else
        return std::make_unique<Record>(7ul);
}

// What a test needs of each class, so that the tests themselves are compiled once and not once a class.
struct RecordClass {
    CRuntimeClass* runTimeClass;
    bool isOwned;
    RecordPtr (*make)();
    RecordPtr (*makeWithLinks)();
    RecordPtr (*copy)(const CPipeObject& original);
    void (*assign)(CPipeObject& target, const CPipeObject& original);
};

template <class Record> constexpr RecordClass ClassOf()
{
    return {Record::GetThisClass(),
            std::is_base_of_v<COwnedObject, Record>,
            []() -> RecordPtr { return std::make_unique<Record>(); },
            &MakeWithLinks<Record>,
            [](const CPipeObject& original) -> RecordPtr {
                return std::make_unique<Record>(static_cast<const Record&>(original));
            },
            [](CPipeObject& target, const CPipeObject& original) {
                static_cast<Record&>(target) = static_cast<const Record&>(original);
            }};
}

const RecordClass kRecordClasses[] = {
#define OBM_RECORD(T, ...) ClassOf<C##T>(),
#include "objects/ObjectTypes.def"
};

std::string Narrow(std::wstring_view text)
{
    return std::string(text.begin(), text.end());
}

const obmgr::RecordInfo& RowOf(const CPipeObject& object)
{
    return obmgr::RecordOf(object.GetObjectType());
}

// The test's body for every class, with the class's name in a failure.
template <class Body> void ForEveryRecord(Body&& body)
{
    for (const RecordClass& recordClass : kRecordClasses) {
        SCOPED_TRACE(recordClass.runTimeClass->m_lpszClassName);
        body(recordClass);
    }
}

TEST(EveryRecord, IsMadeByItsRunTimeClass)
{
    ForEveryRecord([](const RecordClass& recordClass) {
        const std::unique_ptr<CObject> made(recordClass.runTimeClass->CreateObject());
        const auto* const record = dynamic_cast<CPipeObject*>(made.get());
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(record->GetRuntimeClass(), recordClass.runTimeClass);
        EXPECT_EQ(record->GetRuntimeClass()->m_lpszClassName, Narrow(RowOf(*record).className));
        EXPECT_TRUE(record->IsKindOf(CPipeObject::GetThisClass()));
    });
}

TEST(EveryRecord, StartsEmptyWithoutLinks)
{
    ForEveryRecord([](const RecordClass& recordClass) {
        const RecordPtr record = recordClass.make();
        EXPECT_EQ(record->GetObjectId(), 0u);
        EXPECT_EQ(record->GetStatus(), 0);
        EXPECT_EQ(static_cast<int>(record->Links().size()), RowOf(*record).links.count);
        for (const std::int32_t link : record->Links())
            EXPECT_EQ(link, 0);
        EXPECT_TRUE(record->GetAttributes().IsEmpty());
    });
}

TEST(EveryRecord, KnowsItsClassesByName)
{
    ForEveryRecord([](const RecordClass& recordClass) {
        const RecordPtr record = recordClass.make();
        EXPECT_TRUE(record->IsObjectClass(std::wstring(RowOf(*record).className).c_str()));
        EXPECT_TRUE(record->IsObjectClass(L"CPipeObject"));
        EXPECT_TRUE(record->IsObjectClass(L"CObject"));
        int kinds = 0;
        for (const obmgr::RecordInfo& row : obmgr::Records())
            kinds += record->IsObjectClass(std::wstring(row.className).c_str());
        EXPECT_EQ(kinds, 1) << "a record is of one record class";
        EXPECT_FALSE(record->IsObjectClass(L""));
        EXPECT_FALSE(record->IsObjectClass(nullptr));
        EXPECT_FALSE(record->IsObjectClass(L"CSpa"));
        EXPECT_FALSE(record->IsObjectClass(L"CSpanX"));
    });
}

TEST(EveryRecord, TakesTheLinksOfItsRowInOrder)
{
    ForEveryRecord([](const RecordClass& recordClass) {
        const RecordPtr record = recordClass.makeWithLinks();
        EXPECT_EQ(record->GetObjectId(), 7u);
        ASSERT_EQ(static_cast<int>(record->Links().size()), RowOf(*record).links.count);
        for (std::size_t i = 0; i < record->Links().size(); ++i)
            EXPECT_EQ(record->Links()[i], static_cast<std::int32_t>(101 + i));
    });
}

TEST(EveryRecord, CopiesAndAssignsEverything)
{
    ForEveryRecord([](const RecordClass& recordClass) {
        const RecordPtr original = recordClass.make();
        original->SetObjectId(9);
        original->SetStatus(3);
        original->WriteSubAttribute(L"order", L"4");
        for (int i = 0; i < static_cast<int>(original->Links().size()); ++i)
            original->SetLink(i, 50 + i);

        const RecordPtr copy = recordClass.copy(*original);
        const RecordPtr assigned = recordClass.make();
        assigned->WriteSubAttribute(L"gone", L"x");
        recordClass.assign(*assigned, *original);
        original->WriteSubAttribute(L"order", L"5");
        original->SetStatus(0);

        for (const CPipeObject* other : {copy.get(), assigned.get()}) {
            EXPECT_EQ(other->GetObjectId(), 9u);
            EXPECT_EQ(other->GetStatus(), 3);
            EXPECT_EQ(other->GetSubAttribute(L"order"), L"4");
            EXPECT_FALSE(other->IsSubAttribute(L"gone"));
            for (std::size_t i = 0; i < other->Links().size(); ++i)
                EXPECT_EQ(other->Links()[i], static_cast<std::int32_t>(50 + i));
        }
    });
}

TEST(EveryRecord, WithAnOwnerTellsIt)
{
    ForEveryRecord([](const RecordClass& recordClass) {
        const RecordPtr record = recordClass.make();
        const obmgr::RecordInfo& row = RowOf(*record);
        EXPECT_EQ(recordClass.isOwned, row.owner != objectdata::NoOwner && row.links.count == 1);
        auto* const owned = dynamic_cast<COwnedObject*>(record.get());
        ASSERT_EQ(owned != nullptr, recordClass.isOwned);
        if (!owned) return;
        owned->SetOwnerId(12);
        EXPECT_EQ(owned->GetOwnerId(), 12u);
        EXPECT_EQ(owned->Links()[0], 12);
        owned->SetOwnerId(0xFFFFFFFFul);
        EXPECT_EQ(owned->GetOwnerId(), 0xFFFFFFFFul);
        EXPECT_EQ(owned->Links()[0], -1);
    });
}

// The owner under its own name.
template <class Owned>
void ExpectOwnerName(void (Owned::*set)(unsigned long), unsigned long (Owned::*get)() const, const char* className)
{
    Owned record(1);
    (record.*set)(77);
    EXPECT_EQ((record.*get)(), 77u) << className;
    EXPECT_EQ(record.GetOwnerId(), 77u) << className;
}

TEST(RecordClasses, AnOwnerHasItsOwnName)
{
    ExpectOwnerName(&CAreaSet::SetSpanId, &CAreaSet::GetSpanId, "CAreaSet");
    ExpectOwnerName(&CAreatset::SetSpanId, &CAreatset::GetSpanId, "CAreatset");
    ExpectOwnerName(&CAreaInq::SetRouteId, &CAreaInq::GetRouteId, "CAreaInq");
    ExpectOwnerName(&CAreaOutq::SetRouteId, &CAreaOutq::GetRouteId, "CAreaOutq");
    ExpectOwnerName(&CFixInq::SetRouteId, &CFixInq::GetRouteId, "CFixInq");
    ExpectOwnerName(&CMountInq::SetRouteId, &CMountInq::GetRouteId, "CMountInq");
    ExpectOwnerName(&COutq::SetRouteId, &COutq::GetRouteId, "COutq");
    ExpectOwnerName(&CGlChange::SetRouteId, &CGlChange::GetRouteId, "CGlChange");
    ExpectOwnerName(&CLateral::SetRouteId, &CLateral::GetRouteId, "CLateral");
    ExpectOwnerName(&CVjoint::SetRouteId, &CVjoint::GetRouteId, "CVjoint");
    ExpectOwnerName(&CDivideSpanRec::SetWebId, &CDivideSpanRec::GetWebId, "CDivideSpanRec");
    ExpectOwnerName(&CSubSecRec::SetWebId, &CSubSecRec::GetWebId, "CSubSecRec");
    ExpectOwnerName(&CCalcfig::SetWebId, &CCalcfig::GetWebId, "CCalcfig");
    ExpectOwnerName(&CDrawfig::SetWebId, &CDrawfig::GetWebId, "CDrawfig");
    ExpectOwnerName(&CSheetfig::SetWebId, &CSheetfig::GetWebId, "CSheetfig");
    ExpectOwnerName(&CIcpInq::SetNodeID, &CIcpInq::GetNodeID, "CIcpInq");
    ExpectOwnerName(&CIcpInq::SetNodeId, &CIcpInq::GetNodeId, "CIcpInq");
    ExpectOwnerName(&CNodeunit::SetNodeID, &CNodeunit::GetNodeID, "CNodeunit");
    ExpectOwnerName(&CInareaset::SetAreaInqId, &CInareaset::GetAreaInqId, "CInareaset");
    ExpectOwnerName(&COutareaset::SetAreaOutqId, &COutareaset::GetAreaOutqId, "COutareaset");
    ExpectOwnerName(&CExecdivide::SetExecId, &CExecdivide::GetExecId, "CExecdivide");
    ExpectOwnerName(&CLcarry::SetExecId, &CLcarry::GetExecId, "CLcarry");
    ExpectOwnerName(&CProfilearea::SetProfilearangId, &CProfilearea::GetProfilearangId, "CProfilearea");
    ExpectOwnerName(&CProfilelayout::SetProfilearangId, &CProfilelayout::GetProfilearangId, "CProfilelayout");
    ExpectOwnerName(&CSheetarea::SetSheetarangId, &CSheetarea::GetSheetarangId, "CSheetarea");
}

TEST(RecordClasses, ASpanHasTwoNodesAndARoute)
{
    CSpan span(1, 2, 3, 4);
    EXPECT_EQ(span.GetUpperNodeId(), 2u);
    EXPECT_EQ(span.GetLowerNodeId(), 3u);
    EXPECT_EQ(span.GetRouteId(), 4u);
    span.SetUpperNodeId(5);
    span.SetLowerNodeId(6);
    span.SetRouteId(7);
    EXPECT_THAT(span.Links(), testing::ElementsAre(5, 6, 7));
}

TEST(RecordClasses, ARouteHasAWebAndTheRouteItFlowsInto)
{
    CRoute route(1, 2, 3);
    EXPECT_EQ(route.GetWebId(), 2u);
    EXPECT_EQ(route.GetConnectId(), 3u);
    route.SetWebId(4);
    route.SetConnectId(0);
    EXPECT_THAT(route.Links(), testing::ElementsAre(4, 0));
}

TEST(RecordClasses, ACrossingPointHasTwoObjects)
{
    CIntPos point(1, 2, 3);
    EXPECT_EQ(point.GetObj1Id(), 2u);
    EXPECT_EQ(point.GetObj2Id(), 3u);
    point.SetObj1Id(8);
    point.SetObj2Id(9);
    EXPECT_THAT(point.Links(), testing::ElementsAre(8, 9));
}

TEST(RecordClasses, InterceptorInflowIsBuiltWithSignedIds)
{
    const CIcpInq inflow(-3L, -4L);
    EXPECT_EQ(inflow.GetId32(), -3);
    EXPECT_EQ(inflow.Links()[0], -4);
}

TEST(RecordClasses, SixClassesAreBuiltWithADisposalType)
{
    EXPECT_EQ(CWeb(1, 2).GetDisposalType(), 2);
    EXPECT_EQ(CSection(1, 3).GetDisposalType(), 3);
    EXPECT_EQ(CUsedarea(1, 4).GetDisposalType(), 4);
    EXPECT_EQ(CNoarea(1, 5).GetDisposalType(), 5);
    EXPECT_EQ(CDivide(1, -1).GetDisposalType(), -1);
    EXPECT_EQ(CBorder(1, 0).GetDisposalType(), 0);
    EXPECT_TRUE(CWeb(1).IsObjectClass(L"CDisposalPipeObject"));
    EXPECT_FALSE(CPipe(1).IsObjectClass(L"CDisposalPipeObject"));
}

TEST(RecordClasses, IdsBehaveAsThirtyTwoBitNumbers)
{
    CNode node(0x1'0000'0005ul);
    EXPECT_EQ(node.GetObjectId(), 5u);
    node.SetObjectId(static_cast<unsigned long>(-1L));
    EXPECT_EQ(node.GetObjectId(), 0xFFFFFFFFul);
    EXPECT_EQ(node.GetId32(), -1);
}

TEST(RecordClasses, TheEmpiricalMethodKeepsItsArea)
{
    CQrexperiment method(1);
    EXPECT_EQ(method.GetMultiArea(), 0.0);
    method.SetMultiArea(12.5);
    const CQrexperiment copy(method);
    CQrexperiment assigned(2);
    assigned = method;
    EXPECT_EQ(copy.GetMultiArea(), 12.5);
    EXPECT_EQ(assigned.GetMultiArea(), 12.5);
}

TEST(RecordClasses, TheStatusIsStoredAsItIs)
{
    CGlChange change(1);
    change.SetStatus(~0);
    EXPECT_EQ(change.GetStatus(), -1);
    change.SetStatus(change.GetStatus() & ~2);
    EXPECT_EQ(change.GetStatus(), -3);
}

TEST(RecordClasses, PenOrderRisesWithThePenType)
{
    for (unsigned type = 2; type <= 92; ++type)
        EXPECT_GT(CDrawpendat::GetPentypeOrder(type), CDrawpendat::GetPentypeOrder(type - 1)) << type;
    EXPECT_GT(CDrawpendat::GetPentypeOrder(200), CDrawpendat::GetPentypeOrder(92));
    EXPECT_GT(CDrawpendat::GetPentypeOrder(1), 0);
}

TEST(RecordClasses, ANumberThatIsNoPenTypeHasNoOrder)
{
    for (const unsigned type : {0u, 93u, 199u, 201u, 0xFFFFFFFFu})
        EXPECT_EQ(CDrawpendat::GetPentypeOrder(type), 0) << type;
}

TEST(RecordClasses, APenNumberStandsForAPenType)
{
    const CPenNumberPenType pair(3, static_cast<CDrawpendat::TYPE>(17));
    EXPECT_EQ(pair.GetPenNumber(), 3);
    EXPECT_EQ(pair.GetPenType(), 17);
}

TEST(RecordClasses, AClassThatIsNoRecordIsNotMadeByName)
{
    EXPECT_EQ(CPipeObject::GetThisClass()->CreateObject(), nullptr);
    EXPECT_EQ(CDisposalPipeObject::GetThisClass()->CreateObject(), nullptr);
    EXPECT_EQ(CPipeSection::GetThisClass()->CreateObject(), nullptr);
}

} // namespace
