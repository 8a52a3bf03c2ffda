// The frame of pipe data files, and complete saves.

#include "persistence/PipeDataFile.h"

#include <algorithm>
#include <memory>
#include <span>
#include <vector>

#include "control/DlgProgress.h"
#include "framework/AtomicFile.h"
#include "framework/File.h"
#include "framework/Language.h"
#include "objects/RecordOutput.h"
#include "persistence/PipeObjectException.h"
#include "persistence/ProgressTitle.h"
#include "resources/ResourceOverride.h"
#include "resources/Resources.h"
#include "store/ObjectManager.h"

namespace obmgr {
namespace {

constexpr wchar_t kOuterRoot[] = L"pdroot";

bool IsKoreanSystem()
{
    constexpr LanguageId kOtherKorean{0x0812};
    const LanguageId language = SystemLanguage();
    return language == kKoreanKorea || language == kOtherKorean;
}

const wchar_t* PrologFor(int dataver)
{
    if (IsKoreanSystem()) return L"<?xml version = \"1.0\" encoding = \"EUC-KR\"?>\n";
    if (dataver >= kFirstUtf16Dataver) return L"<?xml version = \"1.0\" encoding = \"UTF-16\"?>\n";
    return L"<?xml version = \"1.0\" encoding = \"SHIFT-JIS\"?>\n";
}

// Runs one step of writing; false, with the text `id` in `error`, when the file fails.
template <class Write> bool TryWrite(Write&& write, unsigned id, CString& error)
{
    try {
        write();
        return true;
    } catch (CFileException* failure) {
        failure->Delete();
        error = ResourceText(id);
        return false;
    }
}

// A file with the profile and the tables of the types. `shownPath` stands in the title of the dialog.
bool WriteTables(CObjectManager& manager, CStdioFile& file, const CString& shownPath, std::span<const OBJECTTYPE> types,
                 CString& error, int dataver)
{
    const CObmgerResourceOverride texts;
    CDlgProgress progress;
    progress.Create();
    progress.SetRange(0, std::max(manager.GetAllDataCount(), 0));
    progress.SetTitle(ProgressTitle(IDS_SAVE_TITLE, shownPath));
    int counter = 0;
    ClearFileOutErrorString();
    try {
        if (!manager.StartWritePipeData(file, error, dataver)) return false;
        CFileProfile& profile = *manager.GetFileProfile();
        profile.SetMaxObjectId(manager.GetCurrentObjectId());
        if (!profile.FileOut(file, dataver, false)) {
            error = ResourceText(IDS_SAVE_PROFILE_FAILED);
            return false;
        }
        for (const OBJECTTYPE type : types) {
            if (manager.TableOf(type).FileOutAll(file, &counter, &progress, dataver)) continue;
            error = ResourceText(RecordOf(type).writeFailure);
            return false;
        }
        return manager.EndWritePipeData(file, error, dataver);
    } catch (CPipeObjectException* cancelled) {
        error = cancelled->GetText();
        cancelled->Delete();
        return false;
    }
}

} // namespace

TextEncoding EncodingForDataVersion(int dataver)
{
    if (dataver >= kFirstUtf16Dataver) return TextEncoding::Utf16LE;
    return IsKoreanSystem() ? TextEncoding::EucKr : TextEncoding::ShiftJis;
}

bool OpenForDataVersion(CStdioFile& file, const CString& path, int dataver, CFileException* failure)
{
    constexpr unsigned kFlags = CFile::modeCreate | CFile::modeWrite | CFile::typeText;
    return file.Open(path, kFlags, EncodingForDataVersion(dataver), failure);
}

bool SaveDesign(CObjectManager& manager, const CString& path, int dataver, bool withMapData, CString& error,
                CStringArray& details)
{
    details.RemoveAll();
    AtomicFile replacement;
    if (!replacement.Create(path, error)) return false;

    std::vector<OBJECTTYPE> types(SaveOrder().begin(), SaveOrder().end());
    if (withMapData) types.insert(types.end(), MapDataOrder().begin(), MapDataOrder().end());
    bool isWritten = false;
    try {
        CStdioFile file;
        CFileException failure;
        if (!OpenForDataVersion(file, replacement.TempPath(), dataver, &failure))
            AfxThrowFileException(failure.m_cause, failure.m_lOsError);
        isWritten = WriteTables(manager, file, path, types, error, dataver);
        GetFileOutErrorString(details);
        if (!isWritten) return false;
        file.Close();
    } catch (CFileException* failure) {
        // The person knows the file, not what stands in for it while it is written.
        failure->m_strFileName = path;
        failure->GetErrorMessage(error);
        failure->Delete();
        return false;
    }
    return replacement.Commit(error);
}

} // namespace obmgr

bool CObjectManager::StartWritePipeData(CStdioFile& file, CString& error, int dataver)
{
    return obmgr::TryWrite(
        [&] {
            constexpr unsigned char kMark[] = {0xFF, 0xFE};
            const bool isNew = dataver >= obmgr::kFirstUtf16Dataver;
            if (isNew) file.Write(kMark, sizeof kMark);
            file.WriteString(obmgr::PrologFor(dataver));
            if (isNew) {
                CString root;
                root.Format(L"<%s>\n", obmgr::kOuterRoot);
                file.WriteString(root);
            }
            file.WriteString(L"<pipedata>\n");
        },
        IDS_SAVE_HEADER_FAILED, error);
}

bool CObjectManager::EndWritePipeData(CStdioFile& file, CString& error, int dataver)
{
    return obmgr::TryWrite(
        [&] {
            file.WriteString(L"</pipedata>\n");
            if (dataver >= obmgr::kFirstUtf16Dataver) {
                CString root;
                root.Format(L"</%s>\n", obmgr::kOuterRoot);
                file.WriteString(root);
            }
            // What the system refuses is to be told here, and not by a close that few callers look at.
            file.Flush();
        },
        IDS_SAVE_ROOT_FAILED, error);
}

bool CObjectManager::WritePipeObject(CStdioFile& file, CString& error, int dataver)
{
    return obmgr::WriteTables(*this, file, file.GetFilePath(), obmgr::SaveOrder(), error, dataver);
}

bool CObjectManager::WritePipeObject(CStdioFile& file, CString& error, CStringArray& details, int dataver)
{
    const bool isWritten = WritePipeObject(file, error, dataver);
    GetFileOutErrorString(details);
    return isWritten;
}
