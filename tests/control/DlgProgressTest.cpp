#include "control/DlgProgress.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "control/ResizeDialog.h"

namespace {

// Writes down what is asked of it; cancels when position `cancelAt` is reached.
class Recorder : public obmgr::UserInterface {
public:
    Recorder() { obmgr::InstallUserInterface(this); }
    ~Recorder() override { obmgr::InstallUserInterface(nullptr); }

    std::unique_ptr<obmgr::ProgressView> OpenProgress() override
    {
        Note(L"open");
        return m_shows ? std::make_unique<View>(*this) : nullptr;
    }
    int ShowMessage(const CString& text, unsigned type) override
    {
        CString call;
        call.Format(L"message %s %u", text, type);
        Note(call);
        return IDNO;
    }
    std::optional<CString> AskNewName(const obmgr::NameQuestion&) override { return std::nullopt; }

    void Note(const CString& call) { m_calls.push_back(call); }

    std::vector<CString> m_calls;
    bool m_shows = true;
    int m_cancelAt = -1;

private:
    class View : public obmgr::ProgressView {
    public:
        explicit View(Recorder& recorder) : m_recorder(recorder) {}
        ~View() override { m_recorder.Note(L"close"); }
        void SetTitle(const CString& title) override { m_recorder.Note(L"title " + title); }
        void SetRange(int lower, int upper) override
        {
            CString call;
            call.Format(L"range %d %d", lower, upper);
            m_recorder.Note(call);
        }
        void SetPos(int position) override
        {
            CString call;
            call.Format(L"pos %d", position);
            m_recorder.Note(call);
            m_position = position;
        }
        void Pump() override { m_recorder.Note(L"pump"); }
        bool IsContinue() override { return m_position != m_recorder.m_cancelAt; }

    private:
        Recorder& m_recorder;
        int m_position = 0;
    };
};

} // namespace

TEST(DlgProgress, PassesEverythingToTheInstalledInterface)
{
    Recorder recorder;
    {
        CDlgProgress progress(nullptr);
        EXPECT_TRUE(progress.Create());
        progress.SetRange(0, 3);
        progress.SetTitle(L"a");
        progress.SetWindowTitle(L"b");
        progress.SetWindowText(L"c");
        progress.SetPos(1);
        progress.PeekAndPump(1);
        EXPECT_TRUE(progress.IsContinue());
    }
    const std::vector<CString> wanted{L"open",    L"range 0 3", L"title a", L"title b",
                                      L"title c", L"pos 1",     L"pump",    L"close"};
    EXPECT_EQ(recorder.m_calls, wanted);
}

TEST(DlgProgress, OpensOnceWithOrWithoutCreate)
{
    Recorder recorder;
    {
        CDlgProgress progress;
        progress.SetPos(1);
        progress.Create();
        progress.SetPos(2);
    }
    const std::vector<CString> wanted{L"open", L"pos 1", L"pos 2", L"close"};
    EXPECT_EQ(recorder.m_calls, wanted);
}

TEST(DlgProgress, DialogThatIsNeverUsedOpensNothing)
{
    Recorder recorder;
    {
        CDlgProgress progress;
    }
    EXPECT_TRUE(recorder.m_calls.empty());
}

TEST(DlgProgress, CancelsAtTheUnitThatTheViewSays)
{
    for (const int cancelAt : {0, 1, 7}) {
        Recorder recorder;
        recorder.m_cancelAt = cancelAt;
        CDlgProgress progress;
        int position = 0;
        for (; position < 10; ++position) {
            progress.SetPos(position);
            progress.PeekAndPump(1);
            if (!progress.IsContinue()) break;
        }
        EXPECT_EQ(position, cancelAt);
    }
}

TEST(DlgProgress, InterfaceThatShowsNothingIsCancelledByTheFlag)
{
    Recorder recorder;
    recorder.m_shows = false;
    obmgr::ResetCancel();
    CDlgProgress progress;
    progress.SetRange(0, 1);
    progress.SetPos(1);
    progress.SetTitle(L"t");
    progress.PeekAndPump(1);
    EXPECT_TRUE(progress.IsContinue());
    obmgr::RequestCancel();
    EXPECT_FALSE(progress.IsContinue());
    obmgr::ResetCancel();
}

TEST(DlgProgress, MessageBoxAnswersWhatTheInterfaceAnswers)
{
    Recorder recorder;
    EXPECT_EQ(AfxMessageBox(L"Really?", MB_YESNO), IDNO);
    EXPECT_EQ(AfxMessageBox(L"So."), IDNO);
    const std::vector<CString> wanted{L"message Really? 4", L"message So. 0"};
    EXPECT_EQ(recorder.m_calls, wanted);
}

TEST(DlgProgress, ResizeDialogKeepsItsNamesAndAgrees)
{
    CResizeDialog dialog(100);
    dialog.SetAppRootKey(L"Software\\Suite");
    dialog.SetDialogName(L"Duplicate");
    EXPECT_EQ(dialog.GetDialogId(), 100U);
    EXPECT_EQ(dialog.GetAppRootKey(), L"Software\\Suite");
    EXPECT_EQ(dialog.GetDialogName(), L"Duplicate");
    EXPECT_EQ(dialog.DoModal(), IDOK);
}
