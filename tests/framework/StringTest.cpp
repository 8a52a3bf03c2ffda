#include "framework/String.h"

#include <sstream>
#include <unordered_set>

#include <gtest/gtest.h>

#include "framework/Exception.h"

TEST(String, ConstructorsTakeTextPieceAndRepeatedCharacter)
{
    EXPECT_EQ(CString(), L"");
    EXPECT_EQ(CString(static_cast<const wchar_t*>(nullptr)), L"");
    EXPECT_EQ(CString(L"abcdef", 3), L"abc");
    EXPECT_EQ(CString(L'x', 4), L"xxxx");
    EXPECT_EQ(CString(L'x', 0), L"");
    EXPECT_EQ(CString(L'x', -1), L"");
    EXPECT_EQ(CString(std::wstring_view(L"view")), L"view");
    EXPECT_THROW(CString(L"a", -1), CInvalidArgException);
}

TEST(String, ConvertsToAPointerThatEndsWithZero)
{
    const CString text(L"管");
    const wchar_t* const pointer = text;
    EXPECT_EQ(pointer[0], L'管');
    EXPECT_EQ(pointer[1], L'\0');
    EXPECT_EQ(text.View(), L"管");
}

TEST(String, IndexReachesTheClosingZeroAndNoFurther)
{
    CString text(L"ab");
    EXPECT_EQ(text[1], L'b');
    EXPECT_EQ(text[2], L'\0');
    EXPECT_EQ(text[0L], L'a');
    EXPECT_THROW(text.GetAt(3), CInvalidArgException);
    EXPECT_THROW(text.GetAt(-1), CInvalidArgException);
    text.SetAt(1, L'c');
    EXPECT_EQ(text, L"ac");
    EXPECT_THROW(text.SetAt(2, L'd'), CInvalidArgException);
}

TEST(String, ComparesByCharacterAndWithPointers)
{
    const CString a(L"a");
    const CString b(L"b");
    EXPECT_TRUE(a < b && a <= b && b > a && b >= a && a != b);
    EXPECT_TRUE(a == L"a" && L"a" == a && a != L"b" && L"b" != a && a < L"b" && L"b" > a);
    EXPECT_EQ(a.Compare(L"b"), -1);
    EXPECT_EQ(b.Compare(L"a"), 1);
    EXPECT_EQ(a.Compare(L"a"), 0);
    EXPECT_EQ(CString().Compare(nullptr), 0);
}

TEST(String, CaseIsAsciiOnly)
{
    EXPECT_EQ(CString(L"Span").CompareNoCase(L"sPAN"), 0);
    EXPECT_LT(CString(L"SPAN").CompareNoCase(L"span2"), 0);
    EXPECT_GT(CString(L"spb").CompareNoCase(L"SPAN"), 0);
    EXPECT_NE(CString(L"É").CompareNoCase(L"é"), 0);
    EXPECT_EQ(CString(L"aZ管é").MakeUpper(), L"AZ管é");
    EXPECT_EQ(CString(L"aZ管É").MakeLower(), L"az管É");
}

TEST(String, ConcatenatesAllSorts)
{
    CString text = CString(L"a") + L"b" + L'c' + CString(L"d");
    text = L"<" + text;
    text = L'[' + text;
    text += L"e";
    text += L'f';
    text += CString(L"g");
    EXPECT_EQ(text, L"[<abcdefg");
    text += text;
    EXPECT_EQ(text, L"[<abcdefg[<abcdefg");
}

TEST(String, PiecesAreCutToWhatThereIs)
{
    const CString text(L"abcdef");
    struct {
        CString got;
        const wchar_t* wanted;
    } const cases[] = {
        {text.Mid(2), L"cdef"},
        {text.Mid(2, 3), L"cde"},
        {text.Mid(-1, 2), L"ab"},
        {text.Mid(9), L""},
        {text.Mid(4, 99), L"ef"},
        {text.Mid(1, -1), L""},
        {text.Left(2), L"ab"},
        {text.Left(99), L"abcdef"},
        {text.Left(-1), L""},
        {text.Right(2), L"ef"},
        {text.Right(99), L"abcdef"},
        {text.Right(-1), L""},
        {text.SpanIncluding(L"bca"), L"abc"},
        {text.SpanExcluding(L"dx"), L"abc"},
        {text.SpanExcluding(L"x"), L"abcdef"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.got, c.wanted);
}

TEST(String, FindGivesIndexOrMinusOne)
{
    const CString text(L"abcabc");
    EXPECT_EQ(text.Find(L'b'), 1);
    EXPECT_EQ(text.Find(L'b', 2), 4);
    EXPECT_EQ(text.Find(L'x'), -1);
    EXPECT_EQ(text.Find(L"ca"), 2);
    EXPECT_EQ(text.Find(L"ca", 3), -1);
    EXPECT_EQ(text.Find(L"a", 7), -1);
    EXPECT_EQ(text.Find(L"a", -1), -1);
    EXPECT_EQ(text.Find(L"", 6), 6);
    EXPECT_EQ(text.ReverseFind(L'b'), 4);
    EXPECT_EQ(text.FindOneOf(L"xcb"), 1);
    EXPECT_EQ(text.FindOneOf(L"xy"), -1);
}

TEST(String, ReplaceCountsAndDoesNotRepeatItself)
{
    CString text(L"a.b.c");
    EXPECT_EQ(text.Replace(L'.', L'/'), 2);
    EXPECT_EQ(text, L"a/b/c");
    EXPECT_EQ(text.Replace(L"/", L"//"), 2);
    EXPECT_EQ(text, L"a//b//c");
    EXPECT_EQ(text.Replace(L"//", nullptr), 2);
    EXPECT_EQ(text, L"abc");
    EXPECT_EQ(text.Replace(L"", L"x"), 0);
    EXPECT_EQ(text.Replace(L"zz", L"x"), 0);
    CString overlapping(L"aaa");
    EXPECT_EQ(overlapping.Replace(L"aa", L"b"), 1);
    EXPECT_EQ(overlapping, L"ba");
}

TEST(String, InsertDeleteRemove)
{
    CString text(L"ad");
    EXPECT_EQ(text.Insert(1, L"bc"), 4);
    EXPECT_EQ(text.Insert(99, L'e'), 5);
    EXPECT_EQ(text.Insert(-1, L'_'), 6);
    EXPECT_EQ(text, L"_abcde");
    EXPECT_EQ(text.Delete(0), 5);
    EXPECT_EQ(text.Delete(3, 99), 3);
    EXPECT_EQ(text.Delete(3, 1), 3);
    EXPECT_EQ(text, L"abc");
    EXPECT_EQ(text.Remove(L'b'), 1);
    EXPECT_EQ(text, L"ac");
    EXPECT_EQ(text.MakeReverse(), L"ca");
    text.Truncate(1);
    EXPECT_EQ(text, L"c");
    text.Empty();
    EXPECT_TRUE(text.IsEmpty());
}

TEST(String, TrimTakesBlanksOfAllScripts)
{
    EXPECT_EQ(CString(L" \t\r\n\u3000 a b\u3000\n").Trim(), L"a b");
    EXPECT_EQ(CString(L"  a ").TrimLeft(), L"a ");
    EXPECT_EQ(CString(L" a  ").TrimRight(), L" a");
    EXPECT_EQ(CString(L"--a--").Trim(L'-'), L"a");
    EXPECT_EQ(CString(L"-+a+-").TrimLeft(L"+-"), L"a+-");
    EXPECT_EQ(CString(L"-+a+-").TrimRight(L"+-"), L"-+a");
    EXPECT_EQ(CString(L"   ").Trim(), L"");
    EXPECT_EQ(CString(L"a").Trim(L""), L"a");
}

TEST(String, TokenizeSkipsEmptyPieces)
{
    const CString text(L",,a,b;,c,");
    int start = 0;
    std::wstring pieces;
    for (CString piece = text.Tokenize(L",;", start); start != -1; piece = text.Tokenize(L",;", start))
        pieces += L"[" + std::wstring(piece.View()) + L"]";
    EXPECT_EQ(pieces, L"[a][b][c]");
    EXPECT_THROW(text.Tokenize(L",", start), CInvalidArgException);
}

TEST(String, TokenizeGivesTheLastPieceWithoutSeparator)
{
    int start = 0;
    const CString text(L"ab");
    EXPECT_EQ(text.Tokenize(L",", start), L"ab");
    EXPECT_EQ(start, 2);
    EXPECT_EQ(text.Tokenize(L",", start), L"");
    EXPECT_EQ(start, -1);
}

TEST(String, BufferIsCutAtItsZeroOrAtALength)
{
    CString text(L"old");
    wchar_t* buffer = text.GetBuffer(10);
    EXPECT_EQ(std::wstring_view(buffer, 3), L"old");
    std::wcscpy(buffer, L"newer");
    text.ReleaseBuffer();
    EXPECT_EQ(text, L"newer");
    text.GetBuffer();
    text.ReleaseBuffer(3);
    EXPECT_EQ(text, L"new");
    EXPECT_THROW(text.ReleaseBuffer(4), CInvalidArgException);
}

TEST(String, HashAndStreamOutput)
{
    const std::unordered_set<CString> set{CString(L"a"), CString(L"b"), CString(L"a")};
    EXPECT_EQ(set.size(), 2U);
    std::ostringstream stream;
    stream << CString(L"管𠮷");
    EXPECT_EQ(stream.str(), "管𠮷");
}

TEST(String, Utf8RoundTripOutsideTheBasicPlaneToo)
{
    const CString text(L"a\u00E9\u7BA1\U00020BB7\U0010FFFF");
    EXPECT_EQ(obmgr::ToUtf8(text.View()), "a\xC3\xA9\xE7\xAE\xA1\xF0\xA0\xAE\xB7\xF4\x8F\xBF\xBF");
    EXPECT_EQ(obmgr::FromUtf8(obmgr::ToUtf8(text.View())), text);
}

TEST(String, NoCharacterBecomesTheReplacementCharacter)
{
    const wchar_t lone[] = {static_cast<wchar_t>(0xD842), static_cast<wchar_t>(0x110000), static_cast<wchar_t>(-1), 0};
    EXPECT_EQ(obmgr::ToUtf8(lone), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(String, BrokenUtf8BecomesReplacementCharacters)
{
    struct {
        const char* bytes;
        const wchar_t* wanted;
    } const cases[] = {
        {"a\x80z", L"a\uFFFDz"},       // continuation without lead
        {"\xC0\xAF", L"\uFFFD\uFFFD"}, // overlong
        {"\xE0\x80\x80", L"\uFFFD\uFFFD\uFFFD"},
        {"\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},           // surrogate
        {"\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"}, // beyond the last
        {"\xE7\xAE", L"\uFFFD"},                           // cut off at the end
        {"\xE7\xAEz", L"\uFFFDz"},
        {"\xF0\x9F\x98z", L"\uFFFDz"},
        {"\xFF\xFE", L"\uFFFD\uFFFD"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(obmgr::FromUtf8(c.bytes), c.wanted) << testing::PrintToString(std::string(c.bytes));
}
