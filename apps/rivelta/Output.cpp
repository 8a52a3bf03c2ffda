#include "Output.h"

#include "DisplayText.h"
#include "control/UserInterface.h"

#include <cerrno>
#include <cstddef>
#include <system_error>

#include <unistd.h>

namespace obmgr::tool {

namespace {

constexpr std::size_t kBufferSize = 64 * 1024;
std::string g_buffer;

} // namespace

int WriteAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR || IsCancelRequested())
            return errno;
    }
    return 0;
}

void Print(std::string_view utf8)
{
    g_buffer += utf8;
    if (g_buffer.size() >= kBufferSize) FlushOutput();
}

void FlushOutput()
{
    const int error = WriteAll(STDOUT_FILENO, g_buffer);
    g_buffer.clear();
    if (error != 0) throw OutputFailure(error);
}

std::string JsonText(const Json& value, int indent)
{
    return value.dump(indent, ' ', false, Json::error_handler_t::replace);
}

void PrintJson(const Json& value)
{
    Print(JsonText(value, 2) + "\n");
}

void Complain(std::string_view message)
{
    std::string line = "rivelta: ";
    line += WithoutControls(message, KeepLineEnds::Yes);
    line += '\n';
    // When standard error fails there is nobody left to tell.
    static_cast<void>(WriteAll(STDERR_FILENO, line));
}

void Complain(std::string_view file, std::string_view message)
{
    Complain(std::string(file) + ": " + std::string(message));
}

std::string SystemMessage(int error)
{
    return std::generic_category().message(error);
}

} // namespace obmgr::tool
