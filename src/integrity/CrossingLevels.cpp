// Levels of crossings and laterals from their height standard and the section involved, and what a crossing lies on.

#include "network/Links.h"
#include "store/SectionKinds.h"

namespace {

// "shape" of a crossing. For kUnsized and unknown shapes all sizes are 0; those of kUnsized are not written.
enum { kSectionShape = 0, kCircle = 1, kSquare = 2, kRectangle = 3, kUnsized = 4 };
// "iphilevel" of a crossing point: what the entered height is.
enum { kPlannedCovering = 0, kTop = 1, kCentre = 2, kBottom = 3, kExistingCovering = 4 };
// "lahilevel" of a lateral.
enum { kLateralCovering = 0, kLateralOuterBottom = 1, kLateralInvert = 2 };
// "defbase": where a covering is measured.
enum { kAtPoint = 0, kAtSpanStart = 1, kAtSpanEnd = 2 };

constexpr int kAllGroundChanges = 2; // the mode of get_PosGl

// A crossing body, seen from outside; heights from the point that a section is levelled by.
struct Body {
    bool isSection = false;
    long sectionId = 0;
    double width = 0.0;
    double above = 0.0;
    double below = 0.0;
    double topThickness = 0.0;

    double Height() const { return above + below; }
};

bool ReadSection(const CObjectManager& manager, const CString& name, Body& body)
{
    if (name.IsEmpty()) return false;
    CString kind;
    double innerHeight = 0.0;
    double bottomThickness = 0.0;
    body.isSection = true;
    return manager.get_sectinfo(name, body.sectionId, kind, body.width, body.above, body.below, innerHeight,
                                body.topThickness, bottomThickness);
}

bool ReadCrossing(const CObjectManager& manager, const CInters& crossing, Body& body)
{
    switch (crossing.GetSubAttributeInt(L"shape", kSectionShape)) {
    case kSectionShape: return ReadSection(manager, crossing.GetSubAttribute(L"inwidth"), body);
    case kCircle:
    case kSquare:
        body.width = crossing.GetSubAttributeDouble(L"inwidth", 0.0);
        body.above = body.below = body.width / 2.0;
        return true;
    case kRectangle:
        body.width = crossing.GetSubAttributeDouble(L"inwidth", 0.0);
        body.above = body.below = crossing.GetSubAttributeDouble(L"inheight", 0.0) / 2.0;
        return true;
    default: return true;
    }
}

void WriteBody(CInters& crossing, const Body& body)
{
    crossing.WriteSubAttributeInt(L"itsecrecid", obmgr::Id32(body.sectionId));
    if (crossing.GetSubAttributeInt(L"shape", kSectionShape) == kUnsized) return;
    crossing.WriteSubAttributeDouble(L"itwidth", body.width);
    crossing.WriteSubAttributeDouble(L"itheight", body.Height());
}

// The ground from which the covering of a crossing point is measured.
double GroundOver(const CObjectManager& manager, const CIntPos& point, const CInters* crossing, const CSpan& span,
                  int line)
{
    const int ofCrossing = crossing ? crossing->GetSubAttributeInt(L"defbase", kAtPoint) : kAtPoint;
    double distance = 0.0;
    switch (point.GetSubAttributeInt(L"defbase", ofCrossing)) {
    case kAtPoint: distance = point.GetSubAttributeDouble(L"ipdist", 0.0); break;
    case kAtSpanStart: break;
    case kAtSpanEnd: distance = span.GetSubAttributeDouble(L"splength", 0.0); break;
    default: return 0.0;
    }
    return manager.get_PosGl(span.GetId32(), line, distance, kAllGroundChanges);
}

} // namespace

bool CObjectManager::get_sectinfo(const wchar_t* name, long& id, CString& kind, double& outerWidth, double& upperHeight,
                                  double& bottomThickness, double& innerHeight, double& topThickness,
                                  double& bottomThickness2) const
{
    id = 0;
    outerWidth = upperHeight = bottomThickness = innerHeight = topThickness = bottomThickness2 = 0.0;
    CPipeSection* section = nullptr;
    id = obmgr::Id32(GetSectRecId(name, kind, &section));
    if (!section) return false;
    const auto& keys =
        *std::find_if(std::begin(obmgr::kSectionKinds), std::end(obmgr::kSectionKinds),
                      [&](const obmgr::SectionKind& row) { return row.type == section->GetObjectType(); });
    innerHeight = section->GetSubAttributeDouble(keys.height, 0.0);
    topThickness = section->GetSubAttributeDouble(keys.topThick, 0.0);
    bottomThickness = bottomThickness2 = section->GetSubAttributeDouble(keys.bottomThick, 0.0);
    upperHeight = innerHeight + topThickness;
    outerWidth = section->GetSubAttributeDouble(keys.width, 0.0) + 2.0 * topThickness;
    return true;
}

bool CObjectManager::update_IntPosLevel(long intPosId)
{
    CIntPos* const point = m_IntPos.Find(intPosId);
    const CSpan* const span = point ? m_Span.Find(point->GetSubAttributeInt(L"ipspanid", 0)) : nullptr;
    if (!span) return false;
    const auto ids = point->Links();
    const bool isRouteFirst = obmgr::RouteOf(*span) == ids[0];
    CInters* const crossing = m_Inters.Find(isRouteFirst ? ids[1] : ids[0]);
    const CSpan* const crossingSpan = !crossing && isRouteFirst ? m_Span.Find(ids[1]) : nullptr;

    Body body;
    int count = 1;
    if (crossing) {
        if (!ReadCrossing(*this, *crossing, body)) return false;
        WriteBody(*crossing, body);
        count = crossing->GetSubAttributeInt(L"itcol", 0);
    } else if (!crossingSpan || !ReadSection(*this, crossingSpan->GetSubAttribute(L"spsecrecname"), body)) {
        return false;
    }

    const double height = body.Height() * count;
    const double entered = point->GetSubAttributeDouble(L"ipinhi", 0.0);
    const auto underGround = [&](int line) {
        return GroundOver(*this, *point, crossing, *span, line) - height - entered;
    };
    double level = 0.0;
    switch (point->GetSubAttributeInt(L"iphilevel", kPlannedCovering)) {
    case kPlannedCovering: level = underGround(0); break;
    case kTop: level = entered - height + body.topThickness; break;
    case kCentre: level = entered - height / 2.0; break;
    case kBottom: level = entered - (body.isSection ? body.below : 0.0); break;
    case kExistingCovering: level = underGround(1); break;
    default: break;
    }
    point->WriteSubAttributeDouble(L"ipinv", level);
    return true;
}

bool CObjectManager::update_LateralLevel(long lateralId)
{
    CLateral* const lateral = m_Lateral.Find(lateralId);
    const CSpan* const span = lateral ? m_Span.Find(lateral->GetSubAttributeInt(L"laspanid", 0)) : nullptr;
    Body body;
    if (!span || !ReadSection(*this, lateral->GetSubAttribute(L"lasecrecname"), body)) return false;
    lateral->WriteSubAttributeDouble(L"lawidth", body.width);
    lateral->WriteSubAttributeDouble(L"laheight", body.Height());

    const double entered = lateral->GetSubAttributeDouble(L"lainhi", 0.0);
    double level = 0.0;
    switch (lateral->GetSubAttributeInt(L"lahilevel", kLateralCovering)) {
    case kLateralCovering: {
        const double distance = lateral->GetSubAttributeDouble(L"ladist", 0.0);
        level = get_PosGl(span->GetId32(), 0, distance, kAllGroundChanges) - body.above - body.below - entered;
        break;
    }
    case kLateralOuterBottom: level = entered; break;
    case kLateralInvert: level = entered - body.below; break;
    default: break;
    }
    lateral->WriteSubAttributeDouble(L"laelev", level);
    return true;
}

bool CObjectManager::GetIdFromIntpos(long intPosId, long* routeId, long* crossingId, long* spanId) const
{
    for (long* output : {routeId, crossingId, spanId})
        if (output) *output = 0;
    const CIntPos* const point = m_IntPos.Find(intPosId);
    if (!point) return false;
    const auto ids = point->Links();
    const bool isRouteFirst = m_Route.Find(ids[0]) != nullptr;
    if (!isRouteFirst && !m_Route.Find(ids[1])) return false;
    const long route = ids[isRouteFirst ? 0 : 1];
    const long other = ids[isRouteFirst ? 1 : 0];
    if (routeId) *routeId = route;
    if (crossingId && m_Inters.Find(other)) *crossingId = other;
    if (!spanId) return true;

    if (const int placedOn = point->GetSubAttributeInt(L"ipspanid", 0)) {
        *spanId = placedOn;
        return true;
    }
    if (m_Span.Find(other)) {
        *spanId = other;
        return true;
    }
    const int number = point->GetSubAttributeInt(L"ipspannum", 0);
    if (number == 0) {
        unsigned long found = 0;
        if (!GetSpanFromDistAndDir(static_cast<unsigned long>(route), point->GetSubAttributeDouble(L"ipindist", 0.0),
                                   point->GetSubAttributeInt(L"ipdistdir", 0), &found, nullptr, nullptr))
            return false;
        *spanId = obmgr::Id32(found);
        return true;
    }
    CList<long, long> spans;
    if (!GetSortSpanInRoute(route, spans, false)) return true;
    if (number < 1 || number > spans.GetCount()) return false;
    *spanId = spans.GetAt(spans.FindIndex(number - 1));
    return true;
}
