// The dialog of large files, cancelling, and what may happen while it lets input through.
#include "persistence/PersistenceTest.h"

#include <unistd.h>

namespace {

constexpr std::size_t kLargestQuietFile = 1'000'000;

class ReadProgress : public PersistenceTest {
protected:
    // A file of exactly so many bytes with `nodes` records; blanks fill it between the first ones.
    static std::string sized(std::size_t size, int nodes = 3)
    {
        std::string records;
        for (int id = 1; id <= nodes; ++id)
            records += "<node id=\"" + std::to_string(id) + "\"><a contents=\"1\"/></node>\n";
        const std::size_t fill = size - document(records).size();
        return document("<node id=\"900\"/>" + std::string(fill - 16, ' ') + records);
    }
};

} // namespace

TEST_F(ReadProgress, AFileOfAMillionBytesIsReadWithoutADialogAndOneByteMoreWithOne)
{
    CObjectManager quiet;
    ASSERT_TRUE(read(quiet, sized(kLargestQuietFile))) << error;
    EXPECT_EQ(interface.opened, 0);
    CObjectManager shown;
    ASSERT_TRUE(read(shown, sized(kLargestQuietFile + 1))) << error;
    EXPECT_EQ(interface.opened, 1);
    EXPECT_EQ(interface.open, 0);
    EXPECT_EQ(interface.ranges, (std::vector<std::pair<int, int>>{{0, 1'000'001}}));
    EXPECT_EQ(interface.titles, std::vector<CString>{L"Loading read.xml ..."});
    // The root, four records and three keys; one more pump at the start.
    EXPECT_EQ(interface.positions.size(), 8u);
    EXPECT_EQ(interface.pumps, 9);
    EXPECT_TRUE(std::is_sorted(interface.positions.begin(), interface.positions.end()));
    EXPECT_GT(interface.positions.back(), 999'000);
    EXPECT_LE(interface.positions.back(), 1'000'001);
}

TEST_F(ReadProgress, PositionsAreToldInEveryEncoding)
{
    const std::string text = document(sized(kLargestQuietFile)); // two roots: harmless
    for (const char* const encoding : {"SHIFT-JIS", "EUC-KR", "UTF-16"}) {
        std::string bytes = "<?xml version = \"1.0\" encoding = \"" + std::string(encoding) + "\"?>\n<pipedata>\n";
        bytes += "<node id=\"1\"/>" + std::string(kLargestQuietFile, ' ') + "<node id=\"2\"/></pipedata>";
        if (encoding == std::string("UTF-16"))
            bytes = "\xFF\xFE" + support::utf16(std::u16string(bytes.begin(), bytes.end()));
        interface.positions.clear();
        CObjectManager manager;
        EXPECT_TRUE(read(manager, bytes)) << encoding << error;
        EXPECT_EQ(interface.positions.size(), 3u);
        EXPECT_GT(interface.positions.back(), 900'000) << encoding;
    }
}

TEST_F(ReadProgress, AReadCanBeCancelledAtEveryElement)
{
    const std::string bytes = sized(kLargestQuietFile + 1);
    // At the root, the first node, the second one, its key and so on: what came before stays.
    const int left[] = {0, 0, 1, 2, 2, 3, 3, 4};
    for (int n = 1; n <= 8; ++n) {
        interface.cancelAt = n;
        interface.asked = 0;
        CObjectManager manager;
        EXPECT_FALSE(read(manager, bytes));
        EXPECT_EQ(error, L"Cancelled reading.");
        EXPECT_EQ(interface.open, 0);
        EXPECT_EQ(manager.GetAllDataCount(), left[n - 1]);
        interface.cancelAt = 1000;
        EXPECT_TRUE(readRecords(manager, "<manhole id=\"5000\"/>")) << error;
    }
}

TEST_F(ReadProgress, TheDialogIsGoneAfterABrokenFile)
{
    CObjectManager manager;
    EXPECT_FALSE(read(manager, sized(kLargestQuietFile + 1) + "<rest/>"));
    EXPECT_EQ(interface.opened, 1);
    EXPECT_EQ(interface.open, 0);
    EXPECT_EQ(error.Left(14), L"Error at file.");
}

TEST_F(ReadProgress, WhileAFileIsReadTheDesignCanBeEditedAndNotTakenAway)
{
    CObjectManager manager;
    bool nested = true;
    CString nestedError;
    interface.onPump = [&] {
        manager.Initialize();
        manager.CommitTransaction();
        manager.AbortTransaction();
        if (interface.pumps == 7) {
            nested = manager.CreatePipeObjectFromFile(support::toPath(folder / "read.xml"), nestedError, true);
            // The record that is being read goes away under the reader.
            manager.GetNodeDb().Remove(manager.GetNodeObjectOriginal(2));
        }
    };
    ASSERT_TRUE(read(manager, sized(kLargestQuietFile + 1))) << error;
    EXPECT_FALSE(nested);
    EXPECT_FALSE(nestedError.IsEmpty());
    EXPECT_EQ(manager.GetNodeDb().GetCount(), 3);
    EXPECT_EQ(manager.GetNodeObjectOriginal(3)->GetSubAttribute(L"a"), L"1");
}

TEST_F(ReadProgress, AnExceptionOfTheApplicationPassesThroughAndLeavesTheManagerUsable)
{
    CObjectManager manager;
    interface.onPump = [] { throw std::runtime_error("from the application"); };
    EXPECT_THROW(read(manager, sized(kLargestQuietFile + 1)), std::runtime_error);
    EXPECT_EQ(interface.open, 0);
    interface.onPump = nullptr;
    EXPECT_TRUE(readRecords(manager, "<node id=\"1\"/>")) << error;
}
