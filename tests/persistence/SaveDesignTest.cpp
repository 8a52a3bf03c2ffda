// Saves that replace a file as a whole or not at all.
#include "persistence/PersistenceTest.h"

#include <filesystem>

namespace {

class SaveDesign : public PersistenceTest {
protected:
    bool saveDesign(int dataver = 14, bool withMapData = false)
    {
        return obmgr::SaveDesign(manager, support::toPath(target), dataver, withMapData, error, details);
    }
    long files() const { return std::distance(std::filesystem::directory_iterator(folder.Path()), {}); }

    CObjectManager manager;
    std::filesystem::path target = folder / "design.xml";
    CStringArray details;
};

} // namespace

TEST_F(SaveDesign, WritesTheSameBytesAsAnOrdinarySave)
{
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\"><ndcommentf contents=\"表\"/></node><publine id=\"2\"/>"));
    for (const int dataver : {13, 14}) {
        ASSERT_TRUE(saveDesign(dataver)) << error;
        EXPECT_EQ(support::readBytes(target), save(manager, dataver));
    }
    EXPECT_EQ(details.GetSize(), 0);
}

TEST_F(SaveDesign, CarriesTheMapDataWhenAsked)
{
    const char* const map = "<publine id=\"2\"><a contents=\"1\"/></publine><glline id=\"3\"/>"
                            "<usedarea id=\"4\" ppdispotype=\"2\"/><noarea id=\"5\" ppdispotype=\"0\"/>"
                            "<divide id=\"6\" ppdispotype=\"0\"/><border id=\"7\" ppdispotype=\"0\"/>";
    ASSERT_TRUE(readRecords(manager, std::string("<node id=\"1\"/>") + map)) << error;
    ASSERT_TRUE(saveDesign(13, true)) << error;
    CObjectManager again;
    ASSERT_TRUE(again.CreatePipeObjectFromFile(support::toPath(target), error, false)) << error;
    EXPECT_EQ(again.GetAllDataCount(), 7);
    EXPECT_EQ(again.GetPublineDb().Find(2)->GetSubAttribute(L"a"), L"1");
    EXPECT_EQ(again.GetUsedareaDb().Find(4)->GetDisposalType(), 2);
}

TEST_F(SaveDesign, AFailedOrCancelledSaveLeavesTheOldFileAndNothingElse)
{
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\"/><node id=\"2\"/>"));
    support::writeBytes(target, "old");
    const long before = files();

    interface.cancelAt = 2;
    EXPECT_FALSE(saveDesign());
    EXPECT_EQ(error, L"Saved to file has been canceled.");
    EXPECT_EQ(support::readBytes(target), "old");

    interface.cancelAt = 1000;
    manager.GetNodeObjectOriginal(2)->WriteSubAttribute(L"bad", L"\x02");
    EXPECT_FALSE(saveDesign());
    EXPECT_EQ(error, L"Failed to write the data node.");
    EXPECT_EQ(details.GetSize(), 1);
    EXPECT_EQ(support::readBytes(target), "old");
    EXPECT_EQ(files(), before);
}

TEST_F(SaveDesign, AFolderIsRefusedWithAText)
{
    target = folder.Path();
    EXPECT_FALSE(saveDesign());
    EXPECT_FALSE(error.IsEmpty());
}

TEST_F(SaveDesign, TheDialogShowsTheTargetAndNotWhatStandsInForIt)
{
    ASSERT_TRUE(saveDesign());
    EXPECT_EQ(interface.titles.at(0).Right(14), L"design.xml ...");
}
