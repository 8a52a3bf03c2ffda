#include "framework/AtomicFile.h"

#include <cerrno>
#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "framework/CurrentDirectory.h"
#include "framework/File.h"
#include "framework/TemporaryFolder.h"

using obmgr::AtomicFile;
using obmgr::TextEncoding;

namespace {

void write(const CString& path, const CString& text)
{
    CStdioFile file(path, CFile::modeCreate | CFile::modeWrite, TextEncoding::Utf8);
    file.WriteString(text);
    file.Close();
}

// Replaces the target; the text of the failure, or "".
CString replace(const CString& target, const CString& text)
{
    AtomicFile file;
    CString error;
    if (!file.Create(target, error)) return L"create: " + error;
    write(file.TempPath(), text);
    if (!file.Commit(error)) return L"commit: " + error;
    EXPECT_TRUE(file.TempPath().IsEmpty());
    return error;
}

mode_t modeOf(const std::filesystem::path& path)
{
    struct stat info = {};
    EXPECT_EQ(::stat(path.c_str(), &info), 0);
    return info.st_mode & 07777;
}

class Umask {
public:
    explicit Umask(mode_t mask) : m_before(::umask(mask)) {}
    ~Umask() { ::umask(m_before); }
    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;

private:
    mode_t m_before;
};

// Fails the n-th flush: the first is that of the file, the second that of its folder.
class FailingSync : public AtomicFile {
public:
    explicit FailingSync(int failAt, int error = EIO) : m_failAt(failAt), m_error(error) {}

protected:
    int Sync(int descriptor) override
    {
        if (++m_calls != m_failAt) return AtomicFile::Sync(descriptor);
        errno = m_error;
        return -1;
    }

private:
    int m_calls = 0;
    int m_failAt;
    int m_error;
};

} // namespace

TEST(AtomicFile, ReplacesAnOldFileAndMakesANewOne)
{
    const TemporaryFolder folder;
    folder.Put("old", "old");
    EXPECT_EQ(replace(folder.Wide("old"), L"new"), L"");
    EXPECT_EQ(replace(folder.Wide("fresh"), L"first"), L"");
    EXPECT_EQ(folder.Bytes("old"), "new");
    EXPECT_EQ(folder.Bytes("fresh"), "first");
    EXPECT_EQ(folder.Count(), 2U) << "no temporary file is left";
}

TEST(AtomicFile, TargetIsUntouchedUntilCommit)
{
    const TemporaryFolder folder;
    folder.Put("old", "old");
    AtomicFile file;
    CString error;
    ASSERT_TRUE(file.Create(folder.Wide("old"), error)) << error;
    EXPECT_EQ(std::filesystem::path(obmgr::NativePath(file.TempPath())).parent_path(), folder.Path());
    write(file.TempPath(), L"half");
    EXPECT_EQ(folder.Bytes("old"), "old");
}

TEST(AtomicFile, WhatIsNotCommittedIsRemoved)
{
    const TemporaryFolder folder;
    folder.Put("old", "old");
    CString error;
    {
        AtomicFile file;
        ASSERT_TRUE(file.Create(folder.Wide("old"), error));
        write(file.TempPath(), L"half");
        ASSERT_TRUE(file.Create(folder.Wide("other"), error)) << "the first one is discarded";
        EXPECT_EQ(folder.Count(), 2U);
        file.Discard();
        EXPECT_EQ(folder.Count(), 1U);
        EXPECT_FALSE(file.Commit(error));
        EXPECT_FALSE(error.IsEmpty());
        ASSERT_TRUE(file.Create(folder.Wide("other"), error));
    }
    EXPECT_EQ(folder.Count(), 1U);
    EXPECT_EQ(folder.Bytes("old"), "old");
}

TEST(AtomicFile, TwoAtOnceDoNotMeet)
{
    const TemporaryFolder folder;
    AtomicFile one;
    AtomicFile two;
    CString error;
    ASSERT_TRUE(one.Create(folder.Wide("a"), error));
    ASSERT_TRUE(two.Create(folder.Wide("a"), error));
    EXPECT_NE(one.TempPath(), two.TempPath());
    write(one.TempPath(), L"one");
    write(two.TempPath(), L"two");
    EXPECT_TRUE(one.Commit(error));
    EXPECT_TRUE(two.Commit(error));
    EXPECT_EQ(folder.Bytes("a"), "two");
}

TEST(AtomicFile, ModeBitsAreKept)
{
    const Umask mask(0);
    const TemporaryFolder folder;
    for (const mode_t mode : {0600U, 0644U, 0660U, 0777U}) {
        folder.Put("a", "old");
        ::chmod(folder.Native("a").c_str(), mode);
        EXPECT_EQ(replace(folder.Wide("a"), L"new"), L"");
        EXPECT_EQ(modeOf(folder.Native("a")), mode);
    }
}

TEST(AtomicFile, NewFileHonoursTheUmask)
{
    const TemporaryFolder folder;
    for (const mode_t mask : {0U, 022U, 077U}) {
        const Umask guard(mask);
        const std::string name = "m" + std::to_string(mask);
        EXPECT_EQ(replace(folder.Wide(name), L"new"), L"");
        EXPECT_EQ(modeOf(folder.Native(name)), 0666U & ~mask);
    }
}

TEST(AtomicFile, TemporaryFileIsForItsOwnerOnly)
{
    const Umask mask(0);
    const TemporaryFolder folder;
    folder.Put("open", "old");
    ::chmod(folder.Native("open").c_str(), 0666);
    for (const char* const name : {"open", "new"}) {
        AtomicFile file;
        CString error;
        ASSERT_TRUE(file.Create(folder.Wide(name), error));
        EXPECT_EQ(modeOf(obmgr::NativePath(file.TempPath())), 0600U);
    }
}

TEST(AtomicFile, OwnerAndGroupAreKeptWhereTheSystemAllowsIt)
{
    if (::geteuid() != 0) GTEST_SKIP() << "only the superuser may give files away";
    const TemporaryFolder folder;
    folder.Put("a", "old");
    ASSERT_EQ(::chown(folder.Native("a").c_str(), 1234, 2345), 0);
    ::chmod(folder.Native("a").c_str(), 0640);
    EXPECT_EQ(replace(folder.Wide("a"), L"new"), L"");
    struct stat info = {};
    ASSERT_EQ(::stat(folder.Native("a").c_str(), &info), 0);
    EXPECT_EQ(info.st_uid, 1234U);
    EXPECT_EQ(info.st_gid, 2345U);
    EXPECT_EQ(info.st_mode & 07777, 0640U);
}

TEST(AtomicFile, SymbolicLinksStay)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Native("sub"));
    folder.Put("sub/real", "old");
    std::filesystem::create_symlink("sub/real", folder.Native("relative"));
    std::filesystem::create_symlink(folder.Native("relative"), folder.Native("absolute"));
    std::filesystem::create_symlink("sub/made", folder.Native("dangling"));
    EXPECT_EQ(replace(folder.Wide("absolute"), L"new"), L"");
    EXPECT_EQ(folder.Bytes("sub/real"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Native("absolute")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Native("relative")));
    EXPECT_EQ(replace(folder.Wide("dangling"), L"made"), L"");
    EXPECT_EQ(folder.Bytes("sub/made"), "made");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Native("dangling")));
}

TEST(AtomicFile, RingOfLinksIsRefused)
{
    const TemporaryFolder folder;
    std::filesystem::create_symlink("b", folder.Native("a"));
    std::filesystem::create_symlink("a", folder.Native("b"));
    EXPECT_EQ(replace(folder.Wide("a"), L"x").Left(8), L"create: ");
    EXPECT_EQ(folder.Count(), 2U);
}

TEST(AtomicFile, OtherHardLinksKeepTheOldContent)
{
    const TemporaryFolder folder;
    folder.Put("a", "old");
    std::filesystem::create_hard_link(folder.Native("a"), folder.Native("b"));
    EXPECT_EQ(replace(folder.Wide("a"), L"new"), L"");
    EXPECT_EQ(folder.Bytes("a"), "new");
    EXPECT_EQ(folder.Bytes("b"), "old");
}

TEST(AtomicFile, WhatIsNoFileIsRefused)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Native("folder"));
    ASSERT_EQ(::mkfifo(folder.Native("pipe").c_str(), 0600), 0);
    folder.Put("file", "");
    struct {
        CString target;
        const wchar_t* words;
    } const cases[] = {
        {folder.Wide("folder"), L"is a folder"},
        {folder.Wide("folder/"), L"is a folder"},
        {folder.Wide("new/"), L"is a folder"},
        {folder.Wide("pipe"), L"device or pipe"},
        {L"/dev/full", L"device or pipe"},
        {L"", L"no file name"},
        {folder.Wide("absent/file"), L"No such file"},
        {folder.Wide("file/below"), L"Not a directory"},
        {folder.Wide(std::string(5000, 'x')), L"File name too long"},
    };
    for (const auto& c : cases) {
        const CString text = replace(c.target, L"x");
        EXPECT_EQ(text.Left(8), L"create: ") << c.target;
        EXPECT_GE(text.Find(c.words), 0) << text;
    }
    EXPECT_EQ(folder.Count(), 3U);
}

TEST(AtomicFile, NamesAsLongAsTheyCanBeAreWritten)
{
    const TemporaryFolder folder;
    const std::string name(255, 'n');
    EXPECT_EQ(replace(folder.Wide(name), L"x"), L"");
    EXPECT_EQ(folder.Bytes(name), "x");
}

TEST(AtomicFile, MissingRightsAreRefused)
{
    // Rights mean nothing to the superuser: a child without them tries.
    const TemporaryFolder folder;
    folder.Put("readonly", "old");
    ::chmod(folder.Native("readonly").c_str(), 0444);
    std::filesystem::create_directory(folder.Native("closed"));
    folder.Put("closed/file", "old");
    ::chmod(folder.Native("closed/file").c_str(), 0666);
    ::chmod(folder.Native("closed").c_str(), 0555);
    ::chmod(folder.Path().c_str(), 0777);
    const pid_t child = ::fork();
    if (child == 0) {
        if (::geteuid() == 0 && ::setuid(65534) != 0) ::_exit(2);
        AtomicFile file;
        CString error;
        const bool readonly = file.Create(folder.Wide("readonly"), error);
        const bool closed = file.Create(folder.Wide("closed/file"), error);
        ::_exit(readonly || closed || error.IsEmpty() ? 1 : 0);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(folder.Bytes("readonly"), "old");
    ::chmod(folder.Native("closed").c_str(), 0755);
    EXPECT_EQ(folder.Bytes("closed/file"), "old");
}

TEST(AtomicFile, FailedFlushLeavesTheOldFile)
{
    const TemporaryFolder folder;
    folder.Put("a", "old");
    FailingSync file(1);
    CString error;
    ASSERT_TRUE(file.Create(folder.Wide("a"), error));
    write(file.TempPath(), L"new");
    EXPECT_FALSE(file.Commit(error));
    EXPECT_GE(error.Find(L"Cannot flush"), 0) << error;
    EXPECT_EQ(folder.Bytes("a"), "old");
    EXPECT_EQ(folder.Count(), 1U);
}

TEST(AtomicFile, FailedFlushOfTheFolderIsToldOf)
{
    const TemporaryFolder folder;
    FailingSync file(2);
    CString error;
    ASSERT_TRUE(file.Create(folder.Wide("a"), error));
    write(file.TempPath(), L"new");
    EXPECT_FALSE(file.Commit(error));
    EXPECT_GE(error.Find(L"was replaced, but"), 0) << error;
    EXPECT_EQ(folder.Bytes("a"), "new");
    FailingSync unable(2, EINVAL); // a file system that cannot flush folders
    ASSERT_TRUE(unable.Create(folder.Wide("a"), error));
    EXPECT_TRUE(unable.Commit(error));
}

TEST(AtomicFile, TargetThatBecameAFolderIsAFailedReplace)
{
    const TemporaryFolder folder;
    AtomicFile file;
    CString error;
    ASSERT_TRUE(file.Create(folder.Wide("a"), error));
    std::filesystem::create_directory(folder.Native("a"));
    EXPECT_FALSE(file.Commit(error));
    EXPECT_GE(error.Find(L"Cannot replace"), 0) << error;
    EXPECT_EQ(folder.Count(), 1U);
}

TEST(AtomicFile, VanishedTemporaryFileIsAFailedReplace)
{
    const TemporaryFolder folder;
    folder.Put("a", "old");
    AtomicFile file;
    CString error;
    ASSERT_TRUE(file.Create(folder.Wide("a"), error));
    std::filesystem::remove(obmgr::NativePath(file.TempPath()));
    EXPECT_FALSE(file.Commit(error));
    EXPECT_EQ(folder.Bytes("a"), "old");
}

TEST(AtomicFile, RelativeTargetIsThatOfTheStart)
{
    const TemporaryFolder folder;
    const obmgr::CurrentDirectoryGuard guard;
    ASSERT_TRUE(obmgr::CurrentDirectory::Set(folder.Wide("")));
    AtomicFile file;
    CString error;
    ASSERT_TRUE(file.Create(L"a", error));
    ASSERT_TRUE(obmgr::CurrentDirectory::Set(L"/"));
    write(file.TempPath(), L"new");
    EXPECT_TRUE(file.Commit(error)) << error;
    EXPECT_EQ(folder.Bytes("a"), "new");
}

TEST(AtomicFile, KilledWriterLeavesTheOldFileAndNoObstacle)
{
    const TemporaryFolder folder;
    folder.Put("a", "old");
    const pid_t child = ::fork();
    if (child == 0) {
        AtomicFile file;
        CString error;
        if (!file.Create(folder.Wide("a"), error)) ::_exit(1);
        write(file.TempPath(), L"half");
        ::raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(folder.Bytes("a"), "old");
    EXPECT_EQ(folder.Count(), 2U) << "the temporary file of the killed process";
    EXPECT_EQ(replace(folder.Wide("a"), L"new"), L"");
    EXPECT_EQ(folder.Bytes("a"), "new");
}
