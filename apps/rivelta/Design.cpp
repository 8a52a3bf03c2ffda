#include "Design.h"

#include "Objects.h"
#include "Output.h"
#include "TemporaryFile.h"
#include "Texts.h"
#include "ToolInterface.h"
#include "control/UserInterface.h"
#include "store/ObDefManager.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace obmgr::tool {

namespace {

constexpr std::size_t kHeadSize = 4096;
constexpr int kNewestDataVersion = 14;

// An input that the parser can open by name and whose length is known: pipes and standard input are copied first.
class Input {
public:
    // 0, or the errno value; EISDIR for a folder.
    int Open(const std::string& path)
    {
        const bool isStandardInput = path == "-";
        const Descriptor file(isStandardInput ? ::dup(STDIN_FILENO) : ::open(path.c_str(), O_RDONLY | O_CLOEXEC));
        if (file.Get() < 0) return errno;
        struct stat status = {};
        if (::fstat(file.Get(), &status) != 0) return errno;
        if (S_ISDIR(status.st_mode)) return EISDIR;
        m_path = path;
        if (isStandardInput || !S_ISREG(status.st_mode)) {
            if (const int error = m_copy.Create(std::filesystem::temp_directory_path().string())) return error;
            if (const int error = CopyAll(file.Get(), m_copy.Get())) return error;
            m_path = m_copy.Path();
        }
        return ReadHead();
    }

    const std::string& Path() const { return m_path; }
    const FileForm& Form() const { return m_form; }

private:
    int ReadHead()
    {
        const Descriptor file(::open(m_path.c_str(), O_RDONLY | O_CLOEXEC));
        if (file.Get() < 0) return errno;
        struct stat status = {};
        if (::fstat(file.Get(), &status) != 0) return errno;
        std::array<char, kHeadSize> head = {};
        const ssize_t count = ::read(file.Get(), head.data(), head.size());
        if (count < 0) return errno;
        m_form = FormOf({head.data(), static_cast<std::size_t>(count)}, static_cast<std::uint64_t>(status.st_size));
        return 0;
    }

    std::string m_path;
    TemporaryFile m_copy;
    FileForm m_form;
};

// What to do about a failed read, from the library's text of it; empty when there is nothing to say.
std::string adviceFor(const std::string& error)
{
    if (error.find("Error at file.") != std::string::npos) return TextOf(Text::AdviceNotWellFormed);
    const std::size_t id = error.find(" ID=");
    if (id == std::string::npos || error.find('\n') < id) return {};
    const std::string tag = error.substr(0, id);
    const RecordInfo* const record = FindByTag(tag);
    if (!record) return Say(Text::AdviceUnknownTag, tag);
    return record->reader == Reader::Refuses ? Say(Text::AdviceRefusedType, tag) : TextOf(Text::AdviceRecord);
}

// The library gives a new name to a web whose name another web has. A program that shows or converts a file must not
// change it: this brings the webs' attributes back to what the file holds.
class WebNames {
public:
    explicit WebNames(CObjectManager& manager) : m_manager(manager) {}

    void Keep()
    {
        if (!m_kept.empty()) return;
        for (CWeb* const web : m_manager.GetWebDb())
            m_kept.emplace_back(web, web->GetAttributes());
    }

    void Restore(const std::string& shownName)
    {
        for (const auto& [web, attributes] : m_kept) {
            if (web->GetAttributes().SharesWith(attributes)) continue;
            web->SetAttributes(attributes);
            Complain(shownName, Say(Text::WarnDuplicateWeb, web->GetId32(), NameOf(*web)));
        }
    }

private:
    CObjectManager& m_manager;
    std::vector<std::pair<CWeb*, Attributes>> m_kept;
};

// share/rivelta of the installation that this program belongs to.
std::string installedDefaults()
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) return {};
    const auto path = program.parent_path() / RIVELTA_DATA_FROM_BIN / "samples" / "default_attributes.xml";
    return std::filesystem::is_regular_file(path, error) ? path.lexically_normal().string() : std::string();
}

} // namespace

bool IsLarge(const FileForm& form)
{
    constexpr std::uint64_t kLargeFromBytes = 1'000'001;
    return form.size >= kLargeFromBytes;
}

std::string ShownName(const std::string& path)
{
    return path == "-" ? TextOf(Text::StandardInput) : path;
}

std::unique_ptr<Design> OpenDesign(const std::string& path)
{
    auto design = std::make_unique<Design>();
    design->shownName = ShownName(path);
    Input input;
    if (const int error = input.Open(path)) {
        if (IsCancelRequested())
            Complain(design->shownName, TextOf(Text::ReadCancelled));
        else if (error == EISDIR)
            Complain(design->shownName, TextOf(Text::IsFolder));
        else
            Complain(design->shownName, Say(Text::CannotOpen, SystemMessage(error)));
        return nullptr;
    }
    design->form = input.Form();

    WebNames webNames(design->manager);
    const ToolInterface ui(IsLarge(design->form), [&webNames] { webNames.Keep(); });
    CString error;
    const bool isRead = design->manager.CreatePipeObjectFromFile(FromUtf8(input.Path()), error, false);
    if (IsCancelRequested()) {
        Complain(design->shownName, TextOf(Text::ReadCancelled));
        return nullptr;
    }
    if (!isRead) {
        const std::string reason = ToUtf8(error.View());
        std::string message = Say(Text::CannotRead, reason);
        if (const std::string advice = adviceFor(reason); !advice.empty()) message += "\n" + advice;
        Complain(design->shownName, message);
        return nullptr;
    }
    webNames.Restore(design->shownName);
    if (const int version = design->manager.GetFileProfile()->GetDataver(); version > kNewestDataVersion)
        Complain(design->shownName, Say(Text::WarnNewerVersion, version, kNewestDataVersion));
    return design;
}

int VersionOf(const Design& design)
{
    if (const int version = design.manager.GetProfileObject().GetDataver(); version > 0) return version;
    const int version = design.form.LikelyDataVersion();
    Complain(design.shownName, Say(Text::WarnNoVersion, version));
    return version;
}

bool LoadDefaults(const std::optional<std::string>& path)
{
    const std::string file = path ? *path : installedDefaults();
    if (file.empty()) return true;
    CString error;
    if (GetObDefManager()->ReadDefFile(FromUtf8(file), error)) return true;
    Complain(Say(Text::WarnDefaults, file, ToUtf8(error.View())));
    // An installation that is damaged in this place still can show and convert files.
    return !path;
}

} // namespace obmgr::tool
