// The sample town: what it is made by, that it is complete, and that it is sound.

#include "persistence/PipeDataFile.h"
#include "store/ObDefManager.h"
#include "store/ObjectManager.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

namespace {

const std::string kSamples = RIVELTA_SOURCE_DIR "/samples/";
const std::string kTown = kSamples + "mizuho.xml";

std::string BytesOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class Town : public testing::Test {
protected:
    void TearDown() override { std::filesystem::remove(m_copy); }

    void Open(CObjectManager& design)
    {
        CString error;
        ASSERT_TRUE(design.CreatePipeObjectFromFile(obmgr::FromUtf8(kTown), error, false)) << error;
    }

    const std::filesystem::path m_copy =
        std::filesystem::path(testing::TempDir()) /
        ("town_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()) + ".xml");
};

TEST_F(Town, IsWhatTheExampleWrites)
{
#ifdef RIVELTA_BUILD_TOWN
    const std::string command =
        "\"" RIVELTA_BUILD_TOWN "\" \"" + m_copy.string() + "\" \"" + kSamples + "default_attributes.xml\" >/dev/null";
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_TRUE(BytesOf(m_copy) == BytesOf(kTown)) << "write it anew: 02_build_town samples/mizuho.xml "
                                                      "samples/default_attributes.xml";
#else
    GTEST_SKIP() << "built without the examples";
#endif
}

TEST_F(Town, IsWrittenAsItWasRead)
{
    CObjectManager design;
    Open(design);
    CString error;
    CStringArray details;
    ASSERT_TRUE(obmgr::SaveDesign(design, obmgr::FromUtf8(m_copy.string()), 14, true, error, details)) << error;
    EXPECT_TRUE(BytesOf(m_copy) == BytesOf(kTown));
}

TEST_F(Town, HasEveryTypeThatCanBeRead)
{
    CObjectManager design;
    Open(design);
    for (const obmgr::RecordInfo& record : obmgr::Records()) {
        const bool isRefused = record.reader == obmgr::Reader::Refuses;
        EXPECT_EQ(design.TableOf(record.type).Count() == 0, isRefused) << record.tag;
    }
}

TEST_F(Town, HasThreeNetsOfDifferentKinds)
{
    CObjectManager design;
    Open(design);
    std::vector<int> kinds;
    for (const CWeb* web : design.GetWebDb())
        kinds.push_back(web->GetDisposalType());
    EXPECT_EQ(kinds, (std::vector{0, 2, 4}));
    EXPECT_EQ(design.GetRouteDb().GetCount(), 40);
    EXPECT_EQ(design.GetSpanDb().GetCount(), 250);
}

// The keys that the defaults lay down, in records that were made from them.
TEST_F(Town, HasTheKeysOfTheDefaults)
{
    CObjectManager design;
    Open(design);
    CObDefManager defaults;
    CString error;
    ASSERT_TRUE(defaults.ReadDefFile(obmgr::FromUtf8(kSamples + "default_attributes.xml"), error)) << error;
    for (const obmgr::OBJECTTYPE type : obmgr::SaveOrder()) {
        const std::string tag(obmgr::RecordOf(type).tag);
        CMapStringToString values;
        ASSERT_TRUE(defaults.GetDefValue(obmgr::FromUtf8(tag), values)) << tag;
        design.TableOf(type).ForEach([&](CPipeObject& object) {
            for (const auto& [key, value] : values)
                ASSERT_TRUE(object.IsSubAttribute(key)) << tag << " " << object.GetObjectId() << " " << key;
        });
    }
}

// The ends of a route, found by going through all its spans.
struct Ends {
    unsigned long top = 0;
    unsigned long bottom = 0;
};

std::map<unsigned long, Ends> EndsOfRoutes(const CObjectManager& design)
{
    std::map<unsigned long, Ends> ends;
    std::map<unsigned long, long> count;
    for (const CSpan* span : design.GetSpanDb())
        ++count[span->GetRouteId()];
    for (const CSpan* span : design.GetSpanDb()) {
        const long number = span->GetSubAttributeInt(L"spno", 0);
        if (number == 1) ends[span->GetRouteId()].top = span->GetUpperNodeId();
        if (number == count[span->GetRouteId()]) ends[span->GetRouteId()].bottom = span->GetLowerNodeId();
    }
    return ends;
}

TEST_F(Town, LetsEveryRouteEndAtTheTopOfTheOneItJoins)
{
    CObjectManager design;
    Open(design);
    const std::map<unsigned long, Ends> ends = EndsOfRoutes(design);
    int atFlowEnd = 0;
    for (const CRoute* route : design.GetRouteDb()) {
        ASSERT_TRUE(ends.count(route->GetObjectId())) << route->GetObjectId();
        if (route->GetConnectId() == 0) {
            ++atFlowEnd;
            continue;
        }
        EXPECT_EQ(ends.at(route->GetObjectId()).bottom, ends.at(route->GetConnectId()).top) << route->GetObjectId();
        const CRoute* const joined = design.GetRouteObjectOriginal(static_cast<long>(route->GetConnectId()));
        EXPECT_EQ(route->GetSubAttribute(L"connectnum"), joined->GetSubAttribute(L"routenum"));
    }
    EXPECT_EQ(atFlowEnd, 3);
}

TEST_F(Town, LetsWaterAndGroundFallToTheFlowEnds)
{
    CObjectManager design;
    Open(design);
    for (const CSpan* span : design.GetSpanDb()) {
        const double upper = span->GetSubAttributeDouble(L"uppercentinv", 0);
        const double lower = span->GetSubAttributeDouble(L"lowercentinv", 0);
        EXPECT_GT(upper, lower) << span->GetObjectId();
        const CNode* const from = design.GetNodeObjectOriginal(static_cast<long>(span->GetUpperNodeId()));
        const CNode* const to = design.GetNodeObjectOriginal(static_cast<long>(span->GetLowerNodeId()));
        const double ground = to->GetSubAttributeDouble(L"ndnewgl", 0);
        EXPECT_GE(from->GetSubAttributeDouble(L"ndnewgl", 0), ground - 0.01) << span->GetObjectId();
        EXPECT_LT(lower, ground) << span->GetObjectId();
    }
}

TEST_F(Town, LetsEveryPipeBeginBelowTheOnesThatFlowIntoIt)
{
    CObjectManager design;
    Open(design);
    std::map<unsigned long, double> lowestArriving;
    for (const CSpan* span : design.GetSpanDb()) {
        const double invert = span->GetSubAttributeDouble(L"lowercentinv", 0);
        const auto [place, isNew] = lowestArriving.try_emplace(span->GetLowerNodeId(), invert);
        if (!isNew) place->second = std::min(place->second, invert);
    }
    for (const CSpan* span : design.GetSpanDb()) {
        const auto arriving = lowestArriving.find(span->GetUpperNodeId());
        if (arriving == lowestArriving.end()) continue;
        EXPECT_LE(span->GetSubAttributeDouble(L"uppercentinv", 0), arriving->second) << span->GetObjectId();
    }
}

} // namespace
