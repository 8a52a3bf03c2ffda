// The encodings that files come in, among them those whose declaration is wrong.
#include "persistence/PersistenceTest.h"

namespace {

class Encodings : public PersistenceTest {
protected:
    // The value of the one key of the one node of the file.
    CString valueIn(const std::string& bytes)
    {
        CObjectManager manager;
        EXPECT_TRUE(read(manager, bytes)) << error;
        const CNode* const node = manager.GetNodeObjectOriginal(1);
        return node ? node->GetSubAttribute(L"a") : CString(L"no node");
    }
    static std::string narrow(const char* encoding, const std::string& value)
    {
        return "<?xml version = \"1.0\" encoding = \"" + std::string(encoding) +
               "\"?>\n<pipedata>\n<node id=\"1\">\n<a contents=\"" + value + "\"/>\n</node>\n</pipedata>\n";
    }
    static std::u16string wide(const std::u16string& encoding, const std::u16string& value)
    {
        return u"<?xml version = \"1.0\" encoding = \"" + encoding +
               u"\"?>\n<pdroot>\n<pipedata>\n<node id=\"1\">\n<a contents=\"" + value +
               u"\"/>\n</node>\n</pipedata>\n</pdroot>\n";
    }
};

} // namespace

TEST_F(Encodings, Utf16WithItsMarkUtf8AndUtf16WithoutAMarkLoad)
{
    EXPECT_EQ(valueIn("\xFF\xFE" + support::utf16(wide(u"UTF-16", u"表𠮷"))), L"表\U00020BB7");
    EXPECT_EQ(valueIn(support::utf16(wide(u"UTF-16LE", u"表"))), L"表");
    EXPECT_EQ(valueIn(narrow("UTF-8", "表")), L"表");
    EXPECT_EQ(valueIn("\xEF\xBB\xBF" + narrow("UTF-8", "表")), L"表");
}

TEST_F(Encodings, AUtf16MarkWithUtf8DeclaredIsRefused)
{
    CObjectManager manager;
    EXPECT_FALSE(read(manager, "\xFF\xFE" + support::utf16(wide(u"UTF-8", u"表"))));
    EXPECT_EQ(error.Left(14), L"Error at file.");
}

TEST_F(Encodings, ShiftJisIsTheVendorsTable)
{
    EXPECT_EQ(
        valueIn(narrow("SHIFT-JIS", "\x87\x40\x87\x8A\xFB\xFC\xB1\x95\x5C\x81\x60\x81\x7C\x81\x61\x81\xCA\x5C\x7E")),
        L"①㈱髙ｱ表～－∥￢\\~");
    CObjectManager manager;
    EXPECT_FALSE(read(manager, narrow("SHIFT-JIS", "\x81\x30")));
}

TEST_F(Encodings, VendorCharactersComeBackAsTheSameBytes)
{
    const std::string value = "\x87\x40\x87\x8A\xFB\xFC\xB1\x95\x5C\x81\x60\x81\x7C\x81\x61\x81\xCA\x5C\x7E\xF0\x40";
    CObjectManager manager;
    ASSERT_TRUE(read(manager, narrow("SHIFT-JIS", value))) << error;
    EXPECT_NE(save(manager, 13).find("<a contents=\"" + value + "\"/>"), std::string::npos);
}

TEST_F(Encodings, EucKrIsReadWithTheExtendedTable)
{
    EXPECT_EQ(valueIn(narrow("EUC-KR", "\xB0\xA1")), L"가");
    EXPECT_EQ(valueIn(narrow("euc-kr", "\x8C\x63")), L"똠");
    EXPECT_EQ(valueIn("<?xml version='1.0' encoding='EUC-KR'?><pipedata><node id='1'><a contents='\x8C\x63'/></node>"
                      "</pipedata>"),
              L"똠");
}

TEST_F(Encodings, TheKoreanFrameLoadsWithWideAndWithNarrowTextBehindItsMark)
{
    EXPECT_EQ(valueIn("\xFF\xFE" + support::utf16(wide(u"EUC-KR", u"가表"))), L"가表");
    EXPECT_EQ(valueIn("\xFF\xFE" + narrow("EUC-KR", "\xB0\xA1\x8C\x63")), L"가똠");
}

TEST_F(Encodings, WhatAKoreanSystemSavesItCanRead)
{
    obmgr::SetSystemLanguageForTests(obmgr::kKoreanKorea);
    for (const int dataver : {13, 14}) {
        CObjectManager manager;
        ASSERT_TRUE(readRecords(manager, "<node id=\"1\"><a contents=\"가똠表𠮷&#10;&lt;\"/></node>"));
        const std::string bytes = save(manager, dataver);
        CObjectManager again;
        ASSERT_TRUE(read(again, bytes)) << dataver << error;
        EXPECT_EQ(again.GetNodeObjectOriginal(1)->GetSubAttribute(L"a"), L"가똠表𠮷\n<");
        EXPECT_EQ(save(again, dataver), bytes);
    }
}

TEST_F(Encodings, AnUnknownEncodingIsRefused)
{
    CObjectManager manager;
    for (const char* const name : {"UNKNOWN-9", "../../etc/passwd", ""})
        EXPECT_FALSE(read(manager, narrow(name, "x"))) << name;
}

TEST_F(Encodings, BrokenFilesOfAFewBytesAreRefused)
{
    for (const std::string& bytes :
         {std::string("\xFF\xFE"), std::string("<"), std::string("\xFF\xFE<"), std::string("\xFF\xFE<\0", 4),
          std::string("\0\0\0", 3), std::string("\x1F\x8B\x08"), std::string(5000, '\0'), std::string(5000, '\xFF')}) {
        CObjectManager manager;
        EXPECT_FALSE(read(manager, bytes));
        EXPECT_EQ(error.Left(14), L"Error at file.");
    }
}

TEST_F(Encodings, ACutFileIsRefusedAtEveryCutInsideItsRoot)
{
    const std::string whole = narrow("SHIFT-JIS", "\x95\x5C");
    const std::size_t end = whole.find("</pipedata>") + 11;
    for (std::size_t size = 1; size < end; ++size) {
        CObjectManager manager;
        EXPECT_FALSE(read(manager, whole.substr(0, size))) << size;
    }
    EXPECT_EQ(valueIn(whole.substr(0, end)), L"表");
}
