// Reading on top of a design: which ids move and which stay.
#include "persistence/PersistenceTest.h"

#include <xercesc/sax/AttributeList.hpp>

#include "persistence/SaxHandlers.h"

namespace {

class AppendRead : public PersistenceTest {
protected:
    // A design whose last issued id is `last`.
    void startAt(long last)
    {
        ASSERT_TRUE(readRecords(manager, "<node id=\"" + std::to_string(last) + "\"/>"));
        ASSERT_EQ(manager.GetCurrentObjectId(), last);
    }

    CObjectManager manager;
};

// One attribute as the parser hands it over.
class OneAttribute : public xercesc::AttributeList {
public:
    explicit OneAttribute(const char16_t* value) : m_value(value) {}
    XMLSize_t getLength() const override { return 1; }
    const XMLCh* getName(const XMLSize_t) const override { return u"a"; }
    const XMLCh* getType(const XMLSize_t) const override { return u"CDATA"; }
    const XMLCh* getValue(const XMLSize_t) const override { return m_value; }
    const XMLCh* getType(const XMLCh* const) const override { return u"CDATA"; }
    const XMLCh* getValue(const XMLCh* const name) const override
    {
        return std::u16string_view(name) == u"a" ? m_value : nullptr;
    }
    const XMLCh* getValue(const char* const) const override { return nullptr; }

private:
    const char16_t* m_value;
};

constexpr const char* kShiftedKeys[] = {"ipspanid", "glspanid",  "glglid",   "laspanid", "launitid",
                                        "vjspid",   "vjinletid", "svspid",   "ohspid",   "nuownspid",
                                        "arspanid", "fxspanid",  "mtspanid", "oqspanid", "dbtspanid"};

} // namespace

TEST_F(AppendRead, IdsAndReferencesMoveBehindTheLastIdAndZeroAndCodesStay)
{
    startAt(100);
    ASSERT_TRUE(readRecords(manager,
                            "<route id=\"1\" webid=\"2\" connectid=\"0\"/><web id=\"2\" disposaltype=\"3\"/>"
                            "<section id=\"3\" setype=\"2\"/><usedarea id=\"4\" ppdispotype=\"1\"/>"
                            "<node id=\"0\"/><span id=\"5\" uppernode=\"-7\" lowernode=\"0\" routeid=\"1\"/>",
                            true))
        << error;
    const CRoute* const route = manager.GetRouteObjectOriginal(102);
    ASSERT_TRUE(route);
    EXPECT_EQ(route->GetWebId(), 103u);
    EXPECT_EQ(route->GetConnectId(), 0u);
    EXPECT_EQ(manager.GetWebObjectOriginal(103)->GetDisposalType(), 3);
    EXPECT_EQ(manager.GetSectionObjectOriginal(104)->GetDisposalType(), 2);
    EXPECT_EQ(manager.GetUsedareaDb().Find(105)->GetDisposalType(), 1);
    EXPECT_TRUE(manager.GetNodeDb().Find(0));
    EXPECT_EQ(manager.GetSpanObjectOriginal(106)->Links()[0], 94);
    EXPECT_EQ(manager.GetCurrentObjectId(), 106);
}

TEST_F(AppendRead, FifteenKeysMoveAndAllOthersKeepTheirValues)
{
    startAt(100);
    std::string keys;
    for (const char* const key : kShiftedKeys)
        keys += "<" + std::string(key) + " contents=\"5\"/>";
    const char* const others[] = {"aospanid",     "sdispanid",    "itsecrecid",        "divownerid", "ploutstspid",
                                  "ploutendspid", "manholecapid", "webcurrentrouteid", "icinnodeid", "activweb"};
    for (const char* const key : others)
        keys += "<" + std::string(key) + " contents=\"5\"/>";
    ASSERT_TRUE(readRecords(manager, "<glchange id=\"1\" glrouteid=\"2\">" + keys + "</glchange>", true)) << error;
    const CGlChange* const change = manager.GetGlChangeObjectOriginal(102);
    for (const char* const key : kShiftedKeys)
        EXPECT_EQ(change->GetSubAttribute(obmgr::FromUtf8(key)), L"106") << key;
    for (const char* const key : others)
        EXPECT_EQ(change->GetSubAttribute(obmgr::FromUtf8(key)), L"5") << key;
}

TEST_F(AppendRead, MovedValuesAreWrittenAnewAsNumbers)
{
    startAt(100);
    const std::pair<const char*, const wchar_t*> cases[] = {{"0", L"0"},
                                                            {"", L"0"},
                                                            {"abc", L"0"},
                                                            {" 7x", L"108"},
                                                            {"-1", L"100"},
                                                            {"007", L"108"},
                                                            {"2147483647", L"-2147483548"},
                                                            {"1.9", L"102"}};
    for (const auto& [value, moved] : cases) {
        CObjectManager design;
        ASSERT_TRUE(readRecords(design, "<node id=\"100\"/>"));
        ASSERT_TRUE(
            readRecords(design, "<node id=\"1\"><GLSpanId contents=\"" + std::string(value) + "\"/></node>", true));
        EXPECT_EQ(design.GetNodeObjectOriginal(102)->GetSubAttribute(L"GLSpanId"), moved) << value;
    }
    ASSERT_TRUE(readRecords(manager, "<node id=\"50\"><glspanid contents=\"x\"/></node>"));
    EXPECT_EQ(manager.GetNodeObjectOriginal(50)->GetSubAttribute(L"glspanid"), L"x");
}

TEST_F(AppendRead, SumsWrapAndOnlyTheGreatestNumberIsRefused)
{
    // 2147483000 + 646 + 1 is the greatest number, 2147483000 + 647 + 1 wraps round to the least.
    startAt(2147483000);
    EXPECT_FALSE(readRecords(manager, "<node id=\"646\"/>", true));
    EXPECT_EQ(error, L"node ID=646 data is illegal.");
    EXPECT_FALSE(readRecords(manager, "<areaset id=\"1\" asspanid=\"646\"/>", true));
    EXPECT_EQ(error, L"areaset ID=2147483002 data is illegal.");
    ASSERT_TRUE(readRecords(manager, "<node id=\"647\"/>", true)) << error;
    EXPECT_TRUE(manager.GetNodeDb().Find(-2147483648L));
    EXPECT_FALSE(readRecords(manager, "<node id=\"600\"/>", true)); // 2147483601: beyond the limit of a table
}

TEST_F(AppendRead, AMergeGoesByTheMovedId)
{
    ASSERT_TRUE(readRecords(manager, "<areaoutq id=\"1\" aorouteid=\"5\"/>"));
    ASSERT_TRUE(readRecords(manager, "<areaoutq id=\"1\" aorouteid=\"6\"><a contents=\"n\"/></areaoutq>", true));
    EXPECT_EQ(manager.GetAreaOutqDb().GetCount(), 2);
    EXPECT_EQ(manager.GetAreaOutqObjectOriginal(3)->GetRouteId(), 8u);
    EXPECT_FALSE(manager.GetAreaOutqObjectOriginal(1)->IsSubAttribute(L"a"));
}

TEST_F(AppendRead, TheSameFileCanBeAppendedAgainAndAgain)
{
    const std::string records = "<node id=\"1\"/><node id=\"2\"/><span id=\"3\" uppernode=\"1\" lowernode=\"2\" "
                                "routeid=\"4\"/><route id=\"4\" webid=\"5\" connectid=\"0\"/>"
                                "<web id=\"5\" disposaltype=\"0\"/>";
    for (int round = 0; round < 4; ++round) {
        ASSERT_TRUE(readRecords(manager, records, round > 0)) << error;
        // The webs have no names: the interface of the tests declines until one is given.
    }
    EXPECT_EQ(manager.GetSpanDb().GetCount(), 4);
    for (const CSpan* span : manager.GetSpanDb()) {
        EXPECT_TRUE(manager.GetNodeObjectOriginal(static_cast<long>(span->GetUpperNodeId())));
        EXPECT_TRUE(manager.GetRouteObjectOriginal(static_cast<long>(span->GetRouteId())));
    }
}

TEST_F(AppendRead, IntegerAttributesAreTestedConvertedAndMoved)
{
    struct Case {
        const char16_t* text;
        bool good;
        long plain;
        long moved;
    };
    const Case cases[] = {{u"0", true, 0, 0},
                          {u"1", true, 1, 102},
                          {u"-", true, 0, 0},
                          {u"-1", true, -1, 100},
                          {u"", false, 0, 0},
                          {u"1 ", false, 0, 0},
                          {u"--1", false, 0, 0},
                          {u"0x1", false, 0, 0},
                          {u"99999999999999999999999", true, 2147483647, -2147483548},
                          {u"-99999999999999999999999", true, -2147483648L, -2147483547}};
    startAt(100);
    const SAXHandlers handlers(&manager, true);
    for (const Case& one : cases) {
        const OneAttribute attributes(one.text);
        long value = 77;
        EXPECT_EQ(handlers.GetIntAttribute(attributes, u"a", false, value), one.good);
        EXPECT_EQ(value, one.good ? one.plain : 77);
        value = 77;
        EXPECT_EQ(handlers.GetIntAttribute(attributes, u"a", true, value), one.good);
        EXPECT_EQ(value, one.good ? one.moved : 77);
    }
    long value = 77;
    EXPECT_FALSE(handlers.GetIntAttribute(OneAttribute(u"1"), u"b", true, value));
    EXPECT_EQ(value, 77);
    EXPECT_FALSE(handlers.GetIntAttribute(OneAttribute(u"2147483546"), u"a", true, value));
    EXPECT_EQ(value, 2147483546); // refused as the sum is 2147483647; the number of the file is told
}
