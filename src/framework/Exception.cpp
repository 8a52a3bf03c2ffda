#include "framework/Exception.h"

#include <cerrno>
#include <system_error>

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CMemoryException, CException)
IMPLEMENT_DYNAMIC(CNotSupportedException, CException)
IMPLEMENT_DYNAMIC(CFileException, CException)

CException::~CException() = default;

void CException::Delete() noexcept
{
    if (m_autoDelete) delete this;
}

bool CException::GetErrorMessage(CString& message) const
{
    message.Empty();
    return false;
}

CMemoryException::~CMemoryException() = default;

bool CMemoryException::GetErrorMessage(CString& message) const
{
    message = L"Out of memory.";
    return true;
}

CNotSupportedException::~CNotSupportedException() = default;

bool CNotSupportedException::GetErrorMessage(CString& message) const
{
    message = L"An unsupported operation was attempted.";
    return true;
}

CFileException::CFileException(int cause, long osError, const wchar_t* fileName)
    : m_cause(cause), m_lOsError(osError), m_strFileName(fileName)
{
}

CFileException::~CFileException() = default;

namespace {

const wchar_t* TextOfCause(int cause)
{
    switch (cause) {
    case CFileException::none: return L"No error occurred";
    case CFileException::fileNotFound: return L"The file was not found";
    case CFileException::badPath: return L"The path is not valid";
    case CFileException::tooManyOpenFiles: return L"Too many files are open";
    case CFileException::accessDenied: return L"Access to the file was denied";
    case CFileException::invalidFile: return L"The file is not open";
    case CFileException::removeCurrentDir: return L"The current folder cannot be removed";
    case CFileException::directoryFull: return L"The folder is full";
    case CFileException::badSeek: return L"The file position could not be set";
    case CFileException::hardIO: return L"The device reported an error";
    case CFileException::sharingViolation: return L"The file is in use";
    case CFileException::lockViolation: return L"The file is locked";
    case CFileException::diskFull: return L"The disk is full";
    case CFileException::endOfFile: return L"The end of the file was reached";
    default: return L"The file operation failed";
    }
}

} // namespace

bool CFileException::GetErrorMessage(CString& message) const
{
    message = TextOfCause(m_cause);
    if (!m_strFileName.IsEmpty()) message += L": " + m_strFileName;
    if (m_lOsError != 0) {
        const std::string detail = std::generic_category().message(static_cast<int>(m_lOsError));
        message += L" (" + obmgr::FromUtf8(detail) + L")";
    }
    message += L".";
    return true;
}

int CFileException::OsErrorToException(long osError) noexcept
{
    switch (osError) {
    case 0: return none;
    case ENOENT: return fileNotFound;
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
    case EINVAL:
    case EILSEQ: return badPath;
    case EMFILE:
    case ENFILE: return tooManyOpenFiles;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR: return accessDenied;
    case EBADF: return invalidFile;
    case ESPIPE: return badSeek;
    case EIO: return hardIO;
    case ETXTBSY:
    case EBUSY: return sharingViolation;
    case EAGAIN:
    case EDEADLK: return lockViolation;
    case ENOSPC:
    case EDQUOT:
    case EFBIG: return diskFull;
    default: return genericException;
    }
}

void CFileException::ThrowOsError(long osError, const wchar_t* fileName)
{
    throw new CFileException(OsErrorToException(osError), osError, fileName);
}

CInvalidArgException::~CInvalidArgException() = default;

void AfxThrowInvalidArgException()
{
    throw CInvalidArgException();
}

void AfxThrowNotSupportedException()
{
    throw new CNotSupportedException;
}

void AfxThrowFileException(int cause, long osError, const wchar_t* fileName)
{
    throw new CFileException(cause, osError, fileName);
}
