#include "objects/RecordOutput.h"

#include "common/Utf8.h"
#include "framework/File.h"
#include "objects/FileProfile.h"
#include "objects/PipeObject.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <vector>

IMPLEMENT_DYNAMIC(CFileProfile, CPipeObject)

namespace obmgr {
namespace {

// Per thread, as a backup writes on a thread of its own.
std::vector<std::string>& ErrorLines()
{
    thread_local std::vector<std::string> lines;
    return lines;
}

// What a byte of a value means to the writer.
enum ByteKind : unsigned char { Plain, Escaped, Control, Suspect };

constexpr std::array<ByteKind, 256> kByteKinds = [] {
    std::array<ByteKind, 256> kinds{};
    for (std::size_t c = 0; c < 0x20; ++c)
        kinds[c] = Control;
    for (const unsigned char c : {'\t', '\n', '\r', '&', '<', '>', '"'})
        kinds[c] = Escaped;
    kinds[0xED] = Suspect; // leads surrogates
    kinds[0xEF] = Suspect; // leads U+FFFE and U+FFFF
    return kinds;
}();

std::string_view EscapeOf(char c)
{
    switch (c) {
    case '&': return "&amp;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '"': return "&quot;";
    case '\t': return "&#9;";
    case '\n': return "&#10;";
    default: return "&#13;";
    }
}

bool IsNoCharacter(std::string_view value, std::size_t at)
{
    const char32_t c = DecodeUtf8(value, at);
    return (c >= 0xD800 && c <= 0xDFFF) || c == 0xFFFE || c == 0xFFFF;
}

// Appends the value as it may stand between double quotes, so that a reader gets back exactly the same text. False
// for a text with a character that no XML file can hold.
bool AppendEscaped(std::string& out, std::string_view value)
{
    std::size_t written = 0;
    for (std::size_t at = 0; at < value.size(); ++at) {
        const auto kind = kByteKinds[static_cast<unsigned char>(value[at])];
        if (kind == Plain) continue;
        if (kind == Control || (kind == Suspect && IsNoCharacter(value, at))) return false;
        if (kind == Suspect) continue;
        out.append(value, written, at - written);
        out += EscapeOf(value[at]);
        written = at + 1;
    }
    out.append(value, written, value.size() - written);
    return true;
}

void AppendNumber(std::string& out, std::int32_t number)
{
    char digits[16];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    out.append(digits, end);
}

// One element being put together. It goes to the file in one piece and only when all of it can be written.
class Element {
public:
    Element(CStdioFile& file, std::string_view tag, std::int32_t id) : m_file(file), m_tag(tag), m_id(id)
    {
        m_text.clear();
        m_text += '<';
        m_text += tag;
    }

    void Attribute(std::string_view name, std::int32_t value)
    {
        m_text += ' ';
        m_text += name;
        m_text += "=\"";
        AppendNumber(m_text, value);
        m_text += '"';
    }

    void BeginChildren() { m_text += ">\n"; }

    bool Child(const KeyName& key, std::string_view value)
    {
        if (!key.isXmlName || (!key.isAscii && !CanEncode(key.text)))
            return Fail(key.text, "is no name that the file can hold");
        m_text += '<';
        m_text += key.text;
        m_text += " contents=\"";
        if (!AppendEscaped(m_text, value)) return Fail(key.text, "holds a character that no file can hold");
        m_text += "\"/>\n";
        return true;
    }

    void Write()
    {
        m_text += "</";
        m_text += m_tag;
        m_text += ">\n";
        m_file.WriteUtf8(m_text);
        constexpr std::size_t kKeptRoom = 1 << 20;
        if (m_text.capacity() > kKeptRoom) m_text = {};
    }

private:
    bool CanEncode(std::string_view name) const
    {
        for (std::size_t at = 0; at < name.size();)
            if (!m_file.CanEncode(DecodeUtf8(name, at))) return false;
        return true;
    }

    bool Fail(const std::string& key, std::string_view reason)
    {
        constexpr std::size_t kShownKey = 80;
        std::string line(m_tag);
        line += " ID=";
        AppendNumber(line, m_id);
        line += ": key \"";
        line.append(key, 0, kShownKey);
        line += "\" ";
        line += reason;
        line += '.';
        ErrorLines().push_back(std::move(line));
        return false;
    }

    static std::string& Text()
    {
        thread_local std::string text;
        return text;
    }

    CStdioFile& m_file;
    std::string_view m_tag;
    std::int32_t m_id;
    std::string& m_text = Text();
};

constexpr std::string_view kProfileTexts[] = {"version", "appname", "time", "date", "tarappversion", "tarappname"};
constexpr std::string_view kProfileNumbers[] = {"maxobjectid", "intention"};
constexpr std::string_view kProfileDataver = "dataver";

bool IsProfileKey(std::string_view key)
{
    return std::find(std::begin(kProfileTexts), std::end(kProfileTexts), key) != std::end(kProfileTexts) ||
           std::find(std::begin(kProfileNumbers), std::end(kProfileNumbers), key) != std::end(kProfileNumbers) ||
           key == kProfileDataver;
}

} // namespace
} // namespace obmgr

bool CPipeObject::FileOut(CStdioFile& file, int, bool) const
{
    const objectdata::OBJECTTYPE type = GetObjectType();
    if (type < 0) return false;
    const obmgr::RecordInfo& row = obmgr::RecordOf(type);
    obmgr::Element element(file, row.tag, GetId32());
    element.Attribute("id", GetId32());
    const auto links = Links();
    for (std::size_t i = 0; i < links.size(); ++i)
        element.Attribute(row.links.fields[i].name, links[i]);
    element.BeginChildren();
    for (const auto entry : GetAttributes())
        if (!element.Child(obmgr::NameOfKey(entry.key), entry.value)) return false;
    element.Write();
    return true;
}

bool CFileProfile::FileOut(CStdioFile& file, int dataver, bool) const
{
    obmgr::Element element(file, "profile", 0);
    element.BeginChildren();
    const auto write = [&](std::string_view key, std::string_view fallback) {
        const obmgr::KeyId id = obmgr::InternKey(key);
        const std::string_view value = GetAttributes().Find(id);
        return element.Child(obmgr::NameOfKey(id), value.data() ? value : fallback);
    };
    for (const std::string_view key : obmgr::kProfileTexts)
        if (!write(key, "")) return false;
    for (const std::string_view key : obmgr::kProfileNumbers)
        if (!write(key, "0")) return false;
    if (!element.Child(obmgr::NameOfKey(obmgr::InternKey(obmgr::kProfileDataver)), std::to_string(dataver)))
        return false;
    for (const auto entry : GetAttributes()) {
        const obmgr::KeyName& key = obmgr::NameOfKey(entry.key);
        if (!obmgr::IsProfileKey(key.text) && !element.Child(key, entry.value)) return false;
    }
    element.Write();
    return true;
}

void CFileProfile::SetMaxObjectId(long id)
{
    WriteSubAttributeInt(L"maxobjectid", static_cast<int>(id));
}

void ClearFileOutErrorString()
{
    obmgr::ErrorLines().clear();
}

void GetFileOutErrorString(CStringArray& errors)
{
    errors.RemoveAll();
    for (const std::string& line : obmgr::ErrorLines()) {
        std::wstring text;
        obmgr::AppendWide(text, line);
        errors.Add(CString(text.c_str()));
    }
}
