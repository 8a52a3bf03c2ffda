#include "objects/ObjectTypes.h"

#include "framework/String.h"
#include "resources/StringIds.h"

#include <algorithm>
#include <unordered_map>

namespace obmgr {
namespace {

using namespace objectdata;

constexpr LinkField Ref(std::string_view name, OBJECTTYPE target)
{
    return {name, true, target};
}

constexpr LinkField Code(std::string_view name)
{
    return {name, false, NoOwner};
}

template <class... Field> constexpr LinkFields MakeLinks(Field... field)
{
    return {{field...}, static_cast<int>(sizeof...(field))};
}

constexpr auto Accepts = Reader::Accepts;
constexpr auto Merges = Reader::Merges;
constexpr auto Refuses = Reader::Refuses;

#define OBM_LINKS(...) MakeLinks(__VA_ARGS__)
constexpr RecordInfo kRecords[] = {
#define OBM_RECORD(T, tag, owner, create, get, set, ids, objects, del, links, save, reader, failure)                   \
    {T, tag, L"C" #T, owner, links, save, reader, failure},
#include "objects/ObjectTypes.def"
};
#undef OBM_LINKS

static_assert(std::size(kRecords) == kTypeCount);

constexpr int kSavedTypes = 87;

constexpr bool SaveRanksAreDense()
{
    for (int rank = 1; rank <= kSavedTypes; ++rank) {
        int found = 0;
        for (const RecordInfo& row : kRecords)
            found += row.save == rank;
        if (found != 1) return false;
    }
    return true;
}
static_assert(SaveRanksAreDense(), "the places in a full save run from 1 to 87, each once");

using Order = std::array<OBJECTTYPE, kTypeCount>;

constexpr Order TypeOrder()
{
    Order order{};
    for (int i = 0; i < kTypeCount; ++i)
        order[static_cast<std::size_t>(i)] = static_cast<OBJECTTYPE>(i);
    return order;
}

constexpr void MoveBefore(Order& order, OBJECTTYPE moved, OBJECTTYPE place)
{
    const auto from = std::find(order.begin(), order.end(), moved);
    const auto to = std::find(order.begin(), order.end(), place);
    if (from > to)
        std::rotate(to, from, from + 1);
    else
        std::rotate(from, from + 1, to);
}

constexpr void MoveAfter(Order& order, OBJECTTYPE moved, OBJECTTYPE place)
{
    const auto from = std::find(order.begin(), order.end(), moved);
    const auto to = std::find(order.begin(), order.end(), place);
    std::rotate(from, from + 1, to + 1);
}

constexpr Order MakeCanonicalOrder()
{
    Order order = TypeOrder();
    MoveBefore(order, AreaSet, AreaOutq);
    MoveAfter(order, AttBoxvu, Manholecapcode);
    return order;
}

// Saved types by rank, then the map data in type order.
constexpr Order MakeSaveOrder()
{
    Order order{};
    std::size_t mapData = kSavedTypes;
    for (const RecordInfo& row : kRecords) {
        const std::size_t place = row.save > 0 ? static_cast<std::size_t>(row.save - 1) : mapData++;
        order[place] = row.type;
    }
    return order;
}

constexpr Order kCanonicalOrder = MakeCanonicalOrder();
constexpr Order kSaveOrder = MakeSaveOrder();

const std::unordered_map<std::string_view, const RecordInfo*>& TagTable()
{
    static const auto table = [] {
        std::unordered_map<std::string_view, const RecordInfo*> byTag;
        for (const RecordInfo& row : kRecords)
            byTag.emplace(row.tag, &row);
        return byTag;
    }();
    return table;
}

constexpr std::size_t kLongestTag = 32;

template <class Text> const RecordInfo* FindNarrowed(Text text, bool ignoreCase)
{
    if (text.size() > kLongestTag) return nullptr;
    char tag[kLongestTag];
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = text[i];
        if (c <= 0 || c > 0x7E) return nullptr;
        tag[i] = static_cast<char>(ignoreCase && c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    }
    return FindByTag({tag, text.size()});
}

} // namespace

std::span<const RecordInfo> Records()
{
    return kRecords;
}

const RecordInfo& RecordOf(OBJECTTYPE type)
{
    return kRecords[static_cast<std::size_t>(type)];
}

const RecordInfo* FindByTag(std::string_view tag)
{
    const auto& table = TagTable();
    const auto found = table.find(tag);
    return found == table.end() ? nullptr : found->second;
}

const RecordInfo* FindByTagIgnoringCase(std::u16string_view tag)
{
    return FindNarrowed(tag, true);
}

std::span<const OBJECTTYPE> CanonicalOrder()
{
    return kCanonicalOrder;
}

std::span<const OBJECTTYPE> SaveOrder()
{
    return std::span(kSaveOrder).first(kSavedTypes);
}

std::span<const OBJECTTYPE> MapDataOrder()
{
    return std::span(kSaveOrder).subspan(kSavedTypes);
}

} // namespace obmgr

objectdata::OBJECTTYPE objectdata::Name2Type(const CString& name)
{
    const obmgr::RecordInfo* row = obmgr::FindNarrowed(name.View(), false);
    return row ? row->type : NoOwner;
}
