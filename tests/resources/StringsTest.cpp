// The two columns of the texts against each other, and the rows that the record types rely on.
#include "framework/String.h"
#include "objects/ObjectTypes.h"
#include "resources/Resources.h"
#include "resources/StringTable.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

struct Row {
    std::string name;
    unsigned number;
    std::wstring english;
    std::wstring japanese;
};

const std::vector<Row>& Rows()
{
    static const std::vector<Row> rows = {
#define OBM_STRING(name, number, english, japanese) {#name, number, L"" english, L"" japanese},
#include "resources/Strings.def"
    };
    return rows;
}

// "%1", "%s", "%d", "%.2f" ... of a text, sorted.
std::vector<std::wstring> Placeholders(const std::wstring& text)
{
    std::vector<std::wstring> found;
    for (std::size_t at = text.find(L'%'); at != std::wstring::npos; at = text.find(L'%', at)) {
        const std::size_t end = text.find_first_of(L"sdfgx%123456789", at + 1);
        const std::size_t length = end == std::wstring::npos ? text.size() - at : end + 1 - at;
        found.push_back(text.substr(at, length));
        at += length;
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::vector<unsigned> Ids(const obmgr::StringTable& table)
{
    std::vector<unsigned> ids;
    for (std::uint32_t i = 0; i < table.count; ++i)
        ids.push_back(table.rows[i].id);
    return ids;
}

unsigned NumberOf(const std::string& prefix, std::string_view tag)
{
    std::string name = prefix;
    for (const char c : tag)
        name += static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    const auto row = std::find_if(Rows().begin(), Rows().end(), [&](const Row& r) { return r.name == name; });
    return row == Rows().end() ? 0 : row->number;
}

} // namespace

TEST(Strings, BothTablesHoldTheSameIds)
{
    const obmgr::StringTable* const english = obmgr::LoadEnglishStrings();
    ASSERT_NE(english, nullptr) << "the module with the English texts is not beside the library";
    EXPECT_EQ(Ids(*english), Ids(obmgr::JapaneseStrings()));
    EXPECT_EQ(english->count, Rows().size());
}

TEST(Strings, EachTableGivesTheTextsOfItsColumn)
{
    const obmgr::StringTable* const english = obmgr::LoadEnglishStrings();
    ASSERT_NE(english, nullptr);
    for (const Row& row : Rows()) {
        const wchar_t* const englishText = obmgr::FindString(*english, row.number);
        const wchar_t* const japaneseText = obmgr::FindString(obmgr::JapaneseStrings(), row.number);
        ASSERT_TRUE(englishText != nullptr && japaneseText != nullptr) << row.name;
        EXPECT_EQ(englishText, row.english) << row.name;
        EXPECT_EQ(japaneseText, row.japanese) << row.name;
    }
}

TEST(Strings, UnknownNumbersHaveNoText)
{
    for (const unsigned unknown : {0u, 99u, 1100u, 1194u, 0xFFFFFFFFu})
        EXPECT_EQ(obmgr::FindString(obmgr::JapaneseStrings(), unknown), nullptr) << unknown;
}

TEST(Strings, NoNumberIsGivenTwice)
{
    std::map<unsigned, std::string> owner;
    for (const Row& row : Rows()) {
        const auto [first, isNew] = owner.emplace(row.number, row.name);
        EXPECT_TRUE(isNew) << row.name << " has the number of " << first->second;
    }
}

TEST(Strings, NoTextIsEmpty)
{
    for (const Row& row : Rows()) {
        EXPECT_FALSE(row.english.empty()) << row.name;
        EXPECT_FALSE(row.japanese.empty()) << row.name;
    }
}

TEST(Strings, BothLanguagesHaveTheSamePlaceholders)
{
    for (const Row& row : Rows())
        EXPECT_EQ(Placeholders(row.english), Placeholders(row.japanese)) << row.name;
}

TEST(Strings, EnglishTextsAreAscii)
{
    for (const Row& row : Rows())
        for (const wchar_t c : row.english)
            EXPECT_TRUE(c == L'\n' || (c >= L' ' && c <= L'~')) << row.name;
}

TEST(Strings, MessagesAreTranslated)
{
    for (const Row& row : Rows()) {
        const auto isJapanese = [](wchar_t c) { return c >= 0x3000; };
        const bool translated = std::any_of(row.japanese.begin(), row.japanese.end(), isJapanese);
        EXPECT_TRUE(translated || row.name == "IDS_DUPLICATE_WEB_OK") << row.name;
    }
}

TEST(Strings, EveryRecordTypeHasItsFailureMessageAndItsName)
{
    for (const obmgr::RecordInfo& record : obmgr::Records()) {
        const unsigned position = static_cast<unsigned>(record.type) + 1;
        EXPECT_EQ(NumberOf("IDS_WRITE_", record.tag), 1100 + position) << record.tag;
        EXPECT_EQ(NumberOf("IDS_NAME_", record.tag), 1200 + position) << record.tag;
    }
}

TEST(Strings, NoRowNamesATypeThatDoesNotExist)
{
    std::size_t writes = 0;
    std::size_t names = 0;
    for (const Row& row : Rows()) {
        writes += row.name.starts_with("IDS_WRITE_");
        names += row.name.starts_with("IDS_NAME_");
    }
    EXPECT_EQ(writes, obmgr::Records().size());
    EXPECT_EQ(names, obmgr::Records().size());
}

TEST(Strings, ReportedFailureIsTheTypesOwnExceptForStreetBoundaries)
{
    for (const obmgr::RecordInfo& record : obmgr::Records()) {
        const bool borrows = record.tag == "publine";
        EXPECT_EQ(record.writeFailure, NumberOf("IDS_WRITE_", borrows ? "ohaul" : record.tag)) << record.tag;
    }
}

TEST(Strings, RecordNamesAreDistinctInEachLanguage)
{
    std::set<std::wstring> english;
    std::set<std::wstring> japanese;
    for (const Row& row : Rows()) {
        if (!row.name.starts_with("IDS_NAME_")) continue;
        EXPECT_TRUE(english.insert(row.english).second) << row.name;
        EXPECT_TRUE(japanese.insert(row.japanese).second) << row.name;
    }
}

// Known to users and to programs that look for them: the odd ones stay as they are.
TEST(Strings, EnglishWordingIsKeptWithItsMisspellings)
{
    const obmgr::StringTable* const english = obmgr::LoadEnglishStrings();
    ASSERT_NE(english, nullptr);
    const struct {
        unsigned id;
        const wchar_t* text;
    } cases[] = {
        {IDS_WRITE_ROUTE, L"Route dataFailed to write."},
        {IDS_WRITE_MANHOLE, L"Failed to write th manholee record."},
        {IDS_WRITE_EXECUTION, L"Failed to write the construction metods data."},
        {IDS_WRITE_TIMBERAUTO, L"Failed to write the automatic setteing timberling data."},
        {IDS_WRITE_NOAREA, L"Failed to write the invalid runoff coefficient regions"},
        {IDS_WRITE_PUBLINE, L"Failed to write the boundary line of street data."},
        {IDS_FATAL_ERROR, L"Fatal error occurred.\nTerminate the system."},
        {IDS_FILE_NOT_FOUND, L"Can not find the file %1."},
        {IDS_RENUMBER_FAILED, L"ID = %d of %s is a failure to transfer"},
    };
    for (const auto& [id, text] : cases)
        EXPECT_STREQ(obmgr::FindString(*english, id), text);
}

TEST(Strings, NameAndNumberFindTheirPlacesInEitherLanguage)
{
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::English));
    EXPECT_EQ(obmgr::ResourceTextOf(IDS_RENUMBER_FAILED, L"CNode", 7), L"ID = 7 of CNode is a failure to transfer");
    EXPECT_EQ(obmgr::ResourceTextOf(IDS_READ_RECORD_INVALID, L"icpinq", -1), L"icpinq ID=-1 data is illegal.");

    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::Japanese));
    EXPECT_EQ(obmgr::ResourceTextOf(IDS_RENUMBER_FAILED, L"CNode", 7), L"CNode の ID = 7 の振り直しに失敗しました");
}
