// The city in the sizes at which the network benchmarks show growth, with its ids in an order that no cache guesses;
// and what those benchmarks share.
#pragma once

#include "City.h"
#include "Ratios.h"

#include <algorithm>
#include <ctime>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace bench {

inline constexpr long kSpans[] = {10'000, 100'000, 1'000'000};

// "Name/10k", "Name/1M": what the figure of a size is called.
inline std::string Sized(std::string name, long size)
{
    const bool isMillions = size % 1'000'000 == 0;
    name.append("/").append(std::to_string(size / (isMillions ? 1'000'000 : 1000))).append(isMillions ? "M" : "k");
    return name;
}

// A city that issues ids of its own above those that it was made with.
class OpenCity : public CObjectManager {
public:
    OpenCity(const Shape& shape, long spans)
    {
        City(*this, shape).Build(spans);
        SetObjectId(GetMaxObjectId());
    }
};

template <class T> std::vector<long> ShuffledIds(const CObjectDataBase<T>& table)
{
    std::vector<long> ids;
    for (const T* object : table)
        ids.push_back(object->GetId32());
    std::shuffle(ids.begin(), ids.end(), std::mt19937(1));
    return ids;
}

// The route at the upper end of a web's main line.
inline long TopRoute(const CObjectManager& manager, long web)
{
    CList<long, long> ids;
    manager.GetRouteIdList(web, ids);
    long top = 0;
    long place = 0;
    for (const long id : ids)
        if (!IsSideRoute(place++)) top = id;
    return top;
}

class NetworkCity {
public:
    // Only the size last asked for is kept: the largest takes more than a gigabyte.
    static NetworkCity& Of(long spans)
    {
        static std::unique_ptr<NetworkCity> kept;
        if (!kept || kept->size != spans) {
            kept.reset();
            kept.reset(new NetworkCity(spans));
        }
        return *kept;
    }

    const long size;
    OpenCity manager;
    const std::vector<long> webs, routes, spans;

private:
    explicit NetworkCity(long spanCount)
        : size(spanCount), manager({}, Size(spanCount)), webs(ShuffledIds(manager.GetWebDb())),
          routes(ShuffledIds(manager.GetRouteDb())), spans(ShuffledIds(manager.GetSpanDb()))
    {
    }
};

// Goes round and round through a list.
template <class T> class Round {
public:
    explicit Round(const std::vector<T>& items) : m_items(items) {}
    const T& Next()
    {
        if (m_at == m_items.size()) m_at = 0;
        return m_items[m_at++];
    }

private:
    const std::vector<T>& m_items;
    std::size_t m_at = 0;
};

// The processor time of `work` alone, for benchmarks that undo it outside of the time.
template <class Work> void TimeOnly(benchmark::State& state, Work&& work)
{
    const auto seconds = [] {
        timespec now{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
        return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
    };
    const double start = seconds();
    work();
    state.SetIterationTime(seconds() - start);
}

// The figure "<name>:entry": seconds for each of `count` entries.
inline void CountEntries(benchmark::State& state, std::ptrdiff_t count)
{
    if (count == 0) state.SkipWithError("nothing found");
    state.counters["entry"] =
        benchmark::Counter(static_cast<double>(count), benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

template <class Body> benchmark::internal::Benchmark* Register(const std::string& name, Body&& body)
{
    return benchmark::RegisterBenchmark(name.c_str(), std::forward<Body>(body));
}

} // namespace bench
