#include "store/OrderSort.h"

#include "common/Text2Number.h"

#include <algorithm>

namespace obmgr {
namespace {

struct Ordered {
    long order;
    long id;
};

bool HasTies(std::vector<Ordered> items)
{
    const auto isLess = [](const Ordered& a, const Ordered& b) { return a.order < b.order; };
    std::sort(items.begin(), items.end(), isLess);
    const auto isSame = [](const Ordered& a, const Ordered& b) { return a.order == b.order; };
    return std::adjacent_find(items.begin(), items.end(), isSame) != items.end();
}

} // namespace

void SortByOrder(const ObjectTable& table, std::vector<long>& ids)
{
    const KeyId key = InternKey("order");
    std::vector<Ordered> items;
    items.reserve(ids.size());
    for (const long id : ids) {
        const CPipeObject* const object = table.Find(id);
        items.push_back({object ? ToLong(object->GetAttributes().Find(key)) : 0, id});
    }
    const auto isLess = [](const Ordered& a, const Ordered& b) { return a.order < b.order; };
    // The exchange sort leaves a list alone that already rises, and without ties there is but one result.
    if (std::is_sorted(items.begin(), items.end(), isLess)) return;
    if (!HasTies(items)) {
        std::sort(items.begin(), items.end(), isLess);
    } else {
        for (std::size_t i = 0; i < items.size(); ++i)
            for (std::size_t j = i + 1; j < items.size(); ++j)
                if (items[i].order > items[j].order) std::swap(items[i], items[j]);
    }
    std::transform(items.begin(), items.end(), ids.begin(), [](const Ordered& item) { return item.id; });
}

} // namespace obmgr
