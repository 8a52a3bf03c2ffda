#include "framework/Language.h"

#include <array>
#include <cstdlib>
#include <map>
#include <string>

#include <gtest/gtest.h>

using obmgr::LanguageId;
using obmgr::SystemLanguage;

namespace {

// Takes the variables of the choice out of the environment, and puts them back.
class Language : public testing::Test {
protected:
    void SetUp() override
    {
        for (const char* const name : kNames) {
            if (const char* const value = std::getenv(name)) m_before[name] = value;
            ::unsetenv(name);
        }
    }
    void TearDown() override
    {
        obmgr::SetSystemLanguageForTests(std::nullopt);
        for (const char* const name : kNames) {
            ::unsetenv(name);
            if (m_before.count(name)) ::setenv(name, m_before[name].c_str(), 1);
        }
    }
    static void Set(const char* name, const char* value) { ::setenv(name, value, 1); }

private:
    static constexpr std::array kNames = {"RIVELTA_LANG", "LC_ALL", "LC_MESSAGES", "LANG"};
    std::map<std::string, std::string> m_before;
};

} // namespace

TEST_F(Language, NamesOfLocales)
{
    struct {
        const char* locale;
        int full;
        int primary;
    } const cases[] = {
        {"ja_JP.UTF-8", 0x0411, 17}, {"ja", 0x0411, 17},   {"ja_JP.eucJP@x", 0x0411, 17}, {"ko_KR.UTF-8", 0x0412, 18},
        {"en_US.UTF-8", 0x0409, 9},  {"en_GB", 0x0409, 9}, {"de_DE.UTF-8", 0x0409, 9},    {"C", 0x0409, 9},
        {"C.UTF-8", 0x0409, 9},      {"POSIX", 0x0409, 9}, {"java", 0x0409, 9},           {"", 0x0409, 9},
    };
    for (const auto& c : cases) {
        Set("LANG", c.locale);
        EXPECT_EQ(SystemLanguage().full, c.full) << c.locale;
        EXPECT_EQ(SystemLanguage().Primary(), c.primary) << c.locale;
    }
}

TEST_F(Language, NothingSetIsEnglish)
{
    EXPECT_EQ(SystemLanguage(), obmgr::kEnglishUnitedStates);
}

TEST_F(Language, FirstVariableThatIsNotEmptyDecides)
{
    Set("LANG", "ja_JP.UTF-8");
    Set("LC_MESSAGES", "");
    Set("LC_ALL", "");
    EXPECT_EQ(SystemLanguage(), obmgr::kJapaneseJapan);
    Set("LC_MESSAGES", "ko_KR.UTF-8");
    EXPECT_EQ(SystemLanguage(), obmgr::kKoreanKorea);
    Set("LC_ALL", "C");
    EXPECT_EQ(SystemLanguage(), obmgr::kEnglishUnitedStates);
}

TEST_F(Language, OwnVariableOverridesAndUnknownWordsDoNot)
{
    Set("LC_ALL", "ja_JP.UTF-8");
    Set("RIVELTA_LANG", "en");
    EXPECT_EQ(SystemLanguage(), obmgr::kEnglishUnitedStates);
    Set("RIVELTA_LANG", "ko");
    EXPECT_EQ(SystemLanguage(), obmgr::kKoreanKorea);
    for (const char* const word : {"", "xx", "JA"}) {
        Set("RIVELTA_LANG", word);
        EXPECT_EQ(SystemLanguage(), obmgr::kJapaneseJapan) << word;
    }
}

TEST_F(Language, SettingOfTheProcessOverridesAll)
{
    Set("RIVELTA_LANG", "en");
    obmgr::SetSystemLanguageForTests(LanguageId{0x0812});
    EXPECT_EQ(SystemLanguage().full, 0x0812);
    EXPECT_EQ(SystemLanguage().Primary(), obmgr::kKorean);
    obmgr::SetSystemLanguageForTests(std::nullopt);
    EXPECT_EQ(SystemLanguage(), obmgr::kEnglishUnitedStates);
}
