// A user interface that notes the calls of a progress dialog in their order.
#pragma once

#include "control/UserInterface.h"
#include "resources/ResourceOverride.h"

#include <functional>
#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace integrity {

// Installed while it lives.
class ProgressLog : public obmgr::UserInterface {
public:
    struct Event {
        enum Kind { Open, Title, Range, Position, Pump, Question, Close } kind;
        int number = 0; // a position, or the upper end of a range from 0
        std::wstring text;

        bool operator==(const Event&) const = default;
    };

    ProgressLog() : m_before(obmgr::InstallUserInterface(this)) {}
    ~ProgressLog() override { obmgr::InstallUserInterface(m_before); }
    ProgressLog(const ProgressLog&) = delete;
    ProgressLog& operator=(const ProgressLog&) = delete;

    int cancelAt = std::numeric_limits<int>::max(); // IsContinue is false from this call on, counted from 1
    std::function<void()> onPump;

    std::vector<Event> events;
    int questions = 0;
    obmgr::ResourceHandle textsInUse = nullptr; // while the dialog was shown

    // What was noted, without the questions: "open range 0..4 [caption] 0 20 pump close".
    std::string Calls() const
    {
        std::string calls;
        for (const Event& event : events) {
            if (event.kind == Event::Question) continue;
            if (!calls.empty()) calls += ' ';
            switch (event.kind) {
            case Event::Open: calls += "open"; break;
            case Event::Title: calls += '[' + obmgr::ToUtf8(event.text) + ']'; break;
            case Event::Range: calls += "0.." + std::to_string(event.number); break;
            case Event::Position: calls += std::to_string(event.number); break;
            case Event::Pump: calls += "pump"; break;
            default: calls += "close"; break;
            }
        }
        return calls;
    }

    std::unique_ptr<obmgr::ProgressView> OpenProgress() override { return std::make_unique<View>(*this); }
    int ShowMessage(const CString&, unsigned) override { return IDOK; }
    std::optional<CString> AskNewName(const obmgr::NameQuestion&) override { return std::nullopt; }

private:
    struct View : obmgr::ProgressView {
        explicit View(ProgressLog& log) : m_log(log)
        {
            m_log.events.push_back({Event::Open, 0, {}});
            m_log.textsInUse = AfxGetResourceHandle();
        }
        ~View() override { m_log.events.push_back({Event::Close, 0, {}}); }
        void SetTitle(const CString& title) override
        {
            m_log.events.push_back({Event::Title, 0, std::wstring(title.View())});
        }
        void SetRange(int lower, int upper) override { m_log.events.push_back({Event::Range, upper - lower, {}}); }
        void SetPos(int position) override { m_log.events.push_back({Event::Position, position, {}}); }
        void Pump() override
        {
            m_log.events.push_back({Event::Pump, 0, {}});
            if (m_log.onPump) m_log.onPump();
        }
        bool IsContinue() override
        {
            m_log.events.push_back({Event::Question, 0, {}});
            return ++m_log.questions < m_log.cancelAt;
        }

        ProgressLog& m_log;
    };

    obmgr::UserInterface* m_before;
};

} // namespace integrity
