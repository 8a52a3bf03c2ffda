// Every member of the network called with ids that name nothing, or nothing of the right type: it tells its failure, or
// does nothing, and never harms the design. Where 0 has a meaning of its own (the flow end) it is left out.

#include "network/UnknownIds.h"
#include "support/Dump.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace {

using namespace unknown_ids;
using support::Network;
using enum objectdata::OBJECTTYPE;

std::vector<Row> allRows()
{
    std::vector<Row> rows;
    for (const auto& part :
         {constructionRows(), spanRows(), webRows(), routeRows(), orderRows(), deletionRows(), copyRows()})
        rows.insert(rows.end(), part.begin(), part.end());
    return rows;
}

// ---- the designs ----

// Two webs with one record of each kind on everything, and an object of each network type that is deleted again.
class FullDesign {
public:
    FullDesign()
    {
        for (const char* route : {"M", "A", "X"})
            support::addRouteRecords(m_net, route);
        for (const char* span : {"m-x", "x-out", "a-m", "x1-y1"})
            support::addSpanRecords(m_net, span);
        for (const char* node : {"m", "out", "y1"})
            support::addNodeRecords(m_net, node);
        support::addWebRecords(m_net, "W");
        m_net.Add("D: Z = z1-z2");
        for (const char* name : {"D", "Z", "z1-z2", "z1"})
            m_deleted.push_back(m_net[name]);
        manager.DeleteWebObject(m_net["D"]);
    }

    Others GetOthers() const { return {m_net["W"], m_net["M"], m_net["m-x"], m_net["m"], true}; }
    // Ids that name nothing of the type.
    std::vector<long> BadIds(OBJECTTYPE type) const
    {
        std::vector<long> ids = m_deleted;
        for (const auto& [name, ownType] :
             {std::pair{"W", Web}, std::pair{"A", Route}, std::pair{"a-m", Span}, std::pair{"a", Node}})
            if (ownType != type) ids.push_back(m_net[name]);
        return ids;
    }

private:
    Network m_net{"W: M = m-x-out; A>M = a-m; V: X = x1-y1"};
    std::vector<long> m_deleted;

public:
    Manager& manager = m_net.manager;
};

constexpr long kNeverIds[] = {0, -1, std::numeric_limits<std::int32_t>::min(),
                              std::numeric_limits<std::int32_t>::max()};

class UnknownIds : public testing::TestWithParam<Row> {};
INSTANTIATE_TEST_SUITE_P(Network, UnknownIds, testing::ValuesIn(allRows()),
                         [](const auto& row) { return row.param.name; });

TEST_P(UnknownIds, DoNoHarmToADesign)
{
    auto design = std::make_unique<FullDesign>();
    std::vector<long> ids = design->BadIds(GetParam().type);
    ids.insert(ids.end(), std::begin(kNeverIds), std::end(kNeverIds));
    for (const long id : ids) {
        if (id == 0 && GetParam().zeroIsValid) continue;
        SCOPED_TRACE("id " + std::to_string(id));
        const std::string before = support::dump(design->manager);
        const long last = design->manager.GetCurrentObjectId();
        EXPECT_TRUE(GetParam().fails(design->manager, design->GetOthers(), id));
        if (GetParam().mayChange) {
            design.reset(); // only one design at a time has the default attributes
            design = std::make_unique<FullDesign>();
            continue;
        }
        ASSERT_EQ(support::dump(design->manager), before);
        ASSERT_EQ(design->manager.GetCurrentObjectId(), last);
    }
}

TEST_P(UnknownIds, DoNoHarmToAnEmptyDesign)
{
    Network net;
    constexpr Others kUnknown{3, 4, 5, 6, false};
    for (const long id : {0L, -1L, kNeverIds[2], kNeverIds[3], 1L, 8L}) {
        if (id == 0 && GetParam().zeroIsValid) continue;
        SCOPED_TRACE("id " + std::to_string(id));
        EXPECT_TRUE(GetParam().fails(net.manager, kUnknown, id));
        if (GetParam().mayChange) {
            net.manager.Initialize();
            continue;
        }
        ASSERT_EQ(net.manager.GetAllDataCount(), 0);
        ASSERT_EQ(net.manager.GetCurrentObjectId(), 0);
    }
}

} // namespace
