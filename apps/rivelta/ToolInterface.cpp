#include "ToolInterface.h"

#include "Output.h"

#include <csignal>
#include <utility>

namespace obmgr::tool {

namespace {

extern "C" void requestCancel(int)
{
    RequestCancel();
}

} // namespace

ToolInterface::ToolInterface(bool showsBar, std::function<void()> beforeNaming)
    : m_showsBar(showsBar), m_before(InstallUserInterface(this)), m_beforeNaming(std::move(beforeNaming))
{
}

ToolInterface::~ToolInterface()
{
    InstallUserInterface(m_before);
}

std::unique_ptr<ProgressView> ToolInterface::OpenProgress()
{
    // The silent view cancels as the bar does.
    return m_showsBar ? TerminalInterface::OpenProgress() : std::make_unique<TerminalProgress>(nullptr, 0);
}

int ToolInterface::ShowMessage(const CString& text, unsigned type)
{
    Complain(ToUtf8(text.View()));
    return (type & 0x0F) == MB_YESNO ? IDYES : IDOK;
}

std::optional<CString> ToolInterface::AskNewName(const NameQuestion& question)
{
    if (m_beforeNaming) m_beforeNaming();
    return FirstFreeName(question.currentName, question.isTaken);
}

void InstallSignalHandlers()
{
    struct sigaction action = {};
    action.sa_handler = requestCancel;
    action.sa_flags = static_cast<int>(SA_RESETHAND); // not SA_RESTART: a read that waits must end
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        // A program started with the signal ignored (nohup, a job in the background) leaves it so.
        struct sigaction before = {};
        if (::sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_IGN) continue;
        ::sigaction(signal, &action, nullptr);
    }
    action.sa_handler = SIG_IGN;
    ::sigaction(SIGPIPE, &action, nullptr);
}

} // namespace obmgr::tool
