#include "Texts.h"

#include "resources/Resources.h"

#include <cstddef>

namespace obmgr::tool {

namespace {

struct Row {
    const char* english;
    const char* japanese;
};

constexpr Row kRows[] = {
#define OBM_TEXT(name, english, japanese) {english, japanese},
#include "Texts.def"
#undef OBM_TEXT
};

Language g_language = Language::English;

} // namespace

void SetLanguage(Language language)
{
    g_language = language;
    // Without the English module the library's messages stay Japanese; that is no reason to refuse the work.
    SetResourceLanguage(language == Language::Japanese ? ResourceLanguage::Japanese : ResourceLanguage::English);
}

const char* TextOf(Text text)
{
    const Row& row = kRows[static_cast<std::size_t>(text)];
    return g_language == Language::Japanese ? row.japanese : row.english;
}

} // namespace obmgr::tool
