#include "Save.h"

#include "Output.h"
#include "TemporaryFile.h"
#include "Texts.h"
#include "control/UserInterface.h"
#include "persistence/PipeDataFile.h"

#include <cerrno>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace obmgr::tool {

namespace {

// Tells one copy of a file from the next.
struct Identity {
    explicit Identity(const std::string& path) : exists(::stat(path.c_str(), &status) == 0) {}

    bool IsSameAs(const Identity& other) const
    {
        return exists == other.exists &&
               (!exists || (status.st_ino == other.status.st_ino && status.st_dev == other.status.st_dev));
    }

    struct stat status = {};
    bool exists;
};

// A text of the library in which the file stands under the name that the person gave it.
std::string withName(std::string text, const std::string& path, const std::string& shownName)
{
    const std::size_t at = path == shownName ? std::string::npos : text.find(path);
    if (at != std::string::npos) text.replace(at, path.size(), shownName);
    return text;
}

bool saveToFile(CObjectManager& manager, const std::string& path, const std::string& shownName, int dataver)
{
    const Identity before(path);
    CString error;
    CStringArray details;
    if (SaveDesign(manager, FromUtf8(path), dataver, true, error, details)) return true;
    if (IsCancelRequested()) {
        Complain(shownName, TextOf(Text::WriteCancelled));
        return false;
    }
    std::string message = Say(Text::CannotWrite, withName(ToUtf8(error.View()), path, shownName));
    for (const CString& detail : details)
        message += "\n  " + ToUtf8(detail.View());
    if (!details.IsEmpty()) message += std::string("\n") + TextOf(Text::AdviceRecordsNotWritten);
    if (before.exists && path == shownName && before.IsSameAs(Identity(path)))
        message += std::string("\n") + TextOf(Text::OldContentStays);
    Complain(shownName, message);
    return false;
}

// What takes bytes but cannot be replaced: a pipe, a terminal, a device.
bool isStream(const std::string& path)
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

bool complainOfWrite(const std::string& shownName, int error)
{
    if (IsCancelRequested())
        Complain(shownName, TextOf(Text::WriteCancelled));
    else if (error != EPIPE) // whoever read has gone on purpose
        Complain(shownName, Say(Text::CannotWrite, SystemMessage(error)));
    return false;
}

bool saveToStream(CObjectManager& manager, const std::string& path, const std::string& shownName, int dataver)
{
    TemporaryFile copy;
    if (const int error = copy.Create(std::filesystem::temp_directory_path().string()))
        return complainOfWrite(shownName, error);
    if (!saveToFile(manager, copy.Path(), shownName, dataver)) return false;
    const Descriptor from(::open(copy.Path().c_str(), O_RDONLY | O_CLOEXEC));
    if (from.Get() < 0) return complainOfWrite(shownName, errno);
    const Descriptor to(path == "-" ? ::dup(STDOUT_FILENO) : ::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (to.Get() < 0) return complainOfWrite(shownName, errno);
    if (const int error = CopyAll(from.Get(), to.Get())) return complainOfWrite(shownName, error);
    return true;
}

// A save writes some records that no reading accepts.
void warnOfUnreadable(const CObjectManager& manager, const std::string& shownName)
{
    for (const RecordInfo& record : Records())
        if (const std::size_t count = manager.TableOf(record.type).Count(); count > 0)
            if (record.reader == Reader::Refuses) Complain(shownName, Say(Text::WarnUnreadable, count, record.tag));
}

} // namespace

bool SaveTo(CObjectManager& manager, const std::string& path, int dataver)
{
    const std::string shownName = path == "-" ? TextOf(Text::StandardOutput) : path;
    const bool isSaved = path == "-" || isStream(path) ? saveToStream(manager, path, shownName, dataver)
                                                       : saveToFile(manager, path, path, dataver);
    if (isSaved) warnOfUnreadable(manager, shownName);
    return isSaved;
}

} // namespace obmgr::tool
