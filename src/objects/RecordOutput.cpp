#include "objects/RecordOutput.h"

#include "common/LosslessUtf8.h"
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
    for (const char c : {'\t', '\n', '\r', '&', '<', '>', '"'})
        kinds[static_cast<unsigned char>(c)] = Escaped;
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
constexpr std::size_t kLongestEscape = 6;

bool IsNoCharacter(std::string_view value, std::size_t at)
{
    const char32_t c = DecodeLossless(value, at);
    return (c >= 0xD800 && c <= 0xDFFF) || c == 0xFFFE || c == 0xFFFF;
}

// One element being put together, in a buffer that the thread keeps. It goes to the file in one piece and only when
// all of it can be written.
class Element {
public:
    Element(CStdioFile& file, std::string_view tag, std::int32_t id) : m_file(file), m_tag(tag), m_id(id)
    {
        m_text.size = 0;
        Append("<");
        Append(tag);
    }

    void Attribute(std::string_view name, std::int32_t value)
    {
        Append(" ");
        Append(name);
        Append("=\"");
        AppendNumber(value);
        Append("\"");
    }

    void BeginChildren() { Append(">\n"); }

    bool Child(const KeyName& key, std::string_view value)
    {
        constexpr std::string_view kEnd = "\"/>\n";
        if (!key.isXmlName || (!key.isAscii && !CanEncode(key.text)))
            return Fail(key.text, "is no name that the file can hold");
        char* out = Room(key.opening.size() + value.size() * kLongestEscape + kEnd.size());
        out = std::copy(key.opening.begin(), key.opening.end(), out);
        out = PutEscaped(out, value);
        if (!out) return Fail(key.text, "holds a character that no file can hold");
        out = std::copy(kEnd.begin(), kEnd.end(), out);
        m_text.size = static_cast<std::size_t>(out - m_text.bytes.data());
        return true;
    }

    void Write()
    {
        Append("</");
        Append(m_tag);
        Append(">\n");
        m_file.WriteUtf8({m_text.bytes.data(), m_text.size});
        constexpr std::size_t kKeptRoom = 1 << 20;
        if (m_text.bytes.size() > kKeptRoom) m_text.bytes = {};
    }

private:
    struct Text {
        std::vector<char> bytes;
        std::size_t size = 0; // how much of the bytes is text
    };

    static Text& ThreadText()
    {
        thread_local Text text;
        return text;
    }

    // A place for `count` bytes behind the text.
    char* Room(std::size_t count)
    {
        if (m_text.bytes.size() - m_text.size < count) m_text.bytes.resize((m_text.size + count) * 2);
        return m_text.bytes.data() + m_text.size;
    }

    void Append(std::string_view text)
    {
        std::copy(text.begin(), text.end(), Room(text.size()));
        m_text.size += text.size();
    }

    void AppendNumber(std::int32_t number)
    {
        constexpr std::size_t kLongestNumber = 11;
        char* const out = Room(kLongestNumber);
        m_text.size += static_cast<std::size_t>(std::to_chars(out, out + kLongestNumber, number).ptr - out);
    }

    // The value as it may stand between double quotes, so that a reader gets back exactly the same text; the place
    // behind it. Null for a text with a character that no file can hold.
    static char* PutEscaped(char* out, std::string_view value)
    {
        std::size_t plainFrom = 0;
        const auto putPlain = [&](std::size_t to) {
            out = std::copy(value.data() + plainFrom, value.data() + to, out);
        };
        for (std::size_t at = 0; at < value.size(); ++at) {
            const auto kind = kByteKinds[static_cast<unsigned char>(value[at])];
            if (kind == Plain) continue;
            if (kind == Control || (kind == Suspect && IsNoCharacter(value, at))) return nullptr;
            if (kind == Suspect) continue;
            putPlain(at);
            const std::string_view escape = EscapeOf(value[at]);
            out = std::copy(escape.begin(), escape.end(), out);
            plainFrom = at + 1;
        }
        putPlain(value.size());
        return out;
    }

    bool CanEncode(std::string_view name) const
    {
        for (std::size_t at = 0; at < name.size();)
            if (!m_file.CanEncode(DecodeLossless(name, at))) return false;
        return true;
    }

    bool Fail(const std::string& key, std::string_view reason)
    {
        constexpr std::size_t kShownKey = 80;
        std::string line(m_tag);
        line += " ID=" + std::to_string(m_id) + ": key \"";
        line.append(key, 0, kShownKey);
        line += "\" ";
        line += reason;
        line += '.';
        ErrorLines().push_back(std::move(line));
        return false;
    }

    CStdioFile& m_file;
    std::string_view m_tag;
    std::int32_t m_id;
    Text& m_text = ThreadText();
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
