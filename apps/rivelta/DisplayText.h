// UTF-8 text in columns of a terminal: width, shortening, and characters that must not reach it.
#pragma once

#include <string>
#include <string_view>

namespace obmgr::tool {

// Columns that the text takes: two for the wide letters of East Asia, none for combining marks.
int DisplayWidth(std::string_view utf8);
// The text, or its beginning and "…" when it is wider than `columns`.
std::string Shortened(std::string_view utf8, int columns);

enum class KeepLineEnds { No, Yes };
// Control characters as \n, \t, \x1b..., so that a value can neither break a table nor steer a terminal.
std::string WithoutControls(std::string_view utf8, KeepLineEnds keep = KeepLineEnds::No);

// Whether the environment says that what the tool prints, UTF-8, is shown as such.
bool IsUtf8Shown();

} // namespace obmgr::tool
