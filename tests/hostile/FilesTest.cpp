// Where rows of the catalogue of hostile input are tested (a row that is in several places has its chief one first):
//
//   document types, entities, addresses (1-14)          hostile/DocumentTypesTest, persistence/ReadDesignTest
//   predefined entities (15)                             hostile/RecordsTest, persistence/ReadDesignTest
//   tiny, cut, foreign and undecodable bytes (16-24)     hostile/EncodingsTest, persistence/EncodingsTest
//   escapes, newer XML (25, 26)                          persistence/PipeDataFileTest, hostile/EncodingsTest
//   forms of Unicode, wrong declarations (27, 28, 36)    hostile/EncodingsTest
//   Korean frame, EUC-KR, Shift_JIS (29-35)              persistence/EncodingsTest, persistence/PipeDataFileTest,
//                                                        framework/TextEncodingTest; broken bytes:
//                                                        hostile/EncodingsTest
//   sizes, depth, names, keys (37-41)                    hostile/RecordsTest, objects/AttributesTest
//   ids, tags, references (42-46)                        hostile/RecordsTest, persistence/ReadDesignTest,
//                                                        persistence/AppendReadTest
//   texts as numbers (49)                                common/Text2NumberTest, hostile/RecordsTest
//   a copy that fails in a transaction (52)              hostile/CallbacksTest
//   full disks, short and failed writes (53)             hostile/SavesTest, framework/FileTest,
//                                                        persistence/PipeDataFileTest
//   flush, rename, rights, links, kinds of files (54-56) framework/AtomicFileTest, hostile/SavesTest
//   files that change while they are read (57)           this file
//   cancelling (58)                                      hostile/SavesTest, persistence/ReadProgressTest,
//                                                        persistence/PipeDataFileTest
//   handlers that raise (59)                             hostile/CallbacksTest
//   starts and stops of library and parser (64)          resources/LibraryStartTest
//   unpaired and nested transactions (65)                store/TransactionsTest
//   round trips (66)                                     hostile/RoundTripTest, persistence/GoldenFilesTest
//
// Here: files that are none, and files that change, vanish or lie about their size while they are read.
#include "hostile/HostileTest.h"

#include <sys/stat.h>
#include <unistd.h>

#include "persistence/SaxParser.h"

using namespace hostile;

namespace {

class HostileFiles : public HostileTest {
protected:
    // Large enough for a dialog, so that a test can step in between two records.
    static std::string large()
    {
        std::string records;
        for (int id = 1; id <= 100; ++id)
            records +=
                "<node id=\"" + std::to_string(id) + "\"><a contents=\"" + std::string(20'000, 'x') + "\"/></node>";
        return document(records);
    }
    // Reads the large file; `step` runs when the first records have come.
    bool readWhile(CObjectManager& manager, std::function<void()> step)
    {
        const CString path = folder.Write("large.xml", large());
        interface.pumps = 0;
        interface.onPump = [this, step = std::move(step)] {
            if (interface.pumps == 20) step();
        };
        const bool loads = manager.CreatePipeObjectFromFile(path, error, false);
        EXPECT_GT(interface.pumps, 20);
        interface.onPump = nullptr;
        return loads;
    }
};

} // namespace

TEST_F(HostileFiles, WhatIsNoFileIsToldOf)
{
    CObjectManager manager;
    const auto refusal = [&](const std::filesystem::path& path) {
        error.Empty();
        EXPECT_FALSE(manager.CreatePipeObjectFromFile(support::toPath(path), error, false)) << path;
        EXPECT_FALSE(error.IsEmpty()) << path;
        return error;
    };
    for (const std::filesystem::path& name :
         {std::filesystem::path("none.xml"), std::filesystem::path("no such folder") / "a.xml",
          std::filesystem::path(std::string(256, 'n')), std::filesystem::path(std::string(5000, 'n'))})
        EXPECT_EQ(refusal(folder / name), L"Can not find the file " + support::toPath(folder / name) + L".");

    support::writeBytes(folder / "file", "x");
    std::filesystem::create_directory(folder / "folder");
    std::filesystem::create_symlink("ring", folder / "ring");
    std::filesystem::create_symlink("nowhere", folder / "link");
    ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
    support::writeBytes(folder / "empty", "");
    for (const char* const name : {"folder", "ring", "link", "fifo", "empty", "file/a.xml"})
        refusal(folder / name);
    for (const char* const path : {"/dev/null", "/dev/zero", "/dev/full", "/dev/tty", "/", ".", "/proc/self/mem"})
        refusal(path);
    EXPECT_EQ(manager.GetAllDataCount(), 0);
    EXPECT_TRUE(readRecords(manager, "<node id=\"1\"/>")) << error;
}

TEST_F(HostileFiles, AnUnreadableFileIsToldOf)
{
    if (::geteuid() == 0) GTEST_SKIP() << "root may read everything";
    const CString path = folder.Write("secret.xml", document("<node id=\"1\"/>"));
    std::filesystem::permissions(folder / "secret.xml", std::filesystem::perms::none);
    CObjectManager manager;
    EXPECT_FALSE(manager.CreatePipeObjectFromFile(path, error, false));
    EXPECT_FALSE(error.IsEmpty());
    EXPECT_EQ(manager.GetAllDataCount(), 0);
}

TEST_F(HostileFiles, AFileOfManyGigabytesOfNothingIsRefusedAtItsStart)
{
    folder.Write("holes.xml", "");
    for (const std::uintmax_t size :
         {std::uintmax_t{0x7FFFFFFF}, std::uintmax_t{0x80000000}, std::uintmax_t{0xFFFFFFFF},
          std::uintmax_t{0x100000000}, std::uintmax_t{0x140000001}}) {
        std::error_code none;
        std::filesystem::resize_file(folder / "holes.xml", size, none);
        if (none) GTEST_SKIP() << "no such sizes here";
        CObjectManager manager;
        EXPECT_FALSE(manager.CreatePipeObjectFromFile(support::toPath(folder / "holes.xml"), error, false));
        EXPECT_FALSE(error.IsEmpty()) << size;
        EXPECT_EQ(interface.open, 0);
    }
}

TEST_F(HostileFiles, AFileThatIsCutWhileItIsReadIsRefused)
{
    for (const std::uintmax_t size : {std::uintmax_t{0}, std::uintmax_t{1'000'000}}) {
        CObjectManager manager;
        EXPECT_FALSE(readWhile(manager, [&] { std::filesystem::resize_file(folder / "large.xml", size); }));
        EXPECT_EQ(error.Left(15), kAtFile);
        EXPECT_GT(manager.GetAllDataCount(), 0);
        EXPECT_LT(manager.GetAllDataCount(), 100);
        EXPECT_EQ(interface.open, 0);
        EXPECT_TRUE(readRecords(manager, "<ohaul id=\"500\"/>")) << error;
    }
}

TEST_F(HostileFiles, AFileThatIsReplacedOrRemovedWhileItIsReadLoadsAsItWas)
{
    const std::function<void()> steps[] = {[&] { std::filesystem::remove(folder / "large.xml"); },
                                           [&] {
                                               support::writeBytes(folder / "other.xml",
                                                                   document("<node id=\"7777\"/>"));
                                               std::filesystem::rename(folder / "other.xml", folder / "large.xml");
                                           },
                                           [&] {
                                               std::filesystem::remove(folder / "large.xml");
                                               std::filesystem::create_directory(folder / "large.xml");
                                           }};
    for (const auto& step : steps) {
        CObjectManager manager;
        EXPECT_TRUE(readWhile(manager, step)) << error;
        EXPECT_EQ(manager.GetAllDataCount(), 100);
        EXPECT_FALSE(manager.GetNodeDb().Find(7777));
        std::filesystem::remove_all(folder / "large.xml");
    }
}

TEST_F(HostileFiles, AFileThatIsOverwrittenOrGrowsWhileItIsReadNeverCrashes)
{
    const std::function<void()> steps[] = {
        [&] { support::writeBytes(folder / "large.xml", std::string(3'000'000, '<')); },
        [&] { support::writeBytes(folder / "large.xml", document("")); },
        [&] { std::ofstream(folder / "large.xml", std::ios::app) << large(); }};
    for (const auto& step : steps) {
        CObjectManager manager;
        EXPECT_FALSE(readWhile(manager, step));
        EXPECT_FALSE(error.IsEmpty());
        EXPECT_EQ(interface.open, 0);
        EXPECT_TRUE(readRecords(manager, "<ohaul id=\"500\"/>")) << error;
    }
}

TEST_F(HostileFiles, ADeletedCurrentDirectoryDoesNoHarm)
{
    std::filesystem::create_directory(folder / "gone");
    ASSERT_TRUE(obmgr::CurrentDirectory::Set(support::toPath(folder / "gone")));
    std::filesystem::remove(folder / "gone");
    CObjectManager manager;
    EXPECT_FALSE(manager.CreatePipeObjectFromFile(L"a.xml", error, false));
    EXPECT_EQ(error, L"Can not find the file a.xml.");
    EXPECT_TRUE(readRecords(manager, "<node id=\"1\"/>")) << error;
    CStringArray details;
    EXPECT_TRUE(obmgr::SaveDesign(manager, support::toPath(folder / "b.xml"), 14, false, error, details)) << error;
    EXPECT_FALSE(obmgr::SaveDesign(manager, L"c.xml", 14, false, error, details));
    EXPECT_FALSE(error.IsEmpty());
}

TEST_F(HostileFiles, AFolderThatIsRemovedWhileItsFileIsReadDoesNoHarm)
{
    std::filesystem::create_directory(folder / "sub");
    const CString path = folder.Write(std::filesystem::path("sub") / "large.xml", large());
    interface.onPump = [&] {
        if (interface.pumps == 20) std::filesystem::remove_all(folder / "sub");
    };
    const auto before = obmgr::CurrentDirectory::Get();
    CObjectManager manager;
    EXPECT_TRUE(manager.CreatePipeObjectFromFile(path, error, false)) << error;
    EXPECT_EQ(manager.GetAllDataCount(), 100);
    EXPECT_EQ(obmgr::CurrentDirectory::Get(), before);
}
