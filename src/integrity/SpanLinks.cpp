// Whether spans are linked by the way down, and the profile layouts whose spans are.

#include "common/Numeric.h"
#include "network/Links.h"

using obmgr::Id32;

namespace {

// Positions of layouts nearer to each other than this count as one, metres.
constexpr double kSamePosition = 1e-5;

struct PlacedLayout {
    double position;
    const CProfilelayout* layout;
};

// Equality within a tolerance does not carry over from pair to pair, which no sort of the standard library allows. This
// merge keeps the order of what counts as equal and ends for any numbers.
void SortByPosition(std::vector<PlacedLayout>& layouts)
{
    const std::size_t count = layouts.size();
    std::vector<PlacedLayout> merged(count);
    for (std::size_t width = 1; width < count; width *= 2) {
        for (std::size_t begin = 0; begin < count; begin += 2 * width) {
            const std::size_t middle = std::min(begin + width, count);
            const std::size_t end = std::min(begin + 2 * width, count);
            std::size_t left = begin;
            std::size_t right = middle;
            for (std::size_t i = begin; i < end; ++i) {
                const bool takeRight =
                    left == middle || (right < end && orn_compare_double(layouts[left].position,
                                                                         layouts[right].position, kSamePosition) > 0);
                merged[i] = layouts[takeRight ? right++ : left++];
            }
        }
        layouts.swap(merged);
    }
}

} // namespace

bool CObjectManager::CheckLinkSpan(long spanId, long otherSpanId, int direction) const
{
    if (Id32(spanId) == 0 || Id32(otherSpanId) == 0) return false;
    CList<long, long> line;
    return direction == 1 ? GetLowerSpanObjectList(otherSpanId, spanId, line)
                          : GetLowerSpanObjectList(spanId, otherSpanId, line);
}

bool CObjectManager::GetProfilelayoutIdList(unsigned long arrangementId, int page, bool sort,
                                            CArray<const CProfilelayout*>& layouts) const
{
    layouts.RemoveAll();
    if (Id32(arrangementId) == 0 || page < 1) return false;
    std::vector<PlacedLayout> found;
    for (const CProfilelayout* layout : obmgr::LinkedTo(m_Profilelayout, obmgr::kOwner, Id32(arrangementId))) {
        const auto read = [&](const wchar_t* key) { return layout->GetSubAttributeInt(key, 0); };
        if (read(L"ploutpage") != page) continue;
        if (!CheckLinkSpan(read(L"ploutstspid"), read(L"ploutendspid"), read(L"ploutdir"))) continue;
        found.push_back({layout->GetSubAttributeDouble(L"ploutstpos", 0.0), layout});
    }
    if (sort) SortByPosition(found);
    for (const PlacedLayout& placed : found)
        layouts.Add(placed.layout);
    return !found.empty();
}
