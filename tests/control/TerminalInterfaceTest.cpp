#include "control/TerminalInterface.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <functional>
#include <string>

#include <fcntl.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

using namespace std::chrono_literals;
using obmgr::NameQuestion;
using obmgr::TerminalProgress;

namespace {

// A stream in memory whose text can be asked for.
class Output {
public:
    Output() : m_stream(::open_memstream(&m_text, &m_size)) {}
    ~Output()
    {
        std::fclose(m_stream);
        std::free(m_text);
    }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    std::FILE* Stream() const { return m_stream; }
    std::string Text() const
    {
        std::fflush(m_stream);
        return {m_text, m_size};
    }

private:
    char* m_text = nullptr;
    std::size_t m_size = 0;
    std::FILE* m_stream;
};

// What is asked of a person who enters `input`.
struct Answer {
    CString name;
    std::string shown;
};

Answer ask(const std::string& input, const NameQuestion& question)
{
    std::string text = input;
    text += '\0'; // fmemopen takes no empty buffer
    std::FILE* const stream = ::fmemopen(text.data(), input.empty() ? 1 : input.size(), "r");
    if (input.empty()) std::fgetc(stream);
    const Output output;
    Answer answer;
    answer.name = obmgr::AskNewNameOn(stream, output.Stream(), question);
    answer.shown = output.Text();
    std::fclose(stream);
    return answer;
}

NameQuestion questionOf(const wchar_t* current)
{
    return {L"Duplicate", L"The name is taken.",
            L"New name",  L"OK",
            current,      [](const CString& name) { return name == L"web" || name == L"web(2)"; }};
}

// A clock that is moved by hand and counts how often it is asked.
struct HandClock {
    std::chrono::steady_clock::time_point now{1h};
    int asked = 0;
    TerminalProgress::Clock Port()
    {
        return [this] {
            ++asked;
            return now;
        };
    }
};

std::size_t countOf(const std::string& text, char c)
{
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), c));
}

// Runs `action` in a child without a terminal at standard input and error; true when the child says so.
bool withoutTerminal(const std::function<bool()>& action)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::setsid();
        const int null = ::open("/dev/null", O_RDWR);
        ::dup2(null, STDIN_FILENO);
        ::dup2(null, STDERR_FILENO);
        ::alarm(60); // waiting for an answer would end here
        ::_exit(action() ? 0 : 1);
    }
    int status = -1;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// Runs `action` in a child that has a terminal of its own, into which `input` is typed. What the terminal showed; the
// child's exit code is added as "exit N".
std::string onTerminal(const std::string& input, const std::function<int()>& action)
{
    int terminal = -1;
    winsize size = {};
    size.ws_row = 25;
    size.ws_col = 60;
    const pid_t child = ::forkpty(&terminal, nullptr, nullptr, &size);
    if (child == 0) {
        ::alarm(60);
        ::_exit(action());
    }
    EXPECT_EQ(::write(terminal, input.data(), input.size()), static_cast<ssize_t>(input.size()));
    std::string shown;
    char buffer[256];
    for (ssize_t count = 0; (count = ::read(terminal, buffer, sizeof buffer)) > 0;)
        shown.append(buffer, static_cast<std::size_t>(count));
    int status = -1;
    ::waitpid(child, &status, 0);
    ::close(terminal);
    return shown + "exit " + std::to_string(WIFEXITED(status) ? WEXITSTATUS(status) : -1);
}

} // namespace

TEST(TerminalInterface, WithoutATerminalTheFirstFreeNameIsTheAnswer)
{
    EXPECT_TRUE(withoutTerminal([] {
        return obmgr::CurrentUserInterface().AskNewName(questionOf(L"web")) == CString(L"web(3)") &&
               obmgr::CurrentUserInterface().AskNewName(questionOf(L"other")) == CString(L"other");
    }));
}

TEST(TerminalInterface, OnATerminalThePersonIsAsked)
{
    const std::string shown = onTerminal("web\ngood\n", [] {
        return obmgr::CurrentUserInterface().AskNewName(questionOf(L"web")) == CString(L"good") ? 7 : 1;
    });
    EXPECT_NE(shown.find("New name [web]"), std::string::npos) << shown;
    EXPECT_NE(shown.find("exit 7"), std::string::npos) << shown;
}

TEST(TerminalInterface, OnATerminalProgressIsDrawn)
{
    const std::string shown = onTerminal("", [] {
        const auto view = obmgr::CurrentUserInterface().OpenProgress();
        view->SetTitle(L"Loading");
        view->SetRange(0, 4);
        view->SetPos(1);
        return 7;
    });
    EXPECT_NE(shown.find("\rLoading"), std::string::npos) << shown;
    EXPECT_NE(shown.find(" 25%"), std::string::npos) << shown;
    EXPECT_NE(shown.find("exit 7"), std::string::npos) << shown;
}

TEST(TerminalInterface, MessagesAreNotWaitedFor)
{
    EXPECT_TRUE(withoutTerminal([] {
        return obmgr::CurrentUserInterface().ShowMessage(L"text", MB_OK) == IDOK &&
               obmgr::CurrentUserInterface().ShowMessage(L"text", MB_OKCANCEL | MB_ICONSTOP) == IDOK &&
               obmgr::CurrentUserInterface().ShowMessage(L"text", MB_YESNO | MB_ICONEXCLAMATION) == IDYES;
    }));
}

TEST(TerminalInterface, MessagesGoToStandardError)
{
    testing::internal::CaptureStderr();
    obmgr::CurrentUserInterface().ShowMessage(L"管渠", MB_OK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "管渠\n");
}

TEST(TerminalInterface, ProgressIsSilentWithoutATerminal)
{
    testing::internal::CaptureStderr();
    {
        const auto view = obmgr::CurrentUserInterface().OpenProgress();
        view->SetTitle(L"title");
        view->SetRange(0, 100);
        for (int position = 0; position <= 100; ++position)
            view->SetPos(position);
        view->Pump();
        EXPECT_TRUE(view->IsContinue());
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(TerminalInterface, ProgressEndsWhenCancelIsRequested)
{
    const auto view = obmgr::CurrentUserInterface().OpenProgress();
    obmgr::ResetCancel();
    EXPECT_TRUE(view->IsContinue());
    obmgr::RequestCancel();
    EXPECT_FALSE(view->IsContinue());
    obmgr::ResetCancel();
    EXPECT_TRUE(view->IsContinue());
}

TEST(TerminalInterface, GoodAnswerIsTakenWithoutItsBlanks)
{
    const Answer answer = ask("  新しい網 \n", questionOf(L"web"));
    EXPECT_EQ(answer.name, L"新しい網");
    EXPECT_EQ(answer.shown, "Duplicate\nThe name is taken.\nNew name [web] ");
}

TEST(TerminalInterface, TakenAndEmptyAnswersAreAskedAgain)
{
    const Answer answer = ask("web\n\n  \nweb(2)\ngood", questionOf(L"web"));
    EXPECT_EQ(answer.name, L"good");
    EXPECT_EQ(countOf(answer.shown, '['), 5U);
}

TEST(TerminalInterface, NamesCannotSteerTheTerminal)
{
    testing::internal::CaptureStderr();
    obmgr::CurrentUserInterface().ShowMessage(L"a\x1B[2J\u009B2Jb\tc\nd", MB_OK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "a[2J2Jb\tc\nd\n");
}

TEST(TerminalInterface, TriesAreBounded)
{
    const Answer answer = ask("web\nweb\nweb\nweb\nweb\ngood\n", questionOf(L"web"));
    EXPECT_EQ(answer.name, L"web(3)");
    EXPECT_EQ(countOf(answer.shown, '['), 5U);
}

TEST(TerminalInterface, EndOfInputIsAnsweredWithAFreeName)
{
    EXPECT_EQ(ask("", questionOf(L"web")).name, L"web(3)");
    EXPECT_EQ(ask("web\n", questionOf(L"web")).name, L"web(3)");
}

TEST(TerminalInterface, EndlessLineIsCut)
{
    const CString name = ask(std::string(5'000'000, 'x') + "\n", questionOf(L"web")).name;
    EXPECT_EQ(name, CString(L'x', 1024));
}

TEST(TerminalProgress, DrawsTitleBarAndPercent)
{
    const Output output;
    HandClock clock;
    TerminalProgress progress(output.Stream(), 60, clock.Port());
    progress.SetTitle(L"Loading 管渠.xml ...");
    progress.SetRange(0, 200);
    progress.SetPos(100);
    const std::string title = "Loading 管渠.xml ...";
    EXPECT_EQ(output.Text(),
              "\r" + title + std::string(27 - 20, ' ') + " [" + std::string(12, '#') + std::string(12, '.') + "]  50%");
}

TEST(TerminalProgress, RedrawsTenTimesASecondAtMost)
{
    const Output output;
    HandClock clock;
    TerminalProgress progress(output.Stream(), 80, clock.Port());
    progress.SetRange(0, 1'000'000);
    for (int position = 0; position < 1'000'000; ++position) {
        if (position % 1000 == 0) clock.now += 1ms; // one second in all
        progress.SetPos(position);
    }
    EXPECT_GE(countOf(output.Text(), '\r'), 9U);
    EXPECT_LE(countOf(output.Text(), '\r'), 11U);
    EXPECT_LE(clock.asked, 1001) << "not at every position";
}

TEST(TerminalProgress, NextStageStartsAgain)
{
    const Output output;
    HandClock clock;
    TerminalProgress progress(output.Stream(), 80, clock.Port());
    progress.SetRange(0, 10);
    progress.SetPos(10);
    clock.now += 1s;
    progress.SetPos(0);
    clock.now += 1s;
    progress.SetRange(0, 4);
    progress.SetPos(1);
    const std::string text = output.Text();
    EXPECT_NE(text.find("100%"), std::string::npos);
    EXPECT_NE(text.find("  0%"), std::string::npos);
    EXPECT_NE(text.find(" 25%"), std::string::npos);
}

TEST(TerminalProgress, OddRangesAndPositionsAreHeld)
{
    const Output output;
    HandClock clock;
    TerminalProgress progress(output.Stream(), 80, clock.Port());
    const int ranges[][2] = {{0, 0}, {5, -5}, {INT_MIN, INT_MAX}, {-10, 10}};
    for (const auto& range : ranges) {
        progress.SetRange(range[0], range[1]);
        for (const int position : {INT_MIN, -1, 0, 1, INT_MAX}) {
            clock.now += 1s;
            progress.SetPos(position);
        }
    }
    EXPECT_EQ(output.Text().find("101%"), std::string::npos);
    EXPECT_EQ(output.Text().find('-'), std::string::npos);
}

TEST(TerminalProgress, LineIsGivenBackAtTheEnd)
{
    const Output output;
    HandClock clock;
    {
        TerminalProgress progress(output.Stream(), 60, clock.Port());
        progress.SetPos(50);
    }
    const std::string end = "\r" + std::string(59, ' ') + "\r";
    const std::string text = output.Text();
    ASSERT_GE(text.size(), end.size());
    EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

TEST(TerminalProgress, NothingIsDrawnWhereItWouldNotFit)
{
    const Output output;
    HandClock clock;
    {
        TerminalProgress progress(output.Stream(), 20, clock.Port());
        progress.SetPos(50);
    }
    EXPECT_EQ(output.Text(), "");
}

TEST(TerminalProgress, TitleCannotSteerTheTerminal)
{
    const Output output;
    HandClock clock;
    TerminalProgress progress(output.Stream(), 80, clock.Port());
    progress.SetTitle(L"a\x1B[2J\r\nb");
    progress.SetPos(50);
    EXPECT_EQ(output.Text().find('\x1B'), std::string::npos);
    EXPECT_EQ(output.Text().find("a[2Jb "), 1U);
}
