#include "persistence/PipeFileSource.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLExceptMsgs.hpp>

#include "framework/CurrentDirectory.h"
#include "framework/File.h"
#include "framework/FileName.h"
#include "persistence/XmlText.h"

namespace obmgr {
namespace {

constexpr unsigned kMarkSize = 2;
constexpr std::size_t kLongestProlog = 512;

int OpenForReading(const CString& path)
{
    // Opening a FIFO must not wait for a writer.
    const int descriptor = ::open(NativePath(path).c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    struct stat info = {};
    if (descriptor >= 0 && ::fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode)) return descriptor;
    if (descriptor >= 0) ::close(descriptor);
    return -1;
}

class FileStream : public xercesc::BinInputStream {
public:
    FileStream(int descriptor, off_t start) : m_descriptor(descriptor), m_start(start), m_position(start) {}
    ~FileStream() override { ::close(m_descriptor); }

    XMLFilePos curPos() const override { return static_cast<XMLFilePos>(m_position - m_start); }

    XMLSize_t readBytes(XMLByte* const bytes, const XMLSize_t most) override
    {
        ssize_t taken = 0;
        do {
            taken = ::pread(m_descriptor, bytes, most, m_position);
        } while (taken < 0 && errno == EINTR);
        if (taken < 0) ThrowXML(xercesc::XMLPlatformUtilsException, xercesc::XMLExcepts::File_CouldNotReadFromFile);
        m_position += taken;
        return static_cast<XMLSize_t>(taken);
    }

    const XMLCh* getContentType() const override { return nullptr; }

private:
    int m_descriptor;
    off_t m_start;
    off_t m_position;
};

// Whether the prolog, up to its "?>", declares EUC-KR.
bool DeclaresEucKr(std::string prolog)
{
    constexpr std::string_view kDeclaration = "encoding";
    prolog.resize(std::min(prolog.find("?>"), prolog.size()));
    if (!prolog.starts_with("<?xml")) return false;
    std::size_t at = prolog.find(kDeclaration);
    if (at == std::string::npos) return false;
    at = prolog.find_first_of("\"'", at + kDeclaration.size());
    if (at == std::string::npos) return false;
    std::string name = prolog.substr(at + 1, prolog.find(prolog[at], at + 1) - at - 1);
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return name == "EUC-KR";
}

} // namespace

CString SystemPath(const CString& path)
{
    CFileStatus status;
    if (path.Find(L'\\') < 0 || CFile::GetStatus(path, status)) return path;
    CString turned = path;
    turned.Replace(L'\\', L'/');
    return turned;
}

PipeFileSource::PipeFileSource(const CString& path) : m_descriptor(OpenForReading(path))
{
    try {
        setSystemId(ToXml(AbsolutePath(path).View()).c_str());
        if (m_descriptor >= 0) Sniff();
    } catch (...) {
        if (m_descriptor >= 0) ::close(m_descriptor);
        throw;
    }
}

PipeFileSource::~PipeFileSource()
{
    if (m_descriptor >= 0) ::close(m_descriptor);
}

void PipeFileSource::Sniff()
{
    std::array<char, kMarkSize + 2 * kLongestProlog> bytes{};
    const ssize_t taken = ::pread(m_descriptor, bytes.data(), bytes.size(), 0);
    const std::string_view head(bytes.data(), taken > 0 ? static_cast<std::size_t>(taken) : 0);
    const bool hasMark = head.starts_with("\xFF\xFE");
    const std::string_view text = head.substr(hasMark ? kMarkSize : 0);
    const bool isWide = hasMark && text.size() > 1 && text[1] == '\0';
    std::string prolog;
    for (std::size_t at = 0; at < text.size(); at += isWide ? 2 : 1)
        prolog += text[at];
    if (!DeclaresEucKr(prolog)) return;
    setEncoding(isWide ? u"UTF-16" : u"windows-949");
    if (hasMark && !isWide) m_start = kMarkSize;
}

xercesc::BinInputStream* PipeFileSource::makeStream() const
{
    const int descriptor = m_descriptor < 0 ? -1 : ::fcntl(m_descriptor, F_DUPFD_CLOEXEC, 0);
    if (descriptor < 0) return nullptr;
    try {
        return new FileStream(descriptor, m_start);
    } catch (...) {
        ::close(descriptor);
        throw;
    }
}

} // namespace obmgr
