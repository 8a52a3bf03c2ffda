// The language of the system, from which texts and file prologs are chosen.
#pragma once

#include <cstdint>
#include <optional>

#include "common/Export.h"

namespace obmgr {

inline constexpr int kJapanese = 17; // primary language ids
inline constexpr int kEnglish = 9;
inline constexpr int kKorean = 18;

// A language id of the interface: the primary language in the low ten bits, the country above.
struct LanguageId {
    std::uint16_t full = 0x0409;

    constexpr int Primary() const noexcept { return full & 0x3FF; }
    friend constexpr bool operator==(LanguageId, LanguageId) = default;
};

inline constexpr LanguageId kJapaneseJapan{0x0411};
inline constexpr LanguageId kKoreanKorea{0x0412};
inline constexpr LanguageId kEnglishUnitedStates{0x0409};

// From the environment, read at each call: RIVELTA_LANG ("ja", "en", "ko") if it names one of these, else the first
// of LC_ALL, LC_MESSAGES, LANG that is not empty. A language that is none of the three, "C" included, is English.
RIVELTA_API LanguageId SystemLanguage();

// Puts a language in the place of the environment's for this process; none takes it away again.
RIVELTA_API void SetSystemLanguageForTests(std::optional<LanguageId> language);

} // namespace obmgr
