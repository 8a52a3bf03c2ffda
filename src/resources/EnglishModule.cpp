// Finding and loading the module with the English texts.
#include "resources/StringTable.h"

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>

namespace obmgr {
namespace {

constexpr char kModuleName[] = "ORNObmgrENU.so";

// The folder of the file that holds this code: the shared library, or the program in a static build.
std::filesystem::path OwnFolder()
{
    std::error_code failed;
    Dl_info place{};
    if (dladdr(kModuleName, &place) != 0 && place.dli_fname != nullptr) {
        const std::filesystem::path file = std::filesystem::canonical(place.dli_fname, failed);
        if (!failed) return file.parent_path();
    }
    // A program found through the search path is known by its bare name only.
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failed);
    return failed ? std::filesystem::path() : program.parent_path();
}

std::filesystem::path ModuleFolder()
{
    const char* const chosen = std::getenv("RIVELTA_RESOURCE_DIR");
    return chosen != nullptr && *chosen != '\0' ? std::filesystem::path(chosen) : OwnFolder();
}

} // namespace

const StringTable* LoadEnglishStrings()
{
    // Without a folder the loader would search its own places for the bare name.
    const std::filesystem::path folder = ModuleFolder();
    if (folder.empty()) return nullptr;

    void* const module = dlopen((folder / kModuleName).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) return nullptr;
    const auto getTable = reinterpret_cast<GetStringTableFunction>(dlsym(module, kGetStringTableName));
    if (getTable == nullptr) return nullptr;
    const StringTable* const table = getTable(kStringTableVersion);
    return table != nullptr && table->version == kStringTableVersion ? table : nullptr;
}

} // namespace obmgr
