// The four kinds of record that lie along a route, and short ways to make and read them.
#pragma once

#include "support/Networks.h"

#include <ostream>

namespace support {

struct PlacedKind {
    const char* name;
    // ---- keys ----
    const wchar_t* spanNumber;
    const wchar_t* entered;
    const wchar_t* direction; // null: distances run from the upper end only
    const wchar_t* span;
    const wchar_t* distance;
    bool endsAtZero; // at the end of the route, from above
    CPipeObject* (*add)(CObjectManager&, long routeId, const Values&);
    bool (CObjectManager::*update)(long webId, bool setLevel);
};

inline const PlacedKind kPlacedKinds[] = {
    {"GlChange", L"glspannum", L"glindist", L"gldistdir", L"glspanid", L"gldist", true,
     [](CObjectManager& manager, long routeId, const Values& entered) -> CPipeObject* {
         return manager.CreateGlChange(routeId, entered);
     },
     &CObjectManager::update_GlChange},
    {"IntPos", L"ipspannum", L"ipindist", L"ipdistdir", L"ipspanid", L"ipdist", false,
     [](CObjectManager& manager, long routeId, const Values& entered) -> CPipeObject* {
         return manager.CreateIntPos(routeId, manager.CreateInters({})->GetId32(), entered);
     },
     &CObjectManager::update_IntPos},
    {"Lateral", L"laspannum", L"laindist", L"ladistdir", L"laspanid", L"ladist", false,
     [](CObjectManager& manager, long routeId, const Values& entered) -> CPipeObject* {
         return manager.CreateLateral(routeId, entered);
     },
     &CObjectManager::update_Lateral},
    {"Vjoint", L"vjspnum", L"vjindist", nullptr, L"vjspid", L"vjdist", false,
     [](CObjectManager& manager, long routeId, const Values& entered) -> CPipeObject* {
         return manager.CreateVjoint(routeId, entered);
     },
     &CObjectManager::update_Vjoint},
};

inline void PrintTo(const PlacedKind& kind, std::ostream* stream)
{
    *stream << kind.name;
}

inline double number(const CPipeObject& object, const wchar_t* key)
{
    return object.GetSubAttributeDouble(key, -9999.0);
}

inline std::wstring text(const CPipeObject& object, const wchar_t* key)
{
    return object.IsSubAttribute(key) ? std::wstring(object.GetSubAttribute(key).View()) : L"-";
}

} // namespace support
