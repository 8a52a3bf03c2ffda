// What was loaded can be saved and loaded again without any change, in both forms of the file.
#include "hostile/HostileTest.h"

#include <algorithm>
#include <set>

using namespace hostile;

namespace {

class RoundTrip : public HostileTest, public testing::WithParamInterface<int> {
protected:
    // Saves, with the map data, and gives the bytes.
    std::string saveAll(CObjectManager& manager)
    {
        CStringArray details;
        EXPECT_TRUE(obmgr::SaveDesign(manager, support::toPath(folder / "save.xml"), GetParam(), true, error, details))
            << error << (details.GetSize() ? details[0] : CString());
        return support::readBytes(folder / "save.xml");
    }
    // Load, save, load, save: equal designs, equal bytes.
    void expectStable(CObjectManager& first)
    {
        const std::string second = saveAll(first);
        CObjectManager again;
        ASSERT_TRUE(read(again, second)) << error;
        ASSERT_TRUE(describe(again) == describe(first)) << "the designs differ";
        ASSERT_TRUE(saveAll(again) == second) << "the files differ";
        EXPECT_EQ(again.GetCurrentObjectId(), first.GetCurrentObjectId());
    }
    // The design, appended to itself.
    void expectAppends(CObjectManager& manager)
    {
        const std::string bytes = saveAll(manager);
        const int count = manager.GetAllDataCount();
        const long last = manager.GetCurrentObjectId();
        // Names of webs that occur twice are asked about.
        int asked = 0;
        interface.onQuestion = [&](const obmgr::NameQuestion&) {
            return std::optional(CString((L"renamed " + std::to_wstring(++asked)).c_str()));
        };
        ASSERT_TRUE(read(manager, bytes, true)) << error;
        EXPECT_EQ(manager.GetAllDataCount(), 2 * count);
        EXPECT_LE(manager.GetCurrentObjectId(), 2 * last + 1);
        expectStable(manager);
    }
};

std::vector<std::filesystem::path> goodFiles()
{
    std::vector<std::filesystem::path> files;
    const std::filesystem::path source = RIVELTA_SOURCE_DIR;
    for (const auto& folder : {source / ".." / "shared" / "data", source / "samples"}) {
        std::error_code none;
        for (const auto& entry : std::filesystem::directory_iterator(folder, none))
            if (entry.path().extension() == ".xml") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// Every value that needs care in one form or the other.
const wchar_t* const kValues[] = {L"",
                                  L" ",
                                  L"  both  ",
                                  L"\t\n\r",
                                  L"<a b=\"c\">&amp;</a>",
                                  L"'\"'",
                                  L"]]>",
                                  L"--",
                                  L"表能ソ\\~",
                                  L"①㈱髙﨑Ⅳ㎡ｶﾅ",
                                  L"〜−‖¥‾",
                                  L"가똠",
                                  L"é ß Ω я",
                                  L"\U00020BB7\U0001F600\U0010FFFD",
                                  L"\uFEFF\uFFFD\u0085\u2028\x7F\u00A0",
                                  L"\uE000\uE757",
                                  L"-1.50e+300",
                                  L"%s%n%d",
                                  L"&#x41;"};

} // namespace

TEST_P(RoundTrip, EveryTypeAndEveryKindOfValueSurvives)
{
    CObjectManager manager;
    long id = 0;
    std::size_t next = 0;
    const auto fill = [&](CPipeObject& object) {
        const int links[] = {0, -1, 2147483647, static_cast<int>(id)};
        for (int i = 0; i < static_cast<int>(object.Links().size()); ++i)
            object.SetLink(i, links[next++ % std::size(links)]);
        for (std::size_t i = 0; i < std::size(kValues); ++i)
            object.WriteSubAttribute((L"key" + std::to_wstring(i)).c_str(), kValues[i]);
        object.WriteSubAttribute(L"表_キー-1.x", L"v");
        // Webs of one name would be asked about.
        if (object.GetObjectType() == objectdata::Web) object.WriteSubAttribute(L"webname", id < 0 ? L"a" : L"b");
    };
    // Two of each, out of the order of their ids.
    for (const long step : {1, -1}) {
        id = step;
#define OBM_RECORD(T, ...)                                                                                             \
    if (obmgr::RecordOf(objectdata::T).reader != obmgr::Reader::Refuses) {                                             \
        auto object = std::make_unique<C##T>(static_cast<unsigned long>(id));                                          \
        fill(*object);                                                                                                 \
        ASSERT_TRUE(manager.Get##T##Db().Add(id, object.get())) << #T;                                                 \
        object.release();                                                                                              \
        id += step;                                                                                                    \
    }
#include "objects/ObjectTypes.def"
    }
    EXPECT_EQ(manager.GetAllDataCount(), 2 * (obmgr::kTypeCount - 1));
    CObjectManager loaded;
    ASSERT_TRUE(read(loaded, saveAll(manager))) << error;
    EXPECT_EQ(describe(loaded), describe(manager));
    expectStable(loaded);
}

TEST_P(RoundTrip, EveryGoodFileSurvives)
{
    const auto files = goodFiles();
    if (files.empty()) GTEST_SKIP() << "no files beside the checkout";
    for (const auto& file : files) {
        SCOPED_TRACE(file.filename().string());
        CObjectManager manager;
        if (!manager.CreatePipeObjectFromFile(support::toPath(file), error, false)) {
            // A file of default attributes is no design.
            EXPECT_TRUE(error.Right(17) == L" data is illegal.") << error;
            EXPECT_EQ(file.parent_path().filename(), "samples") << error;
            continue;
        }
        EXPECT_GT(manager.GetAllDataCount(), 0);
        expectStable(manager);
    }
}

TEST_P(RoundTrip, EveryGoodFileCanBeAppended)
{
    const auto files = goodFiles();
    if (files.empty()) GTEST_SKIP() << "no files beside the checkout";
    for (const auto& file : files) {
        if (std::filesystem::file_size(file) > 2'000'000) continue;
        SCOPED_TRACE(file.filename().string());
        CObjectManager manager;
        if (!manager.CreatePipeObjectFromFile(support::toPath(file), error, false)) continue;
        expectAppends(manager);
    }
}

TEST_P(RoundTrip, AnAppendedDesignIsTheSumOfBoth)
{
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\"/><span id=\"2\" uppernode=\"1\" lowernode=\"0\" routeid=\"3\"/>"
                                     "<route id=\"3\" webid=\"4\" connectid=\"0\"/><web id=\"4\" disposaltype=\"2\">"
                                     "<webname contents=\"w\"/></web>"))
        << error;
    expectAppends(manager);
    EXPECT_EQ(manager.GetSpanObjectOriginal(7)->GetUpperNodeId(), 6u);
    EXPECT_EQ(manager.GetSpanObjectOriginal(7)->GetLowerNodeId(), 0u);
    EXPECT_EQ(manager.GetRouteObjectOriginal(8)->GetWebId(), 9u);
}

INSTANTIATE_TEST_SUITE_P(Versions, RoundTrip, testing::Values(13, 14));
