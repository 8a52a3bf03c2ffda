#include "framework/CurrentDirectory.h"

#include <gtest/gtest.h>

#include "framework/TemporaryFolder.h"

using obmgr::CurrentDirectory;
using obmgr::CurrentDirectoryGuard;

TEST(CurrentDirectory, GuardPutsTheDirectoryBack)
{
    const TemporaryFolder folder;
    const auto before = CurrentDirectory::Get();
    ASSERT_TRUE(before);
    {
        const CurrentDirectoryGuard guard;
        ASSERT_TRUE(CurrentDirectory::Set(folder.Wide("")));
        EXPECT_NE(CurrentDirectory::Get(), before);
    }
    EXPECT_EQ(CurrentDirectory::Get(), before);
}

TEST(CurrentDirectory, GuardMayRestoreEarlyOrLetGo)
{
    const TemporaryFolder folder;
    const CurrentDirectoryGuard outer;
    const auto before = CurrentDirectory::Get();
    CurrentDirectoryGuard early;
    ASSERT_TRUE(CurrentDirectory::Set(folder.Wide("")));
    EXPECT_TRUE(early.Restore());
    EXPECT_EQ(CurrentDirectory::Get(), before);
    EXPECT_FALSE(early.Restore());
    {
        CurrentDirectoryGuard released;
        ASSERT_TRUE(CurrentDirectory::Set(folder.Wide("")));
        released.Release();
    }
    EXPECT_NE(CurrentDirectory::Get(), before);
}

TEST(CurrentDirectory, GuardFindsARenamedDirectory)
{
    const CurrentDirectoryGuard outer;
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Native("one"));
    ASSERT_TRUE(CurrentDirectory::Set(folder.Wide("one")));
    {
        const CurrentDirectoryGuard guard;
        ASSERT_TRUE(CurrentDirectory::Set(L"/"));
        std::filesystem::rename(folder.Native("one"), folder.Native("two"));
    }
    EXPECT_EQ(CurrentDirectory::Get()->Right(4), L"/two");
}

TEST(CurrentDirectory, DeletedDirectoryIsNone)
{
    const CurrentDirectoryGuard outer;
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Native("gone"));
    ASSERT_TRUE(CurrentDirectory::Set(folder.Wide("gone")));
    std::filesystem::remove(folder.Native("gone"));
    EXPECT_EQ(CurrentDirectory::Get(), std::nullopt);
    EXPECT_EQ(obmgr::AbsolutePath(L"x"), L"x");
    const CurrentDirectoryGuard guard; // even this can be left and entered again
    EXPECT_TRUE(CurrentDirectory::Set(L"/"));
}

TEST(CurrentDirectory, AbsentDirectoryCannotBeSet)
{
    const TemporaryFolder folder;
    folder.Put("file", "");
    const auto before = CurrentDirectory::Get();
    EXPECT_FALSE(CurrentDirectory::Set(folder.Wide("absent")));
    EXPECT_FALSE(CurrentDirectory::Set(folder.Wide("file")));
    EXPECT_FALSE(CurrentDirectory::Set(L""));
    EXPECT_EQ(CurrentDirectory::Get(), before);
}

TEST(CurrentDirectory, PathsAreMadeAbsolute)
{
    const CurrentDirectoryGuard outer;
    EXPECT_EQ(obmgr::AbsolutePath(L"/a/b"), L"/a/b");
    EXPECT_EQ(obmgr::AbsolutePath(L""), L"");
    ASSERT_TRUE(CurrentDirectory::Set(L"/"));
    EXPECT_EQ(obmgr::AbsolutePath(L"a"), L"/a");
    const TemporaryFolder folder;
    ASSERT_TRUE(CurrentDirectory::Set(folder.Wide("")));
    EXPECT_EQ(obmgr::AbsolutePath(L"a/b"), *CurrentDirectory::Get() + L"/a/b");
}

TEST(CurrentDirectory, DeepAndOddNamesAreToldWhole)
{
    const CurrentDirectoryGuard outer;
    const TemporaryFolder folder;
    ASSERT_TRUE(CurrentDirectory::Set(folder.Wide("")));
    for (int depth = 0; depth < 40; ++depth) { // longer than PATH_MAX in the end
        const std::string name = std::string(120, 'd') + "\xE9";
        std::filesystem::create_directory(name);
        ASSERT_TRUE(CurrentDirectory::Set(obmgr::PathFromNative(name)));
    }
    const auto deep = CurrentDirectory::Get();
    ASSERT_TRUE(deep);
    EXPECT_GT(deep->GetLength(), 4096);
}
