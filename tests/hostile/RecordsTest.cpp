// Well-formed files whose records make no sense: odd ids and tags, odd nesting, references to nothing, huge sizes.
// Sizes here are such that work growing faster than the input would not end.
#include "hostile/HostileTest.h"

#include "persistence/SaxParser.h"
#include "store/ObDefManager.h"
#include "support/Store.h"

using namespace hostile;

namespace {

class Records : public HostileTest {};

std::string repeated(const std::string& text, int count)
{
    std::string all;
    all.reserve(text.size() * static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

} // namespace

TEST_F(Records, BadOnesEndTheReadWithTagAndId)
{
    const std::pair<std::string, const wchar_t*> cases[] = {
        {"<node/>", L"node ID=-1 data is illegal."},
        {"<node id=\"--1\"/>", L"node ID=-1 data is illegal."},
        {"<node id=\"1.0\"/>", L"node ID=-1 data is illegal."},
        {"<node id=\"0x10\"/>", L"node ID=-1 data is illegal."},
        {"<node id=\"1 \"/>", L"node ID=-1 data is illegal."},
        {"<node id=\"&#10;1\"/>", L"node ID=-1 data is illegal."},
        {"<node id=\"٣\"/>", L"node ID=-1 data is illegal."},
        {"<node id=\"−1\"/>", L"node ID=-1 data is illegal."},
        {"<node id=\"" + std::string(1'000'000, '9') + "x\"/>", L"node ID=-1 data is illegal."},
        {"<node id=\"" + std::string(1'000'000, '9') + "\"/>", L"node ID=2147483647 data is illegal."},
        {"<node id=\"2147483547\"/>", L"node ID=2147483547 data is illegal."},
        {"<node id=\"2147483647\"/>", L"node ID=2147483647 data is illegal."},
        {"<node id=\"18446744073709551617\"/>", L"node ID=2147483647 data is illegal."},
        {"<node id=\"3\"/><node id=\"003\"/>", L"node ID=3 data is illegal."},
        {"<node id=\"-\"/><node id=\"0\"/>", L"node ID=0 data is illegal."},
        {"<node id=\"0\"/><node id=\"-0\"/>", L"node ID=0 data is illegal."},
        {"<icpinq id=\"1\"/>", L"icpinq ID=1 data is illegal."},
        {"<IcpInq id=\"1\" icnodeid=\"1\"/>", L"IcpInq ID=1 data is illegal."},
        {"<span id=\"1\" uppernode=\"1\" lowernode=\"2\"/>", L"span ID=1 data is illegal."},
        {"<span id=\"1\" uppernode=\"1\" lowernode=\"2\" RouteId=\"3\"/>", L"span ID=1 data is illegal."},
        {"<web id=\"1\" disposaltype=\"+1\"/>", L"web ID=1 data is illegal."},
        {"<surprise id=\"1\"/>", L"surprise ID=1 data is illegal."},
        {"<nodes id=\"1\"/>", L"nodes ID=1 data is illegal."},
        {"<p:node xmlns:p=\"u\" id=\"1\"/>", L"p:node ID=1 data is illegal."},
        {"<ｎｏｄｅ id=\"1\"/>", L"ｎｏｄｅ ID=1 data is illegal."},
        {"<k contents=\"1\"/>", L"k ID=-1 data is illegal."},
    };
    for (const auto& [records, message] : cases) {
        SCOPED_TRACE(records.substr(0, 100));
        expectRefused(document(records), message);
    }
}

TEST_F(Records, ARepeatedAttributeIsRefused)
{
    expectRefused(document("<node id=\"1\" id=\"2\"/>"));
    expectRefused(document("<node id=\"1\"><a contents=\"x\" contents=\"y\"/></node>"));
}

TEST_F(Records, TheGreatestIdIsTakenAndStopsTheAppendingOfMore)
{
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<node id=\"2147483546\"/>")) << error;
    EXPECT_EQ(manager.GetCurrentObjectId(), 2147483546);
    EXPECT_FALSE(readRecords(manager, "<node id=\"1\"/>", true));
    EXPECT_EQ(error, L"node ID=2147483548 data is illegal.");
    EXPECT_FALSE(readRecords(manager, "<node id=\"100\"/>", true)); // the sum is the one number that is not a sum
    EXPECT_EQ(error, L"node ID=100 data is illegal.");
    ASSERT_TRUE(readRecords(manager,
                            "<node id=\"0\"/><node id=\"101\"/><span id=\"2147483646\" uppernode=\"101\" "
                            "lowernode=\"0\" routeid=\"-2147483648\"/>",
                            true))
        << error;
    EXPECT_TRUE(manager.GetNodeDb().Find(0));
    EXPECT_TRUE(manager.GetNodeDb().Find(-2147483648));
    const CSpan* const span = manager.GetSpanDb().Find(-103);
    ASSERT_TRUE(span);
    EXPECT_EQ(span->Links()[0], -2147483648);
    EXPECT_EQ(span->Links()[1], 0);
    EXPECT_EQ(span->Links()[2], -101);
}

TEST_F(Records, AProfileTakesItsKeysAndNothingElse)
{
    expectRefused(document("<profile><x><y/></x></profile>"), L"y ID=-1 data is illegal.");
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<profile id=\"abc\"><maxobjectid contents=\"99999999999\"/><intention "
                                     "contents=\"x\"/><dataver contents=\"-7\"/></profile>"))
        << error;
    EXPECT_EQ(manager.GetAllDataCount(), 0);
    EXPECT_EQ(manager.GetCurrentObjectId(), 0);
    EXPECT_NE(save(manager, 13).find("<dataver contents=\"13\"/>"), std::string::npos);
}

TEST_F(Records, NestingFiveDeepEndsTheReadAtTheFirstThatIsNoRecord)
{
    expectRefused(document("<node id=\"1\"><a><b><c><d/></c></b></a></node>"), L"b ID=-1 data is illegal.");
    CObjectManager manager;
    // Records at every depth but the second, where all is a key.
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\"><node id=\"2\" contents=\"k\"><node id=\"3\"><node id=\"4\">"
                                     "<node id=\"5\"/></node></node></node></node>"))
        << error;
    EXPECT_EQ(manager.GetAllDataCount(), 4);
    EXPECT_EQ(manager.GetNodeObjectOriginal(1)->GetSubAttribute(L"node"), L"k");
    EXPECT_FALSE(manager.GetNodeDb().Find(2));
}

TEST_F(Records, NestingWithoutEndIsRefusedAtTheThirdLevel)
{
    constexpr int kDeep = 1'000'000;
    const std::string open = "<pipedata><node id=\"1\">" + repeated("<a>", kDeep);
    expectRefused(open, L"a ID=-1 data is illegal.");
    expectRefused(open + repeated("</a>", kDeep) + "</node></pipedata>", L"a ID=-1 data is illegal.");
    // Roots do not count, so these go to the bottom.
    const std::string roots = repeated("<pdroot>", kDeep);
    expectRefused(roots);
    CObjectManager manager;
    EXPECT_TRUE(read(manager, roots + "<node id=\"1\"/>" + repeated("</pdroot>", kDeep))) << error;
    EXPECT_EQ(manager.GetAllDataCount(), 1);
}

TEST_F(Records, UnusualOnesOfAFileOfDefaultsDoNoHarm)
{
    const std::pair<std::string, int> cases[] = {
        {"<node/>", 1},
        {"<a contents=\"1\"/>", 0},
        {"<node><node/><a contents=\"x\"/></node>", 1},
        {"<node><a><b><c/></b></a></node>", 1},
        {repeated("<span/>", 100000), 100000},
        {"<node>" + repeated("<a>", 100000) + repeated("</a>", 100000) + "</node>", 1},
        {"<icpinq/><NODE/><profile/>", -1},
    };
    for (const auto& [records, entries] : cases) {
        SCOPED_TRACE(records.substr(0, 60));
        CObDefManager defaults;
        EXPECT_TRUE(defaults.ReadDefFile(folder.Write("def.xml", document(records)), error)) << error;
        if (entries >= 0) {
            EXPECT_EQ(defaults.GetDefList().GetCount(), entries);
        }
    }
    for (const std::string& bytes :
         {std::string(), std::string("<"), std::string("<node>"), std::string(100000, '\0')}) {
        CObDefManager defaults;
        EXPECT_FALSE(defaults.ReadDefFile(folder.Write("def.xml", bytes), error));
        EXPECT_FALSE(error.IsEmpty());
    }
}

TEST_F(Records, ReferencesToNothingLoadAndQueriesEnd)
{
    CObjectManager manager;
    ASSERT_TRUE(readRecords(
        manager, "<node id=\"1\"/><route id=\"2\" webid=\"77\" connectid=\"2\"/><route id=\"3\" webid=\"1\" "
                 "connectid=\"-5\"/><route id=\"4\" webid=\"5\" connectid=\"3\"/><web id=\"5\" disposaltype=\"99\"/>"
                 "<span id=\"6\" uppernode=\"1\" lowernode=\"1\" routeid=\"6\"/>"
                 "<span id=\"7\" uppernode=\"-9\" lowernode=\"0\" routeid=\"4\"/>"
                 "<span id=\"8\" uppernode=\"2\" lowernode=\"5\" routeid=\"4\"/>"
                 "<intpos id=\"9\" obj1id=\"9\" obj2id=\"9\"/><areaset id=\"10\" asspanid=\"10\"/>"
                 "<geometry id=\"11\" gmobjid=\"11\"/><inareaset id=\"12\" iasareainid=\"-1\"/>"
                 "<drawbelttx id=\"13\" dbtwebid=\"0\"><dbtspanid contents=\"none\"/></drawbelttx>"))
        << error;
    using support::idsOf;
    EXPECT_EQ(idsOf([&](auto& ids) { return manager.GetRouteIdList(5, ids); }), std::vector<long>{4});
    EXPECT_EQ(idsOf([&](auto& ids) { return manager.GetRouteIdList(77, ids); }), std::vector<long>{2});
    EXPECT_EQ(idsOf([&](auto& ids) { return manager.GetSpanIdList(4, ids); }), (std::vector<long>{7, 8}));
    EXPECT_EQ(idsOf([&](auto& ids) { return manager.GetSpanIdList(6, ids); }), std::vector<long>{6});
    EXPECT_EQ(idsOf([&](auto& ids) { return manager.GetIntPosIdList(9, ids); }), std::vector<long>{9});
    EXPECT_EQ(idsOf([&](auto& ids) { return manager.GetDrawbelttxIdList(0, ids); }), std::vector<long>{13});
    EXPECT_EQ(manager.GetRouteIdFromRouteNum(L"x", 0), 0);
    const std::string before = describe(manager);
    manager.BeginTransaction();
    EXPECT_TRUE(manager.DeleteNodeObject(1));
    manager.AbortTransaction();
    EXPECT_EQ(describe(manager), before);
}

TEST_F(Records, ValuesThatAreNoNumbersReadAsDefinedNumbers)
{
    CObjectManager manager;
    const std::string digits(10'000'000, '7');
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\"><nan contents=\"nan\"/><inf contents=\"inf\"/><huge "
                                     "contents=\"1e999\"/><hex contents=\"0x1p3\"/><none contents=\"\"/><comma "
                                     "contents=\"1,5\"/><digits contents=\"" +
                                         digits + "\"/><tiny contents=\"1e-999\"/></node>"))
        << error;
    const CNode& node = *manager.GetNodeObjectOriginal(1);
    for (const wchar_t* const key : {L"nan", L"inf", L"hex", L"none"}) {
        EXPECT_EQ(node.GetSubAttributeInt(key, 5), 0) << CString(key);
        EXPECT_EQ(node.GetSubAttributeDouble(key, 5), 0.0) << CString(key);
    }
    EXPECT_EQ(node.GetSubAttributeDouble(L"comma", 5), 1.0);
    EXPECT_EQ(node.GetSubAttributeDouble(L"tiny", 5), 0.0);
    EXPECT_EQ(node.GetSubAttributeInt(L"huge", 5), 1);
    EXPECT_GT(node.GetSubAttributeDouble(L"huge", 5), 1e300);
    EXPECT_EQ(node.GetSubAttributeInt(L"digits", 5), 2147483647);
    EXPECT_GT(node.GetSubAttributeDouble(L"digits", 5), 1e300);
}

TEST_F(Records, AValueOfFiftyMegabytesLoadsAndIsSavedAgain)
{
    constexpr int kSize = 50'000'000;
    CObjectManager manager;
    ASSERT_TRUE(read(manager, withValue(std::string(kSize, 'v')))) << error;
    EXPECT_EQ(manager.GetNodeObjectOriginal(1)->GetSubAttribute(L"a").GetLength(), kSize);
    EXPECT_GT(save(manager, 13).size(), static_cast<std::size_t>(kSize));
    // Not closed: the whole is one value that does not end.
    expectRefused("<pipedata><node id=\"1\"><a contents=\"" + std::string(kSize, 'v'));
    expectRefused("<pipedata><!--" + std::string(kSize, 'v'));
    expectRefused("<pipedata><![CDATA[" + std::string(kSize, 'v'));
    expectRefused("<pipedata>" + std::string(kSize, 'v'));
    expectRefused("<" + std::string(kSize, 'v'));
    expectRefused("<!DOCTYPE " + std::string(kSize, '['));
}

TEST_F(Records, TextCommentsAndSectionsOfAnySizeAreSkipped)
{
    const std::string large(5'000'000, 't');
    CObjectManager manager;
    EXPECT_TRUE(readRecords(manager, large + "<!--" + large + "--><![CDATA[" + large + "]]><?x " + large +
                                         "?><node id=\"1\">" + large + "</node>"))
        << error;
    EXPECT_EQ(manager.GetAllDataCount(), 1);
    EXPECT_TRUE(manager.GetNodeObjectOriginal(1)->GetAttributes().IsEmpty());
}

TEST_F(Records, NamesOfMegabytesAreRefusedOrTaken)
{
    const std::string name(5'000'000, 'n');
    expectRefused(document("<" + name + " id=\"1\"/>"), L"nnnn");
    EXPECT_EQ(error.Find(L"\n"), -1);
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\" " + name + "=\"x\"><" + name + " contents=\"v\"/></node>"))
        << error;
    EXPECT_EQ(manager.GetNodeObjectOriginal(1)->GetAttributes().Count(), 1u);
    EXPECT_NE(save(manager, 13).find("<" + name + " contents=\"v\"/>"), std::string::npos);
}

TEST_F(Records, HalfAMillionKeysInOneRecordLoad)
{
    constexpr int kKeys = 500'000;
    std::string record = "<node id=\"1\">";
    for (int i = 0; i < kKeys; ++i) {
        record += "<hostile" + std::to_string(i) + " contents=\"";
        record += std::to_string(i) + "\"/>";
    }
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, record + "</node>")) << error;
    const CNode& node = *manager.GetNodeObjectOriginal(1);
    EXPECT_EQ(node.GetAttributes().Count(), static_cast<std::size_t>(kKeys));
    for (const int i : {0, 65535, 65536, 131072, kKeys - 1})
        EXPECT_EQ(node.GetSubAttributeInt((L"hostile" + std::to_wstring(i)).c_str(), -1), i);
}

// The parser compares each attribute with all before it: so many would keep it busy for days.
TEST_F(Records, AttributesInMillionsAreRefusedAndAHundredLoad)
{
    const auto record = [](int count) {
        std::string text = "<node";
        for (int i = 0; i < count; ++i)
            text += " a" + std::to_string(i) + "=\"\"";
        return text + " id=\"5\"/>";
    };
    expectRefused(document(record(2'000'000)), L"An element has too many attributes.");
    CObjectManager manager;
    EXPECT_TRUE(readRecords(manager, record(100))) << error;
    EXPECT_TRUE(manager.GetNodeDb().Find(5));
}

TEST_F(Records, CommentsAndInstructionsInThousandsBetweenTwoRecordsAreSkipped)
{
    const std::string much = repeated("<!-- a -->text<?pi x?><![CDATA[y]]>&amp;\n", 100'000);
    CObjectManager manager;
    EXPECT_TRUE(
        readRecords(manager, "<node id=\"1\">" + much + "<a contents=\"x\"/></node>" + much + "<node id=\"2\"/>"))
        << error;
    EXPECT_EQ(manager.GetAllDataCount(), 2);
}

TEST_F(Records, AKeyRepeatedAMillionTimesKeepsTheLastValue)
{
    constexpr int kTimes = 1'000'000;
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\">" + repeated("<a contents=\"x\"/>", kTimes) +
                                         "<a contents=\"last\"/></node>"))
        << error;
    EXPECT_EQ(manager.GetNodeObjectOriginal(1)->GetSubAttribute(L"a"), L"last");
    EXPECT_EQ(manager.GetNodeObjectOriginal(1)->GetAttributes().Count(), 1u);
}

TEST_F(Records, AnOutflowMergedAHundredThousandTimesIsOneRecord)
{
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<areaoutq id=\"1\" aorouteid=\"2\"/>" +
                                         repeated("<areaoutq id=\"1\"><a contents=\"x\"/></areaoutq>", 100'000)))
        << error;
    EXPECT_EQ(manager.GetAllDataCount(), 1);
}

TEST_F(Records, PredefinedEntitiesAreNeverCounted)
{
    EXPECT_EQ(valueIn(withValue(repeated("&amp;&quot;&lt;&gt;&apos;&#65;", 60'000))).GetLength(), 360'000);
}
