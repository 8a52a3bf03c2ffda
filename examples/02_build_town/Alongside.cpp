// What lies along the routes: ground line changes, house connections, crossings, valves.
//
// Such a record says where it lies twice: as it was entered (number of the span in the route, distance, direction)
// and as it was placed (the span and the distance from its upper end), with the elevation that follows.
#include "Keys.h"
#include "Town.h"

#include <cmath>
#include <optional>
#include <set>

namespace town {
namespace {

// The level at a distance from the upper end, on the straight line between the ends; to the millimetre.
double Between(double upper, double lower, const Span& span, double distance)
{
    return ToMillimetre(upper + (lower - upper) / span.length * distance);
}
double PlannedGround(const Plan& plan, const Span& span, double distance)
{
    return Between(plan.Upper(span).ground, plan.Lower(span).ground, span, distance);
}
double PresentGround(const Plan& plan, const Span& span, double distance)
{
    return Between(plan.Upper(span).oldGround, plan.Lower(span).oldGround, span, distance);
}

// Hundredths, as a tape gives them.
double ToCentimetre(double metres)
{
    return std::round(metres * 100) / 100;
}

double DistanceAbove(const Plan& plan, const Span& span)
{
    double distance = 0;
    for (const int s : plan.RouteOf(span).spans) {
        const Span& above = plan.spans[static_cast<std::size_t>(s)];
        if (above.number >= span.number) break;
        distance += above.length;
    }
    return distance;
}

// A road that is raised or lowered within a span. Spans with such a change are left alone by the records below,
// whose covers are measured from the straight ground line.
bool HasGroundChange(const Plan& plan, const Span& span)
{
    return plan.RouteOf(span).web != 2 && span.number == 3 && span.route % 2 == 0;
}

void MakeGroundChanges(CObjectManager& design, const Plan& plan)
{
    long order = 0;
    for (const Span& span : plan.spans) {
        if (!HasGroundChange(plan, span)) continue;
        ++order;
        const bool isElevation = order % 3 != 0;
        const bool fromBelow = order % 4 == 0;
        const double entered = ToCentimetre(span.length * 0.4);
        const double placed = fromBelow ? span.length - entered : entered;
        const double ground = PlannedGround(plan, span, placed);
        // Kind 0: the planned line, 2: the planned and the present one.
        const double height = isElevation ? ToMillimetre(ground + 0.1) : 0.15;
        CString station;
        station.Format(L"No.%d+%.1f", span.number, placed);
        design.CreateGlChange(plan.RouteOf(span).id, Keys()
                                                         .Number(L"glspannum", span.number)
                                                         .Real(L"glindist", entered)
                                                         .Number(L"gldistdir", fromBelow ? 1 : 0)
                                                         .Number(L"gltype", isElevation ? 2 : 0)
                                                         .Number(L"glhilevel", isElevation ? 1 : 0)
                                                         .Real(L"glinhi", height)
                                                         .Text(L"glstationno", station)
                                                         .Number(L"glspanid", span.id)
                                                         .Real(L"gldist", placed)
                                                         .Real(L"glelev", isElevation ? height : ground - height)
                                                         .Number(L"order", order));
    }
}

// Houses stand along every second sanitary span; half of the households are known by name.
void MakeHouseConnections(CObjectManager& design, const Plan& plan)
{
    static constexpr const wchar_t* kHouseholds[] = {L"佐藤", L"鈴木", L"高橋", L"田中", L"渡邉", L"𠮷田"};
    const double outer = kHousePipe.height + 2 * kHousePipe.wall;
    CList<long, long> unitIds;
    design.GetLaunitIdList(unitIds);
    long order = 0;
    for (const Span& span : plan.spans) {
        const Route& route = plan.RouteOf(span);
        if (route.web != 0 || span.number % 2 != 0) continue;
        ++order;
        const bool alongRoute = order % 5 == 0; // entered from the route's top instead of the span's
        const bool fromBelow = !alongRoute && order % 3 == 0;
        const double entered = ToCentimetre(span.length * 0.45 + (alongRoute ? DistanceAbove(plan, span) : 0));
        const double placed = alongRoute  ? entered - DistanceAbove(plan, span)
                              : fromBelow ? span.length - entered
                                          : entered;
        // 0: cover below the ground, 1: elevation of the outer bottom, 2: of the inner bottom.
        const long level = order % 3;
        const double ground = PlannedGround(plan, span, placed);
        const double height = level == 0 ? 0.9 : ToMillimetre(ground - 1.2);
        const double elevation = level == 0 ? ground - height - outer : level == 1 ? height : height - kHousePipe.wall;
        long lateralId = 0;
        design.CreateLateral(route.id,
                             Keys()
                                 .Number(L"laspannum", alongRoute ? 0 : span.number)
                                 .Real(L"laindist", entered)
                                 .Number(L"ladistdir", fromBelow ? 1 : 0)
                                 .Text(L"lasecrecname", kHousePipe.name)
                                 .Number(L"lahilevel", level)
                                 .Real(L"lainhi", height)
                                 .Number(L"launitid", order % 2 ? unitIds.GetHead() : unitIds.GetTail())
                                 .Text(L"laouttext", L"取付 [M:LADIST]m")
                                 .Number(L"laspanid", span.id)
                                 .Real(L"ladist", placed)
                                 .Real(L"lawidth", kHousePipe.width + 2 * kHousePipe.wall)
                                 .Real(L"laheight", outer)
                                 .Real(L"laelev", elevation)
                                 .Number(L"order", order),
                             &lateralId);
        if (order % 2 == 0)
            design.CreateAttuser(lateralId,
                                 Keys().Text(L"auname", kHouseholds[order / 2 % 6]).Number(L"aupopula", 1 + order % 5));
    }
}

// What is known to lie under the streets.
struct Facility {
    const wchar_t* name;
    long shape; // 0 a section of the library, 1 circle, 2 square, 3 rectangle
    const wchar_t* width;
    const wchar_t* height;
    long stacked;
    long id = 0;
};

std::vector<Facility> MakeFacilities(CObjectManager& design)
{
    std::vector<Facility> facilities = {
        {L"水道管 DIPφ150", 1, L"0.15", L"", 1},   {L"ガス管 φ200", 1, L"0.2", L"", 1},
        {L"電力管路", 2, L"0.5", L"", 2},          {L"地下道", 3, L"3.0", L"2.5", 1},
        {L"既設農業用水管", 0, L"HPφ600", L"", 1},
    };
    long order = 0;
    for (Facility& facility : facilities) {
        ++order;
        CString tag;
        const bool isSection = facility.shape == 0;
        const unsigned long section = isSection ? design.GetSectRecId(facility.width, tag, nullptr) : 0;
        double width = 0;
        double height = 0;
        if (isSection) {
            double top = 0;
            double bottom = 0;
            design.GetPipeInfo(facility.width, &height, &width, &top, &bottom, nullptr, tag);
            width += 2 * top;
            height += top + bottom;
        } else {
            width = std::wcstod(facility.width, nullptr);
            height = facility.shape == 3 ? std::wcstod(facility.height, nullptr) : width;
        }
        design.CreateInters(Keys()
                                .Text(L"itname", facility.name)
                                .Number(L"ittype", 2 - order % 2)
                                .Number(L"shape", facility.shape)
                                .Text(L"inwidth", facility.width)
                                .Text(L"inheight", facility.height)
                                .Number(L"itcol", facility.stacked)
                                .Number(L"itsecrecid", static_cast<long>(section))
                                .Real(L"itwidth", width)
                                .Real(L"itheight", height)
                                .Number(L"order", order),
                            &facility.id);
    }
    return facilities;
}

struct Crossing {
    double share;      // of the length of the span, from its upper end
    double otherShare; // of the other span
};

std::optional<Crossing> Cross(const Plan& plan, const Span& span, const Span& other)
{
    const Node& a = plan.Upper(span);
    const Node& b = plan.Lower(span);
    const Node& c = plan.Upper(other);
    const Node& d = plan.Lower(other);
    const double turn = (b.x - a.x) * (d.y - c.y) - (b.y - a.y) * (d.x - c.x);
    if (std::abs(turn) < 1) return std::nullopt; // side by side in one street
    const double share = ((c.x - a.x) * (d.y - c.y) - (c.y - a.y) * (d.x - c.x)) / turn;
    const double otherShare = ((c.x - a.x) * (b.y - a.y) - (c.y - a.y) * (b.x - a.x)) / turn;
    const auto isInside = [](double s) { return s > 0.01 && s < 0.99; };
    if (!isInside(share) || !isInside(otherShare)) return std::nullopt;
    return Crossing{share, otherShare};
}

// Where pipes of two nets cross, either one's longitudinal section shows the other.
long MakePipeCrossings(CObjectManager& design, const Plan& plan)
{
    long order = 0;
    for (const Span& span : plan.spans) {
        for (const Span& other : plan.spans) {
            if (plan.RouteOf(span).web == plan.RouteOf(other).web) continue;
            const std::optional<Crossing> crossing = Cross(plan, span, other);
            if (!crossing) continue;
            constexpr long kBottomElevation = 3;
            const Section& section = kSections[other.section];
            const double distance = ToCentimetre(crossing->share * span.length);
            const double invert =
                Between(other.upperInvert, other.lowerInvert, other, crossing->otherShare * other.length);
            design.CreateIntPos(plan.RouteOf(span).id, other.id,
                                Keys()
                                    .Number(L"ipspannum", span.number)
                                    .Real(L"ipindist", distance)
                                    .Number(L"iphilevel", kBottomElevation)
                                    .Real(L"ipinhi", invert)
                                    .Text(L"ipouttext", L"[M:SECDISP] 交差 [M:ROUTENUM]号線")
                                    .Number(L"ipspanid", span.id)
                                    .Real(L"ipdist", distance)
                                    .Real(L"ipinv", invert - section.wall)
                                    .Number(L"order", ++order));
        }
    }
    return order;
}

void MakeFacilityCrossings(CObjectManager& design, const Plan& plan, long order)
{
    const std::vector<Facility> facilities = MakeFacilities(design);
    std::size_t count = 0;
    for (const Route& route : plan.routes) {
        const Span& span = plan.spans[static_cast<std::size_t>(route.spans[route.spans.size() / 2])];
        if (HasGroundChange(plan, span)) continue;
        const Facility& facility = facilities[count % facilities.size()];
        const CInters* const record = design.GetIntersObjectOriginal(facility.id);
        const double height = record->GetSubAttributeDouble(L"itheight", 0) * static_cast<double>(facility.stacked);
        const bool isSection = facility.shape == 0;
        const double wall = isSection ? 0.05 : 0;

        const double distance = ToCentimetre(span.length * 0.3);
        const double ground = PlannedGround(plan, span, distance);
        // How the height is told: 0 cover below the planned ground, 1 top, 2 centre, 3 bottom, 4 cover below the
        // present ground; for covers also where they were measured: 0 here, 1 upper end, 2 lower end of the span.
        const long level = static_cast<long>(count % 5);
        const long measuredAt = static_cast<long>(count % 3);
        const double at = measuredAt == 0 ? distance : measuredAt == 1 ? 0 : span.length;
        const bool isCover = level == 0 || level == 4;
        const double entered = isCover ? 0.6 : ToMillimetre(ground - 0.8);
        double bottom = 0;
        switch (level) {
        case 0: bottom = PlannedGround(plan, span, at) - height - entered; break;
        case 1: bottom = entered - height + wall; break;
        case 2: bottom = entered - height / 2; break;
        case 3: bottom = entered - wall; break;
        case 4: bottom = PresentGround(plan, span, at) - height - entered; break;
        }
        const bool facilityFirst = count % 2 == 1; // either order of the two will do
        design.CreateIntPos(facilityFirst ? facility.id : route.id, facilityFirst ? route.id : facility.id,
                            Keys()
                                .Number(L"ipspannum", span.number)
                                .Real(L"ipindist", distance)
                                .Number(L"iphilevel", level)
                                .Real(L"ipinhi", entered)
                                .Number(L"defbase", measuredAt)
                                .Text(L"ipouttext", L"[M:INTSHAPE] [M:INTHIINFO]")
                                .Number(L"ipspanid", span.id)
                                .Real(L"ipdist", distance)
                                .Real(L"ipinv", bottom)
                                .Number(L"order", ++order));
        ++count;
    }
}

// Only the vacuum net has joints with valve units, section valves and inspection holes.
void MakeVacuumParts(CObjectManager& design, const Plan& plan)
{
    CList<long, long> unitIds;
    design.GetVacunitIdList(unitIds);
    long order = 0;
    for (const Span& span : plan.spans) {
        const Route& route = plan.RouteOf(span);
        if (plan.WebOf(route).disposalType != 4) continue;
        const double middle = ToCentimetre(span.length / 2);
        if (span.number % 2 == 0)
            design.CreateVjoint(route.id,
                                Keys()
                                    .Number(L"vjspnum", span.number)
                                    .Real(L"vjindist", middle)
                                    .Number(L"vjinletid", span.number % 4 ? unitIds.GetTail() : unitIds.GetHead())
                                    .Text(L"vjsecrecname", L"PEφ75")
                                    .Text(L"vjouttext", L"真空取付")
                                    .Number(L"vjspid", span.id)
                                    .Real(L"vjdist", middle)
                                    .Number(L"order", ++order));
        CString number;
        number.Format(L"%d-%d", route.number, span.number);
        if (span.number == 1)
            design.CreateSecvalve(
                Keys().Text(L"svname", L"仕切弁" + number).Number(L"svspid", span.id).Real(L"svdist", 1.5));
        if (span.number == 3)
            design.CreateOhaul(
                Keys().Text(L"ohname", L"点検口" + number).Number(L"ohspid", span.id).Real(L"ohdist", middle));
    }
}

// Pipes that end in a manhole by a fitting of their own, and the bends of spans that are not straight.
void MakeFittings(CObjectManager& design, const Plan& plan)
{
    for (const Route& route : plan.routes) {
        const Span& last = plan.LastSpan(route);
        CString name;
        name.Format(L"副管%d", route.number);
        if (route.web == 0 && !route.isMain)
            design.CreateNodeunit(plan.Lower(last).id, Keys()
                                                           .Text(L"nuname", name)
                                                           .Number(L"nuownspid", last.id)
                                                           .Real(L"nuhi", 0.6)
                                                           .Real(L"nuangle", route.flowOrder * 90));
    }
    for (const Span& span : plan.spans) {
        if (span.number % 6 != 5) continue;
        const Node& upper = plan.Upper(span);
        const Node& lower = plan.Lower(span);
        design.CreateGeometry(span.id, Keys()
                                           .Number(L"gmkind", 2)
                                           .Number(L"gmcount", 1)
                                           .Real(L"gmx1", ToMillimetre((upper.x + lower.x) / 2 + 0.25))
                                           .Real(L"gmy1", ToMillimetre((upper.y + lower.y) / 2 - 0.25)));
    }
}

} // namespace

void MakeAlongside(CObjectManager& design, const Plan& plan)
{
    MakeGroundChanges(design, plan);
    MakeHouseConnections(design, plan);
    const long pipeCrossings = MakePipeCrossings(design, plan);
    MakeFacilityCrossings(design, plan, pipeCrossings);
    MakeVacuumParts(design, plan);
    MakeFittings(design, plan);
}

} // namespace town
