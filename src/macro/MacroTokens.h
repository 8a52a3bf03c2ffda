// The macro tokens that programs share beside the lists of the label families. The library itself puts
// kMacroSecdisp, kMacroRoutenum and kMacroMholeno into texts; the others are the words of applications, or reserved.
#pragma once

namespace kelmacro {

// What it does is told by the text IDS_LABEL_ADD_SIGN.
inline constexpr wchar_t kMacroAddPlusMinus[] = L"[M:ADDPLUSMINUS]";

// ---- codes for the drawing stage ----
inline constexpr wchar_t kMacroSecdisp[] = L"[M:SECDISP]";
inline constexpr wchar_t kMacroRoutenum[] = L"[M:ROUTENUM]";
inline constexpr wchar_t kMacroMholeno[] = L"[M:MHOLENO]";

// ---- note texts ----
inline constexpr wchar_t kMacroArouttext[] = L"[M:AROUTTEXT]";
inline constexpr wchar_t kMacroFxouttext[] = L"[M:FXOUTTEXT]";
inline constexpr wchar_t kMacroMtouttext[] = L"[M:MTOUTTEXT]";
inline constexpr wchar_t kMacroAoouttext[] = L"[M:AOOUTTEXT]";
inline constexpr wchar_t kMacroFoouttext[] = L"[M:FOOUTTEXT]";
inline constexpr wchar_t kMacroOutqouttext[] = L"[M:OUTQOUTTEXT]";
inline constexpr wchar_t kMacroIpouttext[] = L"[M:IPOUTTEXT]";
inline constexpr wchar_t kMacroGlouttext[] = L"[M:GLOUTTEXT]";
inline constexpr wchar_t kMacroLaouttext[] = L"[M:LAOUTTEXT]";

// ---- house connections ----
inline constexpr wchar_t kMacroLaunitnum[] = L"[M:LAUNITNUM]";
inline constexpr wchar_t kMacroLaunitname[] = L"[M:LAUNITNAME]";
inline constexpr wchar_t kMacroLauser[] = L"[M:LAUSER]";
inline constexpr wchar_t kMacroLauserall[] = L"[M:LAUSERALL]";

// ---- routes ----
inline constexpr wchar_t kMacroInroutenum[] = L"[M:INROUTENUM]";
inline constexpr wchar_t kMacroLowroutenum[] = L"[M:LOWROUTENUM]";

// ---- manholes ----
inline constexpr wchar_t kMacroMhheightm[] = L"[M:MHHEIGHTM]";
inline constexpr wchar_t kMacroMhheightmm[] = L"[M:MHHEIGHTMM]";
inline constexpr wchar_t kMacroMhheightcm[] = L"[M:MHHEIGHTCM]";
inline constexpr wchar_t kMacroMhwidthm[] = L"[M:MHWIDTHM]";
inline constexpr wchar_t kMacroMhwidthmm[] = L"[M:MHWIDTHMM]";
inline constexpr wchar_t kMacroMhwidthcm[] = L"[M:MHWIDTHCM]";
inline constexpr wchar_t kMacroMholedepth[] = L"[M:MHOLEDEPTH]";
inline constexpr wchar_t kMacroMholedepthmm[] = L"[M:MHOLEDEPTHMM]";

// ---- node units, section valves, overhaul places ----
inline constexpr wchar_t kMacroNuname[] = L"[M:NUNAME]";
inline constexpr wchar_t kMacroNuheight[] = L"[M:NUHEIGHT]";
inline constexpr wchar_t kMacroNuangle[] = L"[M:NUANGLE]";
inline constexpr wchar_t kMacroSvname[] = L"[M:SVNAME]";
inline constexpr wchar_t kMacroSvdist[] = L"[M:SVDIST]";
inline constexpr wchar_t kMacroOhname[] = L"[M:OHNAME]";
inline constexpr wchar_t kMacroOhdist[] = L"[M:OHDIST]";

// ---- spans and their sections ----
inline constexpr wchar_t kMacroSpslant[] = L"[M:SPSLANT]";
inline constexpr wchar_t kMacroSubsecfai[] = L"[M:SUBSECFAI]";
inline constexpr wchar_t kMacroSubsecdrop[] = L"[M:SUBSECDROP]";
inline constexpr wchar_t kMacroUpspslantmin[] = L"[M:UPSPSLANTMIN]";
inline constexpr wchar_t kMacroUpspslantmax[] = L"[M:UPSPSLANTMAX]";
inline constexpr wchar_t kMacroUpspslantdrw[] = L"[M:UPSPSLANTDRW]";
inline constexpr wchar_t kMacroDltxsectionleng[] = L"[M:DLTXSECTIONLENG]";
inline constexpr wchar_t kMacroKukanleng[] = L"[M:KUKANLENG]";
inline constexpr wchar_t kMacroSectx[] = L"[M:SECTX]";
inline constexpr wchar_t kMacroSecmark[] = L"[M:SECMARK]";

// ---- vacuum joints and units ----
inline constexpr wchar_t kMacroVjdist[] = L"[M:VJDIST]";
inline constexpr wchar_t kMacroVjspdist[] = L"[M:VJSPDIST]";
inline constexpr wchar_t kMacroVjinv[] = L"[M:VJINV]";
inline constexpr wchar_t kMacroVjleng[] = L"[M:VJLENG]";
inline constexpr wchar_t kMacroVjinletinv[] = L"[M:VJINLETINV]";
inline constexpr wchar_t kMacroVucode[] = L"[M:VUCODE]";
inline constexpr wchar_t kMacroVudepth[] = L"[M:VUDEPTH]";
inline constexpr wchar_t kMacroVuhi[] = L"[M:VUHI]";
inline constexpr wchar_t kMacroVunum[] = L"[M:VUNUM]";

} // namespace kelmacro
