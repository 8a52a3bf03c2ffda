// The tool's texts: what must hold of both columns.
#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct Row {
    std::string name;
    std::string english;
    std::string japanese;
};

const std::vector<Row> kRows = {
#define OBM_TEXT(name, english, japanese) {#name, english, japanese},
#include "../../apps/rivelta/Texts.def"
#undef OBM_TEXT
};

std::vector<std::string> placeholdersIn(const std::string& text)
{
    std::vector<std::string> found;
    for (std::size_t at = text.find('{'); at != std::string::npos; at = text.find('{', at + 1))
        found.push_back(text.substr(at, text.find('}', at) - at + 1));
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace

TEST(ToolTexts, BothLanguagesHaveTheSamePlaceholders)
{
    for (const Row& row : kRows)
        EXPECT_EQ(placeholdersIn(row.english), placeholdersIn(row.japanese)) << row.name;
}

TEST(ToolTexts, NoTextIsEmptyAndNamesAreUnique)
{
    std::vector<std::string> names;
    for (const Row& row : kRows) {
        EXPECT_FALSE(row.english.empty()) << row.name;
        EXPECT_FALSE(row.japanese.empty()) << row.name;
        names.push_back(row.name);
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
}

TEST(ToolTexts, EnglishIsPlainAscii)
{
    for (const Row& row : kRows)
        EXPECT_TRUE(std::all_of(row.english.begin(), row.english.end(), [](char c) { return c > 0; })) << row.name;
}
