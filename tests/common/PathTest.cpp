#include "common/Path.h"

#include <cwchar>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "framework/TemporaryFolder.h"

namespace {

CString abbreviated(const CString& path, int length, int mode)
{
    std::wstring buffer(path.GetString(), static_cast<std::size_t>(path.GetLength()) + 1);
    orn_abbreviate_name(buffer.data(), length, mode);
    return CString(buffer.c_str());
}

} // namespace

TEST(Path, SizeOfAFile)
{
    const TemporaryFolder folder;
    folder.Put("a", "12345");
    CString error(L"before");
    EXPECT_EQ(orn_get_filesize(folder.Wide("a"), error), 5);
    EXPECT_EQ(error, L"before");
}

TEST(Path, EmptyFileHasATextToo)
{
    const TemporaryFolder folder;
    folder.Put("a", "");
    CString error;
    EXPECT_EQ(orn_get_filesize(folder.Wide("a"), error), 0);
    EXPECT_GE(error.Find(folder.Wide("a")), 0) << error;
}

TEST(Path, NoFileIsMinusOneWithAText)
{
    const TemporaryFolder folder;
    folder.Put("file", "x");
    for (const char* const name : {"absent", "", "file/below"}) {
        CString error;
        EXPECT_EQ(orn_get_filesize(folder.Wide(name), error), -1);
        EXPECT_GE(error.Find(folder.Wide(name)), 0) << error;
    }
    CString error;
    EXPECT_EQ(orn_get_filesize(L"", error), -1);
    EXPECT_FALSE(error.IsEmpty());
}

TEST(Path, SizeIsHeldAtThirtyTwoBits)
{
    const TemporaryFolder folder;
    folder.Put("a", "");
    ASSERT_EQ(::truncate(folder.Native("a").c_str(), 5'000'000'000), 0); // a hole, no bytes on disk
    CString error;
    EXPECT_EQ(orn_get_filesize(folder.Wide("a"), error), 0x7FFFFFFF);
    EXPECT_EQ(error, L"");
}

TEST(Path, ShortPathsStayAsTheyAre)
{
    EXPECT_EQ(abbreviated(L"/home/design.xml", 16, 1), L"/home/design.xml");
    EXPECT_EQ(abbreviated(L"design.xml", 50, 0), L"design.xml");
    EXPECT_EQ(abbreviated(L"", 0, 1), L"");
}

TEST(Path, MiddleFoldersGiveWay)
{
    struct {
        const wchar_t* path;
        int length;
        const wchar_t* wanted;
    } const cases[] = {
        {L"/home/one/two/three/design.xml", 29, L"/home/.../three/design.xml"}, // "/home/.../two..." has 30
        {L"/home/number-one/two/three/design.xml", 30, L"/home/.../two/three/design.xml"},
        {L"/home/one/two/three/design.xml", 26, L"/home/.../three/design.xml"},
        {L"/home/one/two/three/design.xml", 25, L"/home/.../design.xml"},
        {L"/home/one/two/three/design.xml", 20, L"/home/.../design.xml"},
        {L"/home/one/two/three/design.xml", 19, L"design.xml"},
        {L"C:\\projects\\city\\design.xml", 26, L"C:\\projects\\...\\design.xml"},
        {L"\\\\server\\share\\folder\\design.xml", 30, L"\\\\server\\...\\folder\\design.xml"},
        {L"first/second/design.xml", 20, L"first/.../design.xml"},
        {L"/home/design-with-a-long-name.xml", 27, L"design-with-a-long-name.xml"},
        {L"/home/design-with-a-long-name.xml", 12, L"...-name.xml"},
        {L"/home/design-with-a-long-name.xml", 4, L"...l"},
        {L"/home/design-with-a-long-name.xml", 3, L"xml"},
        {L"/home/design-with-a-long-name.xml", 0, L""},
        {L"/home/design.xml", -5, L""},
        {L"/a/b/c/", 5, L""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(abbreviated(c.path, c.length, 1), c.wanted) << CString(c.path) << " " << c.length;
    }
}

TEST(Path, ModeZeroLeavesNothingWhenTheNameDoesNotFit)
{
    EXPECT_EQ(abbreviated(L"/home/one/two/three/design.xml", 20, 0), L"/home/.../design.xml");
    EXPECT_EQ(abbreviated(L"/home/one/two/three/design.xml", 19, 0), L"");
}

TEST(Path, NoLengthIsEverExceeded)
{
    for (const CString path :
         {L"/a/b/c/d/e/f.xml", L"C:\\a\\b", L"////", L"\\\\x\\y\\", L"name", L"/n", L"a/", L"管/渠/図/面.xml"})
        for (int length = 0; length <= path.GetLength() + 1; ++length)
            for (const int mode : {0, 1}) {
                const CString got = abbreviated(path, length, mode);
                EXPECT_LE(got.GetLength(), length) << path;
                if (length >= path.GetLength()) {
                    EXPECT_EQ(got, path);
                }
            }
}

TEST(Path, LongFileNameIsThePath)
{
    EXPECT_EQ(GetLongFileName(L"/a/b~1.xml"), L"/a/b~1.xml");
}
