// The bytes that text becomes in each encoding, and reading it back.

#include <random>

#include <gtest/gtest.h>

#include "framework/File.h"
#include "framework/TemporaryFolder.h"

using obmgr::TextEncoding;

namespace {

constexpr unsigned kNew = CFile::modeCreate | CFile::modeWrite;

// The bytes of a text written as wide text; that UTF-8 input gives the same is checked on the way.
std::string bytesOf(TextEncoding encoding, const CString& text)
{
    const TemporaryFolder folder;
    CStdioFile wide(folder.Wide("wide"), kNew, encoding);
    wide.WriteString(text);
    wide.Close();
    CStdioFile narrow(folder.Wide("narrow"), kNew, encoding);
    narrow.WriteUtf8(obmgr::ToUtf8(text.View()));
    narrow.Close();
    EXPECT_EQ(folder.Bytes("wide"), folder.Bytes("narrow"));
    return folder.Bytes("wide");
}

std::string utf16(std::u16string_view text)
{
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(static_cast<unsigned char>(unit & 0xFF));
        bytes += static_cast<char>(static_cast<unsigned char>(unit >> 8));
    }
    return bytes;
}

} // namespace

TEST(FileText, BytesOfEachEncoding)
{
    const CString text(L"<a b=\"1\">\n管髙𠮷가é");
    EXPECT_EQ(bytesOf(TextEncoding::Utf8, text), "<a b=\"1\">\n管髙𠮷가é");
    EXPECT_EQ(bytesOf(TextEncoding::Utf16LE, text), utf16(u"<a b=\"1\">\n管髙𠮷가é"));
    EXPECT_EQ(bytesOf(TextEncoding::ShiftJis, text), "<a b=\"1\">\n\x8A\xC7\xFB\xFC&#x20BB7;&#xAC00;&#xE9;");
    EXPECT_EQ(bytesOf(TextEncoding::EucKr, L"a\n가管é똠"), "a\n\xB0\xA1\xCE\xB7&#xE9;&#xB620;");
    EXPECT_EQ(bytesOf(TextEncoding::Utf8, L""), "");
}

TEST(FileText, CharactersThatShiftJisLacksBecomeReferences)
{
    EXPECT_EQ(bytesOf(TextEncoding::ShiftJis, L"1\u301C2\u2212\u00A5\U0001F600\u007Fx"),
              "1&#x301C;2&#x2212;&#xA5;&#x1F600;&#x7F;x");
    EXPECT_EQ(bytesOf(TextEncoding::ShiftJis, L"\U0010FFFF\u2016\u203E"), "&#x10FFFF;&#x2016;&#x203E;");
}

TEST(FileText, ShiftJisBytesComeBackAsTheyWere)
{
    const std::string bytes = "\x81\x60\x81\x7C\x81\x61\x81\xCA\x5C\x7E \x87\x40\x87\x8A\xFB\xFC\xB1\x83\x5C\x95\x5C";
    const TemporaryFolder folder;
    folder.Put("in", bytes);
    CStdioFile file(folder.Wide("in"), CFile::modeRead, TextEncoding::ShiftJis);
    CString text;
    ASSERT_TRUE(file.ReadString(text));
    EXPECT_EQ(text, L"\uFF5E\uFF0D\u2225\uFFE2\\~ ①㈱髙ｱソ表");
    EXPECT_EQ(bytesOf(TextEncoding::ShiftJis, text), bytes);
}

TEST(FileText, WhatIsNoCharacterIsWrittenAsTheReplacement)
{
    CString text(L"a");
    text += static_cast<wchar_t>(0xD842);
    text += static_cast<wchar_t>(0x110000);
    EXPECT_EQ(bytesOf(TextEncoding::Utf8, text), "a\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(bytesOf(TextEncoding::Utf16LE, text), utf16(u"a\uFFFD\uFFFD"));
    EXPECT_EQ(bytesOf(TextEncoding::ShiftJis, text), "a&#xFFFD;&#xFFFD;");
}

TEST(FileText, BrokenUtf8IsWrittenAsTheReplacement)
{
    const TemporaryFolder folder;
    CStdioFile file(folder.Wide("out"), kNew, TextEncoding::Utf8);
    file.WriteUtf8("a\xFF"
                   "b\xE7\xAE");
    file.Close();
    EXPECT_EQ(folder.Bytes("out"), "a\xEF\xBF\xBD"
                                   "b\xEF\xBF\xBD");
}

TEST(FileText, TextsAcrossTheBufferAreWhole)
{
    std::mt19937 random(11);
    const std::wstring letters = L"abc<>& 管髙é𠮷가\u301C\n";
    for (const auto encoding :
         {TextEncoding::Utf8, TextEncoding::Utf16LE, TextEncoding::ShiftJis, TextEncoding::EucKr}) {
        const TemporaryFolder folder;
        CStdioFile file(folder.Wide("out"), kNew, encoding);
        CStdioFile pieces(folder.Wide("pieces"), kNew, encoding);
        std::string all;
        while (all.size() < 600'000) {
            std::wstring piece;
            for (auto left = random() % 3000; left > 0; --left)
                piece += random() % 3 ? L'x' : letters[random() % letters.size()];
            const std::string utf8 = obmgr::ToUtf8(piece);
            all += utf8;
            file.WriteUtf8(utf8);
            for (std::size_t at = 0; at < piece.size(); at += 64)
                pieces.WriteString(piece.substr(at, 64).c_str());
        }
        file.Close();
        pieces.Close();
        CStdioFile once(folder.Wide("once"), kNew, encoding);
        once.WriteUtf8(all);
        once.Close();
        const std::string bytes = folder.Bytes("out");
        EXPECT_GT(bytes.size(), 500'000U);
        EXPECT_TRUE(bytes == folder.Bytes("pieces"));
        EXPECT_TRUE(bytes == folder.Bytes("once"));
        if (encoding == TextEncoding::Utf8) {
            EXPECT_TRUE(bytes == all);
        }
        if (encoding == TextEncoding::Utf16LE) {
            EXPECT_TRUE(obmgr::ToUtf8(obmgr::DecodeText(encoding, bytes).View()) == all);
        }
    }
}

TEST(FileText, LinesAreReadInEachEncoding)
{
    for (const auto encoding :
         {TextEncoding::Utf8, TextEncoding::Utf16LE, TextEncoding::ShiftJis, TextEncoding::EucKr}) {
        const TemporaryFolder folder;
        CStdioFile out(folder.Wide("lines"), kNew, encoding);
        out.WriteString(L"first 管\r\n\nthird\nlast");
        out.Close();
        CStdioFile in(folder.Wide("lines"), CFile::modeRead, encoding);
        CString line;
        std::wstring lines;
        while (in.ReadString(line))
            lines += L"[" + std::wstring(line.View()) + L"]";
        EXPECT_EQ(lines, L"[first 管][][third][last]");
        EXPECT_EQ(line, L"");
    }
}

TEST(FileText, MarkAtTheStartIsLeftOutAndLaterOnesStay)
{
    const TemporaryFolder folder;
    folder.Put("utf16", "\xFF\xFE" + utf16(u"a\n\uFEFFb\n\u0A0Ac"));
    folder.Put("utf8", "\xEF\xBB\xBF"
                       "a\n");
    CString line;
    CStdioFile wide(folder.Wide("utf16"), CFile::modeRead);
    EXPECT_TRUE(wide.ReadString(line));
    EXPECT_EQ(line, L"a");
    EXPECT_TRUE(wide.ReadString(line));
    EXPECT_EQ(line, L"\uFEFFb");
    EXPECT_TRUE(wide.ReadString(line));
    EXPECT_EQ(line, L"\u0A0Ac") << "a line ends at the character, not at its byte";
    wide.SeekToBegin();
    EXPECT_TRUE(wide.ReadString(line));
    EXPECT_EQ(line, L"a");
    CStdioFile narrow(folder.Wide("utf8"), CFile::modeRead, TextEncoding::Utf8);
    EXPECT_TRUE(narrow.ReadString(line));
    EXPECT_EQ(line, L"a");
    EXPECT_FALSE(narrow.ReadString(line));
}
