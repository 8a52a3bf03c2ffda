// Names and codes that several records have, though they are looked up by them.
#include "Objects.h"
#include "findings/Finders.h"
#include "store/SectionKinds.h"

#include <string>

namespace obmgr::tool {

namespace {

// An absent key counts as the empty text.
std::string_view valueIn(const CPipeObject& object, std::optional<KeyId> key)
{
    return key ? object.GetAttributes().Find(*key) : std::string_view();
}

// Tells of each record whose value an earlier one has.
class Twins {
public:
    Twins(FindingKind kind, Findings& findings) : m_kind(kind), m_findings(findings) {}

    // `among` keeps apart what may have equal values.
    void See(const CPipeObject& object, std::string_view key, std::string_view value, std::int32_t among = 0)
    {
        const auto [first, isNew] = m_first.emplace(std::to_string(among) + "/" + std::string(value), &object);
        if (isNew) return;
        m_findings.Add(m_kind, object,
                       fmt::format("{}: {} {}", Quoted(key, value), RecordOf(first->second->GetObjectType()).tag,
                                   first->second->GetId32()));
    }
    void SeeTable(const ObjectTable& table, std::string_view key)
    {
        const auto id = LookUpKey(key);
        table.ForEach([&](const CPipeObject& object) { See(object, key, valueIn(object, id)); });
    }

private:
    FindingKind m_kind;
    Findings& m_findings;
    std::unordered_map<std::string, const CPipeObject*> m_first;
};

void findTwinGroupRecords(const CObjectManager& manager, Findings& findings)
{
    const std::optional<KeyId> keys[] = {LookUpKey("srsecgroupname"), LookUpKey("srsectionkey"),
                                         LookUpKey("srstsecname"), LookUpKey("srendsecname")};
    std::unordered_map<std::string, std::int32_t> seen;
    for (const CSectGroupRec* const record : manager.GetSectGroupRecDb()) {
        std::string values; // with their lengths: no two records look alike by chance
        for (const auto& key : keys) {
            const std::string_view value = valueIn(*record, key);
            values += std::to_string(value.size()) + ":" + std::string(value);
        }
        const auto [first, isNew] = seen.emplace(std::move(values), record->GetId32());
        if (!isNew) findings.Add(FindingKind::TwinGroupRecord, *record, fmt::format("secgrouprec {}", first->second));
    }
}

} // namespace

void FindTwins(const FindContext& context, Findings& findings)
{
    const CObjectManager& manager = context.manager;
    Twins(FindingKind::TwinManholeCode, findings).SeeTable(manager.GetManHoleDb().Untyped(), "mhcode");
    Twins(FindingKind::TwinSectionKey, findings).SeeTable(manager.GetSectionDb().Untyped(), "sekeyword");
    Twins(FindingKind::TwinWebName, findings).SeeTable(manager.GetWebDb().Untyped(), "webname");

    Twins groups(FindingKind::TwinGroup, findings);
    for (const CSectGroup* const group : manager.GetSectGroupDb())
        if (const std::string name = ValueOf(*group, "sgname"); name.empty())
            findings.Add(FindingKind::GroupWithoutName, *group, {});
        else
            groups.See(*group, "sgname", name);
    findTwinGroupRecords(manager, findings);

    Twins sections(FindingKind::TwinSectionName, findings);
    for (const SectionKind& kind : kSectionKinds) {
        const std::string key = ToUtf8(kind.nameKey);
        manager.TableOf(kind.type).ForEach(
            [&](const CPipeObject& section) { sections.See(section, key, ValueOf(section, key)); });
    }
    Twins routes(FindingKind::TwinRouteNumber, findings);
    for (const CRoute* const route : manager.GetRouteDb())
        routes.See(*route, "routenum", ValueOf(*route, "routenum"), WebId(*route));
}

} // namespace obmgr::tool
