// Attributes as callers of CPipeObject see them.

#include "objects/Records.h"

#include <gmock/gmock.h>

#include <climits>
#include <string>
#include <vector>

namespace {

std::vector<std::wstring> KeysOf(const CPipeObject& object)
{
    CMapStringToString values;
    object.GetSubAttribute(values);
    std::vector<std::wstring> keys;
    for (const auto& pair : values)
        keys.emplace_back(pair.key.View());
    return keys;
}

TEST(PipeObject, AKeyThatWasNeverWrittenReadsAsEmptyOrTheDefault)
{
    const CNode node(1);
    EXPECT_EQ(node.GetSubAttribute(L"a key that no object ever had"), L"");
    EXPECT_EQ(node.GetSubAttributeInt(L"ndnewgl", -7), -7);
    EXPECT_EQ(node.GetSubAttributeDouble(L"ndnewgl", 1.25), 1.25);
    EXPECT_TRUE(node.GetSubAttributeBool(L"ndnewgl", true));
    EXPECT_FALSE(node.GetSubAttributeBool(L"ndnewgl", false));
    EXPECT_FALSE(node.IsSubAttribute(L"ndnewgl"));
}

TEST(PipeObject, AnEmptyValueIsPresent)
{
    CDrawformdat format(1);
    format.WriteSubAttribute(L"openpipetop", L"");
    EXPECT_TRUE(format.IsSubAttribute(L"openpipetop"));
    EXPECT_EQ(format.GetSubAttribute(L"openpipetop"), L"");
}

TEST(PipeObject, ATextThatIsNoNumberReadsAsZeroAndNotAsTheDefault)
{
    CNode node(1);
    for (const wchar_t* text : {L"", L"abc", L"-", L"  "}) {
        node.WriteSubAttribute(L"v", text);
        EXPECT_EQ(node.GetSubAttributeInt(L"v", 5), 0) << CString(text);
        EXPECT_EQ(node.GetSubAttributeDouble(L"v", 5.0), 0.0) << CString(text);
        EXPECT_FALSE(node.GetSubAttributeBool(L"v", true)) << CString(text);
    }
}

TEST(PipeObject, TypedReadsTakeTheNumberAtTheStart)
{
    CNode node(1);
    node.WriteSubAttribute(L"v", L" 12.75 m");
    EXPECT_EQ(node.GetSubAttributeInt(L"v", 0), 12);
    EXPECT_EQ(node.GetSubAttributeDouble(L"v", 0), 12.75);
    EXPECT_TRUE(node.GetSubAttributeBool(L"v", false));
    node.WriteSubAttribute(L"v", L"99999999999");
    EXPECT_EQ(node.GetSubAttributeInt(L"v", 0), INT_MAX);
    node.WriteSubAttribute(L"v", L"-99999999999");
    EXPECT_EQ(node.GetSubAttributeInt(L"v", 0), INT_MIN);
}

TEST(PipeObject, NumbersAreWrittenAsDecimalText)
{
    CNode node(1);
    node.WriteSubAttributeInt(L"i", INT_MIN);
    node.WriteSubAttributeDouble(L"d", 2.5);
    EXPECT_EQ(node.GetSubAttribute(L"i"), L"-2147483648");
    EXPECT_EQ(node.GetSubAttribute(L"d"), L"2.5000000000000");
    EXPECT_EQ(node.GetSubAttributeInt(L"i", 0), INT_MIN);
}

TEST(PipeObject, KeysAreComparedExactly)
{
    CNode node(1);
    node.WriteSubAttribute(L"Order", L"1");
    EXPECT_FALSE(node.IsSubAttribute(L"order"));
    EXPECT_FALSE(node.IsSubAttribute(L"Order "));
    EXPECT_EQ(node.GetSubAttribute(L"Order"), L"1");
}

TEST(PipeObject, NullTextsAreEmptyTexts)
{
    CNode node(1);
    node.WriteSubAttribute(nullptr, L"value of the empty key");
    node.WriteSubAttribute(L"k", nullptr);
    EXPECT_EQ(node.GetSubAttribute(L""), L"value of the empty key");
    EXPECT_EQ(node.GetSubAttribute(static_cast<const wchar_t*>(nullptr)), L"value of the empty key");
    EXPECT_TRUE(node.IsSubAttribute(L"k"));
}

TEST(PipeObject, AnEmptyArrayAddsNothing)
{
    CNode node(1);
    node.WriteSubAttribute(L"a", L"1");
    node.AddSubAttribute(CArray<CKeyValue, CKeyValue>());
    EXPECT_THAT(KeysOf(node), testing::ElementsAre(L"a"));
    EXPECT_EQ(node.GetSubAttribute(L"a"), L"1");
}

TEST(PipeObject, AddedPairsOverwriteAndAddTheLaterOneLast)
{
    CNode node(1);
    node.WriteSubAttribute(L"a", L"1");
    node.WriteSubAttribute(L"b", L"2");
    CArray<CKeyValue, CKeyValue> values;
    values.Add(CKeyValue(L"b", L"x"));
    values.Add(CKeyValue(L"c", L"y"));
    values.Add(CKeyValue(L"b", L"z"));
    node.AddSubAttribute(values);
    EXPECT_THAT(KeysOf(node), testing::ElementsAre(L"a", L"b", L"c"));
    EXPECT_EQ(node.GetSubAttribute(L"a"), L"1");
    EXPECT_EQ(node.GetSubAttribute(L"b"), L"z");
    EXPECT_EQ(node.GetSubAttribute(L"c"), L"y");
}

TEST(PipeObject, SettingAMapDropsTheKeysItDoesNotHold)
{
    CNode node(1);
    node.WriteSubAttribute(L"a", L"1");
    node.WriteSubAttribute(L"b", L"2");
    CMapStringToString values;
    values.SetAt(L"b", L"3");
    node.SetSubAttribute(values);
    EXPECT_THAT(KeysOf(node), testing::ElementsAre(L"b"));
    EXPECT_EQ(node.GetSubAttribute(L"b"), L"3");
    values.RemoveAll();
    node.SetSubAttribute(values);
    EXPECT_THAT(KeysOf(node), testing::IsEmpty());
}

TEST(PipeObject, CopyingTheMapOutReplacesWhatItHeld)
{
    CNode node(1);
    node.WriteSubAttribute(L"a", L"1");
    CMapStringToString values;
    values.SetAt(L"old", L"x");
    node.GetSubAttribute(values);
    EXPECT_EQ(values.GetCount(), 1);
    CString value;
    EXPECT_TRUE(values.Lookup(L"a", value));
    EXPECT_EQ(value, L"1");
}

TEST(PipeObject, TextOutsideTheBasicPlaneSurvives)
{
    CNode node(1);
    node.WriteSubAttribute(L"\U00020BB7", L"\U00020BB7\u9AD9\U0001F6B0");
    EXPECT_EQ(node.GetSubAttribute(L"\U00020BB7"), L"\U00020BB7\u9AD9\U0001F6B0");
    EXPECT_EQ(node.GetSubAttribute(L"\U00020BB7").GetLength(), 3);
}

TEST(PipeObject, AValueMayBeSeveralMegabytesLong)
{
    CNode node(1);
    node.WriteSubAttribute(L"before", L"1");
    const std::wstring large(3'000'000, L'\u9AD9');
    node.WriteSubAttribute(L"memo", large.c_str());
    node.WriteSubAttribute(L"after", L"2");
    EXPECT_TRUE(node.GetSubAttribute(L"memo") == large.c_str());
    EXPECT_EQ(node.GetSubAttribute(L"before"), L"1");
    EXPECT_EQ(node.GetSubAttribute(L"after"), L"2");
    const CNode copy(node);
    node.WriteSubAttribute(L"memo", L"short");
    EXPECT_EQ(copy.GetSubAttribute(L"memo").GetLength(), 3'000'000);
    EXPECT_EQ(node.GetSubAttribute(L"memo"), L"short");
}

TEST(PipeObject, AssigningAnObjectToItselfChangesNothing)
{
    CSpan span(1, 2, 3, 4);
    span.WriteSubAttribute(L"spno", L"1");
    span = *&span;
    EXPECT_EQ(span.GetObjectId(), 1u);
    EXPECT_EQ(span.GetSubAttribute(L"spno"), L"1");
    EXPECT_THAT(span.Links(), testing::ElementsAre(2, 3, 4));
}

TEST(PipeObject, AKeyAndItsValueArePlainTexts)
{
    CKeyValue pair(L"k", L"v");
    const CKeyValue copy(pair);
    pair.SetKey(L"x");
    pair.SetValue(L"y");
    EXPECT_EQ(copy.GetKey(), L"k");
    EXPECT_EQ(copy.GetValue(), L"v");
    EXPECT_EQ(pair.GetKey(), L"x");
    EXPECT_EQ(pair.GetValue(), L"y");
    EXPECT_EQ(CKeyValue().GetKey(), L"");
}

TEST(PipeObject, RoomForAttributesChangesNoValue)
{
    CNode node(1);
    node.ReserveAttributes(1000);
    EXPECT_THAT(KeysOf(node), testing::IsEmpty());
    node.WriteSubAttribute(L"a", L"1");
    EXPECT_GT(node.ShrinkAttributes(), 0u);
    EXPECT_EQ(node.GetSubAttribute(L"a"), L"1");
}

TEST(PipeObject, AnOrdinaryRecordKeepsEveryPairOfAFile)
{
    CNode node(1);
    CString key = L"k";
    CString value = L"v";
    EXPECT_FALSE(node.FiltersSubAttributes());
    EXPECT_TRUE(node.AcceptSubAttribute(key, value));
    EXPECT_EQ(key, L"k");
    EXPECT_EQ(value, L"v");
}

TEST(PipeObject, AnOldDrawingFormatGetsTheKeysCalledMissing)
{
    CVersionConvertFlags flags;
    CDrawformdat format(1);
    EXPECT_FALSE(format.ConvertVersion(flags));
    flags.openpipetop = flags.drawcodezeromhole = flags.dbdgcin = true;
    format.WriteSubAttribute(L"openpipetop", L"mine");
    EXPECT_TRUE(format.ConvertVersion(flags));
    EXPECT_EQ(format.GetSubAttribute(L"openpipetop"), L"mine");
    EXPECT_EQ(format.GetSubAttribute(L"drawcodezeromhole"), L"0");
    EXPECT_FALSE(format.IsSubAttribute(L"dbdgcin")) << "a key of bands";
    EXPECT_FALSE(format.ConvertVersion(flags)) << "nothing is missing any more";
    CDrawbeltdat band(2);
    EXPECT_TRUE(band.ConvertVersion(flags));
    EXPECT_THAT(KeysOf(band), testing::ElementsAre(L"dbdgcin", L"drawcodezeromhole"));
    CNode node(3);
    EXPECT_FALSE(node.ConvertVersion(flags));
}

} // namespace
