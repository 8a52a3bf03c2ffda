// CFile and CStdioFile: files of bytes and of encoded text, over the system's descriptors.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <memory>
#include <string>
#include <string_view>

#include "common/Export.h"
#include "framework/Exception.h"
#include "framework/Object.h"
#include "framework/String.h"
#include "framework/TextEncoding.h"

// What CFile::GetStatus tells of a file.
struct RIVELTA_API CFileStatus {
    std::time_t m_mtime = 0;
    unsigned long long m_size = 0;
    unsigned char m_attribute = 0; // CFile::Attribute bits
    CString m_szFullName;          // absolute path
};

// The common face of files. Operations raise CFileException (a pointer) when they fail.
class RIVELTA_API CFile : public CObject {
    DECLARE_DYNAMIC(CFile)

    // Sharing is always allowed here, and text and binary files differ in nothing but what the caller writes.
    enum OpenFlags : unsigned {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,
        typeUnicode = 0x0400,
        modeCreate = 0x1000,     // make the file, or empty it
        modeNoTruncate = 0x2000, // with modeCreate: keep what an existing file holds
        typeText = 0x4000,
        typeBinary = 0x8000
    };
    enum Attribute { normal = 0x00, readOnly = 0x01, directory = 0x10 };
    enum SeekPosition { begin, current, end };

    ~CFile() override;
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    // False when there is no such file or folder.
    static bool GetStatus(const wchar_t* path, CFileStatus& status);

    virtual unsigned Read(void* buffer, unsigned count) = 0;
    virtual void Write(const void* bytes, unsigned count) = 0;
    virtual void Flush() = 0;
    virtual void Close() = 0;
    virtual void Abort() noexcept = 0;
    virtual unsigned long long GetLength() const = 0;
    virtual unsigned long long GetPosition() const = 0;
    virtual unsigned long long Seek(long long offset, unsigned from) = 0;

    // The absolute path, and its last part.
    CString GetFilePath() const { return m_filePath; }
    CString GetFileName() const;

protected:
    CFile() = default;

    CString m_filePath;
};

// A text file in one of the encodings. Output is buffered.
//
// Every failed write is raised, whether it comes to light in a write, in Flush or in Close. After the first failure
// the file writes nothing more: later writes and Flush raise again, Close raises once more and leaves the file closed.
// A character that the encoding lacks is written as a numeric character reference, "&#x301C;". What is no character
// (a lone surrogate) is written as U+FFFD.
class RIVELTA_API CStdioFile : public CFile {
    DECLARE_DYNAMIC(CStdioFile)

    CStdioFile();
    // Opens the file; raises CFileException.
    CStdioFile(const wchar_t* path, unsigned flags, obmgr::TextEncoding encoding = obmgr::TextEncoding::Utf16LE);
    // Flushes and closes without raising; whoever wants to know of failures calls Close.
    ~CStdioFile() override;

    // False on failure, told of in `error` if it is given. A file that is still open is an invalid argument.
    virtual bool Open(const wchar_t* path, unsigned flags, CFileException* error = nullptr);
    bool Open(const wchar_t* path, unsigned flags, obmgr::TextEncoding encoding, CFileException* error = nullptr);
    bool IsOpen() const noexcept { return m_descriptor >= 0; }

    obmgr::TextEncoding GetEncoding() const noexcept { return m_encoding; }
    void SetEncoding(obmgr::TextEncoding encoding) noexcept { m_encoding = encoding; }
    bool CanEncode(char32_t c) const { return obmgr::CanEncode(m_encoding, c); }

    // Writes the text in the file's encoding; "\n" is written as it stands.
    virtual void WriteString(const wchar_t* text);
    // The same for UTF-8 text: the fast way of the record output.
    void WriteUtf8(std::string_view text);
    void Write(const void* bytes, unsigned count) override;

    // The next line without its "\n" or "\r\n"; false at the end of the file. A mark at the start is left out.
    virtual bool ReadString(CString& line);
    unsigned Read(void* buffer, unsigned count) override;

    void Flush() override;
    // Nothing on a closed file.
    void Close() override;
    // Closes, forgetting what is buffered and what has failed.
    void Abort() noexcept override;

    unsigned long long GetLength() const override;
    unsigned long long GetPosition() const override;
    unsigned long long Seek(long long offset, unsigned from) override;
    void SeekToBegin() { Seek(0, begin); }
    unsigned long long SeekToEnd() { return Seek(0, end); }

protected:
    // The system call beneath all output, with its results: the number of bytes taken, or -1 and errno. A derived
    // class may put another device, or a failing one, in its place.
    virtual std::ptrdiff_t WriteToDevice(const void* bytes, std::size_t count);

private:
    static constexpr std::size_t kBufferSize = 256 * 1024;

    template <class Encoder> void PutUtf8(std::string_view text, const Encoder& encoder);
    template <class Encoder> void PutWide(std::wstring_view text, const Encoder& encoder);
    template <class Put> void WithEncoder(Put put);

    char* Room(std::size_t count);
    void BeginWrite();
    void BeginRead();
    void FlushBuffer();
    void WriteAll(const char* bytes, std::size_t count);
    [[noreturn]] void Fail(int osError) const;
    bool FillInput();
    int NextByte();
    void Reset() noexcept;

    int m_descriptor = -1;
    int m_failure = 0; // errno of the first failed write
    obmgr::TextEncoding m_encoding = obmgr::TextEncoding::Utf16LE;
    bool m_atStart = true; // nothing was read since the start of the file
    std::unique_ptr<char[]> m_output;
    std::size_t m_filled = 0; // bytes of m_output that are not written yet
    std::unique_ptr<char[]> m_input;
    std::size_t m_inputEnd = 0;
    std::size_t m_inputNext = 0;
};
