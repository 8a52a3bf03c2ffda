// One value of a design as label text, without a resolver: a function for each macro.
//
// Every function empties `out` first. False, with `out` empty, for a null manager, a null rounding record that the
// value needs, an id that is 0 or that no object has. Otherwise true, also for an empty text, unless the function says
// more. Numbers are rounded by orn_round_double and written with as many digits as the rounding record says.
#pragma once

#include "common/Export.h"
#include "framework/Array.h"
#include "framework/PtrList.h"
#include "framework/String.h"
#include "objects/Records.h"

class CObjectManager;

namespace kelmacro {

enum UNITMODE : int { UNITMODE_METRE = 0, UNITMODE_CENTIMETRE = 1, UNITMODE_MILLIMETRE = 2 }; // others: millimetres

// ---- One attribute, as text or as a number ----
#define OBM_LABEL_TEXT(Name, Record, key)                                                                              \
    RIVELTA_API bool ResolveMc##Name(const CObjectManager* manager, long id, CString& out);
#define OBM_LABEL_NUMBER(Name, Record, key, rounding)                                                                  \
    RIVELTA_API bool ResolveMc##Name(const CObjectManager* manager, const CDrawfig* drawfig, long id, CString& out);
#include "macro/LabelAttributes.def"

// ---- Webs ----
// The flow end's name when the web has no "outareaname".
RIVELTA_API bool ResolveMcOutareaname(const CObjectManager* manager, long webId, CString& out);
// The word for the disposal type in the language of the library; false for a type without one.
RIVELTA_API bool ResolveMcDisposaltype(const CObjectManager* manager, long webId, CString& out);

// ---- Routes ----
// The route's number, else its extension number. `full`: the form that the drawing stage takes apart, which is the
// token of route numbers followed by type, attribute and number.
RIVELTA_API bool ResolveMcRoutenum(const CObjectManager* manager, long routeId, bool number, bool full, CString& out);
RIVELTA_API bool ResolveMcRoutenum(const CObjectManager* manager, long routeId, bool full, CString& out);
RIVELTA_API bool ResolveMcSubnum(const CObjectManager* manager, long routeId, bool full, CString& out);
// The full number of the span's route.
RIVELTA_API bool ResolveMcInroutenum(const CObjectManager* manager, long spanId, CString& out);
RIVELTA_API bool ResolveMcUproutenumdrw(const CObjectManager* manager, long spanId, CString& out);
// The rounding record is not used and may be null.
RIVELTA_API bool ResolveMcLowroutenum(const CObjectManager* manager, const CDrawfig* drawfig, long spanId,
                                      CString& out);

// ---- Spans ----
// The section code; `full`: behind its token.
RIVELTA_API bool ResolveMcSecdisp(const CObjectManager* manager, long spanId, bool full, CString& out);
RIVELTA_API bool ResolveMcUpsecdisp(const CObjectManager* manager, long spanId, CString& out);
// The rounding record is not used and may be null.
RIVELTA_API bool ResolveMcLowsecdisp(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, CString& out);
// The length along the slope, rounded as span lengths are.
RIVELTA_API bool ResolveMcSlopedist(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, CString& out);
// The height of the pipe bottom at one end. `isSigned` puts a plus before any number: a negative one reads "+-1.00".
RIVELTA_API bool ResolveMcInv(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, bool upper,
                              bool isSigned, CString& out);
RIVELTA_API bool ResolveMcUpperinv(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, CString& out);
RIVELTA_API bool ResolveMcUpperinv2(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, CString& out);
RIVELTA_API bool ResolveMcLowerinv(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, CString& out);
RIVELTA_API bool ResolveMcLowerinv2(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, CString& out);
// Millimetres.
RIVELTA_API bool ResolveMcSubsecfai(const CObjectManager* manager, long spanId, CString& out);
// The planned ground over the span's lower pipe bottom: rounded as the calculation does, then as the drawing does.
RIVELTA_API bool ResolveMcInpipedepthmin(const CObjectManager* manager, const CDrawfig* drawfig,
                                         const CCalcfig* calcfig, long spanId, CString& out);
RIVELTA_API bool ResolveMcInpipedepthdrw(const CObjectManager* manager, const CDrawfig* drawfig,
                                         const CCalcfig* calcfig, long spanId, CString& out);
// How far the pipe bottom falls from the end of the upper span to the start of the span.
RIVELTA_API bool ResolveMcStepmin(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, long upperSpanId,
                                  CString& out);
RIVELTA_API bool ResolveMcStepdrw(const CObjectManager* manager, const CDrawfig* drawfig, long spanId, long upperSpanId,
                                  CString& out);

// ---- Nodes and their manholes ----
// The manhole's number; `full`: behind its token.
RIVELTA_API bool ResolveMcMholeno(const CObjectManager* manager, long nodeId, bool full, CString& out);
// Of the manhole record with the node's manhole code; false without one.
RIVELTA_API bool ResolveMcMhname(const CObjectManager* manager, long nodeId, CString& out);
RIVELTA_API bool ResolveMcMhmaker(const CObjectManager* manager, long nodeId, CString& out);
// The same; "%.3f" in metres, "%.0f" in the others.
RIVELTA_API bool ResolveMcMhHeightWidth(const CObjectManager* manager, long nodeId, bool height, UNITMODE unit,
                                        CString& out);
RIVELTA_API bool ResolveMcMhheightmm(const CObjectManager* manager, long nodeId, CString& out);
RIVELTA_API bool ResolveMcMhheightcm(const CObjectManager* manager, long nodeId, CString& out);
RIVELTA_API bool ResolveMcMhheightm(const CObjectManager* manager, long nodeId, CString& out);
RIVELTA_API bool ResolveMcMhwidthmm(const CObjectManager* manager, long nodeId, CString& out);
RIVELTA_API bool ResolveMcMhwidthcm(const CObjectManager* manager, long nodeId, CString& out);
RIVELTA_API bool ResolveMcMhwidthm(const CObjectManager* manager, long nodeId, CString& out);
// Only metres are rounded as the record says; the others are "%.0f" of the number itself.
RIVELTA_API bool ResolveMcMholedep(const CObjectManager* manager, const CDrawfig* drawfig, long nodeId, UNITMODE unit,
                                   CString& out);
RIVELTA_API bool ResolveMcMholedepthmm(const CObjectManager* manager, const CDrawfig* drawfig, long nodeId,
                                       CString& out);
RIVELTA_API bool ResolveMcMholedepth(const CObjectManager* manager, const CDrawfig* drawfig, long nodeId, CString& out);

// ---- Note texts ----
// The note of an inflow, outflow, lateral or vacuum joint. Behind the first section token in it comes the section
// code; the token stays, for the drawing stage. False for any other type.
RIVELTA_API bool ResolveMcOuttext(const CObjectManager* manager, objectdata::OBJECTTYPE type, long id, CString& out);
RIVELTA_API bool ResolveMcArouttext(const CObjectManager* manager, long areaInqId, CString& out);
RIVELTA_API bool ResolveMcFxouttext(const CObjectManager* manager, long fixInqId, CString& out);
RIVELTA_API bool ResolveMcMtouttext(const CObjectManager* manager, long mountInqId, CString& out);
RIVELTA_API bool ResolveMcAoouttext(const CObjectManager* manager, long areaOutqId, CString& out);
RIVELTA_API bool ResolveMcFoouttext(const CObjectManager* manager, long outqId, CString& out);
// `id` is a vacuum joint's in a vacuum web, else a lateral's.
RIVELTA_API bool ResolveMcLaouttext(const CObjectManager* manager, long webId, long id, CString& out);
// The same for a crossing point: the code is the crossing's section ("inwidth"), or "danmencode" when no section has
// that name: the crossing's, or the point's where the crossing has none. Where a span crosses, the code is the span's.
RIVELTA_API bool ResolveMcIpouttext(const CObjectManager* manager, long intPosId, CString& out);

// ---- House connections: `id` is a vacuum joint's in a vacuum web, else a lateral's ----
RIVELTA_API bool ResolveMcLaunitnum(const CObjectManager* manager, long webId, long id, CString& out);
// The name of the last attachment box with the unit's code; false when none has it.
RIVELTA_API bool ResolveMcLaunitname(const CObjectManager* manager, long webId, long id, CString& out);
RIVELTA_API bool ResolveMcLadist(const CObjectManager* manager, const CDrawfig* drawfig, long webId, long id,
                                 CString& out);

// ---- Drawings ----
// The routes that the layouts show: "1,2~3". Layouts without their two spans or the first one's route are left out;
// false when nothing is left.
RIVELTA_API bool ResolveMcDrawnl(const CObjectManager* manager, const CArray<const CProfilelayout*>& layouts,
                                 CString& out);
RIVELTA_API bool ResolveMcDrawnl(const CObjectManager* manager, const CTypedPtrList<CObList, CProfilelayout*>& layouts,
                                 CString& out);
// The highest page; false when it is not above 0. The layouts of a web are those that it owns itself and those of each
// profile arrangement with an area in the web.
RIVELTA_API bool ResolveMcDrawpageall(const CObjectManager* manager, long webId, CString& out);
RIVELTA_API bool ResolveMcDrawpageall(const CObjectManager* manager, const CArray<const CProfilelayout*>& layouts,
                                      CString& out);
RIVELTA_API bool ResolveMcDrawpageall(const CObjectManager* manager,
                                      const CTypedPtrList<CObList, CProfilelayout*>& layouts, CString& out);
// With the digits "sclmkfig" of the format or, where it has none, of the first rounding record of the design.
RIVELTA_API bool ResolveMcDrawscale(const CObjectManager* manager, long drawformdatId, bool horizontal, CString& out);
RIVELTA_API bool ResolveMcDrawhscale(const CObjectManager* manager, long drawformdatId, CString& out);
RIVELTA_API bool ResolveMcDrawvscale(const CObjectManager* manager, long drawformdatId, CString& out);

} // namespace kelmacro
