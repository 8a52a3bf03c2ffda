// Webs that share a name after a read, and the question for a new one.
#include "persistence/PersistenceTest.h"

#include "persistence/DuplicateWebDlg.h"

namespace {

class DuplicateWebNames : public PersistenceTest {
protected:
    // A file with a web for each name, ids from 1.
    static std::string webs(const std::vector<std::string>& names)
    {
        std::string records;
        int id = 0;
        for (const std::string& name : names)
            records += "<web id=\"" + std::to_string(++id) + "\" disposaltype=\"0\"><webname contents=\"" + name +
                       "\"/></web>";
        return records;
    }
    std::vector<CString> names() const
    {
        std::vector<CString> result;
        for (const CWeb* web : manager.GetWebDb())
            result.push_back(web->GetSubAttribute(L"webname"));
        return result;
    }

    struct Manager : CObjectManager {
        using CObjectManager::CheckDuplicateWebName;
    };
    Manager manager;
};

} // namespace

TEST_F(DuplicateWebNames, NamesThatDifferInCaseAreNoDuplicates)
{
    ASSERT_TRUE(readRecords(manager, webs({"a", "A", "b"})));
    EXPECT_TRUE(interface.questions.empty());
    CWeb* web = nullptr;
    EXPECT_TRUE(manager.CheckDuplicateWebName(&web));
    EXPECT_EQ(web, nullptr);
}

TEST_F(DuplicateWebNames, ThreeOfANameNeedTwoQuestionsTheSecondWebFirst)
{
    interface.answers = {CString(L"b"), CString(L"c")};
    ASSERT_TRUE(readRecords(manager, webs({"a", "a", "a"})));
    EXPECT_EQ(names(), (std::vector<CString>{L"a", L"b", L"c"}));
    ASSERT_EQ(interface.questions.size(), 2u);
    const obmgr::NameQuestion& question = interface.questions[0];
    EXPECT_EQ(question.title, L"Duplication of name for pipe networks");
    EXPECT_EQ(question.explanation, L"Following web name is duplicated");
    EXPECT_EQ(question.prompt, L"Change the name of web");
    EXPECT_EQ(question.button, L"OK");
    EXPECT_EQ(question.currentName, L"a");
    ASSERT_TRUE(question.isTaken);
}

TEST_F(DuplicateWebNames, ThePairWithTheFirstWebIsToldOfFirst)
{
    interface.answers = {CString(L"1"), CString(L"2"), CString(L"3")};
    ASSERT_TRUE(readRecords(manager, webs({"a", "b", "b", "a", "b"})));
    EXPECT_EQ(names(), (std::vector<CString>{L"a", L"b", L"2", L"1", L"3"}));
}

TEST_F(DuplicateWebNames, AnAnswerThatClashesAgainIsAskedForAgain)
{
    interface.answers = {CString(L"b"), CString(L"c")};
    ASSERT_TRUE(readRecords(manager, webs({"a", "a", "b"})));
    EXPECT_EQ(names(), (std::vector<CString>{L"a", L"b", L"c"})); // b of the third web clashed with the new one
}

TEST_F(DuplicateWebNames, DecliningOrAnAnswerThatChangesNothingBringsTheQuestionBack)
{
    interface.answers = {std::nullopt, CString(L"a"), CString(L""), CString(L"b")};
    ASSERT_TRUE(readRecords(manager, webs({"a", "a"})));
    EXPECT_EQ(names(), (std::vector<CString>{L"a", L"b"}));
    EXPECT_EQ(interface.questions.size(), 4u);
}

TEST_F(DuplicateWebNames, WebsWithoutNamesAreDuplicates)
{
    interface.answers = {CString(L""), CString(L"x")};
    ASSERT_TRUE(readRecords(manager, "<web id=\"1\" disposaltype=\"0\"/><web id=\"2\" disposaltype=\"0\"/>"));
    EXPECT_EQ(names(), (std::vector<CString>{L"", L"x"}));
    EXPECT_EQ(interface.questions.size(), 2u);
    EXPECT_TRUE(interface.questions[0].currentName.IsEmpty());
}

TEST_F(DuplicateWebNames, WhenNobodyEverAnswersTheFirstFreeNameIsTaken)
{
    ASSERT_TRUE(readRecords(manager, webs({"a", "a", "a(2)", "a"})));
    EXPECT_EQ(names(), (std::vector<CString>{L"a", L"a(3)", L"a(2)", L"a(4)"}));
}

TEST_F(DuplicateWebNames, NobodyIsAskedWithoutEnd)
{
    interface.onQuestion = [](const obmgr::NameQuestion& question) {
        return std::optional<CString>(obmgr::FirstFreeName(question.currentName, question.isTaken));
    };
    ASSERT_TRUE(readRecords(manager, webs(std::vector<std::string>(3000, "a"))));
    EXPECT_EQ(interface.questions.size(), 1000u);
    const std::vector<CString> all = names();
    EXPECT_EQ(all.at(1), L"a(2)");
    EXPECT_EQ(all.at(2999), L"a(3000)");
    EXPECT_TRUE(manager.CheckDuplicateWebName(nullptr));
}

TEST_F(DuplicateWebNames, AWishToCancelEndsTheQuestions)
{
    obmgr::RequestCancel();
    ASSERT_TRUE(readRecords(manager, webs({"a", "a"})));
    obmgr::ResetCancel();
    EXPECT_EQ(names(), (std::vector<CString>{L"a", L"a(2)"}));
    EXPECT_EQ(interface.questions.size(), 1u);
}

TEST_F(DuplicateWebNames, NamesOfTheDesignAndOfAnAppendedFileClashToo)
{
    ASSERT_TRUE(readRecords(manager, webs({"a"})));
    interface.answers = {CString(L"z")};
    ASSERT_TRUE(readRecords(manager, webs({"a"}), true));
    EXPECT_EQ(names(), (std::vector<CString>{L"a", L"z"}));
}

TEST_F(DuplicateWebNames, AFailedReadAsksNothing)
{
    EXPECT_FALSE(readRecords(manager, webs({"a", "a"}) + "<broken"));
    EXPECT_TRUE(interface.questions.empty());
    CWeb* web = nullptr;
    EXPECT_FALSE(manager.CheckDuplicateWebName(&web));
    EXPECT_EQ(web, manager.GetWebObjectOriginal(2));
    EXPECT_FALSE(manager.CheckDuplicateWebName(nullptr));
}

TEST_F(DuplicateWebNames, ManyWebsAreCheckedInOnePass)
{
    for (int id = 1; id <= 50000; ++id) {
        auto* const web = new CWeb(static_cast<unsigned long>(id), 0);
        web->WriteSubAttribute(L"webname", obmgr::FormatMessageText(L"web %1", id % 40000));
        ASSERT_TRUE(manager.GetWebDb().Add(id, web));
    }
    CWeb* web = nullptr;
    EXPECT_FALSE(manager.CheckDuplicateWebName(&web));
    EXPECT_EQ(web->GetObjectId(), 40001u); // the first web, "web 1", and the later one of its name
}

TEST_F(DuplicateWebNames, TheDialogCarriesItsNumberAndNameAndTheApplicationsKey)
{
    CDuplicateWebDlg dialog;
    dialog.SetAppRootKey(L"app");
    dialog.SetName(L"a");
    interface.answers = {std::nullopt, CString(L"b")};
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(dialog.GetName(), L"a");
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetName(), L"b");
    EXPECT_EQ(dialog.GetDialogId(), 1000u);
    EXPECT_EQ(dialog.GetDialogName(), L"CDuplicateWebDlg");
    EXPECT_EQ(dialog.GetAppRootKey(), L"app");
}
