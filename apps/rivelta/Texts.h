// The texts of the tool, from Texts.def, in the language chosen at the start.
#pragma once

#include <string>

#include <fmt/format.h>

namespace obmgr::tool {

enum class Text {
#define OBM_TEXT(name, english, japanese) name,
#include "Texts.def"
#undef OBM_TEXT
};

enum class Language { Japanese, English };

// Chooses the language of the tool's and the library's texts.
void SetLanguage(Language language);
// UTF-8, ended by a zero.
const char* TextOf(Text text);

// The text with {0}, {1}... filled in.
template <class... Arguments> std::string Say(Text text, const Arguments&... arguments)
{
    return fmt::format(fmt::runtime(TextOf(text)), arguments...);
}

} // namespace obmgr::tool
