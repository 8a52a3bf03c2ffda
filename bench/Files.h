// Files of a benchmark: a folder that goes with the program, in memory where there is such a one, and saving to it.
#pragma once

#include "framework/File.h"
#include "persistence/PipeDataFile.h"
#include "store/ObjectManager.h"

#include <filesystem>
#include <string>
#include <unistd.h>

namespace bench {

// The files of this run, removed at its end.
class Folder {
public:
    static const Folder& Get()
    {
        static const Folder folder;
        return folder;
    }
    ~Folder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    std::filesystem::path File(const std::string& name) const { return m_path / name; }

private:
    Folder()
    {
        namespace fs = std::filesystem;
        const fs::path base = fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path();
        m_path = base / ("rivelta_bench_" + std::to_string(::getpid()));
        fs::create_directories(m_path);
    }

    std::filesystem::path m_path;
};

inline bool Save(CObjectManager& manager, const std::filesystem::path& path)
{
    constexpr int kDataver = 14;
    CStdioFile file;
    CString error;
    if (!obmgr::OpenForDataVersion(file, CString(path.wstring().c_str()), kDataver, nullptr)) return false;
    const bool done = manager.WritePipeObject(file, error, kDataver);
    file.Close();
    return done;
}

} // namespace bench
