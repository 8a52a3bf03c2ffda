#include "TemporaryFile.h"

#include "Output.h"
#include "control/UserInterface.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

namespace obmgr::tool {

Descriptor::~Descriptor()
{
    Reset(-1);
}

void Descriptor::Reset(int descriptor)
{
    if (m_descriptor >= 0) ::close(m_descriptor);
    m_descriptor = descriptor;
}

TemporaryFile::~TemporaryFile()
{
    if (!m_path.empty()) ::unlink(m_path.c_str());
}

int TemporaryFile::Create(const std::string& folder)
{
    std::string path = (std::filesystem::absolute(folder) / "rivelta-XXXXXX").string();
    m_descriptor.Reset(::mkostemp(path.data(), O_CLOEXEC));
    if (m_descriptor.Get() < 0) return errno;
    m_path = path;
    return 0;
}

int CopyAll(int from, int to)
{
    constexpr std::size_t kBlock = 256 * 1024;
    const auto block = std::make_unique<char[]>(kBlock);
    for (;;) {
        if (IsCancelRequested()) return EINTR;
        const ssize_t count = ::read(from, block.get(), kBlock);
        if (count == 0) return 0;
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno;
        if (const int error = WriteAll(to, {block.get(), static_cast<std::size_t>(count)})) return error;
    }
}

} // namespace obmgr::tool
