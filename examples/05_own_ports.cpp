// Puts an application's own progress, messages and questions in place of the terminal's.
//
//   05_own_ports [FILE]
//
// Read 01_open_and_walk.cpp first. The lessons are
//   - the library shows progress, messages and the question for a new name through one installed interface;
//   - the interface is installed for the whole process and stays the caller's: put the old one back before it goes;
//   - a read into a design that has a web of that name asks for another name, once for each such web;
//   - a progress display that says "do not continue" ends the read; what was read until then stays, and the text says
//     what happened.

#include "control/UserInterface.h"
#include "store/ObjectManager.h"

#include <iostream>

namespace {

// Counts what it is told. A window would draw it.
class CountingProgress : public obmgr::ProgressView {
public:
    CountingProgress(int& calls, bool cancels) : m_calls(calls), m_cancels(cancels) {}

    void SetTitle(const CString& title) override { std::cout << "progress: " << title << '\n'; }
    void SetRange(int, int) override {}
    void SetPos(int) override { ++m_calls; }
    void Pump() override {}
    bool IsContinue() override { return !m_cancels; }

private:
    int& m_calls;
    bool m_cancels;
};

class OfficeInterface : public obmgr::UserInterface {
public:
    OfficeInterface() : m_before(obmgr::InstallUserInterface(this)) {}
    ~OfficeInterface() override { obmgr::InstallUserInterface(m_before); }
    OfficeInterface(const OfficeInterface&) = delete;
    OfficeInterface& operator=(const OfficeInterface&) = delete;

    std::unique_ptr<obmgr::ProgressView> OpenProgress() override
    {
        return std::make_unique<CountingProgress>(progressCalls, cancels);
    }
    int ShowMessage(const CString& text, unsigned type) override
    {
        std::cout << "message: " << text << '\n';
        return type == MB_YESNO ? IDYES : IDOK;
    }
    // Must in the end give a name that is not taken: the question comes back for as long as it does not.
    std::optional<CString> AskNewName(const obmgr::NameQuestion& question) override
    {
        const CString name = obmgr::FirstFreeName(question.currentName + L" 控", question.isTaken);
        std::cout << "question: " << question.currentName << " is taken; answered " << name << '\n';
        return name;
    }

    int progressCalls = 0;
    bool cancels = false;

private:
    obmgr::UserInterface* m_before;
};

} // namespace

int main(int argc, char** argv)
{
    OfficeInterface office;
    CObjectManager design;
    CString error;
    const CString path = obmgr::FromUtf8(argc > 1 ? argv[1] : "samples/mizuho.xml");
    if (!design.CreatePipeObjectFromFile(path, error, false)) return std::cerr << error << '\n', 1;
    std::cout << "read with " << office.progressCalls << " steps of progress\n";

    // The same file once more: all its webs have names that are taken.
    if (!design.CreatePipeObjectFromFile(path, error, true)) return std::cerr << error << '\n', 1;
    for (const CWeb* web : design.GetWebDb())
        std::cout << "web " << web->GetObjectId() << ": " << web->GetSubAttribute(L"webname") << '\n';

    office.cancels = true;
    CObjectManager other;
    if (other.CreatePipeObjectFromFile(path, error, false))
        std::cout << "too short a file to be asked whether to go on\n";
    else
        std::cout << "cancelled with " << other.GetAllDataCount() << " records read: " << error << '\n';
    std::cout
        << "What was learnt: one interface takes progress, messages and questions; install it, and put it back.\n";
}
