// Any bytes as a pipe data file: reading ends with a result and a text, what was read can be asked and written, and
// what was written can be read again.

#include "framework/CurrentDirectory.h"
#include "persistence/PipeDataFile.h"
#include "store/ObjectManager.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

// Where the files of this process stand, removed at its end.
class Folder {
public:
    Folder()
    {
        char name[] = "/tmp/rivelta_fuzz_XXXXXX";
        m_path = ::mkdtemp(name);
    }
    ~Folder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    std::string File(const char* name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};

const Folder& TheFolder()
{
    static const Folder folder;
    return folder;
}

CString PathOf(const char* name)
{
    const std::string path = TheFolder().File(name);
    return CString(std::wstring(path.begin(), path.end()).c_str());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // A failed read leaves the process in the file's folder; the fuzzer's own paths begin where it was started.
    const obmgr::CurrentDirectoryGuard before;
    {
        FILE* const file = std::fopen(TheFolder().File("in.xml").c_str(), "wb");
        if (!file) std::abort();
        std::fwrite(data, 1, size, file);
        std::fclose(file);
    }
    CObjectManager manager;
    CString error;
    const bool isRead = manager.CreatePipeObjectFromFile(PathOf("in.xml"), error, false);
    if (!isRead && error.IsEmpty()) std::abort();
    if (isRead) manager.CreatePipeObjectFromFile(PathOf("in.xml"), error, true);

    CStringArray details;
    CString problem;
    if (obmgr::SaveDesign(manager, PathOf("out.xml"), size % 2 ? 13 : 14, true, problem, details)) {
        CObjectManager again;
        // What the reader refuses although it is written is known by its tag.
        if (!again.CreatePipeObjectFromFile(PathOf("out.xml"), problem, false) && manager.GetIcpInqDb().IsEmpty())
            std::abort();
        if (again.GetAllDataCount() != manager.GetAllDataCount()) std::abort();
    } else if (problem.IsEmpty()) {
        std::abort();
    }
    return 0;
}
