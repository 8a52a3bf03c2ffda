#include "control/TerminalInterface.h"

#include <algorithm>
#include <cerrno>
#include <string>

#include <sys/ioctl.h>
#include <unistd.h>

namespace obmgr {

namespace {

constexpr int kMostTries = 5;
constexpr std::size_t kLongestAnswer = 1024;
constexpr auto kDrawInterval = std::chrono::milliseconds(100);
constexpr int kBarWidth = 24;
constexpr int kPercentWidth = 6; // "] 100%"
constexpr int kLeastTitle = 8;

bool isControl(wchar_t c)
{
    return (c >= 0 && c < 0x20) || (c >= 0x7F && c < 0xA0);
}

// Texts may come from any file: what could steer the terminal is left out.
void print(std::FILE* stream, const CString& text)
{
    std::wstring shown(text.View());
    std::erase_if(shown, [](wchar_t c) { return isControl(c) && c != L'\n' && c != L'\r' && c != L'\t'; });
    const std::string bytes = ToUtf8(shown);
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
}

// Columns that a character takes on a terminal: two for the wide letters of East Asia, none for control characters.
int columnsOf(wchar_t c)
{
    if (isControl(c)) return 0;
    const bool isWide = (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0xA4CF) || (c >= 0xAC00 && c <= 0xD7A3) ||
                        (c >= 0xF900 && c <= 0xFAFF) || (c >= 0xFE30 && c <= 0xFE6F) || (c >= 0xFF00 && c <= 0xFF60) ||
                        (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x1F300 && c <= 0x1FAFF) ||
                        (c >= 0x20000 && c <= 0x3FFFD);
    return isWide ? 2 : 1;
}

// The text in exactly `columns` columns: cut or filled with blanks. Line ends are left out, too.
CString fitted(const CString& text, int columns)
{
    CString result;
    for (const wchar_t c : text.View()) {
        const int needed = columnsOf(c);
        if (needed == 0) continue;
        if (needed > columns) break;
        result += c;
        columns -= needed;
    }
    return result + CString(L' ', columns);
}

int terminalWidth(int descriptor)
{
    winsize size = {};
    return ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

// A line without its end; none at the end of the input. What is longer than any name is read and dropped.
std::optional<CString> readLine(std::FILE* input)
{
    std::string bytes;
    int byte = 0;
    while ((byte = std::fgetc(input)) != EOF && byte != '\n')
        if (bytes.size() < kLongestAnswer) bytes += static_cast<char>(static_cast<unsigned char>(byte));
    if (byte == EOF && bytes.empty()) return std::nullopt;
    return FromUtf8(bytes);
}

} // namespace

std::unique_ptr<ProgressView> TerminalInterface::OpenProgress()
{
    std::FILE* const stream = ::isatty(STDERR_FILENO) ? stderr : nullptr;
    return std::make_unique<TerminalProgress>(stream, stream ? terminalWidth(STDERR_FILENO) : 0);
}

int TerminalInterface::ShowMessage(const CString& text, unsigned type)
{
    print(stderr, text + L"\n");
    return (type & 0x0F) == MB_YESNO ? IDYES : IDOK;
}

std::optional<CString> TerminalInterface::AskNewName(const NameQuestion& question)
{
    if (::isatty(STDIN_FILENO) && ::isatty(STDERR_FILENO)) {
        struct Close {
            void operator()(std::FILE* file) const { std::fclose(file); }
        };
        const std::unique_ptr<std::FILE, Close> terminal(std::fopen("/dev/tty", "re"));
        if (terminal) return AskNewNameOn(terminal.get(), stderr, question);
    }
    return FirstFreeName(question.currentName, question.isTaken);
}

CString AskNewNameOn(std::FILE* input, std::FILE* output, const NameQuestion& question)
{
    print(output, question.title + L"\n" + question.explanation + L"\n");
    for (int attempt = 0; attempt < kMostTries; ++attempt) {
        print(output, question.prompt + L" [" + question.currentName + L"] ");
        std::fflush(output);
        auto answer = readLine(input);
        if (!answer || IsCancelRequested()) break;
        answer->Trim();
        if (!answer->IsEmpty() && !(question.isTaken && question.isTaken(*answer))) return *answer;
    }
    return FirstFreeName(question.currentName, question.isTaken);
}

TerminalProgress::TerminalProgress(std::FILE* stream, int width, Clock clock)
    : m_stream(stream), m_width(width), m_clock(std::move(clock))
{
}

TerminalProgress::~TerminalProgress()
{
    if (!m_hasDrawn) return;
    // The line is given back as it was.
    print(m_stream, CString(L"\r") + CString(L' ', m_width - 1) + L"\r");
    std::fflush(m_stream);
}

void TerminalProgress::SetTitle(const CString& title)
{
    m_title = title;
    m_shownPercent = -1;
    m_nextLook = 0;
}

void TerminalProgress::SetRange(int lower, int upper)
{
    m_lower = lower;
    m_upper = std::max(lower, upper);
    m_shownPercent = -1;
    m_nextLook = 0;
}

void TerminalProgress::SetPos(int position)
{
    m_position = std::clamp(position, m_lower, m_upper);
    // A position back to the start (the next stage of an operation) is looked at, too.
    if (m_position == m_lower) m_nextLook = 0;
    if (!m_stream || m_position < m_nextLook) return;
    // The clock is asked a thousand times in a run at most, and the line redrawn ten times a second.
    const long long range = static_cast<long long>(m_upper) - m_lower;
    m_nextLook = m_position + range / 1000 + 1;
    const int percent =
        range == 0 ? 100 : static_cast<int>((static_cast<long long>(m_position) - m_lower) * 100 / range);
    if (percent == m_shownPercent) return;
    const auto now = m_clock();
    if (m_hasDrawn && now - m_lastDraw < kDrawInterval) return;
    m_lastDraw = now;
    m_shownPercent = percent;
    Draw();
}

void TerminalProgress::Draw()
{
    const int titleWidth = m_width - 1 - kBarWidth - kPercentWidth - 2;
    if (titleWidth < kLeastTitle) return;
    const int filled = m_shownPercent * kBarWidth / 100;
    CString line;
    line.Format(L"\r%s [%s%s] %3d%%", fitted(m_title, titleWidth), CString(L'#', filled),
                CString(L'.', kBarWidth - filled), m_shownPercent);
    print(m_stream, line);
    std::fflush(m_stream);
    m_hasDrawn = true;
}

} // namespace obmgr
