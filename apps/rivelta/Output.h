// Standard output and standard error of the tool. A failed write of the results is never lost.
#pragma once

#include <exception>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace obmgr::tool {

using Json = nlohmann::ordered_json;

// Standard output took no more; `error` is the errno value.
class OutputFailure : public std::exception {
public:
    explicit OutputFailure(int error) : m_error(error) {}
    int Error() const { return m_error; }
    const char* what() const noexcept override { return "standard output failed"; }

private:
    int m_error;
};

// Buffered standard output. Both raise OutputFailure; what was not flushed before the program ends is dropped.
void Print(std::string_view utf8);
void FlushOutput();
// Writes all bytes to a descriptor: 0, or the errno value. A signal ends it with EINTR when a cancel was asked for.
int WriteAll(int descriptor, std::string_view bytes);

// The value as text, two blanks a level, and a line end; invalid UTF-8 is replaced.
void PrintJson(const Json& value);
std::string JsonText(const Json& value, int indent);

// A line for a person on standard error: "rivelta: ...".
void Complain(std::string_view message);
// "rivelta: FILE: ..."; control characters, which could steer a terminal, are shown as \x1b.
void Complain(std::string_view file, std::string_view message);

// The text of an errno value.
std::string SystemMessage(int error);

} // namespace obmgr::tool
