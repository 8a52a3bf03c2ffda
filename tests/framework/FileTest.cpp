#include "framework/File.h"

#include <cerrno>
#include <csignal>
#include <functional>
#include <optional>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "framework/TemporaryFolder.h"

using obmgr::TextEncoding;

namespace {

constexpr unsigned kNew = CFile::modeCreate | CFile::modeWrite;

// errno of the CFileException that the action raises; none when it raises nothing.
std::optional<long> failureOf(const std::function<void()>& action)
{
    try {
        action();
        return std::nullopt;
    } catch (CFileException* failure) {
        const long error = failure->m_lOsError;
        failure->Delete();
        return error;
    }
}

// A device with faults: takes at most `m_piece` bytes a call, fails at byte `m_failAt`, is interrupted now and then.
class FaultyFile : public CStdioFile {
public:
    using CStdioFile::CStdioFile;
    std::size_t m_piece = SIZE_MAX;
    std::size_t m_failAt = SIZE_MAX;
    int m_error = EIO;
    bool m_interrupts = false;
    std::string m_taken;
    int m_calls = 0;

protected:
    std::ptrdiff_t WriteToDevice(const void* bytes, std::size_t count) override
    {
        ++m_calls;
        if (m_interrupts && m_calls % 2 == 1) {
            errno = EINTR;
            return -1;
        }
        if (m_taken.size() >= m_failAt) {
            errno = m_error;
            return m_error == 0 ? 0 : -1;
        }
        const std::size_t taken = std::min({count, m_piece, m_failAt - m_taken.size()});
        m_taken.append(static_cast<const char*>(bytes), taken);
        return static_cast<std::ptrdiff_t>(taken);
    }
};

// Lets no file of this process grow beyond `bytes`.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

} // namespace

TEST(File, WritesTextAndBytesInOrder)
{
    const TemporaryFolder folder;
    CStdioFile file(folder.Wide("a"), kNew, TextEncoding::Utf8);
    EXPECT_TRUE(file.IsOpen());
    file.Write("\xFF\xFE", 2);
    file.WriteString(L"text");
    file.WriteUtf8("more");
    EXPECT_EQ(file.GetPosition(), 10U);
    EXPECT_EQ(file.GetLength(), 10U);
    EXPECT_EQ(folder.Bytes("a"), "") << "output is buffered";
    file.Flush();
    EXPECT_EQ(folder.Bytes("a"), "\xFF\xFEtextmore");
    file.SetEncoding(TextEncoding::Utf16LE);
    file.WriteString(L"x");
    file.Close();
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(folder.Bytes("a"), std::string("\xFF\xFEtextmorex\0", 12));
    file.Close();
}

TEST(File, LargeWritesGoThrough)
{
    const TemporaryFolder folder;
    const std::string large(700'000, 'L');
    CStdioFile file(folder.Wide("a"), kNew, TextEncoding::Utf8);
    file.WriteString(L"before");
    file.Write(large.data(), static_cast<unsigned>(large.size()));
    file.WriteString(L"after");
    file.Close();
    EXPECT_TRUE(folder.Bytes("a") == "before" + large + "after");
}

TEST(File, DestructorFlushes)
{
    const TemporaryFolder folder;
    {
        CStdioFile file(folder.Wide("a"), kNew, TextEncoding::Utf8);
        file.WriteString(L"kept");
    }
    EXPECT_EQ(folder.Bytes("a"), "kept");
}

TEST(File, AbortForgetsWhatIsBuffered)
{
    const TemporaryFolder folder;
    CStdioFile file(folder.Wide("a"), kNew, TextEncoding::Utf8);
    file.WriteString(L"lost");
    file.Abort();
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(folder.Bytes("a"), "");
}

TEST(File, ModesCreateKeepAndRequire)
{
    const TemporaryFolder folder;
    folder.Put("old", "0123456789");
    CStdioFile file;
    ASSERT_TRUE(file.Open(folder.Wide("old"), CFile::modeWrite, TextEncoding::Utf8));
    file.WriteString(L"ab");
    file.Close();
    EXPECT_EQ(folder.Bytes("old"), "ab23456789");
    ASSERT_TRUE(file.Open(folder.Wide("old"), kNew | CFile::modeNoTruncate));
    EXPECT_EQ(file.SeekToEnd(), 10U);
    file.Write("!", 1);
    file.Close();
    EXPECT_EQ(folder.Bytes("old"), "ab23456789!");
    ASSERT_TRUE(file.Open(folder.Wide("old"), kNew));
    file.Close();
    EXPECT_EQ(folder.Bytes("old"), "");
    EXPECT_FALSE(file.Open(folder.Wide("absent"), CFile::modeWrite));
}

TEST(File, FailedOpenTellsTheCause)
{
    const TemporaryFolder folder;
    folder.Put("file", "x");
    struct {
        CString path;
        unsigned flags;
        int cause;
    } const cases[] = {
        {folder.Wide("absent"), CFile::modeRead, CFileException::fileNotFound},
        {folder.Wide(""), CFile::modeRead, CFileException::accessDenied}, // the folder itself
        {folder.Wide(""), kNew, CFileException::accessDenied},
        {folder.Wide("file/below"), CFile::modeRead, CFileException::badPath},
        {folder.Wide("no/such/folder"), kNew, CFileException::fileNotFound},
        {folder.Wide(std::string(5000, 'x')), kNew, CFileException::badPath},
        {L"", kNew, CFileException::fileNotFound},
    };
    for (const auto& c : cases) {
        CStdioFile file;
        CFileException failure;
        EXPECT_FALSE(file.Open(c.path, c.flags, &failure));
        EXPECT_EQ(failure.m_cause, c.cause) << c.path;
        EXPECT_EQ(failure.m_strFileName, c.path);
        EXPECT_FALSE(file.IsOpen());
        EXPECT_TRUE(failureOf([&] { CStdioFile opened(c.path, c.flags); }).has_value());
    }
}

TEST(File, OpenFileCannotBeOpenedAgain)
{
    const TemporaryFolder folder;
    CStdioFile file(folder.Wide("a"), kNew);
    EXPECT_THROW(file.Open(folder.Wide("b"), kNew), CInvalidArgException);
}

TEST(File, ClosedFileRefusesEverythingButClose)
{
    CStdioFile file;
    char byte = 0;
    CString line;
    EXPECT_EQ(failureOf([&] { file.Write("x", 1); }), EBADF);
    EXPECT_EQ(failureOf([&] { file.WriteString(L"x"); }), EBADF);
    EXPECT_EQ(failureOf([&] { file.Read(&byte, 1); }), EBADF);
    EXPECT_EQ(failureOf([&] { file.ReadString(line); }), EBADF);
    EXPECT_EQ(failureOf([&] { file.Seek(0, CFile::begin); }), EBADF);
    file.Flush();
    file.Close();
    file.Abort();
}

TEST(File, KnowsItsPathAndName)
{
    const TemporaryFolder folder;
    const CStdioFile file(folder.Wide("設計.xml"), kNew);
    EXPECT_EQ(file.GetFilePath(), folder.Wide("設計.xml"));
    EXPECT_EQ(file.GetFileName(), L"設計.xml");
}

TEST(File, ReadsSeeksAndWritesInOneFile)
{
    const TemporaryFolder folder;
    folder.Put("a", "0123456789");
    CStdioFile file(folder.Wide("a"), CFile::modeReadWrite, TextEncoding::Utf8);
    char three[3];
    EXPECT_EQ(file.Read(three, 3), 3U);
    EXPECT_EQ(std::string(three, 3), "012");
    EXPECT_EQ(file.GetPosition(), 3U);
    file.WriteString(L"ab"); // at the place where reading stopped, not where the buffer ended
    EXPECT_EQ(file.GetPosition(), 5U);
    EXPECT_EQ(file.Read(three, 3), 3U);
    EXPECT_EQ(std::string(three, 3), "567");
    EXPECT_EQ(file.Seek(-1, CFile::current), 7U);
    EXPECT_EQ(file.Seek(-2, CFile::end), 8U);
    EXPECT_EQ(file.Read(three, 3), 2U);
    EXPECT_EQ(file.Read(three, 3), 0U);
    EXPECT_TRUE(failureOf([&] { file.Seek(-1, CFile::begin); }).has_value());
    EXPECT_THROW(file.Seek(0, 3), CInvalidArgException);
    file.Close();
    EXPECT_EQ(folder.Bytes("a"), "012ab56789");
}

TEST(File, WritingAFileOpenedForReadingFails)
{
    const TemporaryFolder folder;
    folder.Put("a", "x");
    CStdioFile file(folder.Wide("a"), CFile::modeRead);
    file.WriteString(L"y");
    EXPECT_EQ(failureOf([&] { file.Flush(); }), EBADF);
}

TEST(File, StatusOfFileAndFolder)
{
    const TemporaryFolder folder;
    folder.Put("a", "123");
    CFileStatus status;
    ASSERT_TRUE(CFile::GetStatus(folder.Wide("a"), status));
    EXPECT_EQ(status.m_size, 3U);
    EXPECT_GT(status.m_mtime, 0);
    EXPECT_EQ(status.m_attribute, CFile::normal);
    EXPECT_EQ(status.m_szFullName, folder.Wide("a"));
    ::chmod(folder.Native("a").c_str(), 0444);
    ASSERT_TRUE(CFile::GetStatus(folder.Wide("a"), status));
    EXPECT_EQ(status.m_attribute, CFile::readOnly);
    ASSERT_TRUE(CFile::GetStatus(obmgr::PathFromNative(folder.Path().string()), status));
    EXPECT_EQ(status.m_attribute, CFile::directory);
    EXPECT_FALSE(CFile::GetStatus(folder.Wide("absent"), status));
    EXPECT_FALSE(CFile::GetStatus(L"", status));
    EXPECT_FALSE(CFile::GetStatus(nullptr, status));
}

TEST(File, FullDiskIsToldOfAtFlushForSmallAmounts)
{
    CStdioFile file(L"/dev/full", CFile::modeWrite, TextEncoding::Utf8);
    file.WriteString(L"small");
    EXPECT_EQ(failureOf([&] { file.Flush(); }), ENOSPC);
    EXPECT_EQ(failureOf([&] { file.Flush(); }), ENOSPC) << "an error once seen stays";
    EXPECT_EQ(failureOf([&] { file.WriteString(L"x"); }), ENOSPC);
    EXPECT_EQ(failureOf([&] { file.Write("x", 1); }), ENOSPC);
    EXPECT_EQ(failureOf([&] { file.Close(); }), ENOSPC) << "also after Flush has told of it";
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(failureOf([&] { file.Close(); }), std::nullopt) << "Close raises once";
}

TEST(File, FullDiskIsToldOfAtCloseForSmallAmounts)
{
    CStdioFile file(L"/dev/full", CFile::modeWrite, TextEncoding::Utf8);
    file.WriteUtf8("small");
    EXPECT_EQ(failureOf([&] { file.Close(); }), ENOSPC);
    EXPECT_FALSE(file.IsOpen());
}

TEST(File, FullDiskIsToldOfAtTheWriteForLargeAmounts)
{
    const std::string large(600'000, 'x');
    CStdioFile file(L"/dev/full", CFile::modeWrite, TextEncoding::Utf8);
    EXPECT_EQ(failureOf([&] { file.WriteUtf8(large); }), ENOSPC);
    EXPECT_EQ(failureOf([&] { file.Close(); }), ENOSPC);
    ASSERT_TRUE(file.Open(L"/dev/full", CFile::modeWrite));
    EXPECT_EQ(failureOf([&] { file.Write(large.data(), static_cast<unsigned>(large.size())); }), ENOSPC);
    EXPECT_EQ(failureOf([&] { file.Close(); }), ENOSPC);
}

TEST(File, DestructorOfAFailedFileRaisesNothing)
{
    EXPECT_NO_THROW({
        CStdioFile file(L"/dev/full", CFile::modeWrite);
        file.WriteString(L"lost");
    });
}

TEST(File, FileIsGoodAgainWhenOpenedAgain)
{
    const TemporaryFolder folder;
    CStdioFile file(L"/dev/full", CFile::modeWrite, TextEncoding::Utf8);
    file.WriteString(L"lost");
    EXPECT_TRUE(failureOf([&] { file.Close(); }).has_value());
    ASSERT_TRUE(file.Open(folder.Wide("a"), kNew));
    file.WriteString(L"kept");
    EXPECT_EQ(failureOf([&] { file.Close(); }), std::nullopt);
    EXPECT_EQ(folder.Bytes("a"), "kept");
}

TEST(File, SizeLimitOfTheSystemIsAnError)
{
    const TemporaryFolder folder;
    CStdioFile file(folder.Wide("a"), kNew, TextEncoding::Utf8);
    const FileSizeLimit limit(1000); // the first write is short, the next one fails
    file.WriteString(CString(L'x', 4096));
    EXPECT_EQ(failureOf([&] { file.Flush(); }), EFBIG);
    EXPECT_EQ(failureOf([&] { file.Close(); }), EFBIG);
    EXPECT_EQ(folder.Bytes("a").size(), 1000U);
}

TEST(File, ShortAndInterruptedWritesLoseNothing)
{
    FaultyFile file(L"/dev/null", CFile::modeWrite, TextEncoding::Utf8);
    file.m_piece = 7;
    file.m_interrupts = true;
    file.WriteString(L"a text that takes several calls");
    file.Close();
    EXPECT_EQ(file.m_taken, "a text that takes several calls");
    EXPECT_GT(file.m_calls, 9);
}

TEST(File, FailureAtAnyByteIsToldOfAndNothingFollowsIt)
{
    const std::string text(300, 'x');
    for (std::size_t failAt = 0; failAt < text.size(); failAt += 13) {
        FaultyFile file(L"/dev/null", CFile::modeWrite, TextEncoding::Utf8);
        file.m_failAt = failAt;
        file.WriteUtf8(text);
        EXPECT_EQ(failureOf([&] { file.Flush(); }), EIO);
        const int calls = file.m_calls;
        EXPECT_EQ(failureOf([&] { file.WriteUtf8(text); }), EIO);
        EXPECT_EQ(failureOf([&] { file.Close(); }), EIO);
        EXPECT_EQ(file.m_calls, calls) << "no byte behind the gap";
        EXPECT_EQ(file.m_taken.size(), failAt);
    }
}

TEST(File, DeviceThatTakesNothingIsAnErrorAndNoEndlessLoop)
{
    FaultyFile file(L"/dev/null", CFile::modeWrite, TextEncoding::Utf8);
    file.m_failAt = 0;
    file.m_error = 0;
    file.WriteString(L"x");
    EXPECT_EQ(failureOf([&] { file.Close(); }), EIO);
}

TEST(File, NamesThatAreNoUtf8CanBeOpened)
{
    const TemporaryFolder folder;
    const std::string name = "caf\xE9.xml";
    folder.Put(name, "latin");
    const CString wide = folder.Wide(name);
    EXPECT_EQ(obmgr::NativePath(wide), folder.Native(name).string());
    CStdioFile file(wide, CFile::modeRead, TextEncoding::Utf8);
    CString line;
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_EQ(line, L"latin");
}

TEST(File, EveryNativeNameSurvivesTheWideForm)
{
    for (const std::string name :
         {"plain", "管渠", "\xFF\xFE", "a\xE7\xAE", "\xEF\xBF\xBD", "\xED\xA0\x80", "\xF0\x9F\x98\x80"})
        EXPECT_EQ(obmgr::NativePath(obmgr::PathFromNative(name)), name) << testing::PrintToString(name);
}
