#include "objects/Records.h"

#include "objects/ObDefault.h"

#define OBM_RECORD(T, ...) IMPLEMENT_DYNCREATE(C##T, C##T::Parent)
#include "objects/ObjectTypes.def"

namespace obmgr {

QrexperimentBase& QrexperimentBase::operator=(const QrexperimentBase& other)
{
    if (this == &other) return *this;
    CPipeObject::operator=(other);
    m_multiArea = other.m_multiArea;
    return *this;
}

void QrexperimentBase::SetMultiArea(double area)
{
    BeforeChange();
    m_multiArea = area;
}

namespace {

// Adds the key when it is called missing and the record has none; the value is the default attribute table's, or
// `ownDefault` where the table has none.
bool AddMissing(CPipeObject& record, bool isMissing, const wchar_t* key, const wchar_t* ownDefault)
{
    if (!isMissing || record.IsSubAttribute(key)) return false;
    CString value;
    record.WriteSubAttribute(key, DefaultValueOf(record.GetObjectType(), key, value) ? value.GetString() : ownDefault);
    return true;
}

} // namespace

bool DrawformdatBase::ConvertVersion(const CVersionConvertFlags& flags)
{
    bool changed = AddMissing(*this, flags.openpipetop, L"openpipetop", L"0");
    changed |= AddMissing(*this, flags.lvlmemotxbase, L"lvlmemotxbase", L"0");
    changed |= AddMissing(*this, flags.rtablerfracex, L"rtablerfracex", L"0");
    changed |= AddMissing(*this, flags.drawsecinfoleaderbase, L"drawsecinfoleaderbase", L"0");
    changed |= AddMissing(*this, flags.drawcodezeromhole, L"drawcodezeromhole", L"0");
    return changed;
}

bool DrawbeltdatBase::ConvertVersion(const CVersionConvertFlags& flags)
{
    bool changed = AddMissing(*this, flags.dbdgcin, L"dbdgcin", L"0");
    changed |= AddMissing(*this, flags.dbddrawmode, L"dbddrawmode", L"0");
    changed |= AddMissing(*this, flags.drawcodezeromhole, L"drawcodezeromhole", L"0");
    return changed;
}

bool DrawsecinfodatBase::ConvertVersion(const CVersionConvertFlags& flags)
{
    return AddMissing(*this, flags.dsidgcin, L"dsidgcin", L"0");
}

int DrawpendatBase::GetPentypeOrder(unsigned int type)
{
    if (type == static_cast<unsigned int>(kFormerType49)) return kLastType + 1;
    return type <= static_cast<unsigned int>(kLastType) ? static_cast<int>(type) : 0;
}

} // namespace obmgr
