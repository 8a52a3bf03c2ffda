// Saves that cannot succeed: the old file is there and whole, the failure is told, nothing is left behind.
#include "hostile/HostileTest.h"

#include <csignal>
#include <set>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace hostile;

namespace {

constexpr char kOld[] = "the old file";

// While it lives, no file of this process can grow beyond so many bytes.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : m_action(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_action);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_before = {};
    sighandler_t m_action;
};

class Saves : public HostileTest, public testing::WithParamInterface<int> {
protected:
    Saves()
    {
        std::string records;
        for (int id = 1; id <= 20; ++id)
            records += "<node id=\"" + std::to_string(id) + "\"><ndcommentf contents=\"表 " + std::string(40'000, 'x') +
                       "\"/></node>";
        EXPECT_TRUE(readRecords(manager, records + "<publine id=\"50\"/>")) << error;
        interface.asked = 0;
        support::writeBytes(target, kOld);
    }

    bool saveDesign()
    {
        error.Empty();
        return obmgr::SaveDesign(manager, support::toPath(target), GetParam(), true, error, details);
    }
    // A save fails, the old file is whole and alone, and the next save works.
    void expectOldFileStays()
    {
        EXPECT_FALSE(error.IsEmpty());
        EXPECT_EQ(support::readBytes(target), kOld);
        EXPECT_EQ(names(), files);
        EXPECT_EQ(interface.open, 0);
    }
    std::set<std::string> names() const
    {
        std::set<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
            found.insert(entry.path().filename().string());
        return found;
    }

    CObjectManager manager;
    std::filesystem::path target = folder / "design.xml";
    CStringArray details;
    std::set<std::string> files{"design.xml", "read.xml"};
};

} // namespace

TEST_P(Saves, AFullDiskAtAnyByteLeavesTheOldFile)
{
    ASSERT_TRUE(saveDesign()) << error;
    const std::string good = support::readBytes(target);
    support::writeBytes(target, kOld);
    // Inside the first buffer, between buffers, inside the last one, at the last byte.
    for (std::size_t room : {std::size_t{0}, std::size_t{1}, std::size_t{100}, good.size() / 7, good.size() / 3,
                             good.size() / 2, good.size() - 100'000, good.size() - 2, good.size() - 1}) {
        SCOPED_TRACE(room);
        {
            const FileSizeLimit limit(room);
            EXPECT_FALSE(saveDesign());
        }
        expectOldFileStays();
    }
    const FileSizeLimit limit(good.size());
    EXPECT_TRUE(saveDesign()) << error;
    EXPECT_EQ(support::readBytes(target), good);
}

TEST_P(Saves, AFullDeviceIsToldOfByTheEndOrByAnException)
{
    for (const bool isLarge : {false, true}) {
        CObjectManager small;
        CObjectManager& design = isLarge ? manager : small;
        CStdioFile file;
        ASSERT_TRUE(obmgr::OpenForDataVersion(file, L"/dev/full", GetParam()));
        int cause = CFileException::none;
        try {
            EXPECT_FALSE(design.WritePipeObject(file, error, GetParam()));
            EXPECT_EQ(error, L"Failed to write the root tag.");
        } catch (CFileException* failure) {
            cause = failure->m_cause;
            failure->Delete();
        }
        EXPECT_EQ(cause, isLarge ? CFileException::diskFull : CFileException::none);
        EXPECT_EQ(interface.open, 0);
        EXPECT_THROW(
            {
                try {
                    file.Close();
                } catch (CFileException* failure) {
                    const auto lost = std::runtime_error("not lost at the close");
                    failure->Delete();
                    throw lost;
                }
            },
            std::runtime_error);
    }
}

TEST_P(Saves, CancellingAtAnyRecordLeavesTheOldFile)
{
    for (int n = 1; n <= 21; ++n) {
        interface.asked = 0;
        interface.cancelAt = n;
        EXPECT_FALSE(saveDesign());
        EXPECT_EQ(error, L"Saved to file has been canceled.");
        expectOldFileStays();
    }
    interface.asked = 0;
    interface.cancelAt = 22;
    EXPECT_TRUE(saveDesign()) << error;
    EXPECT_NE(support::readBytes(target), kOld);
}

TEST_P(Saves, AnExceptionOfTheApplicationLeavesTheOldFile)
{
    for (int n = 1; n <= 21; n += 5) {
        interface.pumps = 0;
        interface.onPump = [&] {
            if (interface.pumps == n) throw std::runtime_error("from the application");
        };
        EXPECT_THROW(saveDesign(), std::runtime_error);
        error = L"raised";
        expectOldFileStays();
    }
    interface.onPump = nullptr;
    EXPECT_TRUE(saveDesign()) << error;
}

TEST_P(Saves, AProcessKilledAtAnyRecordLeavesTheOldFileAndNoObstacle)
{
    for (int n = 1; n <= 21; n += 4) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            interface.pumps = 0;
            interface.onPump = [&] {
                if (interface.pumps == n) ::raise(SIGKILL);
            };
            saveDesign();
            ::_exit(1);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));
        EXPECT_EQ(support::readBytes(target), kOld);
    }
    ASSERT_TRUE(saveDesign()) << error;
    CObjectManager again;
    EXPECT_TRUE(again.CreatePipeObjectFromFile(support::toPath(target), error, false)) << error;
    EXPECT_EQ(describe(again), describe(manager));
}

TEST_P(Saves, AnUnwritableRecordLeavesTheOldFile)
{
    manager.GetPublineDb().Find(50)->WriteSubAttribute(L"a", L"\x01");
    EXPECT_FALSE(saveDesign());
    EXPECT_EQ(error, L"Failed to write the access hole data."); // the text of this type, settled
    EXPECT_EQ(details.GetSize(), 1);
    expectOldFileStays();
}

TEST_P(Saves, AFolderWithoutTheRightToWriteIsToldOf)
{
    if (::geteuid() == 0) GTEST_SKIP() << "root may write everywhere";
    std::filesystem::permissions(folder.Path(),
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    EXPECT_FALSE(saveDesign());
    expectOldFileStays();
    std::filesystem::permissions(folder.Path(), std::filesystem::perms::owner_all);
}

TEST_P(Saves, WhatCannotBeReplacedIsRefusedUnopened)
{
    std::filesystem::create_directory(folder / "folder");
    ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/full", folder / "device");
    std::filesystem::create_symlink("ring", folder / "ring");
    files = names();
    for (const std::filesystem::path& name :
         {std::filesystem::path("folder"), std::filesystem::path("fifo"), std::filesystem::path("device"),
          std::filesystem::path("ring"), std::filesystem::path("no such folder") / "a.xml",
          std::filesystem::path("design.xml") / "a.xml", std::filesystem::path(std::string(5000, 'n')),
          std::filesystem::path(std::string(256, 'n'))}) {
        target = folder / name;
        EXPECT_FALSE(saveDesign()) << name;
        target = folder / "design.xml";
        expectOldFileStays();
    }
    for (const wchar_t* const path : {L"", L"/", L"/dev/full", L"."}) {
        EXPECT_FALSE(obmgr::SaveDesign(manager, path, GetParam(), false, error, details)) << CString(path);
        EXPECT_FALSE(error.IsEmpty());
    }
}

TEST_P(Saves, AFolderThatGoesWhileItIsWrittenToIsToldOf)
{
    std::filesystem::create_directory(folder / "sub");
    target = folder / "sub" / "a.xml";
    interface.onPump = [&] { std::filesystem::remove_all(folder / "sub"); };
    EXPECT_FALSE(saveDesign());
    EXPECT_FALSE(error.IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(target));
}

TEST_P(Saves, APrivateFileStaysPrivate)
{
    ASSERT_EQ(::chmod(target.c_str(), 0600), 0);
    interface.onPump = [&] {
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
            if (entry.path().filename() == "read.xml") continue;
            struct stat info = {};
            ASSERT_EQ(::stat(entry.path().c_str(), &info), 0);
            EXPECT_EQ(info.st_mode & 0077, 0u) << entry.path();
        }
    };
    ASSERT_TRUE(saveDesign()) << error;
    struct stat info = {};
    ASSERT_EQ(::stat(target.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
}

INSTANTIATE_TEST_SUITE_P(Versions, Saves, testing::Values(13, 14));
