#include "framework/Language.h"

#include <atomic>
#include <cstdlib>
#include <string_view>

namespace obmgr {

namespace {

std::atomic<std::uint16_t> overridingLanguage{0}; // 0: none

std::string_view environment(const char* name)
{
    const char* const value = std::getenv(name);
    return value ? value : "";
}

// The language of a locale name such as "ja_JP.UTF-8".
std::optional<LanguageId> languageOf(std::string_view localeName)
{
    const std::string_view language = localeName.substr(0, localeName.find_first_of("_-.@"));
    if (language == "ja" || language == "japanese") return kJapaneseJapan;
    if (language == "ko" || language == "korean") return kKoreanKorea;
    if (language == "en" || language == "english") return kEnglishUnitedStates;
    return std::nullopt;
}

} // namespace

LanguageId SystemLanguage()
{
    if (const std::uint16_t full = overridingLanguage.load(); full != 0) return LanguageId{full};
    if (const auto language = languageOf(environment("RIVELTA_LANG"))) return *language;
    for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const std::string_view value = environment(name); !value.empty())
            return languageOf(value).value_or(kEnglishUnitedStates);
    return kEnglishUnitedStates;
}

void SetSystemLanguageForTests(std::optional<LanguageId> language)
{
    overridingLanguage.store(language ? language->full : std::uint16_t(0));
}

} // namespace obmgr
