// The ids that changes have touched, for questions such as "which nodes has no span?": a query looks at the touched
// ids alone, not at the whole table.
#pragma once

#include "store/ObjectTable.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace obmgr {

class RIVELTA_API TouchedIds final : public ValueWatch {
public:
    static constexpr int kOwnId = -1;
    // Where ids stand: in a link field of a table's objects, or as the objects' own ids.
    struct Source {
        ObjectTable* table;
        int link;
    };

    explicit TouchedIds(std::vector<Source> sources) : m_sources(std::move(sources)) {}
    TouchedIds(const TouchedIds&) = delete;
    TouchedIds& operator=(const TouchedIds&) = delete;
    ~TouchedIds();

    // Those ids, rising, for which `isOdd` holds. It has to hold for no id that was never touched since it did not
    // hold; the first call, and one after very many changes, looks at every id.
    template <class IsOdd> const std::vector<std::int32_t>& Where(IsOdd&& isOdd)
    {
        Gather();
        m_touched.erase(std::remove_if(m_touched.begin(), m_touched.end(), [&](std::int32_t id) { return !isOdd(id); }),
                        m_touched.end());
        return m_touched;
    }

    void BeforeValueChange(const ObjectTable& table, const CPipeObject& object) noexcept override;
    void AfterValueChange(const ObjectTable& table, const CPipeObject& object) noexcept override;
    void Cleared() noexcept override { m_isComplete = false; }

private:
    // What stood in the sources before a change whose end has not been told yet.
    struct Pending {
        const ObjectTable* table = nullptr;
        const CPipeObject* object = nullptr;
        std::vector<std::int32_t> ids;
    };

    void Gather();
    void TakePending();
    void Note(std::int32_t id);
    template <class Use> void ForIdsOf(const ObjectTable& table, const CPipeObject& object, Use&& use) const;

    std::vector<Source> m_sources;
    std::vector<std::int32_t> m_touched;
    Pending m_pending;
    bool m_isWatching = false;
    bool m_isComplete = false; // every id that may be odd is among the touched ones
};

} // namespace obmgr
