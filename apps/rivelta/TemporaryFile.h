// Files that live as long as the program needs them.
#pragma once

#include <string>

namespace obmgr::tool {

// Closes a descriptor.
class Descriptor {
public:
    explicit Descriptor(int descriptor = -1) : m_descriptor(descriptor) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor();

    int Get() const { return m_descriptor; }
    void Reset(int descriptor);

private:
    int m_descriptor;
};

// A file that only its owner can read; removed at the end.
class TemporaryFile {
public:
    TemporaryFile() = default;
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    // 0, or the errno value.
    int Create(const std::string& folder);
    const std::string& Path() const { return m_path; }
    int Get() const { return m_descriptor.Get(); }

private:
    Descriptor m_descriptor;
    std::string m_path;
};

// From the one's place to the end of what it gives: 0, or the errno value. EINTR when a cancel was asked for.
int CopyAll(int from, int to);

} // namespace obmgr::tool
