#include "store/OrderSort.h"

#include "common/Text2Number.h"

#include <algorithm>
#include <numeric>

// The exchange sort sends a value along the list in each pass: every place keeps the greater of what it holds and what
// comes by, and hands the lesser on; equal values pass. What comes out behind the first n places is therefore an
// insertion sort with a twist. Inserting x behind all values that are not greater delays the greater ones by a place,
// and of a run of equal ones the first comes out last: each run of equal values greater than x turns left by one.
//
// So the result can be found run by run. A run's k-th value goes to its end; then the run turns once for each lesser
// value that is inserted before the run's next one. Counting those takes a tree of counts, and undoing the turns from
// the last to the first gives every value its place.

namespace obmgr {
namespace {

// Counts at places, and sums of them, in logarithmic time.
class CountTree {
public:
    explicit CountTree(std::size_t size) : m_sums(size + 1) {}

    void Add(std::size_t place, long by)
    {
        for (std::size_t at = place + 1; at < m_sums.size(); at += at & (~at + 1))
            m_sums[at] += by;
    }
    // Of the places before `place`.
    long SumBefore(std::size_t place) const
    {
        long sum = 0;
        for (std::size_t at = place; at > 0; at &= at - 1)
            sum += m_sums[at];
        return sum;
    }
    // The place of the count'th one, counted from 0, when each place has 0 or 1.
    std::size_t PlaceOf(long count) const
    {
        std::size_t place = 0;
        std::size_t step = 1;
        while (2 * step < m_sums.size())
            step *= 2;
        for (; step > 0; step /= 2) {
            if (place + step >= m_sums.size() || m_sums[place + step] > count) continue;
            place += step;
            count -= m_sums[place];
        }
        return place;
    }

private:
    std::vector<long> m_sums;
};

// The run of the values that stand at `inputs` in the list, as the turns leave it. turns[k] is how often the run is
// turned after its value k was put at its end.
void PlaceRun(const std::vector<std::size_t>& inputs, const std::vector<long>& turns, std::size_t* result)
{
    const auto size = static_cast<long>(inputs.size());
    CountTree isFree(inputs.size());
    for (std::size_t i = 0; i < inputs.size(); ++i)
        isFree.Add(i, 1);
    // The free places make a ring; `head` is the number, among them, of the one where the run begins.
    long head = 0;
    for (long length = size; length > 0; --length) {
        const auto k = static_cast<std::size_t>(length - 1);
        // Before the turns, the run began so many places earlier, and value k was its last.
        const long begin = (head + length - turns[k] % length) % length;
        const long last = (begin + length - 1) % length;
        const std::size_t place = isFree.PlaceOf(last);
        result[place] = inputs[k];
        isFree.Add(place, -1);
        head = length == 1 ? 0 : last % (length - 1);
    }
}

} // namespace

std::vector<std::size_t> ExchangeSortOrder(const std::vector<long>& keys)
{
    const std::size_t size = keys.size();
    std::vector<std::size_t> order(size);
    std::iota(order.begin(), order.end(), std::size_t{0});
    // The exchange sort leaves a list alone that already rises.
    if (std::is_sorted(keys.begin(), keys.end())) return order;
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });

    // For each value, in list order, how many lesser ones were inserted by then.
    std::vector<std::size_t> runStart(size); // of each value's run, in the sorted list
    for (std::size_t i = 0; i < size; ++i)
        runStart[order[i]] = i > 0 && keys[order[i - 1]] == keys[order[i]] ? runStart[order[i - 1]] : i;
    std::vector<long> lesserBefore(size);
    CountTree inserted(size);
    for (std::size_t i = 0; i < size; ++i) {
        lesserBefore[i] = inserted.SumBefore(runStart[i]);
        inserted.Add(runStart[i], 1);
    }

    for (std::size_t begin = 0; begin < size;) {
        std::size_t end = begin + 1;
        while (end < size && keys[order[end]] == keys[order[begin]])
            ++end;
        if (end - begin > 1) {
            const std::vector<std::size_t> inputs(order.begin() + static_cast<std::ptrdiff_t>(begin),
                                                  order.begin() + static_cast<std::ptrdiff_t>(end));
            std::vector<long> turns;
            for (std::size_t k = 0; k < inputs.size(); ++k) {
                const long until =
                    k + 1 < inputs.size() ? lesserBefore[inputs[k + 1]] : static_cast<long>(begin); // all lesser ones
                turns.push_back(until - lesserBefore[inputs[k]]);
            }
            PlaceRun(inputs, turns, &order[begin]);
        }
        begin = end;
    }
    return order;
}

void SortByOrder(const ObjectTable& table, std::vector<long>& ids)
{
    const KeyId key = InternKey("order");
    std::vector<long> keys;
    keys.reserve(ids.size());
    for (const long id : ids) {
        const CPipeObject* const object = table.Find(id);
        keys.push_back(object ? ToLong(object->GetAttributes().Find(key)) : 0);
    }
    std::vector<long> sorted;
    sorted.reserve(ids.size());
    for (const std::size_t place : ExchangeSortOrder(keys))
        sorted.push_back(ids[place]);
    ids = std::move(sorted);
}

void SortByNumber(const ObjectTable& table, const wchar_t* key, CList<long, long>& ids)
{
    std::vector<std::pair<int, long>> items;
    for (const long id : ids)
        if (const CPipeObject* const object = table.Find(id))
            items.emplace_back(object->GetSubAttributeInt(key, 0), id);
    std::stable_sort(items.begin(), items.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    ids.RemoveAll();
    for (const auto& item : items)
        ids.AddTail(item.second);
}

} // namespace obmgr
