// Reading whole files: what is accepted, what is refused with which text, and the current directory.
#include "persistence/PersistenceTest.h"

#include <sys/stat.h>

#include "persistence/SaxParser.h"

namespace {

class ReadDesign : public PersistenceTest {
protected:
    CString readError(const std::string& records)
    {
        CObjectManager manager;
        EXPECT_FALSE(readRecords(manager, records)) << records;
        return error;
    }
};

} // namespace

TEST_F(ReadDesign, FilesOfBothFormsLoadTheSame)
{
    const char16_t* const records = u"<profile><appname contents=\"a\"/></profile>\n<node id=\"3\"><ndtype "
                                    u"contents=\"表1\"/></node>\n<span id=\"4\" uppernode=\"3\" lowernode=\"5\" "
                                    u"routeid=\"6\"/>";
    const std::u16string text = records;
    const std::string v14 = "\xFF\xFE" + support::utf16(u"<?xml version = \"1.0\" encoding = \"UTF-16\"?>\n<pdroot>\n"
                                                        u"<pipedata>\n" +
                                                        text + u"</pipedata>\n</pdroot>\n");
    const std::string v13 = "<?xml version = \"1.0\" encoding = \"SHIFT-JIS\"?>\n<pipedata>\n"
                            "<profile><appname contents=\"a\"/></profile>\n<node id=\"3\"><ndtype "
                            "contents=\"\x95\x5C"
                            "1\"/></node>\n<span id=\"4\" uppernode=\"3\" lowernode=\"5\" routeid=\"6\"/></pipedata>\n";
    for (const std::string& bytes : {v13, v14}) {
        CObjectManager manager;
        ASSERT_TRUE(read(manager, bytes)) << error;
        EXPECT_EQ(manager.GetAllDataCount(), 2);
        EXPECT_EQ(manager.GetNodeObjectOriginal(3)->GetSubAttribute(L"ndtype"), L"表1");
        const CSpan* const span = manager.GetSpanObjectOriginal(4);
        EXPECT_EQ(span->GetUpperNodeId(), 3u);
        EXPECT_EQ(span->GetLowerNodeId(), 5u);
        EXPECT_EQ(span->GetRouteId(), 6u);
        EXPECT_EQ(manager.GetFileProfile()->GetAppName(), L"a");
    }
}

TEST_F(ReadDesign, EveryTypeThatIsReadBackComesIntoItsTableWithItsLinks)
{
    std::string records;
    for (const obmgr::RecordInfo& row : obmgr::Records()) {
        if (row.reader == obmgr::Reader::Refuses) continue;
        records += "<" + std::string(row.tag) + " id=\"" + std::to_string(row.type + 1) + "\"";
        int value = 500;
        for (const obmgr::LinkField& link : row.links.All())
            records += " " + std::string(link.name) + "=\"" + std::to_string(value++) + "\"";
        records += "><k contents=\"" + std::string(row.tag) + "\"/></" + std::string(row.tag) + ">\n";
    }
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, records)) << error;
    EXPECT_EQ(manager.GetAllDataCount(), obmgr::kTypeCount - 1);
    for (const obmgr::RecordInfo& row : obmgr::Records()) {
        if (row.reader == obmgr::Reader::Refuses) continue;
        const CPipeObject* const object = manager.TableOf(row.type).Find(row.type + 1);
        ASSERT_TRUE(object) << row.tag;
        EXPECT_EQ(object->GetObjectType(), row.type);
        EXPECT_EQ(object->GetSubAttribute(L"k"), std::wstring(row.tag.begin(), row.tag.end()).c_str());
        int value = 500;
        for (const std::int32_t link : object->Links())
            EXPECT_EQ(link, value++) << row.tag;
    }
}

TEST_F(ReadDesign, TagsAndRootsIgnoreCaseAndKeysKeepIt)
{
    CObjectManager manager;
    ASSERT_TRUE(read(manager, "<PdRoot><PIPEDATA><NODE id=\"1\"><NdType contents=\"x\"/></NODE>"
                              "<Profile><Version contents=\"2\"/></Profile></PIPEDATA></PdRoot>"))
        << error;
    EXPECT_EQ(manager.GetNodeObjectOriginal(1)->GetSubAttribute(L"NdType"), L"x");
    EXPECT_FALSE(manager.GetNodeObjectOriginal(1)->IsSubAttribute(L"ndtype"));
    EXPECT_EQ(manager.GetFileProfile()->GetSubAttribute(L"Version"), L"2");
}

TEST_F(ReadDesign, BadRecordsAreRefusedWithTagAndId)
{
    const std::pair<const char*, const wchar_t*> cases[] = {
        {"<node/>", L"node ID=-1 data is illegal."},
        {"<node id=\"\"/>", L"node ID=-1 data is illegal."},
        {"<node id=\"12a\"/>", L"node ID=-1 data is illegal."},
        {"<node id=\"+1\"/>", L"node ID=-1 data is illegal."},
        {"<node id=\" 1\"/>", L"node ID=-1 data is illegal."},
        {"<node id=\"1-\"/>", L"node ID=-1 data is illegal."},
        {"<node id=\"１２\"/>", L"node ID=-1 data is illegal."},
        {"<node ID=\"1\"/>", L"node ID=-1 data is illegal."},
        {"<node id=\"2147483547\"/>", L"node ID=2147483547 data is illegal."},
        {"<node id=\"99999999999\"/>", L"node ID=2147483647 data is illegal."},
        {"<node id=\"5\"/><node id=\"5\"/>", L"node ID=5 data is illegal."},
        {"<nosuch id=\"7\"/>", L"nosuch ID=7 data is illegal."},
        {"<NoSuch/>", L"NoSuch ID=-1 data is illegal."},
        {"<icpinq id=\"8\" icnodeid=\"1\"/>", L"icpinq ID=8 data is illegal."},
        {"<route id=\"9\" webid=\"1\"/>", L"route ID=9 data is illegal."},
        {"<route id=\"9\" webid=\"1\" connectid=\"1.5\"/>", L"route ID=9 data is illegal."},
        {"<web id=\"10\" disposaltype=\"\"/>", L"web ID=10 data is illegal."},
        {"<node id=\"1\"><a contents=\"\"><b contents=\"\"/></a></node>", L"b ID=-1 data is illegal."},
    };
    for (const auto& [records, message] : cases)
        EXPECT_EQ(readError(records), message) << records;
}

TEST_F(ReadDesign, AnOtherRootIsTakenForARecord)
{
    CObjectManager manager;
    EXPECT_FALSE(read(manager, "<html></html>"));
    EXPECT_EQ(error, L"html ID=-1 data is illegal.");
}

TEST_F(ReadDesign, UnusualNumbersAreHeldWithin32Bits)
{
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<node id=\"-\"/><node id=\"-5\"/><node id=\"007\"/><node id=\"2147483546\"/>"
                                     "<node id=\"-99999999999\"/>"
                                     "<span id=\"1\" uppernode=\"99999999999\" lowernode=\"-\" routeid=\"-3\"/>"))
        << error;
    for (const long id : {0L, -5L, 7L, 2147483546L, -2147483648L})
        EXPECT_TRUE(manager.GetNodeDb().Find(id)) << id;
    const CSpan* const span = manager.GetSpanObjectOriginal(1);
    EXPECT_EQ(span->Links()[0], 2147483647);
    EXPECT_EQ(span->Links()[1], 0);
    EXPECT_EQ(span->Links()[2], -3);
    EXPECT_EQ(manager.GetCurrentObjectId(), 2147483546);
}

TEST_F(ReadDesign, TheProfileNeedsNoIdAndIsNoRecord)
{
    CObjectManager manager;
    manager.SetSaveReadObject(true);
    ASSERT_TRUE(readRecords(manager, "<profile id=\"x\"><version contents=\"1\"/></profile><profile><date "
                                     "contents=\"d\"/><other contents=\"o\"/></profile>"))
        << error;
    EXPECT_EQ(manager.GetFileProfile()->GetVersion(), L"1");
    EXPECT_EQ(manager.GetFileProfile()->GetDate(), L"d");
    EXPECT_EQ(manager.GetFileProfile()->GetSubAttribute(L"other"), L"o");
    EXPECT_EQ(manager.GetAllDataCount(), 0);
    CTypedPtrList<CObList, CPipeObject*> objects;
    manager.GetSaveReadObject(objects);
    EXPECT_TRUE(objects.IsEmpty());
}

TEST_F(ReadDesign, ARepeatedIdContinuesAreaOutflowsAndTheirAreas)
{
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<areaoutq id=\"1\" aorouteid=\"5\"><a contents=\"1\"/><b contents=\"1\"/>"
                                     "</areaoutq><areaoutq id=\"1\"><b contents=\"2\"/><c contents=\"2\"/></areaoutq>"
                                     "<outareaset id=\"2\" oasareaoutid=\"1\"/><outareaset id=\"2\"><d contents=\"3\"/>"
                                     "</outareaset>"))
        << error;
    EXPECT_EQ(manager.GetAllDataCount(), 2);
    const CAreaOutq* const outflow = manager.GetAreaOutqObjectOriginal(1);
    EXPECT_EQ(outflow->GetSubAttribute(L"a"), L"1");
    EXPECT_EQ(outflow->GetSubAttribute(L"b"), L"2");
    EXPECT_EQ(outflow->GetSubAttribute(L"c"), L"2");
    EXPECT_EQ(outflow->GetRouteId(), 5u);
    EXPECT_EQ(manager.GetOutareasetObjectOriginal(2)->GetSubAttribute(L"d"), L"3");
}

TEST_F(ReadDesign, AKeyBeforeAnyRecordIsIgnored)
{
    // Depth 2 without a record: the element at depth 1 was a root inside a root.
    CObjectManager manager;
    EXPECT_FALSE(readRecords(manager, "<k contents=\"1\"/>"));
    EXPECT_EQ(error, L"k ID=-1 data is illegal.");
}

TEST_F(ReadDesign, RootsInsideRecordsDoNotCountAsDepth)
{
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\"><pipedata><k contents=\"1\"/></pipedata></node>")) << error;
    EXPECT_EQ(manager.GetNodeObjectOriginal(1)->GetSubAttribute(L"k"), L"1");
}

TEST_F(ReadDesign, ARecordInsideAKeyIsARecord)
{
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\"><k contents=\"1\"><manhole id=\"2\"/></k><l contents=\"x\"/>"
                                     "</node>"))
        << error;
    EXPECT_TRUE(manager.GetManHoleObjectOriginal(2));
    // The current object is not put back.
    EXPECT_EQ(manager.GetManHoleObjectOriginal(2)->GetSubAttribute(L"l"), L"x");
}

TEST_F(ReadDesign, MissingContentsAreEmptyAndOtherAttributesAreNotLookedAt)
{
    CObjectManager manager;
    ASSERT_TRUE(
        readRecords(manager, "<node id=\"1\" x=\"y\"><a/><b Contents=\"n\"/><c z=\"\" contents=\"v\"/></node>"));
    const CNode* const node = manager.GetNodeObjectOriginal(1);
    EXPECT_TRUE(node->IsSubAttribute(L"a"));
    EXPECT_EQ(node->GetSubAttribute(L"a"), L"");
    EXPECT_EQ(node->GetSubAttribute(L"b"), L"");
    EXPECT_EQ(node->GetSubAttribute(L"c"), L"v");
}

TEST_F(ReadDesign, LettersOutsideTheBasicPlaneAreOneCharacter)
{
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\"><a contents=\"x𠮷&#x20BB7;髙\uFEFF\"/></node>")) << error;
    const CString value = manager.GetNodeObjectOriginal(1)->GetSubAttribute(L"a");
    EXPECT_EQ(value, L"x\U00020BB7\U00020BB7\u9AD9\uFEFF");
    EXPECT_EQ(value.GetLength(), 5);
}

TEST_F(ReadDesign, ObjectsReadBeforeAFailureStayAndTheCounterIsNotMoved)
{
    CObjectManager manager;
    EXPECT_FALSE(readRecords(manager, "<node id=\"41\"><a contents=\"1\"/></node><node id=\"42\"><b contents=\"2\"/>"
                                      "<c contents=\"3\"></node>"));
    EXPECT_EQ(manager.GetAllDataCount(), 2);
    EXPECT_EQ(manager.GetNodeObjectOriginal(42)->GetSubAttribute(L"c"), L"3");
    EXPECT_EQ(manager.GetCurrentObjectId(), 0);
    ASSERT_TRUE(readRecords(manager, "<manhole id=\"43\"/>")) << error;
    EXPECT_EQ(manager.GetCurrentObjectId(), 43);
}

TEST_F(ReadDesign, ABrokenFileIsToldOfWithItsPathItsLineAndColumnZero)
{
    CObjectManager manager;
    EXPECT_FALSE(read(manager, "<pipedata>\n<node id=\"1\">\n"));
    const CString start = L"Error at file.\n" + support::toPath(folder / "read.xml") + L", line 3, column 0\n";
    EXPECT_EQ(error.Left(start.GetLength()), start);
    EXPECT_EQ(error.Find(L"\nException message:"), start.GetLength() - 1);
    EXPECT_GT(error.GetLength(), start.GetLength() + 18);
}

TEST_F(ReadDesign, MessagesAboutHugeNamesAreCut)
{
    CObjectManager manager;
    EXPECT_FALSE(readRecords(manager, "<" + std::string(300000, 'n') + "/>"));
    EXPECT_LT(error.GetLength(), 2100);
    EXPECT_EQ(error.Right(27), L"n... ID=-1 data is illegal.");
    EXPECT_FALSE(read(manager, "<?xml version=\"1.0\" encoding=\"" + std::string(5000, 'e') + "\"?><pipedata/>"));
    EXPECT_LT(error.GetLength(), 5000);
}

TEST_F(ReadDesign, WhatIsNoFileIsRefusedWithAText)
{
    CObjectManager manager;
    const CString missing = support::toPath(folder / "no such.xml");
    EXPECT_FALSE(manager.CreatePipeObjectFromFile(missing, error, false));
    EXPECT_EQ(error, L"Can not find the file " + missing + L".");
    EXPECT_FALSE(manager.CreatePipeObjectFromFile(CString(), error, false));
    EXPECT_EQ(error, L"Can not find the file .");
    EXPECT_FALSE(manager.CreatePipeObjectFromFile(L"http://127.0.0.1:9/x", error, false));
    EXPECT_EQ(error, L"Can not find the file http://127.0.0.1:9/x.");

    std::filesystem::create_directory(folder / "folder");
    ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
    support::writeBytes(folder / "empty", "");
    for (const char* const name : {"folder", "fifo", "empty"}) {
        const std::filesystem::path path = folder / name;
        error.Empty();
        EXPECT_FALSE(manager.CreatePipeObjectFromFile(support::toPath(path), error, false)) << name;
        EXPECT_FALSE(error.IsEmpty()) << name;
    }
    EXPECT_EQ(manager.GetAllDataCount(), 0);
}

TEST_F(ReadDesign, APathThatLooksLikeAnAddressIsAFile)
{
    std::filesystem::create_directories(folder / "http:" / "127.0.0.1:9");
    support::writeBytes(folder / "http:" / "127.0.0.1:9" / "x", document("<node id=\"1\"/>"));
    ASSERT_TRUE(obmgr::CurrentDirectory::Set(support::toPath(folder.Path())));
    CObjectManager manager;
    EXPECT_TRUE(manager.CreatePipeObjectFromFile(L"http://127.0.0.1:9/x", error, false)) << error;
    EXPECT_EQ(manager.GetAllDataCount(), 1);
}

TEST_F(ReadDesign, UnusualFileNamesAreFoundWhateverTheLocale)
{
    for (const char* const name : {"表 図面.xml", "a#b%20?.xml", "-x", "a:b.xml", "\xFF\xFE.xml", "back\\slash.xml"}) {
        support::writeBytes(folder / name, document("<node id=\"1\"/>"));
        CObjectManager manager;
        EXPECT_TRUE(manager.CreatePipeObjectFromFile(support::toPath(folder / name), error, false)) << name << error;
        EXPECT_EQ(manager.GetAllDataCount(), 1) << name;
    }
}

TEST_F(ReadDesign, BackslashesSeparateFoldersToo)
{
    std::filesystem::create_directory(folder / "sub");
    support::writeBytes(folder / "sub" / "a.xml", document("<node id=\"1\"/>"));
    ASSERT_TRUE(obmgr::CurrentDirectory::Set(support::toPath(folder.Path())));
    CObjectManager manager;
    EXPECT_TRUE(manager.CreatePipeObjectFromFile(L"sub\\a.xml", error, false)) << error;
    EXPECT_EQ(manager.GetCurrentFilePath(), L"sub/a.xml");
    EXPECT_EQ(obmgr::CurrentDirectory::Get(), support::toPath(folder.Path()));
}

TEST_F(ReadDesign, TheDirectoryIsPutBackAfterASuccessAndStaysChangedAfterAFailure)
{
    std::filesystem::create_directory(folder / "here");
    std::filesystem::create_directory(folder / "there");
    const CString here = support::toPath(folder / "here");
    const CString there = support::toPath(folder / "there");
    support::writeBytes(folder / "there" / "good.xml", document("<node id=\"1\"/>"));
    support::writeBytes(folder / "there" / "bad.xml", document("<node/>"));
    support::writeBytes(folder / "there" / "empty.xml", "");
    CObjectManager manager;

    ASSERT_TRUE(obmgr::CurrentDirectory::Set(here));
    EXPECT_TRUE(manager.CreatePipeObjectFromFile(there + L"/good.xml", error, false));
    EXPECT_EQ(obmgr::CurrentDirectory::Get(), here);
    EXPECT_EQ(manager.GetCurrentFilePath(), there + L"/good.xml");
    EXPECT_FALSE(manager.CreatePipeObjectFromFile(there + L"/none.xml", error, false));
    EXPECT_EQ(obmgr::CurrentDirectory::Get(), here);

    for (const wchar_t* const name : {L"/bad.xml", L"/empty.xml"}) {
        ASSERT_TRUE(obmgr::CurrentDirectory::Set(here));
        EXPECT_FALSE(manager.CreatePipeObjectFromFile(there + name, error, false));
        EXPECT_EQ(obmgr::CurrentDirectory::Get(), there);
    }
    // A file of the current directory needs no change.
    EXPECT_TRUE(manager.CreatePipeObjectFromFile(L"good.xml", error, true)) << error;
    EXPECT_EQ(obmgr::CurrentDirectory::Get(), there);
}

TEST_F(ReadDesign, AddedObjectsAreNotedWhileRecordingIsOnPensTwice)
{
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\"/>"));
    manager.SetSaveReadObject(true);
    ASSERT_TRUE(readRecords(manager, "<areaoutq id=\"1\" aorouteid=\"0\"/><drawpendat id=\"2\"/><node id=\"3\"/>"
                                     "<areaoutq id=\"1\"/>"))
        << error;
    EXPECT_FALSE(readRecords(manager, "<drawpendat id=\"2\"/>")); // refused: nothing of it may stay on the list
    manager.SetSaveReadObject(false);
    ASSERT_TRUE(readRecords(manager, "<node id=\"4\"/>"));
    CTypedPtrList<CObList, CPipeObject*> objects;
    manager.GetSaveReadObject(objects);
    std::vector<CPipeObject*> noted(objects.begin(), objects.end());
    CPipeObject* const pen = manager.GetDrawpendatObjectOriginal(2);
    EXPECT_EQ(noted, (std::vector<CPipeObject*>{manager.GetAreaOutqObjectOriginal(1), pen, pen,
                                                manager.GetNodeObjectOriginal(3)}));
}

TEST_F(ReadDesign, TheResultIsTheSameInJapanese)
{
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::Japanese));
    EXPECT_EQ(readError("<node id=\"1\"/><node id=\"1\"/>"), L"node ID=1 のデータが不正です。");
}

TEST_F(ReadDesign, ReadPipeFileTakesTheSizeTextForAnEmptyFile)
{
    CObjectManager manager;
    CSaxParser parser(&manager);
    EXPECT_FALSE(parser.ReadPipeFile(folder.Write("empty", ""), false, error));
    EXPECT_GE(error.Find(L"empty"), 0);
}

TEST_F(ReadDesign, DocumentTypesHaveNoEffect)
{
    folder.Write("secret.txt", "secret");
    const std::pair<const char*, bool> cases[] = {
        {"<!DOCTYPE pipedata [<!ATTLIST node id CDATA \"1\">]><pipedata><node/></pipedata>", false},
        {"<!DOCTYPE pipedata [<!ENTITY e SYSTEM \"secret.txt\">]><pipedata>&e;</pipedata>", false},
        {"<!DOCTYPE pipedata [<!ENTITY e \"x\">]><pipedata><node id=\"1\"><a contents=\"&e;\"/></node></pipedata>",
         false},
        {"<!DOCTYPE pipedata SYSTEM \"http://127.0.0.1:9/x.dtd\"><pipedata><node id=\"1\"/></pipedata>", true},
        {"<!DOCTYPE pipedata [<!ATTLIST a contents CDATA \"injected\">]><pipedata><node "
         "id=\"1\"><a/></node></pipedata>",
         true}};
    for (const auto& [text, loads] : cases) {
        CObjectManager manager;
        EXPECT_EQ(read(manager, text), loads) << text << error;
        const CNode* const node = manager.GetNodeObjectOriginal(1);
        EXPECT_TRUE(!node || node->GetSubAttribute(L"a").IsEmpty()) << text;
    }
}

TEST_F(ReadDesign, PredefinedEntitiesAreNeverCounted)
{
    CObjectManager manager;
    std::string value;
    for (int i = 0; i < 60000; ++i)
        value += "&amp;&quot;";
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\"><a contents=\"" + value + "\"/></node>")) << error;
    EXPECT_EQ(manager.GetNodeObjectOriginal(1)->GetSubAttribute(L"a").GetLength(), 120000);
}

TEST_F(ReadDesign, AnElementMayHaveManyAttributesAndNotAnyNumberOfThem)
{
    const auto node = [](int attributes) {
        std::string record = "<node id=\"1\"";
        for (int i = 0; i < attributes; ++i)
            record += " a" + std::to_string(i) + "=\"1\"";
        return record + "/>";
    };
    CObjectManager manager;
    EXPECT_TRUE(readRecords(manager, node(999))) << error;
    for (const int count : {1000, 100000}) {
        EXPECT_FALSE(readRecords(manager, node(count)));
        EXPECT_EQ(error, L"An element has too many attributes.");
    }
}

TEST_F(ReadDesign, CommentsInstructionsAndTextHaveNoLimit)
{
    std::string rest;
    for (int i = 0; i < 50000; ++i)
        rest += "<!--c--><?p q?>text<![CDATA[data]]>&amp;&#65;";
    CObjectManager manager;
    ASSERT_TRUE(read(manager, "<?xml version=\"1.0\"?>" + std::string(1, '\n') + "<!--c--><pipedata>" + rest +
                                  "<node id=\"1\">" + rest + "</node></pipedata>"))
        << error;
}

TEST_F(ReadDesign, ManyKeysInOneRecordAreRead)
{
    std::string keys;
    for (int i = 0; i < 20000; ++i)
        keys += "<k" + std::to_string(i) + " contents=\"" + std::to_string(i) + "\"/>";
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\">" + keys + "</node>")) << error;
    const CNode* const node = manager.GetNodeObjectOriginal(1);
    EXPECT_EQ(node->GetAttributes().Count(), 20000u);
    EXPECT_EQ(node->GetSubAttribute(L"k19999"), L"19999");
}

TEST_F(ReadDesign, ValuesOfMegabytesAreReadWhole)
{
    CObjectManager manager;
    std::string value;
    for (int i = 0; i < 300000; ++i)
        value += "a表𠮷";
    ASSERT_TRUE(readRecords(manager, "<node id=\"1\"><a contents=\"" + value + "\"/><b contents=\"x\"/></node>"));
    const CNode* const node = manager.GetNodeObjectOriginal(1);
    EXPECT_TRUE(node->GetSubAttribute(L"a") == obmgr::FromUtf8(value));
    EXPECT_EQ(node->GetSubAttribute(L"b"), L"x");
}

TEST_F(ReadDesign, ChangesInATransactionAreUndoneByItsAbort)
{
    CObjectManager manager;
    ASSERT_TRUE(readRecords(manager, "<areaoutq id=\"1\" aorouteid=\"5\"><a contents=\"1\"/></areaoutq>"));
    manager.BeginTransaction();
    ASSERT_TRUE(readRecords(manager, "<areaoutq id=\"1\"><a contents=\"2\"/></areaoutq><node id=\"9\"/>"));
    EXPECT_EQ(manager.GetAreaOutqObjectOriginal(1)->GetSubAttribute(L"a"), L"2");
    manager.AbortTransaction();
    EXPECT_EQ(manager.GetAllDataCount(), 1);
    EXPECT_EQ(manager.GetAreaOutqObjectOriginal(1)->GetSubAttribute(L"a"), L"1");
    EXPECT_EQ(manager.GetCurrentObjectId(), 1);
}
