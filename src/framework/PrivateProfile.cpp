#include "framework/PrivateProfile.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "framework/FileName.h"
#include "framework/TextEncoding.h"
#include "framework/Utf8.h"

namespace obmgr {

namespace {

bool isUtf8(std::string_view bytes)
{
    const char* position = bytes.data();
    const char* const end = position + bytes.size();
    while (position != end) {
        const char* const start = position;
        if (DecodeUtf8(position, end) == kReplacementCharacter &&
            std::string_view(start, static_cast<std::size_t>(position - start)) != "\xEF\xBF\xBD")
            return false;
    }
    return true;
}

std::string utf8Of(std::string_view bytes)
{
    constexpr std::string_view kUtf16Mark = "\xFF\xFE";
    constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kUtf16Mark))
        return ToUtf8(DecodeText(TextEncoding::Utf16LE, bytes.substr(kUtf16Mark.size())).View());
    if (bytes.starts_with(kUtf8Mark)) return std::string(bytes.substr(kUtf8Mark.size()));
    if (isUtf8(bytes)) return std::string(bytes);
    return ToUtf8(DecodeText(TextEncoding::ShiftJis, bytes).View());
}

bool isBlank(char byte)
{
    return static_cast<unsigned char>(byte) <= ' ';
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string_view unquoted(std::string_view value)
{
    if (value.size() < 2 || value.front() != value.back()) return value;
    return value.front() == '"' || value.front() == '\'' ? value.substr(1, value.size() - 2) : value;
}

bool isSameName(std::string_view a, std::string_view b)
{
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) { return lower(x) == lower(y); });
}

// Takes the next line from the start of `rest`. Between CR and LF stands an empty line, which holds nothing.
std::string_view takeLine(std::string_view& rest)
{
    const auto end = std::find_if(rest.begin(), rest.end(), [](char c) { return c == '\n' || c == '\r'; });
    const std::string_view line(rest.begin(), end);
    rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    return trimmed(line.substr(0, line.find('\0')));
}

// The name in a line "[name]"; what follows the bracket does not count.
std::optional<std::string_view> sectionOf(std::string_view line)
{
    if (!line.starts_with('[')) return std::nullopt;
    const std::size_t close = line.find(']');
    if (close == std::string_view::npos) return std::nullopt;
    return trimmed(line.substr(1, close - 1));
}

} // namespace

PrivateProfile::PrivateProfile(std::string_view bytes) : m_text(utf8Of(bytes)) {}

std::optional<std::string_view> PrivateProfile::Find(const CString& section, const CString& key) const
{
    const std::string sectionBytes = ToUtf8(section.View());
    const std::string keyBytes = ToUtf8(key.View());
    const std::string_view sectionName = trimmed(sectionBytes);
    const std::string_view keyName = trimmed(keyBytes);
    bool isInSection = false;
    for (std::string_view rest = m_text; !rest.empty();) {
        const std::string_view line = takeLine(rest);
        if (line.starts_with(';')) continue;
        if (const auto name = sectionOf(line)) {
            if (isInSection) return std::nullopt;
            isInSection = isSameName(*name, sectionName);
            continue;
        }
        if (!isInSection) continue;
        const std::size_t equals = line.find('=');
        if (equals != std::string_view::npos && isSameName(trimmed(line.substr(0, equals)), keyName))
            return unquoted(trimmed(line.substr(equals + 1)));
    }
    return std::nullopt;
}

CString PrivateProfile::Text(const CString& section, const CString& key, const CString& defaultText, int size) const
{
    const std::size_t room = size > 1 ? static_cast<std::size_t>(size - 1) : 0;
    const auto value = Find(section, key);
    if (!value) {
        std::wstring_view text = defaultText.View();
        while (!text.empty() && text.back() == L' ')
            text.remove_suffix(1);
        return CString(text.substr(0, room));
    }
    std::wstring text;
    const char* position = value->data();
    const char* const end = position + value->size();
    while (position != end && text.size() < room)
        text += static_cast<wchar_t>(DecodeUtf8(position, end));
    return CString(std::move(text));
}

int PrivateProfile::Int(const CString& section, const CString& key, int defaultValue) const
{
    const auto value = Find(section, key);
    if (!value) return defaultValue;
    std::string_view digits = trimmed(*value); // blanks within the quotes
    const bool isNegative = digits.starts_with('-');
    if (isNegative || digits.starts_with('+')) digits.remove_prefix(1);
    std::uint32_t number = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') break;
        number = number * 10 + static_cast<std::uint32_t>(c - '0');
    }
    return static_cast<int>(isNegative ? 0 - number : number);
}

namespace {

// What changes when a file is written, replaced, or reached by another way.
struct FileVersion {
    dev_t device;
    ino_t number;
    off_t size;
    std::time_t written;
    long writtenNanoseconds;
    std::time_t changed;
    long changedNanoseconds;

    bool operator==(const FileVersion&) const = default;
};

FileVersion versionOf(const struct stat& info)
{
    return {info.st_dev,          info.st_ino,         info.st_size,        info.st_mtim.tv_sec,
            info.st_mtim.tv_nsec, info.st_ctim.tv_sec, info.st_ctim.tv_nsec};
}

std::atomic<std::time_t (*)()> profileClock = nullptr;

// Time stamps are as coarse as two seconds on some disks: a file that was written just before `now` may be written
// again without any change of its version.
bool hasSettled(const FileVersion& version, std::time_t now)
{
    constexpr std::time_t kCoarsestStamp = 2;
    return now - std::max(version.written, version.changed) > kCoarsestStamp;
}

class Descriptor {
public:
    explicit Descriptor(const std::string& path)
        : m_descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK))
    {
    }
    ~Descriptor()
    {
        if (m_descriptor >= 0) ::close(m_descriptor);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    // Nothing for folders, devices and pipes.
    std::optional<FileVersion> Version() const
    {
        struct stat info = {};
        if (m_descriptor < 0 || ::fstat(m_descriptor, &info) != 0 || !S_ISREG(info.st_mode)) return std::nullopt;
        return versionOf(info);
    }

    std::optional<std::string> ReadAll() const
    {
        constexpr std::size_t kBlock = 64 * 1024;
        std::string bytes;
        const auto block = std::make_unique<char[]>(kBlock);
        for (;;) {
            const ssize_t count = ::read(m_descriptor, block.get(), kBlock);
            if (count == 0) return bytes;
            if (count > 0)
                bytes.append(block.get(), static_cast<std::size_t>(count));
            else if (errno != EINTR)
                return std::nullopt;
        }
    }

private:
    int m_descriptor;
};

// The profile in a file. Labels ask the same small file again and again, so each thread keeps the last one and reads
// it anew when its version is another. The version is taken before the bytes: a file that changes while it is read is
// not the kept one any more.
std::shared_ptr<const PrivateProfile> profileIn(const CString& path)
{
    constexpr off_t kLargestKept = 1024 * 1024;
    struct Kept {
        FileVersion version;
        std::shared_ptr<const PrivateProfile> profile;
    };
    thread_local std::optional<Kept> kept;

    const std::string native = NativePath(path);
    struct stat info = {};
    if (kept && ::stat(native.c_str(), &info) == 0 && versionOf(info) == kept->version) return kept->profile;

    const auto clock = profileClock.load();
    const std::time_t now = clock ? clock() : std::time(nullptr);
    const Descriptor file(native);
    const auto version = file.Version();
    auto bytes = version ? file.ReadAll() : std::nullopt;
    if (!bytes) return std::make_shared<PrivateProfile>();
    const auto profile = std::make_shared<PrivateProfile>(*bytes);
    if (version->size <= kLargestKept && hasSettled(*version, now)) kept = Kept{*version, profile};
    return profile;
}

} // namespace

CString ProfileText(const CString& path, const CString& section, const CString& key, const CString& defaultText,
                    int size)
{
    return profileIn(path)->Text(section, key, defaultText, size);
}

int ProfileInt(const CString& path, const CString& section, const CString& key, int defaultValue)
{
    return profileIn(path)->Int(section, key, defaultValue);
}

void SetProfileClock(std::time_t (*clock)())
{
    profileClock = clock;
}

} // namespace obmgr
