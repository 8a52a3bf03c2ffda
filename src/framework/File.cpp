// Opening, closing, bytes and failures of files. The encoding of text output is in FileText.cpp.

#include "framework/File.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "framework/CurrentDirectory.h"
#include "framework/FileName.h"

using obmgr::TextEncoding;

IMPLEMENT_DYNAMIC(CFile, CObject)
IMPLEMENT_DYNAMIC(CStdioFile, CFile)

CFile::~CFile() = default;

bool CFile::GetStatus(const wchar_t* path, CFileStatus& status)
{
    struct stat info = {};
    const std::string native = obmgr::NativePath(path);
    if (native.empty() || ::stat(native.c_str(), &info) != 0) return false;
    status.m_mtime = info.st_mtime;
    status.m_size = static_cast<unsigned long long>(info.st_size);
    int attribute = S_ISDIR(info.st_mode) ? directory : normal;
    if ((info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) attribute |= readOnly;
    status.m_attribute = static_cast<unsigned char>(attribute);
    status.m_szFullName = obmgr::AbsolutePath(path);
    return true;
}

CString CFile::GetFileName() const
{
    return m_filePath.Mid(m_filePath.ReverseFind(L'/') + 1);
}

CStdioFile::CStdioFile() = default;

CStdioFile::CStdioFile(const wchar_t* path, unsigned flags, TextEncoding encoding)
{
    CFileException failure(CFileException::none);
    if (!CStdioFile::Open(path, flags, &failure))
        AfxThrowFileException(failure.m_cause, failure.m_lOsError, failure.m_strFileName);
    m_encoding = encoding;
}

CStdioFile::~CStdioFile()
{
    try {
        CStdioFile::Close();
    } catch (CException* failure) {
        failure->Delete();
    }
}

bool CStdioFile::Open(const wchar_t* path, unsigned flags, CFileException* error)
{
    if (IsOpen()) AfxThrowInvalidArgException();
    int mode = O_CLOEXEC | O_NOCTTY;
    mode |= flags & modeReadWrite ? O_RDWR : flags & modeWrite ? O_WRONLY : O_RDONLY;
    if (flags & modeCreate) mode |= flags & modeNoTruncate ? O_CREAT : O_CREAT | O_TRUNC;

    const std::string native = obmgr::NativePath(path);
    int descriptor = -1;
    do {
        descriptor = ::open(native.c_str(), mode, 0666);
    } while (descriptor < 0 && errno == EINTR);
    int failure = descriptor < 0 ? errno : 0;
    struct stat info = {};
    if (descriptor >= 0 && ::fstat(descriptor, &info) == 0 && S_ISDIR(info.st_mode)) {
        ::close(descriptor);
        failure = EISDIR;
    }
    if (failure != 0) {
        if (error) {
            error->m_cause = CFileException::OsErrorToException(failure);
            error->m_lOsError = failure;
            error->m_strFileName = path;
        }
        return false;
    }
    Reset();
    m_descriptor = descriptor;
    m_failure = 0;
    m_filePath = obmgr::AbsolutePath(path);
    return true;
}

bool CStdioFile::Open(const wchar_t* path, unsigned flags, TextEncoding encoding, CFileException* error)
{
    if (!Open(path, flags, error)) return false;
    m_encoding = encoding;
    return true;
}

void CStdioFile::Reset() noexcept
{
    m_filled = m_inputEnd = m_inputNext = 0;
    m_atStart = true;
}

void CStdioFile::Fail(int osError) const
{
    CFileException::ThrowOsError(osError, m_filePath);
}

std::ptrdiff_t CStdioFile::WriteToDevice(const void* bytes, std::size_t count)
{
    return ::write(m_descriptor, bytes, count);
}

void CStdioFile::WriteAll(const char* bytes, std::size_t count)
{
    while (count > 0) {
        const std::ptrdiff_t taken = WriteToDevice(bytes, count);
        if (taken < 0 && errno == EINTR) continue;
        if (taken <= 0) {
            // The bytes behind a gap must not reach the file.
            m_failure = taken < 0 && errno != 0 ? errno : EIO;
            m_filled = 0;
            Fail(m_failure);
        }
        bytes += taken;
        count -= static_cast<std::size_t>(taken);
    }
}

void CStdioFile::FlushBuffer()
{
    WriteAll(m_output.get(), std::exchange(m_filled, 0));
}

void CStdioFile::BeginWrite()
{
    if (!IsOpen()) Fail(EBADF);
    if (m_failure != 0) Fail(m_failure);
    if (m_inputEnd != 0) Seek(0, current); // what was read ahead
    if (!m_output) m_output = std::make_unique_for_overwrite<char[]>(kBufferSize);
}

void CStdioFile::BeginRead()
{
    if (!IsOpen()) Fail(EBADF);
    if (m_filled > 0) Flush();
    if (!m_input) m_input = std::make_unique_for_overwrite<char[]>(kBufferSize);
}

void CStdioFile::Write(const void* bytes, unsigned count)
{
    if (count == 0) return;
    BeginWrite();
    if (count > kBufferSize - m_filled) FlushBuffer();
    if (count >= kBufferSize) {
        WriteAll(static_cast<const char*>(bytes), count);
        return;
    }
    std::memcpy(m_output.get() + m_filled, bytes, count);
    m_filled += count;
}

void CStdioFile::Flush()
{
    if (!IsOpen()) return;
    if (m_failure != 0) Fail(m_failure);
    if (m_filled > 0) FlushBuffer();
}

void CStdioFile::Close()
{
    if (!IsOpen()) return;
    int failure = m_failure;
    try {
        if (failure == 0 && m_filled > 0) FlushBuffer();
    } catch (CException* flushFailure) {
        flushFailure->Delete();
        failure = m_failure;
    }
    const int descriptor = std::exchange(m_descriptor, -1);
    // The descriptor is free after an interrupted close, too: closing again could hit another file.
    if (::close(descriptor) != 0 && errno != EINTR && failure == 0) failure = errno;
    m_failure = 0;
    Reset();
    if (failure != 0) Fail(failure);
}

void CStdioFile::Abort() noexcept
{
    if (IsOpen()) ::close(std::exchange(m_descriptor, -1));
    m_failure = 0;
    Reset();
}

unsigned long long CStdioFile::GetPosition() const
{
    if (!IsOpen()) Fail(EBADF);
    const off_t offset = ::lseek(m_descriptor, 0, SEEK_CUR);
    if (offset < 0) Fail(errno);
    return static_cast<unsigned long long>(offset) + m_filled - (m_inputEnd - m_inputNext);
}

unsigned long long CStdioFile::GetLength() const
{
    if (!IsOpen()) Fail(EBADF);
    struct stat info = {};
    if (::fstat(m_descriptor, &info) != 0) Fail(errno);
    const auto size = static_cast<unsigned long long>(info.st_size);
    return m_filled > 0 ? std::max(size, GetPosition()) : size;
}

unsigned long long CStdioFile::Seek(long long offset, unsigned from)
{
    if (!IsOpen()) Fail(EBADF);
    if (from > end) AfxThrowInvalidArgException();
    Flush();
    if (from == current) offset -= static_cast<long long>(m_inputEnd - m_inputNext);
    const int whence = from == begin ? SEEK_SET : from == current ? SEEK_CUR : SEEK_END;
    const off_t result = ::lseek(m_descriptor, offset, whence);
    if (result < 0) AfxThrowFileException(CFileException::badSeek, errno, m_filePath);
    m_inputEnd = m_inputNext = 0;
    m_atStart = result == 0;
    return static_cast<unsigned long long>(result);
}

bool CStdioFile::FillInput()
{
    std::ptrdiff_t taken = 0;
    do {
        taken = ::read(m_descriptor, m_input.get(), kBufferSize);
    } while (taken < 0 && errno == EINTR);
    if (taken < 0) Fail(errno);
    m_inputNext = 0;
    m_inputEnd = static_cast<std::size_t>(taken);
    return taken > 0;
}

unsigned CStdioFile::Read(void* buffer, unsigned count)
{
    BeginRead();
    unsigned done = 0;
    while (done < count && (m_inputNext < m_inputEnd || FillInput())) {
        const std::size_t piece = std::min<std::size_t>(count - done, m_inputEnd - m_inputNext);
        std::memcpy(static_cast<char*>(buffer) + done, m_input.get() + m_inputNext, piece);
        m_inputNext += piece;
        done += static_cast<unsigned>(piece);
    }
    if (done > 0) m_atStart = false;
    return done;
}

int CStdioFile::NextByte()
{
    if (m_inputNext == m_inputEnd && !FillInput()) return -1;
    return static_cast<unsigned char>(m_input[m_inputNext++]);
}

bool CStdioFile::ReadString(CString& line)
{
    BeginRead();
    line.Empty();
    // No encoding here has the byte 0A within another character but UTF-16, which is read by pairs.
    const bool pairs = m_encoding == TextEncoding::Utf16LE;
    std::string bytes;
    int byte = 0;
    while ((byte = NextByte()) >= 0) {
        const int high = pairs ? NextByte() : 0;
        if (byte == '\n' && high == 0) break;
        bytes += static_cast<char>(static_cast<unsigned char>(byte));
        if (pairs && high >= 0) bytes += static_cast<char>(static_cast<unsigned char>(high));
    }
    if (byte < 0 && bytes.empty()) return false;
    line = obmgr::DecodeText(m_encoding, bytes);
    if (std::exchange(m_atStart, false) && !line.IsEmpty() && line[0] == 0xFEFF) line.Delete(0);
    if (!line.IsEmpty() && line[line.GetLength() - 1] == L'\r') line.Truncate(line.GetLength() - 1);
    return true;
}
