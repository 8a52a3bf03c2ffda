// Label functions for projects, webs, routes, spans, nodes and their manholes, and all that are one attribute.
#include "macro/LabelFunctions.h"

#include "macro/LabelText.h"
#include "macro/MacroTokens.h"
#include "resources/Resources.h"

namespace kelmacro {

using namespace obmgr;

namespace {

template <class T> bool ShowText(const CObjectManager* manager, long id, const wchar_t* key, CString& out)
{
    out.Empty();
    const T* const object = FindForLabel<T>(manager, id);
    if (object) out = object->GetSubAttribute(key);
    return object != nullptr;
}

template <class T>
bool ShowNumber(const CObjectManager* manager, const CDrawfig* drawfig, long id, const wchar_t* key,
                const RoundingKeys& rounding, CString& out)
{
    out.Empty();
    const T* const object = FindForLabel<T>(manager, id);
    if (!object || !drawfig) return false;
    out = RoundedText(object->GetSubAttributeDouble(key, 0.0), *drawfig, rounding);
    return true;
}

// The manhole record with the node's manhole code; null without one.
const CManHole* ManholeOf(const CObjectManager* manager, long nodeId)
{
    const CNode* const node = FindForLabel<CNode>(manager, nodeId);
    long manholeId = 0;
    if (!node || !manager->GetManHoleId(node->GetSubAttribute(L"manholecode"), manholeId)) return nullptr;
    return FindForLabel<CManHole>(manager, manholeId);
}

bool ShowManholeText(const CObjectManager* manager, long nodeId, const wchar_t* key, CString& out)
{
    out.Empty();
    const CManHole* const manhole = ManholeOf(manager, nodeId);
    if (manhole) out = manhole->GetSubAttribute(key);
    return manhole != nullptr;
}

double PerMetre(UNITMODE unit)
{
    return unit == UNITMODE_CENTIMETRE ? 100.0 : 1000.0;
}

} // namespace

#define OBM_LABEL_TEXT(Name, Record, key)                                                                              \
    bool ResolveMc##Name(const CObjectManager* manager, long id, CString& out)                                         \
    {                                                                                                                  \
        return ShowText<C##Record>(manager, id, L"" key, out);                                                         \
    }
#define OBM_LABEL_NUMBER(Name, Record, key, rounding)                                                                  \
    bool ResolveMc##Name(const CObjectManager* manager, const CDrawfig* drawfig, long id, CString& out)                \
    {                                                                                                                  \
        return ShowNumber<C##Record>(manager, drawfig, id, L"" key, rounding, out);                                    \
    }
#include "macro/LabelAttributes.def"

// ---- Webs ----
bool ResolveMcOutareaname(const CObjectManager* manager, long webId, CString& out)
{
    if (!ShowText<CWeb>(manager, webId, L"outareaname", out)) return false;
    return out.IsEmpty() ? ShowText<CWeb>(manager, webId, L"wbendrname", out) : true;
}

bool ResolveMcDisposaltype(const CObjectManager* manager, long webId, CString& out)
{
    out.Empty();
    const CWeb* const web = FindForLabel<CWeb>(manager, webId);
    if (!web) return false;
    const int type = web->GetDisposalType();
    if (type < 0 || type > static_cast<int>(IDS_DISPOSAL_5 - IDS_DISPOSAL_0)) return false;
    out = ResourceText(IDS_DISPOSAL_0 + static_cast<unsigned>(type));
    return true;
}

// ---- Routes ----
bool ResolveMcRoutenum(const CObjectManager* manager, long routeId, bool number, bool full, CString& out)
{
    out.Empty();
    const CRoute* const route = FindForLabel<CRoute>(manager, routeId);
    if (!route) return false;
    if (full) {
        out = kMacroRoutenum;
        out += route->GetSubAttribute(L"rttype");
        out += route->GetSubAttribute(L"rtattrib");
    }
    out += route->GetSubAttribute(number ? L"routenum" : L"subnum");
    return true;
}

bool ResolveMcRoutenum(const CObjectManager* manager, long routeId, bool full, CString& out)
{
    return ResolveMcRoutenum(manager, routeId, true, full, out);
}

bool ResolveMcSubnum(const CObjectManager* manager, long routeId, bool full, CString& out)
{
    return ResolveMcRoutenum(manager, routeId, false, full, out);
}

bool ResolveMcInroutenum(const CObjectManager* manager, long spanId, CString& out)
{
    const CSpan* const span = FindForLabel<CSpan>(manager, spanId);
    return ResolveMcRoutenum(manager, span ? span->Links()[kRouteOfSpan] : 0, true, true, out);
}

bool ResolveMcUproutenumdrw(const CObjectManager* manager, long spanId, CString& out)
{
    return ResolveMcInroutenum(manager, spanId, out);
}

bool ResolveMcLowroutenum(const CObjectManager* manager, const CDrawfig*, long spanId, CString& out)
{
    return ResolveMcInroutenum(manager, spanId, out);
}

// ---- Spans ----
bool ResolveMcSecdisp(const CObjectManager* manager, long spanId, bool full, CString& out)
{
    if (!ShowText<CSpan>(manager, spanId, L"spsecrecname", out)) return false;
    if (full) out = kMacroSecdisp + out;
    return true;
}

bool ResolveMcUpsecdisp(const CObjectManager* manager, long spanId, CString& out)
{
    return ResolveMcSecdisp(manager, spanId, true, out);
}

bool ResolveMcLowsecdisp(const CObjectManager* manager, const CDrawfig*, long spanId, CString& out)
{
    return ResolveMcSecdisp(manager, spanId, true, out);
}

bool ResolveMcSlopedist(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, CString& out)
{
    out.Empty();
    double length = 0.0;
    if (!FindForLabel<CSpan>(manager, spanId) || !drawfig) return false;
    if (!manager->GetSpanSyakyori(static_cast<unsigned long>(spanId), length)) return false;
    out = RoundedText(length, *drawfig, kSpanLengthRounding);
    return true;
}

bool ResolveMcInv(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, bool upper, bool isSigned,
                  CString& out)
{
    const wchar_t* const key = upper ? L"uppercentinv" : L"lowercentinv";
    if (!ShowNumber<CSpan>(manager, drawfig, spanId, key, kInvertRounding, out)) return false;
    if (isSigned) out = L"+" + out;
    return true;
}

bool ResolveMcUpperinv(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, CString& out)
{
    return ResolveMcInv(manager, drawfig, spanId, true, false, out);
}

bool ResolveMcUpperinv2(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, CString& out)
{
    return ResolveMcInv(manager, drawfig, spanId, true, true, out);
}

bool ResolveMcLowerinv(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, CString& out)
{
    return ResolveMcInv(manager, drawfig, spanId, false, false, out);
}

bool ResolveMcLowerinv2(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, CString& out)
{
    return ResolveMcInv(manager, drawfig, spanId, false, true, out);
}

bool ResolveMcSubsecfai(const CObjectManager* manager, long spanId, CString& out)
{
    out.Empty();
    const CSpan* const span = FindForLabel<CSpan>(manager, spanId);
    if (!span) return false;
    out = FormatDouble(span->GetSubAttributeDouble(L"subsecfai", 0.0) * 1000.0, 0);
    return true;
}

bool ResolveMcInpipedepthmin(const CObjectManager* manager, const CDrawfig* drawfig, const CCalcfig* calcfig,
                             long spanId, CString& out)
{
    out.Empty();
    const CSpan* const span = FindForLabel<CSpan>(manager, spanId);
    if (!span || !drawfig || !calcfig) return false;
    const double depth = span->GetSubAttributeDouble(L"newgl", 0.0) - span->GetSubAttributeDouble(L"lowercentinv", 0.0);
    out = RoundedText(Rounded(depth, *calcfig, kCalculatedPipeDepthRounding), *drawfig, kPipeDepthRounding);
    return true;
}

bool ResolveMcInpipedepthdrw(const CObjectManager* manager, const CDrawfig* drawfig, const CCalcfig* calcfig,
                             long spanId, CString& out)
{
    return ResolveMcInpipedepthmin(manager, drawfig, calcfig, spanId, out);
}

bool ResolveMcStepmin(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, long upperSpanId,
                      CString& out)
{
    out.Empty();
    const CSpan* const span = FindForLabel<CSpan>(manager, spanId);
    const CSpan* const upperSpan = FindForLabel<CSpan>(manager, upperSpanId);
    if (!span || !upperSpan || !drawfig) return false;
    const double step =
        upperSpan->GetSubAttributeDouble(L"lowercentinv", 0.0) - span->GetSubAttributeDouble(L"uppercentinv", 0.0);
    out = RoundedText(step, *drawfig, kInvertRounding);
    return true;
}

bool ResolveMcStepdrw(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, long upperSpanId,
                      CString& out)
{
    return ResolveMcStepmin(manager, drawfig, spanId, upperSpanId, out);
}

// ---- Nodes and their manholes ----
bool ResolveMcMholeno(const CObjectManager* manager, long nodeId, bool full, CString& out)
{
    if (!ShowText<CNode>(manager, nodeId, L"mholeno", out)) return false;
    if (full) out = kMacroMholeno + out;
    return true;
}

bool ResolveMcMhname(const CObjectManager* manager, long nodeId, CString& out)
{
    return ShowManholeText(manager, nodeId, L"mhname", out);
}

bool ResolveMcMhmaker(const CObjectManager* manager, long nodeId, CString& out)
{
    return ShowManholeText(manager, nodeId, L"mhmaker", out);
}

bool ResolveMcMhHeightWidth(const CObjectManager* manager, long nodeId, bool height, UNITMODE unit, CString& out)
{
    out.Empty();
    const CManHole* const manhole = ManholeOf(manager, nodeId);
    if (!manhole) return false;
    const double metres = manhole->GetSubAttributeDouble(height ? L"mhheight" : L"mhwidth", 0.0);
    out = unit == UNITMODE_METRE ? FormatDouble(metres, 3) : FormatDouble(metres * PerMetre(unit), 0);
    return true;
}

bool ResolveMcMhheightmm(const CObjectManager* manager, long nodeId, CString& out)
{
    return ResolveMcMhHeightWidth(manager, nodeId, true, UNITMODE_MILLIMETRE, out);
}

bool ResolveMcMhheightcm(const CObjectManager* manager, long nodeId, CString& out)
{
    return ResolveMcMhHeightWidth(manager, nodeId, true, UNITMODE_CENTIMETRE, out);
}

bool ResolveMcMhheightm(const CObjectManager* manager, long nodeId, CString& out)
{
    return ResolveMcMhHeightWidth(manager, nodeId, true, UNITMODE_METRE, out);
}

bool ResolveMcMhwidthmm(const CObjectManager* manager, long nodeId, CString& out)
{
    return ResolveMcMhHeightWidth(manager, nodeId, false, UNITMODE_MILLIMETRE, out);
}

bool ResolveMcMhwidthcm(const CObjectManager* manager, long nodeId, CString& out)
{
    return ResolveMcMhHeightWidth(manager, nodeId, false, UNITMODE_CENTIMETRE, out);
}

bool ResolveMcMhwidthm(const CObjectManager* manager, long nodeId, CString& out)
{
    return ResolveMcMhHeightWidth(manager, nodeId, false, UNITMODE_METRE, out);
}

bool ResolveMcMholedep(const CObjectManager* manager, const CDrawfig* drawfig, long nodeId, UNITMODE unit, CString& out)
{
    if (!ShowNumber<CNode>(manager, drawfig, nodeId, L"mholedepth", kManholeDepthRounding, out)) return false;
    if (unit == UNITMODE_METRE) return true;
    // Drawings in centimetres and millimetres have always shown the depth as it was entered, not the rounded one.
    const double metres = FindForLabel<CNode>(manager, nodeId)->GetSubAttributeDouble(L"mholedepth", 0.0);
    out = FormatDouble(metres * PerMetre(unit), 0);
    return true;
}

bool ResolveMcMholedepthmm(const CObjectManager* manager, const CDrawfig* drawfig, long nodeId, CString& out)
{
    return ResolveMcMholedep(manager, drawfig, nodeId, UNITMODE_MILLIMETRE, out);
}

bool ResolveMcMholedepth(const CObjectManager* manager, const CDrawfig* drawfig, long nodeId, CString& out)
{
    return ResolveMcMholedep(manager, drawfig, nodeId, UNITMODE_METRE, out);
}

} // namespace kelmacro
