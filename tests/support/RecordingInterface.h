// A user interface that notes what is shown, answers as told, and can cancel or run code at any step of progress.
#pragma once

#include <deque>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include "control/UserInterface.h"

namespace support {

// Installed while it lives.
class RecordingInterface : public obmgr::UserInterface {
public:
    RecordingInterface() : m_before(obmgr::InstallUserInterface(this)) {}
    ~RecordingInterface() override { obmgr::InstallUserInterface(m_before); }
    RecordingInterface(const RecordingInterface&) = delete;
    RecordingInterface& operator=(const RecordingInterface&) = delete;

    // ---- what to do ----
    int cancelAt = std::numeric_limits<int>::max(); // IsContinue is false from this call on, counted from 1
    std::function<void()> onPump;
    std::deque<std::optional<CString>> answers;                                   // to AskNewName, in turn
    std::function<std::optional<CString>(const obmgr::NameQuestion&)> onQuestion; // when there are no more answers

    // ---- what happened ----
    int opened = 0;
    int open = 0; // displays that exist now
    int pumps = 0;
    int asked = 0; // calls of IsContinue
    std::vector<CString> titles;
    std::vector<std::pair<int, int>> ranges;
    std::vector<int> positions;
    std::vector<CString> messages;
    std::vector<obmgr::NameQuestion> questions;

    std::unique_ptr<obmgr::ProgressView> OpenProgress() override { return std::make_unique<View>(*this); }
    int ShowMessage(const CString& text, unsigned) override
    {
        messages.push_back(text);
        return IDOK;
    }
    std::optional<CString> AskNewName(const obmgr::NameQuestion& question) override
    {
        questions.push_back(question);
        if (!answers.empty()) {
            auto answer = answers.front();
            answers.pop_front();
            return answer;
        }
        return onQuestion ? onQuestion(question) : std::nullopt;
    }

private:
    struct View : obmgr::ProgressView {
        explicit View(RecordingInterface& shown) : owner(shown)
        {
            ++owner.opened;
            ++owner.open;
        }
        ~View() override { --owner.open; }
        void SetTitle(const CString& title) override { owner.titles.push_back(title); }
        void SetRange(int lower, int upper) override { owner.ranges.emplace_back(lower, upper); }
        void SetPos(int position) override { owner.positions.push_back(position); }
        void Pump() override
        {
            ++owner.pumps;
            if (owner.onPump) owner.onPump();
        }
        bool IsContinue() override { return ++owner.asked < owner.cancelAt; }

        RecordingInterface& owner;
    };

    obmgr::UserInterface* m_before;
};

} // namespace support
