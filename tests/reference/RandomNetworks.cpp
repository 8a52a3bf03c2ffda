#include "reference/RandomNetworks.h"

#include <algorithm>
#include <memory>

namespace reference {

using namespace objectdata;

void InstallDefaults(const std::set<Type>& without)
{
    auto* const table = new CObDefManager;
    for (const obmgr::RecordInfo& row : obmgr::Records()) {
        if (without.contains(row.type)) continue;
        auto* const entry = new CObDefault(row.type, std::wstring(row.tag.begin(), row.tag.end()).c_str());
        for (const auto& [key, value] : Network::DefaultsOf(row.type))
            entry->GetSubattribute().SetAt(key.c_str(), value.c_str());
        table->GetDefList().AddTail(entry);
    }
    CObjectManager::ReSetDefManager(table);
}

namespace {

class Builder {
public:
    explicit Builder(std::mt19937& random)
        : m_random(random), m_model(obmgr::kTypeCount), m_network(m_model), m_choice(random, m_network)
    {
    }

    int Pick(int count) { return m_choice.Pick(count); }

    // Into the builder's own design at once, so that later choices find it.
    int Add(Type type, const Ids& links)
    {
        auto record = std::make_shared<Record>();
        record->id = ++m_model.lastId;
        record->links = links;
        m_model[type].Add(record->id, record);
        return record->id;
    }

    void AddWeb(int routes)
    {
        const int web = Add(Web, {Pick(6)});
        const int flowEnd = Add(Node, {});
        std::vector<std::pair<int, int>> tops = {{0, flowEnd}}; // route and the node at its top
        for (int left = routes; left > 0; --left) {
            const auto [connectId, end] = tops[m_random() % tops.size()];
            const int route = Add(Route, {web, connectId});
            int node = end;
            for (int spans = 1 + Pick(4); spans > 0; --spans) {
                const int upper = Add(Node, {});
                Add(Span, {upper, node, route});
                node = upper;
            }
            tops.emplace_back(route, node);
        }
    }

    void AddRecords(int count)
    {
        for (const Record* const span : m_network.All(Span))
            for (int left = Pick(3); left > 0; --left)
                Add(AreaSet, {span->id});
        for (int left = count; left > 0; --left) {
            const Type type = RecordTypes()[m_random() % RecordTypes().size()];
            if (type == Web) continue;
            Ids links;
            for (std::size_t link = 0; link < LinkCount(type); ++link) {
                const Type target = m_choice.TargetOf(type, link);
                links.push_back(target == NoOwner ? Pick(6) : m_choice.LiveId(target));
            }
            Add(type, links);
        }
    }

    // All records as steps, in random order, with attributes that fit the finished design.
    std::vector<Step> Script()
    {
        std::vector<Step> steps;
        for (int type = 0; type < obmgr::kTypeCount; ++type) {
            for (const Record* const record : m_network.All(static_cast<Type>(type))) {
                Step step{kAddRecord, {{type, record->id}, {}}, 0};
                step.args.numbers.insert(step.args.numbers.end(), record->links.begin(), record->links.end());
                Choice::Pack(step.args.texts, m_choice.AllValues(static_cast<Type>(type)));
                steps.push_back(step);
            }
        }
        if (m_choice.OneIn(2)) std::shuffle(steps.begin(), steps.end(), m_random);
        return steps;
    }

private:
    std::mt19937& m_random;
    Model m_model;
    Network m_network;
    Choice m_choice;
};

} // namespace

std::vector<Step> RandomDesign(std::mt19937& random, int webs, int routes)
{
    Builder builder(random);
    for (int web = 0; web < webs; ++web)
        builder.AddWeb(1 + builder.Pick(routes));
    builder.AddRecords(20 + builder.Pick(30));
    return builder.Script();
}

} // namespace reference
