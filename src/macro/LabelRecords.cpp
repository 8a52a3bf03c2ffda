// Label functions for what lies along routes: note texts of inflows, outflows and crossings, and house connections.
#include "macro/LabelFunctions.h"

#include "macro/LabelText.h"
#include "macro/MacroTokens.h"

#include <algorithm>
#include <iterator>

namespace kelmacro {

using namespace obmgr;

namespace {

struct NoteKeys {
    OBJECTTYPE type;
    const wchar_t* text;
    const wchar_t* section; // null: the record has no section
};
constexpr NoteKeys kNotes[] = {
    {objectdata::AreaInq, L"arouttext", L"arsecrecname"}, {objectdata::FixInq, L"fxouttext", L"fxsecrecname"},
    {objectdata::MountInq, L"mtouttext", nullptr},        {objectdata::AreaOutq, L"aoouttext", L"aosecrec"},
    {objectdata::Outq, L"oqouttext", L"oqsecrecname"},    {objectdata::Lateral, L"laouttext", L"lasecrecname"},
    {objectdata::Vjoint, L"vjouttext", L"vjsecrecname"},
};

// Puts the code behind the first section token of the note.
void InsertSection(CString& note, const CString& code)
{
    constexpr int kTokenLength = static_cast<int>(std::size(kMacroSecdisp)) - 1;
    const int at = note.Find(kMacroSecdisp);
    if (at >= 0) note.Insert(at + kTokenLength, code);
}

// The code of what crosses at the point.
CString CrossingSection(const CObjectManager& manager, const CIntPos& point)
{
    // Either end of a point can be its route.
    const auto ids = point.Links();
    const bool isRouteSecond = !manager.GetRouteDb().Find(ids[0]) && manager.GetRouteDb().Find(ids[1]);
    const long crossingId = ids[isRouteSecond ? 0 : 1];
    const CInters* const crossing = FindForLabel<CInters>(&manager, crossingId);
    if (!crossing) {
        const CSpan* const span = FindForLabel<CSpan>(&manager, crossingId);
        return span ? span->GetSubAttribute(L"spsecrecname") : CString();
    }
    CString section = crossing->GetSubAttribute(L"inwidth");
    CString kind;
    if (manager.GetSectRecId(section, kind, nullptr) != 0) return section;
    const CString code = crossing->GetSubAttribute(L"danmencode");
    return code.IsEmpty() ? point.GetSubAttribute(L"danmencode") : code;
}

// A lateral or, in a vacuum web, a vacuum joint. Both are null when there is no web or no such record.
struct Connection {
    const CLateral* lateral = nullptr;
    const CVjoint* joint = nullptr;
};

Connection FindConnection(const CObjectManager* manager, long webId, long id)
{
    const CWeb* const web = FindForLabel<CWeb>(manager, webId);
    if (!web) return {};
    if (IsVacuumWeb(*web)) return {nullptr, FindForLabel<CVjoint>(manager, id)};
    return {FindForLabel<CLateral>(manager, id), nullptr};
}

// The vacuum unit of the joint or the unit of the lateral.
struct Unit {
    const CLaunit* unit = nullptr;
    const CVacunit* vacuumUnit = nullptr;
};

Unit FindUnit(const CObjectManager* manager, long webId, long id)
{
    const auto [lateral, joint] = FindConnection(manager, webId, id);
    if (joint) return {nullptr, FindForLabel<CVacunit>(manager, joint->GetSubAttributeInt(L"vjinletid", 0))};
    if (lateral) return {FindForLabel<CLaunit>(manager, lateral->GetSubAttributeInt(L"launitid", 0)), nullptr};
    return {};
}

template <class Box>
bool ShowBoxName(const CObjectDataBase<Box>& boxes, const wchar_t* codeKey, const CString& code, const wchar_t* nameKey,
                 CString& out)
{
    const Box* last = nullptr;
    for (const Box* box : boxes)
        if (box->GetSubAttribute(codeKey) == code) last = box;
    if (last) out = last->GetSubAttribute(nameKey);
    return last != nullptr;
}

} // namespace

// ---- Note texts ----
bool ResolveMcOuttext(const CObjectManager* manager, objectdata::OBJECTTYPE type, long id, CString& out)
{
    out.Empty();
    const auto* const keys =
        std::find_if(std::begin(kNotes), std::end(kNotes), [=](const NoteKeys& row) { return row.type == type; });
    if (!manager || Id32(id) == 0 || keys == std::end(kNotes)) return false;
    const CPipeObject* const object = manager->TableOf(type).Find(id);
    if (!object) return false;
    out = object->GetSubAttribute(keys->text);
    if (keys->section) InsertSection(out, object->GetSubAttribute(keys->section));
    return true;
}

bool ResolveMcArouttext(const CObjectManager* manager, long areaInqId, CString& out)
{
    return ResolveMcOuttext(manager, objectdata::AreaInq, areaInqId, out);
}

bool ResolveMcFxouttext(const CObjectManager* manager, long fixInqId, CString& out)
{
    return ResolveMcOuttext(manager, objectdata::FixInq, fixInqId, out);
}

bool ResolveMcMtouttext(const CObjectManager* manager, long mountInqId, CString& out)
{
    return ResolveMcOuttext(manager, objectdata::MountInq, mountInqId, out);
}

bool ResolveMcAoouttext(const CObjectManager* manager, long areaOutqId, CString& out)
{
    return ResolveMcOuttext(manager, objectdata::AreaOutq, areaOutqId, out);
}

bool ResolveMcFoouttext(const CObjectManager* manager, long outqId, CString& out)
{
    return ResolveMcOuttext(manager, objectdata::Outq, outqId, out);
}

bool ResolveMcLaouttext(const CObjectManager* manager, long webId, long id, CString& out)
{
    out.Empty();
    const CWeb* const web = FindForLabel<CWeb>(manager, webId);
    if (!web) return false;
    return ResolveMcOuttext(manager, IsVacuumWeb(*web) ? objectdata::Vjoint : objectdata::Lateral, id, out);
}

bool ResolveMcIpouttext(const CObjectManager* manager, long intPosId, CString& out)
{
    out.Empty();
    const CIntPos* const point = FindForLabel<CIntPos>(manager, intPosId);
    if (!point) return false;
    out = point->GetSubAttribute(L"ipouttext");
    InsertSection(out, CrossingSection(*manager, *point));
    return true;
}

// ---- House connections ----
bool ResolveMcLaunitnum(const CObjectManager* manager, long webId, long id, CString& out)
{
    out.Empty();
    const auto [unit, vacuumUnit] = FindUnit(manager, webId, id);
    if (!unit && !vacuumUnit) return false;
    out = vacuumUnit ? vacuumUnit->GetSubAttribute(L"vunum") : unit->GetSubAttribute(L"lunum");
    return true;
}

bool ResolveMcLaunitname(const CObjectManager* manager, long webId, long id, CString& out)
{
    out.Empty();
    const auto [unit, vacuumUnit] = FindUnit(manager, webId, id);
    if (vacuumUnit) {
        const CString code = vacuumUnit->GetSubAttribute(L"vucode");
        return ShowBoxName(manager->GetAttBoxvuDb(), L"abcodevu2", code, L"abnamevu", out);
    }
    if (!unit) return false;
    return ShowBoxName(manager->GetAttBoxDb(), L"abcode2", unit->GetSubAttribute(L"lucode"), L"abname", out);
}

bool ResolveMcLadist(const CObjectManager* manager, const CDrawfig* drawfig, long webId, long id, CString& out)
{
    out.Empty();
    const auto [lateral, joint] = FindConnection(manager, webId, id);
    if (!drawfig || (!lateral && !joint)) return false;
    const double distance =
        joint ? joint->GetSubAttributeDouble(L"vjindist", 0.0) : lateral->GetSubAttributeDouble(L"laindist", 0.0);
    out = RoundedText(distance, *drawfig, kRouteLengthRounding);
    return true;
}

} // namespace kelmacro
