#include "framework/Exception.h"

#include <cerrno>

#include <gtest/gtest.h>

TEST(Exception, PointersAreRaisedAndDeleted)
{
    try {
        AfxThrowFileException(CFileException::diskFull, ENOSPC, L"design.xml");
        FAIL();
    } catch (CException* exception) {
        EXPECT_TRUE(exception->IsKindOf(RUNTIME_CLASS(CFileException)));
        CString message;
        EXPECT_TRUE(exception->GetErrorMessage(message));
        EXPECT_GE(message.Find(L"The disk is full: design.xml ("), 0) << message;
        exception->Delete();
    }
    EXPECT_THROW(
        {
            try {
                AfxThrowNotSupportedException();
            } catch (CNotSupportedException* exception) {
                CString message;
                EXPECT_TRUE(exception->GetErrorMessage(message));
                exception->Delete();
                throw 1;
            }
        },
        int);
}

TEST(Exception, DeleteLeavesAnObjectOnTheStack)
{
    CException exception(false);
    exception.Delete();
    CString message(L"before");
    EXPECT_FALSE(exception.GetErrorMessage(message));
    EXPECT_EQ(message, L"");
}

TEST(Exception, InvalidArgumentIsRaisedByValue)
{
    EXPECT_THROW(AfxThrowInvalidArgException(), CInvalidArgException);
    EXPECT_THROW(AfxThrowInvalidArgException(), std::invalid_argument);
}

TEST(Exception, SystemErrorsHaveCauses)
{
    struct {
        int osError;
        int cause;
    } const cases[] = {
        {0, CFileException::none},
        {ENOENT, CFileException::fileNotFound},
        {ENOTDIR, CFileException::badPath},
        {ENAMETOOLONG, CFileException::badPath},
        {EACCES, CFileException::accessDenied},
        {EISDIR, CFileException::accessDenied},
        {ENOSPC, CFileException::diskFull},
        {EFBIG, CFileException::diskFull},
        {EDQUOT, CFileException::diskFull},
        {EIO, CFileException::hardIO},
        {EBADF, CFileException::invalidFile},
        {EMFILE, CFileException::tooManyOpenFiles},
        {12345, CFileException::genericException},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CFileException::OsErrorToException(c.osError), c.cause) << c.osError;
}
