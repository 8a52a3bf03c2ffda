// The frame of the file, the order and failures of a complete save.
#include "persistence/PersistenceTest.h"

#include <array>
#include <cerrno>

#include "control/DlgProgress.h"
#include "objects/RecordOutput.h"
#include "persistence/PipeObjectException.h"

namespace {

class PipeDataFile : public PersistenceTest {
protected:
    // What StartWritePipeData and EndWritePipeData alone write.
    std::string frame(int dataver)
    {
        CObjectManager manager;
        CStdioFile file;
        EXPECT_TRUE(obmgr::OpenForDataVersion(file, support::toPath(folder / "frame.xml"), dataver));
        EXPECT_TRUE(manager.StartWritePipeData(file, error, dataver));
        EXPECT_TRUE(manager.EndWritePipeData(file, error, dataver));
        file.Close();
        return support::readBytes(folder / "frame.xml");
    }
};

// Takes so many bytes and fails from then on.
class FullFile : public CStdioFile {
public:
    explicit FullFile(std::size_t room) : m_room(room) {}

protected:
    std::ptrdiff_t WriteToDevice(const void* bytes, std::size_t count) override
    {
        if (count > m_room) {
            errno = ENOSPC;
            return -1;
        }
        m_room -= count;
        return CStdioFile::WriteToDevice(bytes, count);
    }

private:
    std::size_t m_room;
};

std::size_t occurrences(const std::string& text, const std::string& piece)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1))
        ++count;
    return count;
}

} // namespace

TEST_F(PipeDataFile, Version13IsShiftJisWithOneRootAndNoMark)
{
    EXPECT_EQ(frame(13), "<?xml version = \"1.0\" encoding = \"SHIFT-JIS\"?>\n<pipedata>\n</pipedata>\n");
}

TEST_F(PipeDataFile, Version14IsUtf16BehindItsMarkWithTwoRoots)
{
    EXPECT_EQ(frame(14), "\xFF\xFE" + support::utf16(u"<?xml version = \"1.0\" encoding = \"UTF-16\"?>\n<pdroot>\n"
                                                     u"<pipedata>\n</pipedata>\n</pdroot>\n"));
}

TEST_F(PipeDataFile, EveryVersionDeclaresEucKrOnAKoreanSystem)
{
    for (const obmgr::LanguageId korean : {obmgr::LanguageId{0x0412}, obmgr::LanguageId{0x0812}}) {
        obmgr::SetSystemLanguageForTests(korean);
        EXPECT_EQ(frame(13), "<?xml version = \"1.0\" encoding = \"EUC-KR\"?>\n<pipedata>\n</pipedata>\n");
        EXPECT_EQ(frame(14), "\xFF\xFE" + support::utf16(u"<?xml version = \"1.0\" encoding = \"EUC-KR\"?>\n<pdroot>\n"
                                                         u"<pipedata>\n</pipedata>\n</pdroot>\n"));
    }
}

TEST_F(PipeDataFile, ADesignWithoutRecordsIsFrameAndProfile)
{
    CObjectManager manager;
    manager.GetFileProfile()->SetAppName(L"editor");
    EXPECT_EQ(save(manager, 13), "<?xml version = \"1.0\" encoding = \"SHIFT-JIS\"?>\n<pipedata>\n<profile>\n"
                                 "<version contents=\"\"/>\n<appname contents=\"editor\"/>\n<time contents=\"\"/>\n"
                                 "<date contents=\"\"/>\n<tarappversion contents=\"\"/>\n<tarappname contents=\"\"/>\n"
                                 "<maxobjectid contents=\"0\"/>\n<intention contents=\"0\"/>\n"
                                 "<dataver contents=\"13\"/>\n</profile>\n</pipedata>\n");
}

TEST_F(PipeDataFile, TablesStandInFileOrderAndMapDataIsLeftOut)
{
    CObjectManager manager;
    long id = 0;
    // Added against the file order.
    const auto order = obmgr::SaveOrder();
    std::string records;
    for (auto type = order.rbegin(); type != order.rend(); ++type) {
        const obmgr::RecordInfo& row = obmgr::RecordOf(*type);
        if (row.reader == obmgr::Reader::Refuses) continue;
        records += "<" + std::string(row.tag) + " id=\"" + std::to_string(++id) + "\"";
        for (const obmgr::LinkField& link : row.links.All())
            records += " " + std::string(link.name) + "=\"0\"";
        records += "/>\n";
    }
    records += "<publine id=\"900\"/>\n<glline id=\"901\"/>\n";
    ASSERT_TRUE(readRecords(manager, records)) << error;
    auto* const interceptor = new CIcpInq(902, 5);
    ASSERT_TRUE(manager.GetIcpInqDb().Add(902, interceptor));

    const std::string bytes = save(manager, 13);
    std::size_t at = 0;
    for (const auto type : order) {
        const std::size_t found = bytes.find("\n<" + std::string(obmgr::RecordOf(type).tag) + " id=");
        ASSERT_NE(found, std::string::npos) << obmgr::RecordOf(type).tag;
        EXPECT_GT(found, at) << obmgr::RecordOf(type).tag;
        at = found;
    }
    EXPECT_EQ(occurrences(bytes, " id=\""), order.size());
    EXPECT_EQ(occurrences(bytes, "<profile>"), 1u);
    EXPECT_EQ(manager.GetPublineDb().GetCount(), 1);
}

TEST_F(PipeDataFile, TheProfileGetsTheLastIssuedIdAlsoWhenTheSaveFails)
{
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<node id=\"77\"><ndtype contents=\"&#9;\"/></node>\n"));
    manager.GetNodeObjectOriginal(77)->WriteSubAttribute(L"bad", L"\x01");
    CStdioFile file(support::toPath(folder / "x.xml"), CFile::modeCreate | CFile::modeWrite);
    EXPECT_FALSE(manager.WritePipeObject(file, error, 13));
    EXPECT_EQ(manager.GetFileProfile()->GetMaxObjectId(), 77);
}

TEST_F(PipeDataFile, SpecialAndControlCharactersComeBackUnchanged)
{
    struct Case {
        const wchar_t* value;
        const char* written;
    };
    const Case cases[] = {{L"&", "&amp;"},      {L"<", "&lt;"},       {L">", "&gt;"},           {L"\"", "&quot;"},
                          {L"'", "'"},          {L"\t", "&#9;"},      {L"\n", "&#10;"},         {L"\r", "&#13;"},
                          {L" ", " "},          {L"\\", "\\"},        {L"\x7F", nullptr},       {L"\u0085", nullptr},
                          {L"\u2028", nullptr}, {L"\uFEFF", nullptr}, {L"\U00020BB7", nullptr}, {L"", ""}};
    for (const auto& [value, written] : cases) {
        for (const int dataver : {13, 14}) {
            CObjectManager manager;
            auto* const node = new CNode(1);
            ASSERT_TRUE(manager.GetNodeDb().Add(1, node));
            node->WriteSubAttribute(L"ndcommentf", value);
            const std::string bytes = save(manager, dataver);
            if (written && dataver == 13) {
                EXPECT_NE(bytes.find("<ndcommentf contents=\"" + std::string(written) + "\"/>"), std::string::npos);
            }
            CObjectManager again;
            ASSERT_TRUE(read(again, bytes)) << error;
            EXPECT_EQ(again.GetNodeObjectOriginal(1)->GetSubAttribute(L"ndcommentf"), value) << dataver;
        }
    }
}

TEST_F(PipeDataFile, LettersThatShiftJisLacksAreReferencesInVersion13)
{
    CObjectManager manager;
    auto* const node = new CNode(1);
    ASSERT_TRUE(manager.GetNodeDb().Add(1, node));
    node->WriteSubAttribute(L"ndcommentf", L"表〜−¥😀");
    const std::string bytes = save(manager, 13);
    EXPECT_NE(bytes.find("contents=\"\x95\x5C&#x301C;&#x2212;&#xA5;&#x1F600;\""), std::string::npos);
    CObjectManager again;
    ASSERT_TRUE(read(again, bytes)) << error;
    EXPECT_EQ(again.GetNodeObjectOriginal(1)->GetSubAttribute(L"ndcommentf"), L"表〜−¥😀");
}

TEST_F(PipeDataFile, AnUnwritableRecordStopsTheSaveWithItsTablesMessageAndADetailLine)
{
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\"/><divspanrec id=\"2\" dswebid=\"0\"/>"
                                     "<subsecrec id=\"3\" sbwebid=\"0\"/>"));
    manager.GetDivideSpanRecObjectOriginal(2)->WriteSubAttribute(L"note", L"bell \x07");
    CStdioFile file(support::toPath(folder / "cut.xml"), CFile::modeCreate | CFile::modeWrite,
                    obmgr::TextEncoding::ShiftJis);
    CStringArray details;
    EXPECT_FALSE(manager.WritePipeObject(file, error, details, 13));
    file.Close();
    EXPECT_EQ(error, L"Failed to write the split span data.");
    ASSERT_EQ(details.GetSize(), 1);
    EXPECT_GE(details[0].Find(L"divspanrec ID=2"), 0) << details[0];
    const std::string bytes = support::readBytes(folder / "cut.xml");
    EXPECT_NE(bytes.find("<node id=\"1\">"), std::string::npos);
    EXPECT_EQ(bytes.find("<subsecrec"), std::string::npos);
    EXPECT_EQ(bytes.find("</pipedata>"), std::string::npos);
}

TEST_F(PipeDataFile, EveryTableHasItsOwnFailureMessage)
{
    for (const auto type : obmgr::SaveOrder()) {
        CObjectManager manager;
        const obmgr::RecordInfo& row = obmgr::RecordOf(type);
        CPipeObject* object = nullptr;
        if (row.reader == obmgr::Reader::Refuses) {
            object = new CIcpInq(1, 0);
            ASSERT_TRUE(manager.TableOf(type).Add(1, object));
        } else {
            std::string record = "<" + std::string(row.tag) + " id=\"1\"";
            for (const obmgr::LinkField& link : row.links.All())
                record += " " + std::string(link.name) + "=\"0\"";
            ASSERT_TRUE(readRecords(manager, record + "/>")) << row.tag;
            object = manager.TableOf(type).Find(1);
        }
        object->WriteSubAttribute(L"bad", L"\x01");
        CStdioFile file(support::toPath(folder / "x.xml"), CFile::modeCreate | CFile::modeWrite);
        EXPECT_FALSE(manager.WritePipeObject(file, error, 13));
        EXPECT_EQ(error, obmgr::ResourceText(row.writeFailure)) << row.tag;
        EXPECT_FALSE(error.IsEmpty());
    }
}

TEST_F(PipeDataFile, DetailsOfAnEarlierSaveAreForgotten)
{
    CObjectManager manager;
    auto* const node = new CNode(1);
    ASSERT_TRUE(manager.GetNodeDb().Add(1, node));
    node->WriteSubAttribute(L"bad", L"\x01");
    CStringArray details;
    CStdioFile file(support::toPath(folder / "x.xml"), CFile::modeCreate | CFile::modeWrite);
    EXPECT_FALSE(manager.WritePipeObject(file, error, details, 13));
    EXPECT_EQ(details.GetSize(), 1);
    node->WriteSubAttribute(L"bad", L"good");
    EXPECT_TRUE(manager.WritePipeObject(file, error, details, 13));
    EXPECT_EQ(details.GetSize(), 0);
}

TEST_F(PipeDataFile, FailuresOfTheFileAtItsStartAndEndHaveTheirMessages)
{
    CObjectManager manager;
    FullFile closed(0); // not open: the first write fails
    EXPECT_FALSE(manager.StartWritePipeData(closed, error, 14));
    EXPECT_EQ(error, L"Failed to write header information.");
    EXPECT_FALSE(manager.EndWritePipeData(closed, error, 14));
    EXPECT_EQ(error, L"Failed to write the root tag.");
}

TEST_F(PipeDataFile, AFullDiskIsToldOfAtTheEndOfASmallSave)
{
    CObjectManager manager;
    FullFile file(10);
    ASSERT_TRUE(file.Open(support::toPath(folder / "full.xml"), CFile::modeCreate | CFile::modeWrite));
    EXPECT_FALSE(manager.WritePipeObject(file, error, 13));
    EXPECT_EQ(error, L"Failed to write the root tag.");
    file.Abort();
}

TEST_F(PipeDataFile, AFullDiskInsideTheRecordsPassesOnToTheCaller)
{
    CObjectManager manager;
    for (int id = 1; id <= 100; ++id) {
        auto* const node = new CNode(static_cast<unsigned long>(id));
        node->WriteSubAttribute(L"ndcommentf", CString(L'x', 10000));
        ASSERT_TRUE(manager.GetNodeDb().Add(id, node));
    }
    FullFile file(300000);
    ASSERT_TRUE(file.Open(support::toPath(folder / "full.xml"), CFile::modeCreate | CFile::modeWrite));
    int cause = CFileException::none;
    try {
        manager.WritePipeObject(file, error, 13);
    } catch (CFileException* failure) {
        cause = failure->m_cause;
        failure->Delete();
    }
    EXPECT_EQ(cause, CFileException::diskFull);
    EXPECT_EQ(interface.open, 0);
    file.Abort();
}

TEST_F(PipeDataFile, ProgressRunsOverAllRecordsUnderTheShortenedPath)
{
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\"/><node id=\"2\"/><publine id=\"3\"/><manhole id=\"4\"/>"));
    const std::string name(80, 'n');
    CStdioFile file(support::toPath(folder / (name + ".xml")), CFile::modeCreate | CFile::modeWrite);
    ASSERT_TRUE(manager.WritePipeObject(file, error, 13));
    ASSERT_EQ(interface.opened, 1);
    EXPECT_EQ(interface.open, 0);
    EXPECT_EQ(interface.ranges, (std::vector<std::pair<int, int>>{{0, 4}}));
    EXPECT_EQ(interface.positions, (std::vector<int>{0, 1, 2})); // the map data counts and is not written
    EXPECT_EQ(interface.pumps, 3);
    const CString title = interface.titles.at(0);
    EXPECT_EQ(title.Left(15), L"Writing to the ");
    EXPECT_EQ(title.Right(8), L".xml ...");
    EXPECT_LE(title.GetLength(), 15 + 50 + 4);
}

TEST_F(PipeDataFile, ASaveCanBeCancelledAtEveryRecord)
{
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\"/><node id=\"2\"/><manhole id=\"3\"/>"));
    for (int n = 1; n <= 3; ++n) {
        interface.cancelAt = n;
        interface.asked = 0;
        CStdioFile file(support::toPath(folder / "cut.xml"), CFile::modeCreate | CFile::modeWrite,
                        obmgr::TextEncoding::ShiftJis);
        EXPECT_FALSE(manager.WritePipeObject(file, error, 13));
        file.Close();
        EXPECT_EQ(error, L"Saved to file has been canceled.");
        const std::string bytes = support::readBytes(folder / "cut.xml");
        EXPECT_EQ(occurrences(bytes, " id=\""), static_cast<std::size_t>(n - 1));
        EXPECT_EQ(bytes.find("</pipedata>"), std::string::npos);
    }
    EXPECT_EQ(manager.GetAllDataCount(), 3);
    interface.cancelAt = 1000;
    EXPECT_NE(save(manager, 13).find("</pipedata>"), std::string::npos);
}

TEST_F(PipeDataFile, RecordsMayComeAndGoWhileASaveLetsInputThrough)
{
    CObjectManager manager;
    for (int id = 1; id <= 200; ++id)
        ASSERT_TRUE(manager.GetNodeDb().Add(id, new CNode(static_cast<unsigned long>(id))));
    interface.onPump = [&] {
        const int pump = interface.pumps;
        if (pump == 1) // the one about to be written and most of the others
            for (int id = 1; id <= 150; ++id)
                manager.GetNodeDb().Remove(manager.GetNodeObjectOriginal(id));
        if (pump == 10) manager.GetNodeDb().Add(500, new CNode(500));
    };
    const std::string bytes = save(manager, 13);
    EXPECT_EQ(occurrences(bytes, "<node id="), 51u);
    EXPECT_EQ(bytes.find("<node id=\"150\""), std::string::npos);
    EXPECT_NE(bytes.find("<node id=\"151\""), std::string::npos);
    EXPECT_NE(bytes.find("<node id=\"500\""), std::string::npos);
}

TEST_F(PipeDataFile, AnEmptyTableMovesNoProgress)
{
    CObjectManager manager;
    CStdioFile file(support::toPath(folder / "x.xml"), CFile::modeCreate | CFile::modeWrite);
    CDlgProgress progress;
    int counter = 7;
    EXPECT_TRUE(manager.GetNodeDb().FileOutAll(file, &counter, &progress, 13));
    EXPECT_EQ(counter, 7);
    EXPECT_EQ(interface.pumps, 0);
}

TEST_F(PipeDataFile, ATableWithoutACounterOrADialogIsWrittenWithoutProgress)
{
    CObjectManager manager;
    ASSERT_TRUE(manager.GetNodeDb().Add(1, new CNode(1)));
    CStdioFile file(support::toPath(folder / "x.xml"), CFile::modeCreate | CFile::modeWrite,
                    obmgr::TextEncoding::ShiftJis);
    CDlgProgress progress;
    int counter = 0;
    interface.cancelAt = 1;
    EXPECT_TRUE(manager.GetNodeDb().FileOutAll(file, nullptr, &progress, 13));
    EXPECT_TRUE(manager.GetNodeDb().FileOutAll(file, &counter, nullptr, 13));
    EXPECT_EQ(counter, 0);
    file.Close();
    EXPECT_EQ(occurrences(support::readBytes(folder / "x.xml"), "<node id=\"1\">"), 2u);
}
