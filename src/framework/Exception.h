// The exceptions of the framework. Those derived from CException are raised as pointers and freed with Delete();
// CInvalidArgException, which tells of a programming error, is raised by value.
#pragma once

#include <stdexcept>

#include "common/Export.h"
#include "framework/Object.h"
#include "framework/String.h"

class RIVELTA_API CException : public CObject {
    DECLARE_DYNAMIC(CException)

    // `autoDelete` is false for an exception object that does not live on the heap; Delete then leaves it alone.
    explicit CException(bool autoDelete = true) noexcept : m_autoDelete(autoDelete) {}
    ~CException() override;

    void Delete() noexcept;
    // A text for a person; false when there is none.
    virtual bool GetErrorMessage(CString& message) const;

protected:
    CException(const CException&) = default;
    CException& operator=(const CException&) = default;

private:
    bool m_autoDelete;
};

class RIVELTA_API CMemoryException : public CException {
    DECLARE_DYNAMIC(CMemoryException)
    ~CMemoryException() override;
    bool GetErrorMessage(CString& message) const override;
};

class RIVELTA_API CNotSupportedException : public CException {
    DECLARE_DYNAMIC(CNotSupportedException)
    ~CNotSupportedException() override;
    bool GetErrorMessage(CString& message) const override;
};

// A failed file operation.
class RIVELTA_API CFileException : public CException {
    DECLARE_DYNAMIC(CFileException)

    enum Cause {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };

    explicit CFileException(int cause = none, long osError = 0, const wchar_t* fileName = nullptr);
    ~CFileException() override;

    bool GetErrorMessage(CString& message) const override;

    // The cause that an errno value stands for.
    static int OsErrorToException(long osError) noexcept;
    [[noreturn]] static void ThrowOsError(long osError, const wchar_t* fileName = nullptr);

    int m_cause;
    long m_lOsError;
    CString m_strFileName;
};

// A bad list position, an index out of range: an error in the calling program.
class RIVELTA_API CInvalidArgException : public std::invalid_argument {
public:
    CInvalidArgException() : CInvalidArgException("invalid argument") {}
    explicit CInvalidArgException(const char* what) : std::invalid_argument(what) {}
    CInvalidArgException(const CInvalidArgException&) = default;
    CInvalidArgException& operator=(const CInvalidArgException&) = default;
    ~CInvalidArgException() override;
};

[[noreturn]] RIVELTA_API void AfxThrowInvalidArgException();
[[noreturn]] RIVELTA_API void AfxThrowNotSupportedException();
[[noreturn]] RIVELTA_API void AfxThrowFileException(int cause, long osError = 0, const wchar_t* fileName = nullptr);
