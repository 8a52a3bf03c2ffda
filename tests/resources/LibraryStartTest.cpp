// Start and stop, and which texts are chosen. The tests are run in one process, so each one balances its starts.
#include "resources/LibraryStart.h"

#include "control/UserInterface.h"
#include "framework/Language.h"
#include "resources/Resources.h"
#include "store/ObDefManager.h"
#include "store/ObjectManager.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/RuntimeException.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace {

// Asked for while static objects are made, in no known order with those of the library.
const CString g_textDuringStaticInitialisation = obmgr::ResourceText(IDS_NAME_SPAN);

// A folder that goes with the test.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "rivelta-XXXXXX").string();
        m_path = mkdtemp(pattern.data());
    }
    ~TemporaryFolder() { std::filesystem::remove_all(m_path); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

// Sets the system's language and the folder of the module for one test.
class LibraryStart : public testing::Test {
protected:
    LibraryStart()
    {
        if (const char* const before = std::getenv("RIVELTA_RESOURCE_DIR")) m_folderBefore = before;
    }

    void TearDown() override
    {
        obmgr::SetSystemLanguageForTests(std::nullopt);
        if (m_folderBefore)
            setenv("RIVELTA_RESOURCE_DIR", m_folderBefore->c_str(), 1);
        else
            unsetenv("RIVELTA_RESOURCE_DIR");
        Restart();
    }

    // Has the library make its choice again.
    static void Restart()
    {
        ASSERT_TRUE(obmgr::StartLibrary());
        obmgr::StopLibrary();
    }

    static void SetModuleFolder(const std::filesystem::path& folder)
    {
        setenv("RIVELTA_RESOURCE_DIR", folder.c_str(), 1);
    }

    static obmgr::ResourceLanguage LanguageAtStart()
    {
        Restart();
        EXPECT_TRUE(obmgr::StartLibrary());
        const obmgr::ResourceLanguage language = obmgr::CurrentResourceLanguage();
        obmgr::StopLibrary();
        return language;
    }

    std::optional<std::string> m_folderBefore;
};

constexpr auto kJapanese = obmgr::ResourceLanguage::Japanese;
constexpr auto kEnglish = obmgr::ResourceLanguage::English;

// Notes what a person would have been shown.
class RecordingInterface final : public obmgr::UserInterface {
public:
    RecordingInterface() : m_before(obmgr::InstallUserInterface(this)) {}
    ~RecordingInterface() override { obmgr::InstallUserInterface(m_before); }

    std::unique_ptr<obmgr::ProgressView> OpenProgress() override { return nullptr; }
    int ShowMessage(const CString& text, unsigned type) override
    {
        texts.push_back(text);
        types.push_back(type);
        return 1;
    }
    std::optional<CString> AskNewName(const obmgr::NameQuestion&) override { return std::nullopt; }

    std::vector<CString> texts;
    std::vector<unsigned> types;

private:
    obmgr::UserInterface* m_before;
};

bool ParsesWithXerces()
{
    static constexpr char document[] = "<pipedata><node id=\"1\"/></pipedata>";
    xercesc::SAXParser parser;
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(document), sizeof document - 1,
                                            "document");
    parser.parse(source);
    return parser.getErrorCount() == 0;
}

} // namespace

TEST_F(LibraryStart, JapaneseSystemUsesTheLibrarysOwnTextsThoughTheModuleIsThere)
{
    ASSERT_TRUE(obmgr::SetResourceLanguage(kEnglish)) << "the module must be there for this test";
    obmgr::SetSystemLanguageForTests(obmgr::LanguageId{0x0411});
    EXPECT_EQ(LanguageAtStart(), kJapanese);
}

TEST_F(LibraryStart, EnglishSystemUsesTheModuleBesideTheLibrary)
{
    obmgr::SetSystemLanguageForTests(obmgr::LanguageId{0x0409});
    EXPECT_EQ(LanguageAtStart(), kEnglish);
}

TEST_F(LibraryStart, AnyOtherSystemUsesTheModuleToo)
{
    for (const obmgr::LanguageId korean : {obmgr::LanguageId{0x0412}, obmgr::LanguageId{0x0812}}) {
        obmgr::SetSystemLanguageForTests(korean);
        EXPECT_EQ(LanguageAtStart(), kEnglish) << korean.full;
    }
}

TEST_F(LibraryStart, OnlyThePrimaryLanguageCounts)
{
    obmgr::SetSystemLanguageForTests(obmgr::LanguageId{0x0C11}); // Japanese with another sub-language
    EXPECT_EQ(LanguageAtStart(), kJapanese);
}

TEST_F(LibraryStart, EnglishSystemWithoutTheModuleUsesTheLibrarysOwnTextsSilently)
{
    const TemporaryFolder empty;
    SetModuleFolder(empty.Path());
    obmgr::SetSystemLanguageForTests(obmgr::LanguageId{0x0409});
    const RecordingInterface shown;

    EXPECT_EQ(LanguageAtStart(), kJapanese);
    EXPECT_EQ(obmgr::ResourceText(IDS_NAME_SPAN), L"スパン");
    EXPECT_TRUE(shown.texts.empty());
}

TEST_F(LibraryStart, FileThatIsNoModuleCountsAsNoModule)
{
    const TemporaryFolder folder;
    std::ofstream(folder.Path() / "ORNObmgrENU.so") << "not a module";
    SetModuleFolder(folder.Path());
    obmgr::SetSystemLanguageForTests(obmgr::LanguageId{0x0409});
    EXPECT_EQ(LanguageAtStart(), kJapanese);
}

TEST_F(LibraryStart, TheChoiceIsMadeOnce)
{
    obmgr::SetSystemLanguageForTests(obmgr::LanguageId{0x0411});
    Restart();
    ASSERT_TRUE(obmgr::StartLibrary());
    obmgr::SetSystemLanguageForTests(obmgr::LanguageId{0x0409});
    EXPECT_EQ(obmgr::CurrentResourceLanguage(), kJapanese);
    EXPECT_TRUE(obmgr::StartLibrary());
    EXPECT_EQ(obmgr::CurrentResourceLanguage(), kJapanese);
    obmgr::StopLibrary();
    obmgr::StopLibrary();
}

TEST_F(LibraryStart, LanguageCanBeSetBothWays)
{
    ASSERT_TRUE(obmgr::SetResourceLanguage(kEnglish));
    EXPECT_EQ(obmgr::ResourceText(IDS_NAME_ROUTE), L"Route");
    ASSERT_TRUE(obmgr::SetResourceLanguage(kJapanese));
    EXPECT_EQ(obmgr::ResourceText(IDS_NAME_ROUTE), L"路線");
}

TEST_F(LibraryStart, LanguageSetBeforeTheStartIsKept)
{
    obmgr::SetSystemLanguageForTests(obmgr::LanguageId{0x0411});
    Restart();
    ASSERT_TRUE(obmgr::SetResourceLanguage(kEnglish));
    ASSERT_TRUE(obmgr::StartLibrary());
    EXPECT_EQ(obmgr::CurrentResourceLanguage(), kEnglish);
    obmgr::StopLibrary();
}

TEST_F(LibraryStart, EnglishCannotBeSetWithoutTheModule)
{
    const TemporaryFolder empty;
    SetModuleFolder(empty.Path());
    ASSERT_TRUE(obmgr::SetResourceLanguage(kJapanese));
    EXPECT_FALSE(obmgr::SetResourceLanguage(kEnglish));
    EXPECT_EQ(obmgr::CurrentResourceLanguage(), kJapanese);
}

TEST_F(LibraryStart, LastStopOfSeveralStartsStops)
{
    ASSERT_FALSE(obmgr::g_libraryRuns.load()) << "an earlier test left the library running";
    ASSERT_TRUE(obmgr::StartLibrary());
    ASSERT_TRUE(obmgr::StartLibrary());
    obmgr::StopLibrary();
    EXPECT_TRUE(obmgr::g_libraryRuns.load());
    obmgr::StopLibrary();
    EXPECT_FALSE(obmgr::g_libraryRuns.load());
}

TEST_F(LibraryStart, EachStartBringsAnEmptyTableOfDefaultAttributes)
{
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(obmgr::StartLibrary());
        CObDefManager* const defaults = obmgr::GetObDefManager();
        ASSERT_NE(defaults, nullptr);
        EXPECT_TRUE(defaults->GetDefList().IsEmpty());
        defaults->GetDefList().AddTail(new CObDefault(objectdata::Node));
        obmgr::StopLibrary();
    }
}

TEST_F(LibraryStart, StopWithoutStartDoesNothing)
{
    obmgr::StopLibrary();
    ASSERT_TRUE(obmgr::StartLibrary());
    EXPECT_TRUE(ParsesWithXerces());
    obmgr::StopLibrary();
}

TEST_F(LibraryStart, ParserWorksWhileTheLibraryRunsAndAgainAfterARestart)
{
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(obmgr::StartLibrary());
        EXPECT_TRUE(ParsesWithXerces()) << round;
        obmgr::StopLibrary();
    }
}

TEST_F(LibraryStart, ProgramThatUsesTheParserItselfKeepsItAfterTheStop)
{
    xercesc::XMLPlatformUtils::Initialize();
    ASSERT_TRUE(obmgr::StartLibrary());
    obmgr::StopLibrary();
    EXPECT_TRUE(ParsesWithXerces());
    xercesc::XMLPlatformUtils::Terminate();
}

TEST_F(LibraryStart, LibraryKeepsTheParserWhenTheProgramGivesItUp)
{
    ASSERT_TRUE(obmgr::StartLibrary());
    xercesc::XMLPlatformUtils::Initialize();
    xercesc::XMLPlatformUtils::Terminate();
    EXPECT_TRUE(ParsesWithXerces());
    obmgr::StopLibrary();
}

TEST_F(LibraryStart, RefusalOfTheParserIsShownTwiceWithItsOwnText)
{
    xercesc::XMLPlatformUtils::Initialize();
    const RecordingInterface shown;
    const bool started = obmgr::StartXmlParser([] {
        ThrowXMLwithMemMgr1(xercesc::RuntimeException, xercesc::XMLExcepts::Gen_CouldNotOpenDTD, u"𠮷",
                            xercesc::XMLPlatformUtils::fgMemoryManager);
    });
    EXPECT_FALSE(started);
    ASSERT_EQ(shown.texts.size(), 2u);
    EXPECT_GE(shown.texts[0].Find(L"𠮷"), 0) << shown.texts[0];
    EXPECT_EQ(shown.texts[0], shown.texts[1]);
    EXPECT_EQ(shown.types[0], static_cast<unsigned>(MB_ICONSTOP));
    EXPECT_EQ(shown.types[1], 0u);
    xercesc::XMLPlatformUtils::Terminate();
}

TEST_F(LibraryStart, TextsCanBeHadDuringStaticInitialisation)
{
    EXPECT_TRUE(g_textDuringStaticInitialisation == L"スパン" || g_textDuringStaticInitialisation == L"Span");
}

// Runs in a process of its own: what it starts stays started until that process ends.
TEST(LibraryStartDeathTest, EntryPointsStartTheLibraryUntilTheProcessEnds)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto program = [] {
        if (obmgr::g_libraryRuns.load()) std::exit(2);
        obmgr::EnsureLibraryStarted();
        obmgr::EnsureLibraryStarted();
        if (!obmgr::g_libraryRuns.load() || !ParsesWithXerces()) std::exit(3);
        // A balanced pair of the program's own does not end it.
        if (!obmgr::StartLibrary()) std::exit(4);
        obmgr::StopLibrary();
        std::exit(obmgr::g_libraryRuns.load() ? 0 : 5);
    };
    EXPECT_EXIT(program(), testing::ExitedWithCode(0), "");
}

TEST(LibraryStartDeathTest, DesignsCanBeMadeAfterTheStopAtTheProcessEnd)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto program = [] {
        // Registered before the start, so it runs after the stop.
        std::atexit([] {
            if (obmgr::g_libraryRuns.load()) std::_Exit(2);
            if (obmgr::StartLibrary()) std::_Exit(3);
            const CObjectManager late;
            std::_Exit(obmgr::GetObDefManager() != nullptr ? 0 : 4);
        });
        {
            const CObjectManager first;
        }
        std::exit(5);
    };
    EXPECT_EXIT(program(), testing::ExitedWithCode(0), "");
}
