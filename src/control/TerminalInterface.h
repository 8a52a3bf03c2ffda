// The user interface of a program without windows: a progress line, messages and questions on the terminal.
// Nothing is drawn or asked when there is no terminal.
#pragma once

#include <chrono>
#include <cstdio>

#include "control/UserInterface.h"

namespace obmgr {

struct RIVELTA_API TerminalInterface : UserInterface {
    // A bar on standard error if that is a terminal, else a silent view.
    std::unique_ptr<ProgressView> OpenProgress() override;
    // Prints to standard error. Nobody is waited for: the answer is the one that goes on (IDOK, IDYES).
    int ShowMessage(const CString& text, unsigned type) override;
    // Asks on the terminal when both standard input and standard error are one, a few times at most. Else, and when no
    // good answer comes, the answer is FirstFreeName: callers ask again for as long as they get none.
    std::optional<CString> AskNewName(const NameQuestion& question) override;
};

// A progress line on a stream. A null stream draws nothing; cancelling works all the same.
class RIVELTA_API TerminalProgress : public ProgressView {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    // `width` is the number of columns of the terminal.
    TerminalProgress(std::FILE* stream, int width, Clock clock = std::chrono::steady_clock::now);
    ~TerminalProgress() override;
    TerminalProgress(const TerminalProgress&) = delete;
    TerminalProgress& operator=(const TerminalProgress&) = delete;

    void SetTitle(const CString& title) override;
    void SetRange(int lower, int upper) override;
    void SetPos(int position) override;
    void Pump() override {}
    bool IsContinue() override { return !IsCancelRequested(); }

private:
    void Draw();

    std::FILE* m_stream;
    int m_width;
    Clock m_clock;
    CString m_title;
    int m_lower = 0;
    int m_upper = 100;
    int m_position = 0;
    int m_shownPercent = -1;
    long long m_nextLook = 0; // the position from which on a redraw is thought about
    std::chrono::steady_clock::time_point m_lastDraw{};
    bool m_hasDrawn = false;
};

// The question on any pair of streams: asks on `output` and reads lines from `input`.
RIVELTA_API CString AskNewNameOn(std::FILE* input, std::FILE* output, const NameQuestion& question);

} // namespace obmgr
