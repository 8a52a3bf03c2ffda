#include "FileForm.h"

#include <algorithm>
#include <cstddef>

namespace obmgr::tool {

namespace {

std::string upperCase(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return result;
}

// How the characters of the head lie: each ASCII character is the byte at `offset` of a unit of `unit` bytes.
struct Units {
    const char* name; // null when the bytes alone do not tell
    std::size_t start;
    std::size_t unit;
    std::size_t offset;
};

Units unitsOf(std::string_view head)
{
    using namespace std::string_view_literals;
    const auto startsWith = [head](std::string_view bytes) { return head.substr(0, bytes.size()) == bytes; };
    if (startsWith("\xFF\xFE\0\0"sv)) return {"UTF-32LE", 4, 4, 0};
    if (startsWith("\0\0\xFE\xFF"sv)) return {"UTF-32BE", 4, 4, 3};
    if (startsWith("\xEF\xBB\xBF"sv)) return {"UTF-8", 3, 1, 0};
    if (startsWith("\xFE\xFF"sv)) return {"UTF-16BE", 2, 2, 1};
    if (startsWith("\xFF\xFE"sv)) {
        // On Korean systems a mark may stand before text of one and two bytes.
        if (head.size() > 3 && head[3] != '\0') return {nullptr, 2, 1, 0};
        return {"UTF-16LE", 2, 2, 0};
    }
    if (startsWith("<\0\0\0"sv)) return {"UTF-32LE", 0, 4, 0};
    if (startsWith("\0\0\0<"sv)) return {"UTF-32BE", 0, 4, 3};
    if (startsWith("<\0"sv)) return {"UTF-16LE", 0, 2, 0};
    if (startsWith("\0<"sv)) return {"UTF-16BE", 0, 2, 1};
    return {nullptr, 0, 1, 0};
}

// The value of the prolog's "encoding", empty when there is none.
std::string declaredEncoding(std::string_view text)
{
    if (text.substr(0, 5) != "<?xml") return {};
    const std::string_view prolog = text.substr(0, text.find("?>"));
    const std::size_t word = prolog.find("encoding");
    if (word == std::string_view::npos) return {};
    const std::size_t quote = prolog.find_first_of("\"'", word);
    if (quote == std::string_view::npos) return {};
    const std::size_t end = prolog.find(prolog[quote], quote + 1);
    if (end == std::string_view::npos) return {};
    return std::string(prolog.substr(quote + 1, end - quote - 1));
}

std::string commonName(const std::string& declared)
{
    std::string name = upperCase(declared);
    for (const char* const alias : {"SHIFT-JIS", "SHIFT_JIS", "X-SJIS", "SJIS", "CP932", "MS932", "WINDOWS-31J"})
        if (name == alias) return "SHIFT_JIS";
    return name;
}

} // namespace

std::string_view FileForm::Language() const
{
    if (detected == "SHIFT_JIS") return "ja";
    if (detected == "EUC-KR" || upperCase(declared) == "EUC-KR") return "ko";
    return {};
}

int FileForm::LikelyDataVersion() const
{
    return hasOuterRoot || detected.rfind("UTF-16", 0) == 0 ? 14 : 13;
}

FileForm FormOf(std::string_view head, std::uint64_t size)
{
    FileForm form;
    form.size = size;
    const Units units = unitsOf(head);
    std::string text;
    for (std::size_t at = units.start + units.offset; at < head.size(); at += units.unit)
        text += head[at];
    form.declared = declaredEncoding(text);
    if (units.name)
        form.detected = units.name;
    else
        form.detected = form.declared.empty() ? "UTF-8" : commonName(form.declared);
    form.hasOuterRoot = text.find("<pdroot") != std::string::npos;
    return form;
}

} // namespace obmgr::tool
