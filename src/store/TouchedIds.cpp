#include "store/TouchedIds.h"

namespace obmgr {

TouchedIds::~TouchedIds()
{
    if (!m_isWatching) return;
    for (const Source& source : m_sources)
        source.table->Unwatch(*this);
}

template <class Use> void TouchedIds::ForIdsOf(const ObjectTable& table, const CPipeObject& object, Use&& use) const
{
    for (const Source& source : m_sources)
        if (source.table == &table)
            use(source.link == kOwnId ? object.GetId32() : object.Links()[static_cast<std::size_t>(source.link)]);
}

void TouchedIds::Note(std::int32_t id)
{
    if (m_touched.empty() || m_touched.back() != id) m_touched.push_back(id);
}

void TouchedIds::TakePending()
{
    if (!m_pending.object) return;
    m_pending.object = nullptr;
    for (const std::int32_t id : m_pending.ids)
        Note(id);
}

void TouchedIds::BeforeValueChange(const ObjectTable& table, const CPipeObject& object) noexcept
{
    if (!m_isComplete) return;
    try {
        TakePending();
        m_pending.ids.clear();
        ForIdsOf(table, object, [&](std::int32_t id) { m_pending.ids.push_back(id); });
        m_pending.table = &table;
        m_pending.object = &object;
    } catch (...) {
        m_isComplete = false;
    }
}

void TouchedIds::AfterValueChange(const ObjectTable& table, const CPipeObject& object) noexcept
{
    if (!m_isComplete) return;
    try {
        // Most changes are of attributes: the ids are what they were.
        if (m_pending.object == &object && m_pending.table == &table) {
            std::size_t same = 0;
            ForIdsOf(table, object, [&](std::int32_t id) { same += m_pending.ids[same] == id; });
            if (same == m_pending.ids.size()) {
                m_pending.object = nullptr;
                return;
            }
        }
        TakePending();
        ForIdsOf(table, object, [&](std::int32_t id) { Note(id); });
        // So many that a look at everything costs no more.
        constexpr std::size_t kAlways = 4096;
        std::size_t objects = 0;
        for (const Source& source : m_sources)
            objects += source.table->Count();
        if (m_touched.size() > kAlways + objects) m_isComplete = false;
    } catch (...) {
        m_isComplete = false;
    }
}

void TouchedIds::Gather()
{
    if (!m_isComplete) {
        m_isWatching = true; // told first: memory may run out when only some of the tables have the watch
        for (const Source& source : m_sources)
            source.table->Watch(*this);
        m_touched.clear();
        m_pending.object = nullptr;
        for (const Source& source : m_sources)
            source.table->ForEach([&](const CPipeObject& object) {
                Note(source.link == kOwnId ? object.GetId32() : object.Links()[static_cast<std::size_t>(source.link)]);
            });
        m_isComplete = true;
    }
    TakePending();
    std::sort(m_touched.begin(), m_touched.end());
    m_touched.erase(std::unique(m_touched.begin(), m_touched.end()), m_touched.end());
}

} // namespace obmgr
