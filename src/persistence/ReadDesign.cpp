// Reading a whole file into a design.

#include <new>

#include "common/Path.h"
#include "framework/CurrentDirectory.h"
#include "framework/File.h"
#include "persistence/DuplicateWebNames.h"
#include "persistence/PipeFileSource.h"
#include "persistence/SaxParser.h"
#include "resources/ResourceOverride.h"
#include "resources/Resources.h"
#include "store/ObjectManager.h"

namespace {

class ReadingScope {
public:
    explicit ReadingScope(bool& isReading) : m_isReading(isReading) { m_isReading = true; }
    ~ReadingScope() { m_isReading = false; }
    ReadingScope(const ReadingScope&) = delete;
    ReadingScope& operator=(const ReadingScope&) = delete;

private:
    bool& m_isReading;
};

} // namespace

bool CObjectManager::CreatePipeObjectFromFile(const CString& givenPath, CString& error, bool append)
{
    if (m_isReading) {
        error = L"Another file is being read.";
        return false;
    }
    const ReadingScope reading(m_isReading);
    try {
        const CObmgerResourceOverride texts;
        CFileStatus status;
        const CString fullPath = GetLongFileName(obmgr::SystemPath(givenPath));
        if (!CFile::GetStatus(fullPath, status)) {
            error = obmgr::FormatMessageText(obmgr::ResourceText(IDS_FILE_NOT_FOUND), givenPath);
            return false;
        }

        // The file is read from its own folder, under its bare name.
        CString path = fullPath;
        obmgr::CurrentDirectoryGuard before;
        const int separator = path.ReverseFind(L'/');
        const bool isElsewhere = separator > 0 && obmgr::CurrentDirectory::Set(path.Left(separator));
        if (isElsewhere)
            path = path.Mid(separator + 1);
        else
            before.Release();
        m_currentFilePath = path;

        if (!CSaxParser(this).ReadPipeFile(path, append, error)) {
            // After a failure the folder stays the file's own, settled behaviour.
            before.Release();
            return false;
        }
        SetObjectId(GetMaxObjectId());
        before.Restore();
        m_currentFilePath = fullPath;

        CWeb* web = nullptr;
        for (obmgr::WebRenaming renaming(*this); !CheckDuplicateWebName(&web);)
            renaming.Rename(*web);
        return true;
    } catch (const std::bad_alloc&) {
        obmgr::TellOutOfMemory(error);
    }
    return false;
}
