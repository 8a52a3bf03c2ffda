// The exact bytes of a save, one file of tests/data for each form. RIVELTA_UPDATE_GOLDEN=1 writes them anew; the
// difference is to be read like code.
#include "persistence/PersistenceTest.h"

#include <cstdlib>

namespace {

// A small town: every shape of record, and values that need care.
constexpr const char* kTown =
    "<profile><version contents=\"1.0\"/><appname contents=\"図面 editor\"/><time contents=\"09:30\"/><date "
    "contents=\"2024/04/01\"/><tarappversion contents=\"\"/><tarappname contents=\"\"/><intention contents=\"3\"/>"
    "<dataver contents=\"12\"/><extra contents=\"kept\"/></profile>\n"
    "<project id=\"1\"><prjname contents=\"表町 &lt;南&gt; &amp; &quot;北&quot;\"/><activweb "
    "contents=\"8\"/></project>\n"
    "<node id=\"2\"><ndtype contents=\"1\"/><cx contents=\"583368.3599990713410\"/></node>\n"
    "<node id=\"3\"><ndcommentf contents=\"&#10;&#9;&#13; 〜−¥ 𠮷 髙 ①\"/></node>\n"
    "<span id=\"4\" uppernode=\"2\" lowernode=\"3\" routeid=\"5\"><splength contents=\"12.5000000000000\"/></span>\n"
    "<span id=\"6\" uppernode=\"-2\" lowernode=\"0\" routeid=\"2147483647\"/>\n"
    "<route id=\"5\" webid=\"8\" connectid=\"0\"/>\n"
    "<web id=\"8\" disposaltype=\"2\"><webname contents=\"本管\\旧\"/></web>\n"
    "<section id=\"9\" setype=\"1\"><sename contents=\"\"/></section>\n"
    "<intpos id=\"10\" obj1id=\"5\" obj2id=\"4\"/>\n"
    "<drawpendat id=\"11\"><dpdtype contents=\"1\"/></drawpendat>\n"
    "<ohaul id=\"12\"/>\n";

struct Form {
    const char* name;
    int dataver;
    obmgr::LanguageId language;
};

class GoldenFiles : public PersistenceTest, public testing::WithParamInterface<Form> {};

} // namespace

TEST_P(GoldenFiles, ASaveHasTheseBytesAndReadsBackAsTheSameDesign)
{
    const auto& [name, dataver, language] = GetParam();
    obmgr::SetSystemLanguageForTests(language);
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, kTown)) << error;
    ASSERT_TRUE(manager.GetIcpInqDb().Add(7, new CIcpInq(7, 3)));
    const std::string bytes = save(manager, dataver);

    const std::filesystem::path golden = std::filesystem::path(RIVELTA_SOURCE_DIR) / "tests" / "data" / name;
    if (std::getenv("RIVELTA_UPDATE_GOLDEN")) support::writeBytes(golden, bytes);
    EXPECT_EQ(bytes, support::readBytes(golden));

    // The one type that is written and not read back.
    manager.GetIcpInqDb().Remove(manager.GetIcpInqDb().Find(7));
    const std::string readable = save(manager, dataver);
    CObjectManager again;
    ASSERT_TRUE(read(again, readable)) << error;
    EXPECT_EQ(save(again, dataver), readable);
}

INSTANTIATE_TEST_SUITE_P(Forms, GoldenFiles,
                         testing::Values(Form{"design_v13.xml", 13, obmgr::kJapaneseJapan},
                                         Form{"design_v14.xml", 14, obmgr::kJapaneseJapan},
                                         Form{"design_v13_korean.xml", 13, obmgr::kKoreanKorea},
                                         Form{"design_v14_korean.xml", 14, obmgr::kKoreanKorea}),
                         [](const auto& form) {
                             std::string name = form.param.name;
                             std::replace(name.begin(), name.end(), '.', '_');
                             return name;
                         });
