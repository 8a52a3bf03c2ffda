// The definition file of the default attributes.
#include "persistence/PersistenceTest.h"

#include "store/ObDefManager.h"

namespace {

class DefaultAttributeFile : public PersistenceTest {
protected:
    bool readDefaults(const std::string& text)
    {
        error.Empty();
        return defaults.ReadDefFile(folder.Write("def.xml", text), error);
    }
    int saveDefaults(const std::filesystem::path& path, const wchar_t* version = L"1.2")
    {
        error = L"untouched";
        return defaults.SaveDefFile(support::toPath(path), version, error);
    }
    void add(objectdata::OBJECTTYPE type, const wchar_t* name,
             const std::vector<std::pair<const wchar_t*, const wchar_t*>>& values)
    {
        auto* const entry = new CObDefault(type, name);
        for (const auto& [key, value] : values)
            entry->GetSubattribute().SetAt(key, value);
        defaults.GetDefList().AddTail(entry);
        defaults.SetEditFlg(true);
    }
    CString value(const wchar_t* tag, const wchar_t* key) const
    {
        CMapStringToString values;
        CString text = L"absent";
        defaults.GetDefValue(tag, values);
        values.Lookup(key, text);
        return text;
    }

    CObDefManager defaults;
};

constexpr const char* kRoot = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

} // namespace

TEST_F(DefaultAttributeFile, EntriesAreReadInOrderAndATagMayRepeat)
{
    ASSERT_TRUE(readDefaults(std::string(kRoot) +
                             "<pipedata><!-- c --><node><ndtype contents=\"1\"/><x CONTENTS=\"𠮷\"/><y a=\"b\"/></node>"
                             "<drawpendat><a contents=\"1\"/></drawpendat><drawpendat><a contents=\"2\"/></drawpendat>"
                             "</pipedata>"))
        << error;
    ASSERT_EQ(defaults.GetDefList().GetCount(), 3);
    EXPECT_EQ(value(L"node", L"ndtype"), L"1");
    EXPECT_EQ(value(L"node", L"x"), L"𠮷");
    EXPECT_EQ(value(L"node", L"y"), L"");
    CTypedPtrList<CObList, CObDefault*> pens;
    ASSERT_TRUE(defaults.GetDefValueAll(L"drawpendat", pens));
    EXPECT_EQ(pens.GetCount(), 2);
    EXPECT_EQ(pens.GetHead()->GetType(), objectdata::Drawpendat);
}

TEST_F(DefaultAttributeFile, UnknownElementsAndTheirChildrenAreSkipped)
{
    ASSERT_TRUE(readDefaults("<pipedata><profile><appname contents=\"a\"/><node><k contents=\"v\"/></node></profile>"
                             "<Node><k contents=\"upper\"/></Node></pipedata>"))
        << error;
    ASSERT_EQ(defaults.GetDefList().GetCount(), 1);
    EXPECT_EQ(value(L"node", L"k"), L"v");
}

TEST_F(DefaultAttributeFile, AChildSpelledLikeATagEndsTheEntry)
{
    ASSERT_TRUE(readDefaults("<pipedata><node><a contents=\"1\"/><span contents=\"s\"/><b contents=\"2\"/>"
                             "<route contents=\"r\"/></node></pipedata>"))
        << error;
    ASSERT_EQ(defaults.GetDefList().GetCount(), 2);
    EXPECT_EQ(value(L"node", L"span"), L"s");
    EXPECT_EQ(value(L"node", L"b"), L"absent");
    EXPECT_EQ(value(L"route", L"contents"), L"absent"); // taken for an entry of its own
}

TEST_F(DefaultAttributeFile, ASecondFileAppends)
{
    ASSERT_TRUE(readDefaults("<pipedata><node><a contents=\"1\"/></node></pipedata>"));
    ASSERT_TRUE(readDefaults("<pipedata><node><a contents=\"2\"/></node></pipedata>"));
    EXPECT_EQ(defaults.GetDefList().GetCount(), 2);
    EXPECT_EQ(value(L"node", L"a"), L"1");
}

TEST_F(DefaultAttributeFile, AReadClearsTheEditFlagOnSuccessOnly)
{
    defaults.SetEditFlg(true);
    EXPECT_FALSE(readDefaults("<pipedata><node><a contents=\"1\"/></node>"));
    EXPECT_TRUE(defaults.IsEdit());
    EXPECT_EQ(defaults.GetDefList().GetCount(), 1); // what was read until then stays
    EXPECT_EQ(error.Left(14), L"Error at file.");
    EXPECT_TRUE(readDefaults("<pipedata/>"));
    EXPECT_FALSE(defaults.IsEdit());
}

TEST_F(DefaultAttributeFile, AMissingFileIsToldOf)
{
    const CString path = support::toPath(folder / "none.xml");
    EXPECT_FALSE(defaults.ReadDefFile(path, error));
    EXPECT_EQ(error, L"File(" + path + L") not found.");
    EXPECT_FALSE(defaults.ReadDefFile(support::toPath(folder.Path()), error));
    EXPECT_EQ(error.Left(14), L"Error at file.");
}

TEST_F(DefaultAttributeFile, TheDirectoryIsPutBackAfterSuccessAndFailure)
{
    const auto before = obmgr::CurrentDirectory::Get();
    ASSERT_TRUE(readDefaults("<pipedata/>"));
    EXPECT_EQ(obmgr::CurrentDirectory::Get(), before);
    EXPECT_FALSE(readDefaults("<pipedata>"));
    EXPECT_EQ(obmgr::CurrentDirectory::Get(), before);
}

TEST_F(DefaultAttributeFile, AnUneditedManagerSavesNothing)
{
    add(objectdata::Node, L"node", {});
    defaults.SetEditFlg(false);
    EXPECT_EQ(saveDefaults(folder / "new.xml"), 0);
    EXPECT_EQ(error, L"untouched");
    EXPECT_FALSE(std::filesystem::exists(folder / "new.xml"));
}

TEST_F(DefaultAttributeFile, ACompletedSaveGivesThreeAndItsTextAndKeepsTheEditFlag)
{
    add(objectdata::Node, L"node", {{L"ndtype", L"1"}, {L"comment", L"<表 \"𠮷\" & \t\n>"}});
    defaults.GetDefList().AddTail(static_cast<CObDefault*>(nullptr));
    add(objectdata::Span, L"span", {});
    EXPECT_EQ(saveDefaults(folder / "表.xml", L"5.0"), 3);
    EXPECT_EQ(error, L"An error occurred creating the document");
    EXPECT_TRUE(defaults.IsEdit());

    const std::string bytes = support::readBytes(folder / "表.xml");
    EXPECT_EQ(bytes, "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>\n<pipedata>\n"
                     "  <!--Default attributes defined by Rivelta 5.0.-->\n"
                     "  <node>\n    <ndtype contents=\"1\"/>\n"
                     "    <comment contents=\"&lt;表 &quot;𠮷&quot; &amp; &#x9;&#xA;>\"/>\n  </node>\n"
                     "  <span/>\n</pipedata>\n");
    defaults.GetDefList().RemoveAt(defaults.GetDefList().FindIndex(1));
    CObDefManager again;
    ASSERT_TRUE(again.ReadDefFile(support::toPath(folder / "表.xml"), error)) << error;
    CMapStringToString values;
    ASSERT_TRUE(again.GetDefValue(L"node", values));
    EXPECT_EQ(values[L"comment"], L"<表 \"𠮷\" & \t\n>");
}

TEST_F(DefaultAttributeFile, WhatCannotBeWrittenLeavesTheOldFile)
{
    add(objectdata::Node, L"node", {{L"no name", L"1"}});
    support::writeBytes(folder / "def.xml", "old");
    EXPECT_EQ(saveDefaults(folder / "def.xml"), 2);
    EXPECT_EQ(error, L"DOMException code is:5");
    defaults.GetDefList().GetHead()->GetSubattribute().RemoveAll();
    defaults.GetDefList().GetHead()->GetSubattribute().SetAt(L"k", L"bell \x07");
    EXPECT_EQ(saveDefaults(folder / "def.xml"), 2);
    EXPECT_EQ(support::readBytes(folder / "def.xml"), "old");
    defaults.GetDefList().GetHead()->GetSubattribute().RemoveAll();
    EXPECT_EQ(saveDefaults(folder / "no such folder" / "def.xml"), 1);
    EXPECT_EQ(error.Left(14), L"Error Message:");
    EXPECT_GT(error.GetLength(), 20);
    EXPECT_EQ(saveDefaults(folder.Path()), 1);
}

TEST_F(DefaultAttributeFile, ReadingAndSavingGoesRoundWithoutChange)
{
    for (const obmgr::RecordInfo& row : obmgr::Records())
        add(row.type, std::wstring(row.tag.begin(), row.tag.end()).c_str(), {{L"b", L"2"}, {L"a", L"1"}});
    ASSERT_EQ(saveDefaults(folder / "first.xml"), 3);
    defaults.ClearDEFLIST();
    ASSERT_TRUE(defaults.ReadDefFile(support::toPath(folder / "first.xml"), error)) << error;
    defaults.SetEditFlg(true);
    ASSERT_EQ(saveDefaults(folder / "second.xml"), 3);
    EXPECT_EQ(support::readBytes(folder / "first.xml"), support::readBytes(folder / "second.xml"));
}
