// Ground lines: the level at a point of a span, levels for spans that have none, and lengths along a route.

#include "integrity/Placement.h"
#include "network/Links.h"

#include <cmath>

namespace {

constexpr double kNoLength = 1e-10;

struct GroundPoint {
    double distance;
    double level;
};

// Where a type does not say the existing line it means the planned one.
bool IsExisting(int type)
{
    return type == 1;
}

double LevelOf(const CSpan& span, int type)
{
    return span.GetSubAttributeDouble(IsExisting(type) ? L"oldgl" : L"newgl", 0.0);
}

double LevelOf(const CNode& node, int type)
{
    return node.GetSubAttributeDouble(IsExisting(type) ? L"ndoldgl" : L"ndnewgl", 0.0);
}

// Six decimals, blanks in front up to 13 characters: the form of levels and lengths that are filled in.
CString Padded(double value)
{
    CString text;
    text.Format(L"%*f", 13, value);
    return text;
}

// Half up, also below zero.
double ToMillimetres(double level)
{
    return std::floor((level + 0.0005) / 0.001) * 0.001;
}

double Between(const GroundPoint& left, const GroundPoint& right, double distance)
{
    const double length = right.distance - left.distance;
    if (length < kNoLength || distance < kNoLength) return left.level;
    return (right.level - left.level) / length * (distance - left.distance) + left.level;
}

} // namespace

double CObjectManager::get_PosGl(long spanId, int type, double dist, int mode) const
{
    const CSpan* const span = m_Span.Find(spanId);
    if (!span) return 0.0;
    GroundPoint left{0.0, LevelOf(*span, type)};
    GroundPoint right{span->GetSubAttributeDouble(L"splength", 0.0), 0.0};
    long lowerSpanId = 0;
    if (GetLowerSpan(spanId, lowerSpanId))
        right.level = LevelOf(*m_Span.Find(lowerSpanId), type);
    else if (const CNode* const lowerNode = m_Node.Find(obmgr::LowerNodeOf(*span)))
        right.level = LevelOf(*lowerNode, type);

    CList<long, long> ids;
    if (mode != 0) GetGlChangeIdListFromSpan(spanId, ids);
    for (const long id : ids) {
        const CGlChange* const record = m_GlChange.Find(id);
        const int recordType = record->GetSubAttributeInt(L"gltype", 0);
        if (recordType != type && recordType != 2) continue;
        if (mode == 1 && record->GetSubAttributeInt(L"glhilevel", 0) == 0) continue;
        const GroundPoint point{record->GetSubAttributeDouble(L"gldist", 0.0),
                                record->GetSubAttributeDouble(L"glelev", 0.0)};
        if (dist > point.distance) {
            if (point.distance > left.distance) left = point;
        } else if (point.distance < right.distance) {
            right = point;
        }
    }
    return ToMillimetres(Between(left, right, dist));
}

bool CObjectManager::SupplementGl(CList<long, long>& spanIds, long* lowerNodeId)
{
    if (spanIds.IsEmpty()) AfxThrowInvalidArgException();
    struct Stretch {
        CSpan* span;
        double length;
    };
    std::vector<Stretch> stretches;
    for (const long id : spanIds) {
        CSpan* const span = m_Span.Find(id);
        if (!span) return false;
        stretches.push_back({span, span->GetSubAttributeDouble(L"splength", 0.0)});
    }
    const CNode* const lowerNode = lowerNodeId ? m_Node.Find(*lowerNodeId) : nullptr;
    if (lowerNodeId && !lowerNode) return false;

    struct Line {
        const wchar_t* key;
        double start;
        double end;
    };
    const CSpan& first = *stretches.front().span;
    const CSpan& last = *stretches.back().span;
    const auto endLevel = [&](int type) { return lowerNode ? LevelOf(*lowerNode, type) : LevelOf(last, type); };
    const Line lines[] = {{L"newgl", LevelOf(first, 0), endLevel(0)}, {L"oldgl", LevelOf(first, 1), endLevel(1)}};
    if (!lowerNode) stretches.pop_back(); // it only gives the end level

    double total = 0.0;
    for (const Stretch& stretch : stretches)
        total += stretch.length;
    if (total < kNoLength) return false;
    for (const Line& line : lines) {
        const double slope = (line.end - line.start) / total;
        double distance = 0.0;
        for (const Stretch& stretch : stretches) {
            stretch.span->WriteSubAttribute(line.key, Padded(distance * slope + line.start));
            distance += stretch.length;
        }
    }
    return true;
}

bool CObjectManager::GetSpanFromDistAndDir(unsigned long routeId, double dist, int dir, unsigned long* spanId,
                                           CList<const CSpan*>* spans, double*) const
{
    CList<const CSpan*> ofRoute;
    if (!spans) GetSpanObjectListFromRoute(obmgr::Id32(routeId), dir != 0, ofRoute, true);
    const CList<const CSpan*>& given = spans ? *spans : ofRoute;
    std::vector<const CSpan*> sequence(given.begin(), given.end());
    if (sequence.empty()) AfxThrowInvalidArgException();
    if (spans && dir != 0) std::reverse(sequence.begin(), sequence.end());

    double sum = 0.0;
    const auto found = std::find_if(sequence.begin(), sequence.end(), [&](const CSpan* span) {
        sum += span->GetSubAttributeDouble(L"splength", 0.0);
        return sum >= dist;
    });
    const bool isOnRoute = found != sequence.end();
    if (spanId) *spanId = (isOnRoute ? *found : sequence.back())->GetObjectId();
    return isOnRoute;
}

bool CObjectManager::SpanEqualityLength(long routeId)
{
    const obmgr::RouteLine line = obmgr::LineOfRoute(*this, routeId);
    if (line.spans.empty()) return false;
    const auto count = static_cast<double>(line.spans.size());
    const double equal = std::trunc(line.length / count);
    for (CSpan* span : line.spans)
        span->WriteSubAttribute(L"splength", Padded(equal));
    line.spans.back()->WriteSubAttribute(L"splength", Padded(line.length - (count - 1.0) * equal));
    return true;
}
