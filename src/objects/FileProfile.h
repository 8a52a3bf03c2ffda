// CFileProfile: the header record of a pipe data file.
#pragma once

#include "objects/PipeObject.h"

// Its element is "profile", without an id. Known keys: version, appname, time, date, tarappversion, tarappname
// (texts), maxobjectid, intention, dataver (integers).
class RIVELTA_API CFileProfile : public CPipeObject {
    DECLARE_DYNAMIC(CFileProfile)

public:
    CFileProfile() = default;
    CFileProfile(const CFileProfile&) = default;
    CFileProfile& operator=(const CFileProfile&) = default;

    CString GetVersion() const { return GetSubAttribute(L"version"); }
    CString GetAppName() const { return GetSubAttribute(L"appname"); }
    CString GetTime() const { return GetSubAttribute(L"time"); }
    CString GetDate() const { return GetSubAttribute(L"date"); }
    CString GetTarAppVersion() const { return GetSubAttribute(L"tarappversion"); }
    CString GetTarAppName() const { return GetSubAttribute(L"tarappname"); }
    // The highest object id in use when the file was written.
    long GetMaxObjectId() const { return GetSubAttributeInt(L"maxobjectid", 0); }
    // What the file is for: 14 web export, 17 drawing format export, else the application's own number.
    int GetIntention() const { return GetSubAttributeInt(L"intention", 0); }
    int GetDataver() const { return GetSubAttributeInt(L"dataver", 0); }

    void SetVersion(const wchar_t* version) { WriteSubAttribute(L"version", version); }
    void SetAppName(const wchar_t* name) { WriteSubAttribute(L"appname", name); }
    void SetTime(const wchar_t* time) { WriteSubAttribute(L"time", time); }
    void SetDate(const wchar_t* date) { WriteSubAttribute(L"date", date); }
    void SetTarAppVersion(const wchar_t* version) { WriteSubAttribute(L"tarappversion", version); }
    void SetTarAppName(const wchar_t* name) { WriteSubAttribute(L"tarappname", name); }
    void SetMaxObjectId(long id);
    void SetIntention(int intention) { WriteSubAttributeInt(L"intention", intention); }
    void SetDataver(int dataver) { WriteSubAttributeInt(L"dataver", dataver); }

    // Writes the known keys in the order above, whether set or not, then any further keys that a file brought.
    // "dataver" is the version asked for.
    bool FileOut(CStdioFile& file, int dataver, bool flag) const override;

protected:
    CPipeObject* Clone() const override { return new CFileProfile(*this); }
};
