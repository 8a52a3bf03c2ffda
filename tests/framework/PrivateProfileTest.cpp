#include "framework/PrivateProfile.h"

#include <ctime>
#include <filesystem>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <sys/stat.h>

#include <gtest/gtest.h>

#include "TemporaryFolder.h"
#include "framework/TextEncoding.h"

using obmgr::PrivateProfile;
using obmgr::ProfileInt;
using obmgr::ProfileText;
using namespace std::string_literals;
using namespace std::string_view_literals;

namespace {

CString textIn(const std::string& bytes, const CString& section = L"s", const CString& key = L"k")
{
    return PrivateProfile(bytes).Text(section, key, L"none");
}

int intIn(const std::string& value)
{
    return PrivateProfile("[s]\nk=" + value).Int(L"s", L"k", -7);
}

std::string utf16(std::wstring_view text)
{
    std::string bytes = "\xFF\xFE";
    for (const wchar_t c : text) {
        bytes += static_cast<char>(c & 0xFF);
        bytes += static_cast<char>(c >> 8);
    }
    return bytes;
}

} // namespace

TEST(PrivateProfile, FindsKeysInTheirSections)
{
    const PrivateProfile profile("[a]\nk=1\nm=2\n[b]\nk=3\n");
    EXPECT_EQ(profile.Text(L"a", L"k"), L"1");
    EXPECT_EQ(profile.Text(L"a", L"m"), L"2");
    EXPECT_EQ(profile.Text(L"b", L"k"), L"3");
    EXPECT_EQ(profile.Text(L"b", L"m", L"none"), L"none");
    EXPECT_EQ(profile.Text(L"c", L"k", L"none"), L"none");
    EXPECT_EQ(profile.Text(L"c", L"k"), L"");
}

TEST(PrivateProfile, LinesGiveTheseValues)
{
    struct {
        const char* name;
        std::string bytes;
        const wchar_t* value;
    } const cases[] = {
        {"case of the names", "[S]\nK=v", L"v"},
        {"blanks everywhere", " \t[ s ] \r\n \t k \t= \t a b \t\r\n", L"a b"},
        {"text behind the bracket", "[s] ; [x]\nk=v", L"v"},
        {"value with signs of its own", "[s]\nk=a=b;c ; d", L"a=b;c ; d"},
        {"empty value", "[s]\nk=", L""},
        {"double quotes", "[s]\nk=\" a \"", L" a "},
        {"single quotes", "[s]\nk = ' a ' ", L" a "},
        {"one pair only", "[s]\nk=\"'a'\"", L"'a'"},
        {"unlike quotes", "[s]\nk=\"a'", L"\"a'"},
        {"one quote", "[s]\nk=\"", L"\""},
        {"empty quotes", "[s]\nk=\"\"", L""},
        {"quotes within", "[s]\nk=a\"b\"", L"a\"b\""},
        {"comments", "[s]\n;k=1\n  ; k=2\nk=3", L"3"},
        {"section in a comment", "[s]\n;[x]\nk=v", L"v"},
        {"hash is no comment", "[s]\n#\nk=#v", L"#v"},
        {"first key of the name", "[s]\nk=1\nK=2", L"1"},
        {"first section of the name", "[s]\nx=1\n[S]\nk=2", L"none"},
        {"first section is empty", "[s]\n[s]\nk=2", L"none"},
        {"key before the sections", "k=1\n[s]\nx=2", L"none"},
        {"key without a sign", "[s]\nk\nk=v", L"v"},
        {"only without a sign", "[s]\nk", L"none"},
        {"longer key", "[s]\nkk=1\nk=2", L"2"},
        {"section without its bracket", "[s\nk=1\n[s]\nk=2", L"2"},
        {"bracket is missing later", "[s]\n[x\nk=v", L"v"},
        {"LF", "[s]\n\nk=v\n", L"v"},
        {"CR LF", "[s]\r\nk=v\r\n", L"v"},
        {"CR", "[s]\rk=v\rx=y", L"v"},
        {"zero before the bracket", "[s\0]\nk=v"s, L"none"},
        {"zero before the sign", "[s]\nk\0=1\nk=2"s, L"2"},
        {"zero in the value", "[s]\nk=a \0b"s, L"a"},
        {"nothing", "", L"none"},
        {"mark only", "\xEF\xBB\xBF", L"none"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(textIn(c.bytes), c.value) << c.name;
}

TEST(PrivateProfile, AskedNamesLoseTheirBlanks)
{
    const PrivateProfile profile("[s]\nk=v\n[]\n=w");
    EXPECT_EQ(profile.Text(L" S\t", L" K "), L"v");
    EXPECT_EQ(profile.Text(L"", L" "), L"w");
    EXPECT_EQ(profile.Text(nullptr, nullptr), L"w");
}

TEST(PrivateProfile, TextIsCutToTheSize)
{
    const PrivateProfile profile("[s]\nk=" + std::string(300, 'x') + "\nj=\"" + std::string(9, 'y') + "\"");
    EXPECT_EQ(profile.Text(L"s", L"k").GetLength(), 255);
    EXPECT_EQ(profile.Text(L"s", L"j", L"", 11), L"yyyyyyyyy");
    EXPECT_EQ(profile.Text(L"s", L"j", L"", 10), L"yyyyyyyyy");
    EXPECT_EQ(profile.Text(L"s", L"j", L"", 9), L"yyyyyyyy");
    for (const int size : {1, 0, -1})
        EXPECT_EQ(profile.Text(L"s", L"j", L"z", size), L"") << size;
    EXPECT_EQ(profile.Text(L"s", L"none", L"default", 4), L"def");
    EXPECT_EQ(profile.Text(L"s", L"none", CString(L'z', 300)).GetLength(), 255);
}

TEST(PrivateProfile, CharactersAreCountedAndNotBytes)
{
    const PrivateProfile profile("[s]\nk=\xE7\xAE\xA1\xE8\xB7\xAF\xF0\xA0\xAE\xB7z");
    EXPECT_EQ(profile.Text(L"s", L"k", L"", 4), L"管路\U00020BB7");
}

TEST(PrivateProfile, DefaultLosesTheBlanksAtItsEnd)
{
    EXPECT_EQ(PrivateProfile().Text(L"s", L"k", L"  x  "), L"  x");
    EXPECT_EQ(PrivateProfile().Text(L"s", L"k", L"  "), L"");
}

TEST(PrivateProfile, NumbersAreTheDigitsAtTheStart)
{
    struct {
        const char* value;
        int number;
    } const cases[] = {
        {"0", 0},
        {"42", 42},
        {"007", 7},
        {"+5", 5},
        {"-5", -5},
        {" \t 12 ", 12},
        {"3.9", 3},
        {"12abc", 12},
        {"1 2", 1},
        {"\"8\"", 8},
        {"' 8'", 8},
        {"", 0},
        {"abc", 0},
        {"-", 0},
        {"- 5", 0},
        {"--5", 0},
        {"0x10", 0},
        {"2147483647", 2147483647},
        {"-2147483648", -2147483647 - 1},
        {"4294967295", -1},
        {"4294967301", 5},
        {"\xEF\xBC\x95", 0}, // a full-width five
    };
    for (const auto& c : cases)
        EXPECT_EQ(intIn(c.value), c.number) << "'" << c.value << "'";
}

TEST(PrivateProfile, MissingNumberIsTheDefault)
{
    const PrivateProfile profile("[s]\nk\nj=1");
    EXPECT_EQ(profile.Int(L"s", L"k", 2), 2);
    EXPECT_EQ(profile.Int(L"x", L"j", -3), -3);
    EXPECT_EQ(PrivateProfile().Int(L"s", L"k", 4), 4);
}

TEST(PrivateProfile, ReadsItsEncodings)
{
    const std::string utf8 = "[\xE7\xAE\xA1]\r\n\xE8\xA1\xA8=\xE8\x83\xBD\r\n";
    struct {
        const char* name;
        std::string bytes;
    } const cases[] = {
        {"UTF-8", utf8},
        {"UTF-8 with a mark", "\xEF\xBB\xBF" + utf8},
        {"UTF-16", utf16(L"[管]\r\n表=能\r\n")},
        {"UTF-16 with half a character at the end", utf16(L"[管]\n表=能\n") + "x"},
        {"Shift_JIS", "[\x8A\xC7]\r\n\x95\x5C=\x94\x5C\r\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(textIn(c.bytes, L"管", L"表"), L"能") << c.name;
}

TEST(PrivateProfile, SecondBytesOfShiftJisAreNoBrackets)
{
    // The second bytes are those of "[", "]" and "A".
    EXPECT_EQ(textIn("[\x83\x5B\x83\x5D]\nk=\x83\x41", L"ゼゾ"), L"ア");
    EXPECT_EQ(textIn("[s]\n\x83\x5B\x83\x5D=1", L"s", L"ゼゾ"), L"1");
    EXPECT_EQ(textIn("[s]\n\x83\x61=small\n\x83\x41=capital", L"s", L"ア"), L"capital");
}

TEST(PrivateProfile, BrokenBytesBecomeReplacementCharacters)
{
    EXPECT_EQ(textIn("\xEF\xBB\xBF[s]\nk=a\xFFz"), L"a\uFFFDz") << "the mark decides";
    EXPECT_EQ(textIn("[s]\nk=a\x81\nj=\xFF"), L"a\uFFFD") << "the line end is not swallowed";
    EXPECT_EQ(textIn("[s]\nk=\xEF\xBF\xBD"), L"\uFFFD") << "valid as it stands";
}

TEST(PrivateProfile, HugeAndRepeatedPiecesTakeNoTime)
{
    constexpr std::size_t kSize = 1024 * 1024;
    const auto repeated = [](const std::string& piece) {
        std::string text;
        while (text.size() < kSize)
            text += piece;
        return text;
    };
    const std::string end = "\n[s]\nk=v";
    for (const char* const piece : {"x", " ", "[", "]", "=", ";", "\"", "\r", "\n", "[a]\n", "k=v\n", "\x81", "\xE7"})
        EXPECT_EQ(textIn(repeated(piece) + end), L"v") << piece;
    EXPECT_EQ(textIn(std::string(kSize, '\0') + end), L"v");
    EXPECT_EQ(textIn("[s]\n" + repeated("[") + "\nk=v"), L"v");
    EXPECT_EQ(textIn("[s]\n" + repeated("kk=v\n") + "k=v"), L"v");
    EXPECT_EQ(textIn("[s]\nk=" + repeated("x")).GetLength(), 255);
    EXPECT_EQ(intIn(repeated("0") + "12"), 12);
}

TEST(PrivateProfile, RandomBytesDoNoHarm)
{
    std::mt19937 random(1);
    constexpr std::string_view kAlphabet = "[]=;\"' \t\r\nskSK01-+\0\x81\x5C\xFF\xFE\xEF\xBB\xBF\xE7\xAE"sv;
    for (int round = 0; round < 20000; ++round) {
        std::string bytes = round % 2 ? "[s]" : "";
        for (auto length = random() % 64; length > 0; --length)
            bytes += kAlphabet[random() % kAlphabet.size()];
        const PrivateProfile profile(bytes);
        const CString text = profile.Text(L"s", L"k", L"none");
        ASSERT_EQ(profile.Text(L"s", L"k", L"none", 4), text.Left(3)) << testing::PrintToString(bytes);
        ASSERT_EQ(text.Find(L'\n'), -1) << testing::PrintToString(bytes);
        if (profile.Int(L"s", L"k", 77) == 77) {
            ASSERT_EQ(text, L"none") << testing::PrintToString(bytes);
        }
    }
}

TEST(PrivateProfile, ReadsTheSampleLabels)
{
    const CString path = obmgr::FromUtf8(RIVELTA_SOURCE_DIR "/samples/labels.ini");
    EXPECT_EQ(ProfileText(path, L"IntersControl", L"ActiveNoteEx"), L"1");
    EXPECT_EQ(ProfileText(path, L"intersnotesex1", L"Type1Level0Macro"), L"DP=[M:INTHI]");
    EXPECT_EQ(ProfileInt(path, L"LateralNotesEx1", L"LaLevel1Fig", 0), 3);
    EXPECT_EQ(ProfileText(path, L"AreaoutqNotesEx1", L"ShapeXText", L"", 256), L"x");
    EXPECT_EQ(ProfileInt(path, L"AreaoutqControl", L"ActiveNoteEx", 9), 9);
}

TEST(PrivateProfile, WhatCannotBeReadIsEmpty)
{
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo(folder.Native("pipe").c_str(), 0600), 0);
    folder.Put("file", "[s]\nk=v");
    const CString paths[] = {folder.Wide("none"), folder.Wide("none/none"), folder.Wide("file/k"),
                             folder.Wide(""),     folder.Wide("pipe"),      L""};
    for (const CString& path : paths) {
        EXPECT_EQ(ProfileText(path, L"s", L"k", L"default"), L"default") << path;
        EXPECT_EQ(ProfileInt(path, L"s", L"k", 5), 5) << path;
    }
}

TEST(PrivateProfile, FileIsReadAsItIsAtTheCall)
{
    const TemporaryFolder folder;
    const CString path = folder.Wide("管.ini");
    for (int round = 0; round < 500; ++round) {
        folder.Put("管.ini", "[s]\nk=" + std::to_string(100 + round));
        ASSERT_EQ(ProfileInt(path, L"s", L"k", 0), 100 + round);
    }
    std::filesystem::remove(folder.Native("管.ini"));
    EXPECT_EQ(ProfileInt(path, L"s", L"k", 0), 0);
}

TEST(PrivateProfile, FileThatLayStillIsReadAnewWhenItChanges)
{
    const TemporaryFolder folder;
    const CString path = folder.Wide("a.ini");
    folder.Put("a.ini", "[s]\nk=1");
    folder.Put("b.ini", "[s]\nk=4");
    obmgr::SetProfileClock([] { return std::time(nullptr) + 60; }); // the files were written a minute ago
    for (int round = 0; round < 3; ++round)
        ASSERT_EQ(ProfileInt(path, L"s", L"k", 0), 1);
    ASSERT_EQ(ProfileInt(folder.Wide("b.ini"), L"s", L"k", 0), 4);
    ASSERT_EQ(ProfileInt(path, L"s", L"k", 0), 1);

    const auto stamp = std::filesystem::last_write_time(folder.Native("a.ini"));
    folder.Put("a.ini", "[s]\nk=2");
    std::filesystem::last_write_time(folder.Native("a.ini"), stamp);
    EXPECT_EQ(ProfileInt(path, L"s", L"k", 0), 2) << "changed in place, with the old length and time";

    ASSERT_EQ(ProfileInt(folder.Wide("b.ini"), L"s", L"k", 0), 4);
    std::filesystem::rename(folder.Native("b.ini"), folder.Native("a.ini"));
    EXPECT_EQ(ProfileInt(path, L"s", L"k", 0), 4) << "replaced by another file";
    EXPECT_EQ(ProfileInt(folder.Wide("b.ini"), L"s", L"k", 0), 0) << "gone";
    obmgr::SetProfileClock(nullptr);
}

TEST(PrivateProfile, ThreadsReadTheirOwnFiles)
{
    const TemporaryFolder folder;
    for (int file = 0; file < 4; ++file)
        folder.Put(std::to_string(file), "[s]\nk=" + std::to_string(file));
    std::vector<std::thread> threads;
    std::vector<int> mistakes(4);
    for (int file = 0; file < 4; ++file)
        threads.emplace_back([&, file] {
            const CString path = folder.Wide(std::to_string(file));
            for (int round = 0; round < 500; ++round)
                if (ProfileInt(path, L"s", L"k", -1) != file) ++mistakes[static_cast<std::size_t>(file)];
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(mistakes, std::vector<int>(4));
}
