// Bytes that are no text, or text in another encoding than the file says.
#include "hostile/HostileTest.h"

#include <random>

using namespace hostile;

namespace {

class HostileEncodings : public HostileTest {
protected:
    static std::string narrow(const std::string& encoding, const std::string& value)
    {
        return "<?xml version = \"1.0\" encoding = \"" + encoding + "\"?>\n<pipedata>\n<node id=\"1\"><a contents=\"" +
               value + "\"/></node></pipedata>\n";
    }
    static std::u16string wide(const std::u16string& value, const std::u16string& encoding = u"UTF-16")
    {
        return u"<?xml version = \"1.0\" encoding = \"" + encoding +
               u"\"?>\n<pipedata>\n<node id=\"1\"><a contents=\"" + value + u"\"/></node></pipedata>\n";
    }
    static std::string swapped(std::string bytes)
    {
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
            std::swap(bytes[i], bytes[i + 1]);
        return bytes;
    }
    // UTF-32LE.
    static std::string utf32(const std::u16string& text)
    {
        std::string bytes;
        for (const char16_t unit : text)
            bytes += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8), 0, 0};
        return bytes;
    }
};

} // namespace

TEST_F(HostileEncodings, BytesThatAreNoXmlAreRefusedAtOnce)
{
    std::mt19937 random(7);
    std::string noise;
    for (int i = 0; i < 100000; ++i)
        noise += static_cast<char>(random() & 0xFF);
    const std::string cases[] = {"\xFF\xFE",
                                 "\xEF\xBB\xBF",
                                 "<",
                                 "x",
                                 "\n",
                                 "abc",
                                 "\xFF\xFE<",
                                 std::string(1'500'000, '\0'),
                                 std::string(1'500'000, '\xFF'),
                                 std::string(1'500'000, ' '),
                                 std::string(1'500'000, '<'),
                                 noise,
                                 "\x1F\x8B\x08" + noise,
                                 "PK\x03\x04" + noise,
                                 "%PDF-1.4\n" + noise,
                                 "node,id\n1,2\n",
                                 "{\"node\": 1}"};
    for (const std::string& bytes : cases) {
        SCOPED_TRACE(testing::PrintToString(bytes.substr(0, 8)));
        expectRefused(bytes);
    }
    expectRefused("<!DOCTYPE html><html><head><title>x</title></head></html>", L"html ID=-1 data is illegal.");
    expectRefused("<?xml version='1.0'?><svg width='1'/>", L"svg ID=-1 data is illegal.");
}

TEST_F(HostileEncodings, WhatFollowsTheRootIsBlankOrACommentOrRefused)
{
    const std::string good = withValue("x");
    for (const std::string& end : {std::string("  \n"), std::string("<!-- end -->"), std::string("<?end?>"),
                                   std::string(4096, '\0'), std::string(1, '\0')})
        EXPECT_EQ(valueIn(good + end), L"x");
    const std::string wideFile = "\xFF\xFE" + support::utf16(wide(u"x"));
    EXPECT_EQ(valueIn(wideFile + "\n"), L"x"); // half a character
    for (const std::string& end : {std::string("x"), std::string("<pipedata/>"), std::string("&amp;"), good})
        expectRefused(good + end);
    expectRefused(wideFile + wideFile);
}

TEST_F(HostileEncodings, NulsAreRefusedWhereverTheyStand)
{
    using namespace std::string_literals;
    for (const std::string& bytes :
         {withValue("a\0b"s), document("<node id=\"1\"/>\0<node id=\"2\"/>"s), document("<no\0de id=\"1\"/>"s),
          document("<node id=\"1\0\"/>"s), document("<node \0id=\"1\"/>"s), "\0"s + document("")})
        expectRefused(bytes);
    expectRefused("\xFF\xFE" + support::utf16(wide(std::u16string(u"a\0b", 3))));
}

TEST_F(HostileEncodings, ControlCharactersAreRefusedWithTheirLine)
{
    for (char c = 1; c < 0x20; ++c) {
        if (c == '\t' || c == '\n' || c == '\r') continue;
        expectRefused(document("\n<node id=\"1\">\n<a contents=\"" + std::string(1, c) + "\"/></node>"));
        EXPECT_FALSE(read(*std::make_unique<CObjectManager>(),
                          document("\n<node id=\"1\">\n<a contents=\"" + std::string(1, c) + "\"/></node>")));
        EXPECT_GE(error.Find(L", line 5, column 0\n"), 0) << error;
    }
    for (const char* const reference :
         {"&#0;", "&#1;", "&#x1F;", "&#xD800;", "&#xDFFF;", "&#xFFFE;", "&#xFFFF;", "&#x110000;",
          "&#99999999999999999999;", "&#xFFFFFFFFFFFFFFFF0041;", "&#;", "&#x;", "&#-1;", "&;", "&nbsp;", "&", "<"}) {
        SCOPED_TRACE(reference);
        expectRefused(withValue(reference));
    }
}

TEST_F(HostileEncodings, InvalidUtf16IsRefused)
{
    for (const std::u16string& value :
         {std::u16string{0xD842}, std::u16string{0xD842} + u"&amp;", std::u16string{0xDFB7},
          std::u16string{0xDFB7, 0xD842}, std::u16string{0xD842, u'x'}, std::u16string{0xD842, 0xD842, 0xDFB7},
          std::u16string{0xFFFE}, std::u16string{0xFFFF}, std::u16string{1}}) {
        const std::string little = support::utf16(wide(value));
        SCOPED_TRACE(testing::PrintToString(value));
        expectRefused("\xFF\xFE" + little);
        expectRefused("\xFE\xFF" + swapped(little));
        // As a name and inside the prolog, too.
        expectRefused("\xFF\xFE" + support::utf16(u"<pipedata><" + value + u" id=\"1\"/></pipedata>"));
    }
}

TEST_F(HostileEncodings, InvalidUtf8IsRefused)
{
    for (const char* const value :
         {"\x80", "\xC0\x80", "\xC1\xBF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x80\x80\xAF",
          "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xE8\xA1", "\xFF", "\xFE", "\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
        SCOPED_TRACE(testing::PrintToString(value));
        CObjectManager manager;
        EXPECT_FALSE(read(manager, withValue(value)));
        EXPECT_FALSE(error.IsEmpty());
        EXPECT_TRUE(readRecords(manager, "<ohaul id=\"9\"/>")) << error;
    }
}

TEST_F(HostileEncodings, BrokenShiftJisAndEucKrAreRefused)
{
    const std::string tail = "\"/></node></pipedata>\n";
    const std::string whole = narrow("SHIFT-JIS", "\x95");
    for (const char* const value : {"\x81\x30", "\x81\x7F", "\xFD", "\xFF", "\x95"}) {
        SCOPED_TRACE(testing::PrintToString(value));
        expectRefused(narrow("SHIFT-JIS", value));
    }
    // A lead byte is the last of the file.
    expectRefused(whole.substr(0, whole.size() - tail.size()));
}

// The table has a replacement for what it lacks, and the parser does not tell. Nothing around it is lost.
TEST_F(HostileEncodings, BrokenEucKrBecomesReplacementCharacters)
{
    EXPECT_EQ(valueIn(narrow("EUC-KR", "\xB0\xA1\xC9")), L"가\uFFFD");
    EXPECT_EQ(valueIn("\xFF\xFE" + narrow("EUC-KR", "\xC9")), L"\uFFFD");
    EXPECT_EQ(valueIn(narrow("EUC-KR", "\x81\x30")), L"\uFFFD"
                                                     L"0");
}

TEST_F(HostileEncodings, EveryFormOfUnicodeLoads)
{
    const std::u16string text = wide(u"表\U00020BB7\uFEFF");
    const CString expected = L"表\U00020BB7\uFEFF";
    const std::string little = support::utf16(text);
    EXPECT_EQ(valueIn("\xFF\xFE" + little), expected);
    EXPECT_EQ(valueIn("\xFE\xFF" + swapped(little)), expected);
    EXPECT_EQ(valueIn(little), expected);
    EXPECT_EQ(valueIn(swapped(little)), expected);
    EXPECT_EQ(valueIn("\xEF\xBB\xBF" + narrow("UTF-8", "表")), L"表");
    EXPECT_EQ(valueIn("\xEF\xBB\xBF" + narrow("UTF-16", "表")), L"表");
    EXPECT_EQ(valueIn(narrow("UTF-16", "x")), L"x");
    EXPECT_EQ(valueIn(utf32(wide(u"表", u"UTF-32"))), L"表");
}

TEST_F(HostileEncodings, AWronglyDeclaredEncodingIsRefusedOrHarmless)
{
    // Declared as one thing, written as another.
    expectRefused("\xFF\xFE" + support::utf16(wide(u"表", u"UTF-8")));
    expectRefused(narrow("UTF-8", "\x95\x5C"));
    expectRefused("\xFE\xFF" + support::utf16(wide(u"x")));
    for (const char* const encoding :
         {"SHIFT-JIS", "EUC-KR", "EUC-JP", "ISO-2022-JP", "UTF-7", "SCSU", "US-ASCII", "ISO-8859-1", "UTF-32", "IBM037",
          "BOCU-1", "GB18030", "HZ-GB-2312", "x-unknown"}) {
        CObjectManager manager;
        const bool loads = read(manager, narrow(encoding, "\x95\x5C\x1B$B!!\x1B(B+AGEAYg-~{"));
        EXPECT_NE(loads, !error.IsEmpty()) << encoding;
        EXPECT_LE(manager.GetAllDataCount(), 1);
        EXPECT_TRUE(readRecords(manager, "<ohaul id=\"9\"/>")) << error;
    }
}

TEST_F(HostileEncodings, UnknownNamesOfEncodingsAreRefusedWithAShortText)
{
    for (const std::string& name :
         {std::string("UNKNOWN-9"), std::string("../../etc/passwd"), std::string("/dev/stdin"), std::string(),
          std::string(" "), std::string("%n%s%s%s"), std::string(5000, 'e'), std::string(5'000'000, 'e'),
          std::string("UTF-8\0x", 7), std::string("\xE8\xA1\xA8")}) {
        SCOPED_TRACE(name.substr(0, 40));
        CObjectManager manager;
        EXPECT_FALSE(read(manager, narrow(name, "x")));
        EXPECT_FALSE(error.IsEmpty());
        EXPECT_LT(error.GetLength(), 5000);
        EXPECT_TRUE(readRecords(manager, "<ohaul id=\"9\"/>")) << error;
    }
}

TEST_F(HostileEncodings, BrokenPrologsAreRefused)
{
    for (const char* const prolog :
         {"<?xml?>", "<?xml version='1.0'", "<?xml version='9.9'?>", "<?xml version=1.0?>", " <?xml version='1.0'?>",
          "<?xml encoding='UTF-8' version='1.0'?>", "<?xml version='1.0' encoding=?>",
          "<?xml version='1.0' encoding='EUC-KR?>", "<?xml version='1.0' encoding",
          "<?xml version='1.0'?><?xml version='1.0'?>", "<?XML version='1.0'?>"})
        expectRefused(prolog + std::string("<pipedata/>"));
}

TEST_F(HostileEncodings, CharactersOfTheNewerXmlLoadAndAreNeverSavedAsAnUnreadableFile)
{
    const std::string newer = "<?xml version='1.1'?><pipedata><node id='1'><a contents='&#1;'/></node></pipedata>";
    CObjectManager manager;
    ASSERT_TRUE(read(manager, newer)) << error;
    EXPECT_EQ(manager.GetNodeObjectOriginal(1)->GetSubAttribute(L"a"), L"\x01");
    CStringArray details;
    for (const int dataver : {13, 14}) {
        EXPECT_FALSE(obmgr::SaveDesign(manager, support::toPath(folder / "out.xml"), dataver, false, error, details));
        EXPECT_EQ(error, L"Failed to write the data node.");
        ASSERT_EQ(details.GetSize(), 1);
        EXPECT_GE(details[0].Find(L"node ID=1"), 0) << details[0];
        EXPECT_FALSE(std::filesystem::exists(folder / "out.xml"));
    }
}

namespace {

// A file of both forms with every shape of record, in the bytes that a save gives.
class TruncatedFiles : public HostileTest, public testing::WithParamInterface<int> {
protected:
    std::string small()
    {
        CObjectManager manager;
        EXPECT_TRUE(readRecords(manager, "<project id=\"1\"><prjname contents=\"表町 &lt;&#10;\"/></project>"
                                         "<node id=\"2\"><ndcommentf contents=\"𠮷〜\"/></node><node id=\"3\"/>"
                                         "<span id=\"4\" uppernode=\"2\" lowernode=\"3\" routeid=\"5\"><splength "
                                         "contents=\"12.50\"/></span><route id=\"5\" webid=\"6\" connectid=\"0\"/>"
                                         "<web id=\"6\" disposaltype=\"2\"><webname contents=\"本管\"/></web>"))
            << error;
        return save(manager, GetParam());
    }
    // Where the outer root's closing tag ends.
    static std::size_t endOfRoot(const std::string& bytes) { return bytes.rfind('>') + 1; }
};

} // namespace

TEST_P(TruncatedFiles, AreRefusedAtEveryCut)
{
    const std::string bytes = small();
    for (std::size_t size = 1; size < endOfRoot(bytes); ++size) {
        CObjectManager manager;
        ASSERT_FALSE(read(manager, bytes.substr(0, size))) << size;
        ASSERT_EQ(error.Left(15), L"Error at file.\n") << size << error;
        ASSERT_LE(manager.GetAllDataCount(), 6) << size;
    }
    CObjectManager manager;
    EXPECT_TRUE(read(manager, bytes.substr(0, endOfRoot(bytes) + (GetParam() >= 14 ? 1 : 0)))) << error;
}

TEST_P(TruncatedFiles, WithABlockOfZerosOrNoiseInTheMiddleNeverCrash)
{
    const std::string bytes = small();
    std::mt19937 random(11);
    for (std::size_t at = 0; at < bytes.size(); at += 7) {
        std::string zeros = bytes;
        for (std::size_t i = at; i < std::min(at + 16, zeros.size()); ++i)
            zeros[i] = '\0';
        std::string noise = bytes;
        noise[at] = static_cast<char>(random());
        for (const std::string& broken : {zeros, noise}) {
            CObjectManager manager;
            const bool loads = read(manager, broken);
            ASSERT_EQ(loads, error.IsEmpty()) << at << error;
            // Whatever was taken can be written, or is told of.
            CStringArray details;
            error.Empty();
            const bool isSaved =
                obmgr::SaveDesign(manager, support::toPath(folder / "out.xml"), GetParam(), true, error, details);
            ASSERT_EQ(isSaved, error.IsEmpty()) << at << error;
            if (!isSaved) continue;
            CObjectManager again;
            ASSERT_TRUE(again.CreatePipeObjectFromFile(support::toPath(folder / "out.xml"), error, false)) << error;
            ASSERT_EQ(describe(again), describe(manager)) << at;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Versions, TruncatedFiles, testing::Values(13, 14));
