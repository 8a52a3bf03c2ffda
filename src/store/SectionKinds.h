// The five kinds of pipe section and the calculation methods: where their names stand, in look-up order.
#pragma once

#include "objects/ObjectTypes.h"

namespace obmgr {

struct SectionKind {
    OBJECTTYPE type;
    const wchar_t* nameKey;
    const wchar_t* sectionKey;
    int sectType; // what GetSectType gives; it does not follow the look-up order
    // Keys of what GetPipeInfo reads, in metres.
    const wchar_t* height;
    const wchar_t* width;
    const wchar_t* topThick;
    const wchar_t* bottomThick;
    const wchar_t* base;
};

// A round section has one diameter and one thickness all round.
inline constexpr SectionKind kSectionKinds[] = {
    {objectdata::Pipe, L"pename", L"pesectionkey", 0, L"pedia", L"pedia", L"pethick", L"pethick", L"pebase"},
    {objectdata::Obox, L"obname", L"obsectionkey", 2, L"obheight", L"obbwidth", L"obtthick", L"obbthick", L"obbase"},
    {objectdata::Cbox, L"cbname", L"cbsectionkey", 1, L"cbheight", L"cbwidth", L"cbtthick", L"cbbthick", L"cbbase"},
    {objectdata::Ubox, L"ubname", L"ubsectionkey", 3, L"ubheight", L"ubbwidth", L"ubtthick", L"ubbthick", L"ubbase"},
    {objectdata::Egg, L"egname", L"egsectionkey", 4, L"egdia", L"egdia", L"egthick", L"egthick", L"egbase"},
};

struct MethodKind {
    OBJECTTYPE type;
    const wchar_t* nameKey;
};

inline constexpr MethodKind kMethodKinds[] = {
    {objectdata::Svperarea, L"saname"},  {objectdata::Svperpopula, L"spname"},  {objectdata::Svyokohama, L"syname"},
    {objectdata::Qrrational, L"qrname"}, {objectdata::Qrexperiment, L"qename"}, {objectdata::Qrmulti, L"qmname"},
    {objectdata::Qrline, L"qlname"},     {objectdata::Qrriver, L"qvname"},      {objectdata::Combi, L"csname"},
    {objectdata::Rural, L"rrname"},
};

} // namespace obmgr
