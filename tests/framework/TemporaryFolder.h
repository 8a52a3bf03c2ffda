// A folder for a test's files, removed with all that is in it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "framework/FileName.h"

class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string path = (std::filesystem::temp_directory_path() / "rivelta-test-XXXXXX").string();
        if (!::mkdtemp(path.data())) throw std::runtime_error("no folder for temporary files");
        m_path = path;
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return m_path; }
    std::filesystem::path Native(const std::string& name) const { return m_path / name; }
    CString Wide(const std::string& name) const { return obmgr::PathFromNative(Native(name).string()); }

    std::string Bytes(const std::string& name) const
    {
        std::ifstream file(Native(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void Put(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(Native(name), std::ios::binary) << bytes;
    }
    std::size_t Count() const
    {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(m_path), {}));
    }

private:
    std::filesystem::path m_path;
};
