// What is wrong with spans and nodes by themselves: loops, slopes, lengths, splits, nodes that nothing touches.
#include "Objects.h"
#include "common/Text2Number.h"
#include "findings/Finders.h"

#include <optional>

namespace obmgr::tool {

namespace {

constexpr double kLevelTolerance = 1e-5; // metres, as in all comparisons of levels

// Takes away, from the ends, whatever cannot lie on a loop. What is left lies on loops or between them.
class Peeling {
public:
    explicit Peeling(const CObjectManager& manager)
    {
        for (const CSpan* const span : manager.GetSpanDb()) {
            if (IsToItself(*span)) continue;
            const auto number = static_cast<std::uint32_t>(m_spans.size());
            const std::uint32_t upper = NumberOf(UpperNode(*span));
            const std::uint32_t lower = NumberOf(LowerNode(*span));
            m_spans.push_back({span, upper, lower, false});
            m_nodes[upper].spans.push_back(number);
            m_nodes[lower].spans.push_back(number);
            ++m_nodes[upper].leaving;
            ++m_nodes[lower].entering;
        }
        std::vector<std::uint32_t> open;
        for (std::uint32_t node = 0; node < m_nodes.size(); ++node)
            if (IsEnd(node)) open.push_back(node);
        while (!open.empty()) {
            const std::uint32_t node = open.back();
            open.pop_back();
            if (!IsEnd(node)) continue; // several of its spans made it an end, and all went at once
            for (const std::uint32_t number : m_nodes[node].spans)
                Remove(m_spans[number], node, open);
        }
    }

    std::vector<const CSpan*> Left() const
    {
        std::vector<const CSpan*> left;
        for (const Span& span : m_spans)
            if (!span.isGone) left.push_back(span.object);
        return left;
    }

private:
    struct Span {
        const CSpan* object;
        std::uint32_t upper;
        std::uint32_t lower;
        bool isGone;
    };
    struct Node {
        std::vector<std::uint32_t> spans;
        std::size_t entering = 0;
        std::size_t leaving = 0;
    };

    std::uint32_t NumberOf(std::int32_t nodeId)
    {
        const auto [found, isNew] = m_numbers.emplace(nodeId, static_cast<std::uint32_t>(m_nodes.size()));
        if (isNew) m_nodes.emplace_back();
        return found->second;
    }
    bool IsEnd(std::uint32_t node) const { return (m_nodes[node].entering == 0) != (m_nodes[node].leaving == 0); }
    void Remove(Span& span, std::uint32_t from, std::vector<std::uint32_t>& open)
    {
        if (std::exchange(span.isGone, true)) return;
        --m_nodes[span.upper].leaving;
        --m_nodes[span.lower].entering;
        const std::uint32_t other = span.upper == from ? span.lower : span.upper;
        if (IsEnd(other)) open.push_back(other);
    }

    std::unordered_map<std::int32_t, std::uint32_t> m_numbers; // of the nodes, by id
    std::vector<Node> m_nodes;
    std::vector<Span> m_spans;
};

std::optional<double> givenNumber(const CPipeObject& object, std::string_view key)
{
    const std::string value = ValueOf(object, key);
    if (value.empty()) return std::nullopt;
    return ToDouble(value);
}

// The water of these is carried by vacuum, also upwards.
bool isVacuum(const CWeb* web)
{
    return web && (web->GetDisposalType() == 4 || web->GetDisposalType() == 5);
}

// Nodes that other records than spans lead to.
std::unordered_set<std::int32_t> nodesInUse(const CObjectManager& manager)
{
    std::unordered_set<std::int32_t> ids;
    for (const RecordInfo& record : Records())
        for (int link = 0; link < record.links.count; ++link) {
            const auto index = static_cast<std::size_t>(link);
            const OBJECTTYPE target = record.links.fields[index].target;
            if (target != objectdata::Node && target != objectdata::Any) continue;
            manager.TableOf(record.type).ForEach([&](const CPipeObject& object) { ids.insert(object.Links()[index]); });
        }
    for (const ReferenceKey& row : ReferenceKeys())
        if (row.targets.front() == objectdata::Node)
            manager.TableOf(row.type).ForEach([&](const CPipeObject& object) {
                ids.insert(static_cast<std::int32_t>(ToLong(ValueOf(object, row.key))));
            });
    return ids;
}

} // namespace

void FindInSpans(const FindContext& context, Findings& findings)
{
    for (const CSpan* const span : Peeling(context.manager).Left())
        findings.Add(FindingKind::SpanLoop, *span,
                     fmt::format("uppernode={}, lowernode={}", UpperNode(*span), LowerNode(*span)));
    for (const CSpan* const span : context.manager.GetSpanDb()) {
        if (IsToItself(*span)) findings.Add(FindingKind::SpanToItself, *span, fmt::format("node {}", UpperNode(*span)));
        const auto length = givenNumber(*span, "splength");
        if (length && *length <= 0.0)
            findings.Add(FindingKind::SpanWithoutLength, *span, fmt::format("splength={}", *length));
        const auto upper = givenNumber(*span, "uppercentinv");
        const auto lower = givenNumber(*span, "lowercentinv");
        if (upper && lower && *lower > *upper + kLevelTolerance && !isVacuum(context.net.WebOf(*span)))
            findings.Add(FindingKind::SpanRises, *span,
                         fmt::format("uppercentinv={:.3f}, lowercentinv={:.3f}", *upper, *lower));
    }
}

void FindInNodes(const FindContext& context, Findings& findings)
{
    std::unordered_set<std::int32_t> touched;
    std::unordered_map<std::int32_t, std::vector<std::string>> leavingIds; // of nodes that several leave
    for (const CSpan* const span : context.manager.GetSpanDb()) {
        touched.insert({UpperNode(*span), LowerNode(*span)});
        if (!IsToItself(*span) && context.net.From(UpperNode(*span)).count > 1)
            leavingIds[UpperNode(*span)].push_back(std::to_string(span->GetId32()));
    }
    std::vector<const CNode*> loose;
    for (const CNode* const node : context.manager.GetNodeDb()) {
        if (const auto found = leavingIds.find(node->GetId32()); found != leavingIds.end())
            findings.Add(FindingKind::NodeSplits, *node, "span " + Listed(found->second));
        if (!touched.contains(node->GetId32())) loose.push_back(node);
    }
    if (loose.empty()) return;
    const auto inUse = nodesInUse(context.manager);
    for (const CNode* const node : loose)
        findings.Add(FindingKind::NodeLoose, *node, {},
                     inUse.contains(node->GetId32()) ? Repair::None : Repair::DeleteNode);
}

} // namespace obmgr::tool
