// What is wrong with webs: their flow ends.
#include "Objects.h"
#include "findings/Finders.h"

namespace obmgr::tool {

namespace {

struct Ends {
    std::unordered_set<std::int32_t> upperNodes;
    std::vector<std::int32_t> lowerNodes; // in the order of the file
};

} // namespace

void FindInWebs(const FindContext& context, Findings& findings)
{
    const CObjectManager& manager = context.manager;
    std::unordered_map<const CWeb*, Ends> endsOfWebs;
    for (const CSpan* const span : manager.GetSpanDb())
        if (const CWeb* const web = context.net.WebOf(*span)) {
            endsOfWebs[web].upperNodes.insert(UpperNode(*span));
            endsOfWebs[web].lowerNodes.push_back(LowerNode(*span));
        }
    for (const CWeb* const web : manager.GetWebDb()) {
        if (manager.GetRouteDb().Untyped().CountByLink(0, web->GetId32()) == 0)
            findings.Add(FindingKind::WebWithoutRoutes, *web, {});
        const auto found = endsOfWebs.find(web);
        if (found == endsOfWebs.end()) continue;
        std::vector<std::string> flowEnds;
        std::unordered_set<std::int32_t> seen;
        for (const std::int32_t nodeId : found->second.lowerNodes)
            if (!found->second.upperNodes.contains(nodeId) && seen.insert(nodeId).second) {
                const CNode* const node = manager.GetNodeDb().Find(nodeId);
                flowEnds.push_back(node ? BriefText(*node) : "node " + std::to_string(nodeId));
            }
        if (flowEnds.empty())
            findings.Add(FindingKind::WebWithoutFlowEnd, *web, {});
        else if (flowEnds.size() > 1)
            findings.Add(FindingKind::WebManyFlowEnds, *web, fmt::format("{}: {}", flowEnds.size(), Listed(flowEnds)));
    }
}

} // namespace obmgr::tool
