// The type table against a list written out by hand: numbers, class names and tags are what applications, files and
// label texts rely on.

#include "objects/ObjectTypes.h"
#include "framework/String.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace {

struct Row {
    const wchar_t* className;
    const char* tag;
};

// In type order.
constexpr Row kRows[] = {
    {L"CProject", "project"},
    {L"CNode", "node"},
    {L"CSpan", "span"},
    {L"CRoute", "route"},
    {L"CWeb", "web"},
    {L"CManHole", "manhole"},
    {L"CSection", "section"},
    {L"CPipe", "pipe"},
    {L"CObox", "obox"},
    {L"CCbox", "cbox"},
    {L"CUbox", "ubox"},
    {L"CEgg", "egg"},
    {L"CAreaInq", "areainq"},
    {L"CAreaOutq", "areaoutq"},
    {L"CAreaSet", "areaset"},
    {L"CDivideSpanRec", "divspanrec"},
    {L"CFixInq", "fixinq"},
    {L"CIcpInq", "icpinq"},
    {L"CGlChange", "glchange"},
    {L"CInters", "inters"},
    {L"CIntPos", "intpos"},
    {L"CLateral", "lateral"},
    {L"CMountInq", "mountinq"},
    {L"CSubSecRec", "subsecrec"},
    {L"CSectGroup", "secgroup"},
    {L"CSectGroupRec", "secgrouprec"},
    {L"CRaitoSet", "ratioset"},
    {L"CSvperarea", "svperarea"},
    {L"CSvperpopula", "svperpopula"},
    {L"CSvyokohama", "svyokohama"},
    {L"CQrrational", "qrrational"},
    {L"CQrexperiment", "qrexperiment"},
    {L"CQrmulti", "qrmulti"},
    {L"CQrmultidat", "qrmultidat"},
    {L"CQrline", "qrline"},
    {L"CQrriver", "qrriver"},
    {L"CAreasupve", "areasupve"},
    {L"CQrrivertime", "qrrivertime"},
    {L"CCombi", "combi"},
    {L"CRural", "rural"},
    {L"CAreatset", "areatset"},
    {L"COutq", "outq"},
    {L"CCalcfig", "calcfig"},
    {L"CDrawfig", "drawfig"},
    {L"CSheetfig", "sheetfig"},
    {L"CExecution", "execution"},
    {L"CRetain", "retain"},
    {L"CTimber", "timber"},
    {L"CFoundation", "foundation"},
    {L"CProfilearang", "profilearang"},
    {L"CProfilearea", "profilearea"},
    {L"CProfilelayout", "profilelayout"},
    {L"CDrawformdat", "drawformdat"},
    {L"CDrawpendat", "drawpendat"},
    {L"CDrawfontdat", "drawfontdat"},
    {L"CDrawbeltdat", "drawbeltdat"},
    {L"CDrawsecinfodat", "drawsecinfodat"},
    {L"CDrawindxfdat", "drawindxfdat"},
    {L"CDrawintextdat", "drawintextdat"},
    {L"CSheetarea", "sheetarea"},
    {L"CSheetarang", "sheetarang"},
    {L"CSpdxfin", "spdxfin"},
    {L"CDrawbelttx", "drawbelttx"},
    {L"CRetainauto", "retainauto"},
    {L"CTimberauto", "timberauto"},
    {L"CFounsecauto", "founsecauto"},
    {L"CFouncovauto", "founcovauto"},
    {L"CInareaset", "inareaset"},
    {L"COutareaset", "outareaset"},
    {L"CGeometry", "geometry"},
    {L"CPpMark", "ppmark"},
    {L"CAttBox", "attbox"},
    {L"CAttBoxvu", "attboxvu"},
    {L"CExec", "exec"},
    {L"CRoadcode", "roadcode"},
    {L"CAspcode", "aspcode"},
    {L"CExecdivide", "execdivide"},
    {L"CExecreport", "execreport"},
    {L"CLcarry", "lcarry"},
    {L"CManholecapcode", "manholecapcode"},
    {L"CNodeunit", "nodeunit"},
    {L"CLaunit", "launit"},
    {L"CAttuser", "attuser"},
    {L"CVjoint", "vjoint"},
    {L"CVacunit", "vacunit"},
    {L"CSecvalve", "secvalve"},
    {L"COhaul", "ohaul"},
    {L"CPubline", "publine"},
    {L"CGlline", "glline"},
    {L"CUsedarea", "usedarea"},
    {L"CNoarea", "noarea"},
    {L"CDivide", "divide"},
    {L"CBorder", "border"},
};

std::vector<int> Numbers(std::span<const objectdata::OBJECTTYPE> order)
{
    return {order.begin(), order.end()};
}

TEST(ObjectTypes, AreNinetyThree)
{
    EXPECT_EQ(obmgr::kTypeCount, 93);
    EXPECT_EQ(obmgr::Records().size(), 93u);
    EXPECT_EQ(std::size(kRows), 93u);
}

TEST(ObjectTypes, EveryRowHasItsNumberClassNameAndTag)
{
    for (std::size_t i = 0; i < std::size(kRows); ++i) {
        const obmgr::RecordInfo& row = obmgr::Records()[i];
        EXPECT_EQ(row.type, static_cast<int>(i)) << kRows[i].tag;
        EXPECT_EQ(row.tag, kRows[i].tag);
        EXPECT_EQ(std::wstring(row.className), kRows[i].className) << kRows[i].tag;
        EXPECT_EQ(&obmgr::RecordOf(row.type), &row);
    }
}

TEST(ObjectTypes, TheNumbersThatLabelTextsUseStayFixed)
{
    using namespace objectdata;
    EXPECT_EQ(Project, 0);
    EXPECT_EQ(Node, 1);
    EXPECT_EQ(Span, 2);
    EXPECT_EQ(Route, 3);
    EXPECT_EQ(Web, 4);
    EXPECT_EQ(Section, 6);
    EXPECT_EQ(Pipe, 7);
    EXPECT_EQ(Obox, 8);
    EXPECT_EQ(Cbox, 9);
    EXPECT_EQ(Ubox, 10);
    EXPECT_EQ(Egg, 11);
    EXPECT_EQ(AreaInq, 12);
    EXPECT_EQ(FixInq, 16);
    EXPECT_EQ(IntPos, 20);
    EXPECT_EQ(Lateral, 21);
    EXPECT_EQ(MountInq, 22);
    EXPECT_EQ(Profilelayout, 51);
    EXPECT_EQ(Drawformdat, 52);
}

TEST(ObjectTypes, ATagGivesItsType)
{
    for (std::size_t i = 0; i < std::size(kRows); ++i) {
        const std::string_view tag = kRows[i].tag;
        EXPECT_EQ(objectdata::Name2Type(std::wstring(tag.begin(), tag.end()).c_str()), static_cast<int>(i)) << tag;
        EXPECT_EQ(obmgr::FindByTag(tag), &obmgr::Records()[i]);
        EXPECT_EQ(obmgr::FindByTagIgnoringCase(std::u16string(tag.begin(), tag.end())), &obmgr::Records()[i]);
    }
}

TEST(ObjectTypes, ATextThatIsNoTagGivesMinusOne)
{
    const wchar_t* const noTags[] = {L"",          L"raitoset",    L"CSpan",   L"Span",    L"SPAN",
                                     L"span ",     L" span",       L"spa",     L"spans",   L"ＳＰＡＮ",
                                     L"sp\u00E4n", L"no such tag", L"divides", L"profile", L"sectgroup"};
    for (const wchar_t* text : noTags) {
        EXPECT_EQ(objectdata::Name2Type(text), -1) << CString(text);
        EXPECT_EQ(static_cast<unsigned>(objectdata::Name2Type(text)), 0xFFFFFFFFu);
    }
    EXPECT_EQ(objectdata::Name2Type(CString(L'x', 100000)), -1);
    EXPECT_GE(objectdata::Name2Type(L"ratioset"), 0);
}

TEST(ObjectTypes, TheReaderFindsATagInAnyCase)
{
    EXPECT_EQ(obmgr::FindByTagIgnoringCase(u"SPAN"), &obmgr::RecordOf(objectdata::Span));
    EXPECT_EQ(obmgr::FindByTagIgnoringCase(u"RatioSet"), &obmgr::RecordOf(objectdata::RaitoSet));
    EXPECT_EQ(obmgr::FindByTagIgnoringCase(u"sp\u0430n"), nullptr);
    EXPECT_EQ(obmgr::FindByTagIgnoringCase(u""), nullptr);
}

TEST(ObjectTypes, CanonicalOrderIsTypeOrderButForTwoMoves)
{
    using namespace objectdata;
    std::vector<int> expected;
    for (int i = 0; i < 93; ++i) {
        if (i == AreaSet || i == AttBoxvu) continue;
        if (i == AreaOutq) expected.push_back(AreaSet);
        expected.push_back(i);
        if (i == Manholecapcode) expected.push_back(AttBoxvu);
    }
    EXPECT_EQ(Numbers(obmgr::CanonicalOrder()), expected);
}

TEST(ObjectTypes, AFullSaveHoldsEveryTypeButTheMapData)
{
    using namespace objectdata;
    std::vector<int> saved = Numbers(obmgr::SaveOrder());
    EXPECT_EQ(saved.size(), 87u);
    EXPECT_THAT(Numbers(obmgr::MapDataOrder()),
                testing::ElementsAre(Publine, Glline, Usedarea, Noarea, Divide, Border));
    std::sort(saved.begin(), saved.end());
    std::vector<int> all(87);
    for (int i = 0; i < 87; ++i)
        all[static_cast<std::size_t>(i)] = i;
    EXPECT_EQ(saved, all) << "the first 87 types, each once";
}

TEST(ObjectTypes, LinkNamesOfATypeDiffer)
{
    for (const obmgr::RecordInfo& row : obmgr::Records()) {
        std::set<std::string_view> names;
        for (const obmgr::LinkField& link : row.links.All()) {
            EXPECT_FALSE(link.name.empty()) << row.tag;
            EXPECT_TRUE(names.insert(link.name).second) << row.tag << " " << link.name;
        }
    }
}

TEST(ObjectTypes, AnOwnerIsNamedByTheFirstReference)
{
    for (const obmgr::RecordInfo& row : obmgr::Records()) {
        if (row.owner == objectdata::NoOwner || row.type == objectdata::Span) continue;
        ASSERT_GE(row.links.count, 1) << row.tag;
        EXPECT_TRUE(row.links.fields[0].isReference) << row.tag;
        EXPECT_EQ(row.links.fields[0].target, row.owner) << row.tag;
    }
}

TEST(ObjectTypes, EachFailureMessageIsGivenToARow)
{
    for (const obmgr::RecordInfo& row : obmgr::Records())
        EXPECT_NE(row.writeFailure, 0u) << row.tag;
}

} // namespace
