#include "framework/AtomicFile.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "framework/CurrentDirectory.h"
#include "framework/FileName.h"

namespace obmgr {

namespace {

constexpr int kMostLinks = 40; // as many as the system itself follows
constexpr int kMostNames = 100;

CString failureText(const wchar_t* what, const std::string& path, int osError)
{
    return FormatMessageText(L"%1 %2: %3.", what, PathFromNative(path),
                             FromUtf8(std::generic_category().message(osError)));
}

std::string folderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

std::string joined(const std::string& folder, const std::string& name)
{
    return folder == "/" ? folder + name : folder + "/" + name;
}

// Follows the symbolic links of the last part of the path. 0 or errno.
int resolveLinks(std::string& path)
{
    for (int followed = 0; followed <= kMostLinks; ++followed) {
        struct stat info = {};
        if (::lstat(path.c_str(), &info) != 0) return errno == ENOENT ? 0 : errno;
        if (!S_ISLNK(info.st_mode)) return 0;
        std::string link(static_cast<std::size_t>(info.st_size > 0 ? info.st_size : 4096) + 1, '\0');
        const ssize_t length = ::readlink(path.c_str(), link.data(), link.size());
        if (length < 0) return errno;
        link.resize(static_cast<std::size_t>(length));
        path = link.starts_with('/') ? link : joined(folderOf(path), link);
    }
    return ELOOP;
}

// A name that no other process or object takes: short, since the target's own may be as long as names can be.
std::string tempName()
{
    static thread_local std::mt19937_64 random{std::random_device{}()};
    char name[64];
    std::snprintf(name, sizeof name, ".rivelta-%ld-%016llx.tmp", static_cast<long>(::getpid()),
                  static_cast<unsigned long long>(random()));
    return name;
}

const wchar_t* refusalOf(const struct stat& info)
{
    if (S_ISREG(info.st_mode)) return nullptr;
    if (S_ISDIR(info.st_mode)) return L"%1 is a folder, not a file.";
    return L"%1 is a device or pipe and cannot be replaced.";
}

} // namespace

AtomicFile::AtomicFile() = default;

AtomicFile::~AtomicFile()
{
    Discard();
}

int AtomicFile::Sync(int descriptor)
{
    return ::fsync(descriptor);
}

bool AtomicFile::Create(const CString& target, CString& error)
{
    Discard();
    if (target.IsEmpty()) {
        error = L"There is no file name.";
        return false;
    }
    m_target = NativePath(AbsolutePath(target));
    if (const int failure = resolveLinks(m_target); failure != 0) {
        error = failureText(L"Cannot write", m_target, failure);
        return false;
    }
    if (m_target.ends_with('/')) {
        error = FormatMessageText(L"%1 is a folder, not a file.", target);
        return false;
    }

    struct stat info = {};
    const bool exists = ::stat(m_target.c_str(), &info) == 0;
    if (!exists && errno != ENOENT) {
        error = failureText(L"Cannot write", m_target, errno);
        return false;
    }
    if (exists) {
        if (const wchar_t* const refusal = refusalOf(info)) {
            error = FormatMessageText(refusal, target);
            return false;
        }
        if (::faccessat(AT_FDCWD, m_target.c_str(), W_OK, AT_EACCESS) != 0) {
            error = failureText(L"Cannot write", m_target, errno);
            return false;
        }
    }

    // For a new file the system itself works out what the umask leaves; the file is empty as long as others see it.
    const mode_t firstMode = exists ? 0600 : 0666;
    for (int attempt = 0; m_descriptor < 0 && attempt < kMostNames; ++attempt) {
        m_temp = joined(folderOf(m_target), tempName());
        m_descriptor = ::open(m_temp.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, firstMode);
        if (m_descriptor < 0 && errno != EEXIST && errno != EINTR) break;
    }
    if (m_descriptor < 0) {
        error = failureText(L"Cannot write into the folder", folderOf(m_target), errno);
        m_temp.clear();
        return false;
    }
    struct stat made = {};
    if (::fstat(m_descriptor, &made) != 0 || ::fchmod(m_descriptor, 0600) != 0) {
        error = failureText(L"Cannot write", m_temp, errno);
        Discard();
        return false;
    }
    m_mode = (exists ? info.st_mode : made.st_mode) & 07777;
    m_owner = exists && info.st_uid != made.st_uid ? static_cast<long>(info.st_uid) : -1;
    m_group = exists && info.st_gid != made.st_gid ? static_cast<long>(info.st_gid) : -1;
    return true;
}

CString AtomicFile::TempPath() const
{
    return PathFromNative(m_temp);
}

bool AtomicFile::TakeOverRights(CString& error)
{
    const auto unchanged = static_cast<uid_t>(-1);
    if (m_group >= 0 && ::fchown(m_descriptor, unchanged, static_cast<gid_t>(m_group)) != 0) {
        // Another group than the old one must not see more than anybody does; marks of the group go, too.
        m_mode = (m_mode & ~02070U) | ((m_mode & 07U) << 3);
    }
    if (m_owner >= 0 && ::fchown(m_descriptor, static_cast<uid_t>(m_owner), unchanged) != 0) m_mode &= ~04000U;
    if (::fchmod(m_descriptor, m_mode) == 0) return true;
    error = failureText(L"Cannot set the rights of", m_temp, errno);
    return false;
}

bool AtomicFile::Commit(CString& error)
{
    if (m_descriptor < 0) {
        error = L"There is nothing to put in place.";
        return false;
    }
    bool committed = TakeOverRights(error);
    if (committed && Sync(m_descriptor) != 0) {
        error = failureText(L"Cannot flush to disk", m_temp, errno);
        committed = false;
    }
    if (committed && ::rename(m_temp.c_str(), m_target.c_str()) != 0) {
        error = failureText(L"Cannot replace", m_target, errno);
        committed = false;
    }
    if (!committed) {
        Discard();
        return false;
    }
    m_temp.clear();
    Discard();

    const int folder = ::open(folderOf(m_target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) return true; // a folder that may be written and not read cannot be flushed
    const int failure = Sync(folder) == 0 ? 0 : errno;
    ::close(folder);
    if (failure == 0 || failure == EINVAL || failure == ENOTSUP) return true; // some file systems have no such thing
    error = failureText(L"The file was replaced, but its folder could not be flushed to disk:", m_target, failure);
    return false;
}

void AtomicFile::Discard() noexcept
{
    if (m_descriptor >= 0) ::close(std::exchange(m_descriptor, -1));
    if (!m_temp.empty()) ::unlink(m_temp.c_str());
    m_temp.clear();
}

} // namespace obmgr
