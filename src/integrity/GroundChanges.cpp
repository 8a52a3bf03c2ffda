// Ground changes: placing and levelling them, the ones on a span, their order along it.

#include "common/Numeric.h"
#include "integrity/Placement.h"
#include "network/Links.h"

#include <numeric>

namespace {

using GlChangeArray = CTypedPtrArray<CObArray, CGlChange*>;
using GlChangeList = CTypedPtrList<CObList, CGlChange*>;

constexpr double kSameDistance = 1e-5;

// What "gltype" says of a record and the type argument of a query.
enum { kPlannedLine = 0, kExistingLine = 1 };
// What "glhilevel" says of the entered height.
enum { kRelativeHeight = 0, kElevation = 1 };

// Bits of the status of a ground change.
constexpr int kNumberBeyondRoute = 1;
constexpr int kDistanceBeyond = 2;

void SetStatusBit(CGlChange& record, int bit, bool isSet)
{
    const int status = isSet ? record.GetStatus() | bit : record.GetStatus() & ~bit;
    if (status != record.GetStatus()) record.SetStatus(status);
}

bool IsOfLine(const CGlChange& record, int type)
{
    const int recordType = record.GetSubAttributeInt(L"gltype", 0);
    return !(type == kPlannedLine && recordType == kExistingLine) &&
           !(type == kExistingLine && recordType == kPlannedLine);
}

// Numbers for distances, rising with them; one number for those that do not differ from the least of theirs.
std::vector<std::size_t> PlacesAlong(const std::vector<double>& distances)
{
    std::vector<std::size_t> rising(distances.size());
    std::iota(rising.begin(), rising.end(), std::size_t{0});
    std::sort(rising.begin(), rising.end(), [&](auto a, auto b) { return distances[a] < distances[b]; });
    std::vector<std::size_t> places(distances.size());
    std::size_t place = 0;
    double least = distances[rising.front()];
    for (const std::size_t i : rising) {
        if (orn_compare_double(distances[i], least, kSameDistance) != 0) {
            ++place;
            least = distances[i];
        }
        places[i] = place;
    }
    return places;
}

} // namespace

bool CObjectManager::update_GlChange(long webId, bool setLevel)
{
    std::vector<CPipeObject*> relativeRecords;
    const auto onPlaced = [&](CPipeObject& record) {
        const int standard = record.GetSubAttributeInt(L"glhilevel", 0);
        if (standard == kElevation && setLevel)
            record.WriteSubAttributeDouble(L"glelev", record.GetSubAttributeDouble(L"glinhi", 0.0));
        if (standard == kRelativeHeight) relativeRecords.push_back(&record);
    };
    if (!obmgr::PlaceRecords(*this, webId, obmgr::PlacedKind::GroundChange, onPlaced)) return false;
    // A relative height stands on the line through the elevations, of other routes as well: all are placed by now.
    for (CPipeObject* record : relativeRecords) {
        const double ground =
            get_PosGl(record->GetSubAttributeInt(L"glspanid", 0), record->GetSubAttributeInt(L"gltype", 0),
                      record->GetSubAttributeDouble(L"gldist", 0.0), 1);
        record->WriteSubAttributeDouble(L"glelev", ground - record->GetSubAttributeDouble(L"glinhi", 0.0));
    }
    return true;
}

// Equality within a tolerance does not carry over from pair to pair: the tolerance is counted from the first record of
// each place, so that the outcome does not hang on the steps of a sort.
void CObjectManager::SortGLChange(GlChangeArray& records) const
{
    if (records.GetSize() < 2) return;
    struct Entry {
        CGlChange* record;
        std::size_t place;
        int order;
    };
    std::vector<double> distances;
    for (const CGlChange* record : records)
        distances.push_back(record->GetSubAttributeDouble(L"gldist", 0.0));
    const std::vector<std::size_t> places = PlacesAlong(distances);
    std::vector<Entry> entries;
    for (CGlChange* record : records)
        entries.push_back({record, places[entries.size()], record->GetSubAttributeInt(L"order", 0)});
    std::stable_sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return a.place != b.place ? a.place < b.place : a.order < b.order;
    });
    std::ptrdiff_t index = 0;
    for (const Entry& entry : entries)
        records.SetAt(index++, entry.record);
}

void CObjectManager::SortGLChange(GlChangeList& records) const
{
    GlChangeArray array;
    GLChangeListToArray(records, array);
    SortGLChange(array);
    GLChangeArrayToList(array, records);
}

void CObjectManager::GLChangeArrayToList(const GlChangeArray& from, GlChangeList& to) const
{
    to.RemoveAll();
    obmgr::AppendAll(to, from);
}

void CObjectManager::GLChangeListToArray(const GlChangeList& from, GlChangeArray& to) const
{
    to.RemoveAll();
    for (CGlChange* record : from)
        to.Add(record);
}

bool CObjectManager::GetAllGlChangeObjectArrayFromSpan(const CSpan* span, GlChangeArray& records,
                                                       CList<const CSpan*>* spans, bool sort, int type) const
{
    records.RemoveAll();
    if (!span) return false;
    const std::int32_t routeId = obmgr::RouteOf(*span);
    const int spanCount = GetSpanNumInRoute(routeId);
    if (spanCount == 0) return false;
    const double length = span->GetSubAttributeDouble(L"splength", 0.0);

    for (CGlChange* record : obmgr::LinkedTo(m_GlChange, obmgr::kOwner, routeId)) {
        if (!IsOfLine(*record, type)) continue;
        const int placedOn = record->GetSubAttributeInt(L"glspanid", 0);
        const int number = record->GetSubAttributeInt(L"glspannum", 0);
        const double entered = record->GetSubAttributeDouble(L"glindist", 0.0);
        if (placedOn == 0 && number == 0) {
            unsigned long found = 0;
            const int direction = record->GetSubAttributeInt(L"gldistdir", 0);
            const auto route = static_cast<unsigned long>(routeId);
            const bool isOnRoute = GetSpanFromDistAndDir(route, entered, direction, &found, spans, nullptr);
            SetStatusBit(*record, kDistanceBeyond, !isOnRoute);
            if (found == span->GetObjectId()) records.Add(record);
            continue;
        }
        if (placedOn != 0) {
            if (placedOn != span->GetId32()) continue;
            records.Add(record);
            if (number == 0) continue;
        } else {
            const bool isBeyond = number < 0 || number > spanCount;
            SetStatusBit(*record, kNumberBeyondRoute, isBeyond);
            if ((isBeyond ? spanCount : number) != span->GetSubAttributeInt(L"spno", 0)) continue;
            records.Add(record);
        }
        SetStatusBit(*record, kDistanceBeyond, entered > length);
    }
    if (sort) SortGLChange(records);
    return !records.IsEmpty();
}

bool CObjectManager::GetAllGlChangeObjectArrayFromSpan(unsigned long spanId, GlChangeArray& records,
                                                       CList<const CSpan*>* spans, bool sort, int type) const
{
    return GetAllGlChangeObjectArrayFromSpan(m_Span.Find(obmgr::Id32(spanId)), records, spans, sort, type);
}

bool CObjectManager::GetAllGlChangeObjectListFromSpan(const CSpan* span, GlChangeList& records,
                                                      CList<const CSpan*>* spans, bool sort, int type) const
{
    GlChangeArray array;
    GetAllGlChangeObjectArrayFromSpan(span, array, spans, sort, type);
    GLChangeArrayToList(array, records);
    return !records.IsEmpty();
}

bool CObjectManager::GetAllGlChangeObjectListFromSpan(unsigned long spanId, GlChangeList& records,
                                                      CList<const CSpan*>* spans, bool sort, int type) const
{
    return GetAllGlChangeObjectListFromSpan(m_Span.Find(obmgr::Id32(spanId)), records, spans, sort, type);
}
