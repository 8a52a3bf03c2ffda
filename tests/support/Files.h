// Folders and bytes on disk for tests.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

#include "framework/FileName.h"
#include "framework/String.h"

namespace support {

inline CString toPath(const std::filesystem::path& path)
{
    return obmgr::PathFromNative(path.native());
}

inline void writeBytes(const std::filesystem::path& path, std::string_view bytes)
{
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline std::string readBytes(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(file), {}};
}

// A folder that goes with the test, and everything in it.
class TempFolder {
public:
    TempFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "rivelta-test-XXXXXX").string();
        if (!::mkdtemp(name.data())) throw std::runtime_error("cannot make " + name);
        m_path = std::filesystem::canonical(name);
    }
    ~TempFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& Path() const { return m_path; }
    std::filesystem::path operator/(const std::filesystem::path& name) const { return m_path / name; }
    // Writes a file of the folder and gives its path.
    CString Write(const std::filesystem::path& name, std::string_view bytes) const
    {
        writeBytes(m_path / name, bytes);
        return toPath(m_path / name);
    }

private:
    std::filesystem::path m_path;
};

// UTF-16LE without a mark.
inline std::string utf16(std::u16string_view text)
{
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

} // namespace support
