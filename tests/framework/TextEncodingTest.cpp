#include "framework/TextEncoding.h"

#include <gtest/gtest.h>

#include "framework/Exception.h"

using obmgr::CanEncode;
using obmgr::DecodeText;
using obmgr::LegacyCodes;
using obmgr::TextEncoding;

TEST(TextEncoding, UnicodeEncodingsHoldEveryCharacterAndNothingElse)
{
    for (const auto encoding : {TextEncoding::Utf8, TextEncoding::Utf16LE}) {
        for (const char32_t c : {0x0U, 0x41U, 0x7BA1U, 0x20BB7U, 0x10FFFFU})
            EXPECT_TRUE(CanEncode(encoding, c)) << static_cast<unsigned>(c);
        for (const char32_t c : {0xD800U, 0xDFFFU, 0x110000U})
            EXPECT_FALSE(CanEncode(encoding, c)) << static_cast<unsigned>(c);
    }
}

TEST(TextEncoding, ShiftJisIsTheVendorTable)
{
    struct {
        char32_t character;
        unsigned code;
    } const cases[] = {
        {U'A', 0x41},     {U'\\', 0x5C},    {U'~', 0x7E},     {0xFF5E, 0x8160}, {0xFF0D, 0x817C},
        {0x2225, 0x8161}, {0xFFE2, 0x81CA}, {U'①', 0x8740},   {U'㈱', 0x878A},  {U'髙', 0xFBFC},
        {U'﨑', 0xFAB1},  {U'Ⅳ', 0x8757},   {U'㎡', 0x8775},  {U'ｱ', 0xB1},     {U'ソ', 0x835C},
        {U'表', 0x955C},  {U'能', 0x945C},  {0xE000, 0xF040}, {U'管', 0x8AC7},
    };
    const LegacyCodes& codes = LegacyCodes::Of(TextEncoding::ShiftJis);
    for (const auto& c : cases) {
        EXPECT_EQ(codes.CodeOf(c.character), c.code) << std::hex << static_cast<unsigned>(c.character);
        EXPECT_EQ(codes.CharacterOf(c.code), c.character) << std::hex << c.code;
    }
}

TEST(TextEncoding, ShiftJisLacksWhatWouldNotComeBack)
{
    // Wave dash, minus, double vertical line, yen, overline, emoji; and the control characters that trade places.
    for (const char32_t c : {0x301CU, 0x2212U, 0x2016U, 0xA5U, 0x203EU, 0x1F600U, 0x20BB7U, 0xE9U, 0x1AU, 0x1CU, 0x7FU})
        EXPECT_FALSE(CanEncode(TextEncoding::ShiftJis, c)) << std::hex << static_cast<unsigned>(c);
}

TEST(TextEncoding, EucKrHoldsTheStandardLettersOnly)
{
    EXPECT_EQ(LegacyCodes::Of(TextEncoding::EucKr).CodeOf(U'가'), 0xB0A1);
    EXPECT_EQ(LegacyCodes::Of(TextEncoding::EucKr).CodeOf(U'힝'), 0xC8FE);
    EXPECT_TRUE(CanEncode(TextEncoding::EucKr, U'\\'));
    EXPECT_FALSE(CanEncode(TextEncoding::EucKr, U'똠')) << "a letter of the extended table";
    EXPECT_FALSE(CanEncode(TextEncoding::EucKr, 0x20BB7));
}

TEST(TextEncoding, EveryCodeThatIsWrittenReadsBackTheSame)
{
    for (const auto encoding : {TextEncoding::ShiftJis, TextEncoding::EucKr}) {
        const LegacyCodes& codes = LegacyCodes::Of(encoding);
        int written = 0;
        for (char32_t c = 1; c < 0x10000; ++c) {
            const unsigned code = codes.CodeOf(c);
            if (code == 0) continue;
            ASSERT_EQ(codes.CharacterOf(code), c);
            ++written;
        }
        EXPECT_GT(written, 8000);
    }
}

TEST(TextEncoding, BrokenBytesBecomeReplacementCharacters)
{
    struct {
        TextEncoding encoding;
        std::string bytes;
        const wchar_t* text;
    } const cases[] = {
        {TextEncoding::ShiftJis, "a\x81", L"a\uFFFD"},
        {TextEncoding::ShiftJis, "\x81\"b", L"\uFFFD\"b"}, // the quote is not swallowed
        {TextEncoding::ShiftJis, "\xFDz", L"\uFFFDz"},
        {TextEncoding::EucKr, "\xB0\xA1\xB0", L"가\uFFFD"},
        {TextEncoding::EucKr, "\x8C\x63", L"똠"}, // the extended table reads it
        {TextEncoding::Utf8, "\xE7\xAE", L"\uFFFD"},
        {TextEncoding::Utf16LE, std::string("a\0\x42\xD8", 4), L"a\uFFFD"},
        {TextEncoding::Utf16LE,
         std::string("\x42\xD8"
                     "a\0",
                     4),
         L"\uFFFDa"},
        {TextEncoding::Utf16LE, std::string("a\0b", 3), L"a\uFFFD"},
        {TextEncoding::Utf16LE, "\x42\xD8\xB7\xDF", L"\U00020BB7"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(DecodeText(c.encoding, c.bytes), c.text) << testing::PrintToString(c.bytes);
}

TEST(TextEncoding, CodeTableOfAUnicodeEncodingIsAnInvalidArgument)
{
    EXPECT_THROW(LegacyCodes::Of(TextEncoding::Utf8), CInvalidArgException);
}
