#include "findings/Repairs.h"

#include "Objects.h"
#include "Places.h"
#include "findings/Net.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace obmgr::tool {

namespace {

// As GetAbnormalRoute does, which ends at the first fault of another kind and so would not reach all of them.
void mendConnectNumber(const CObjectManager& manager, long routeId)
{
    CRoute* const route = manager.GetRouteDb().Find(routeId);
    const CRoute* const connect = manager.GetRouteDb().Find(ConnectId(*route));
    route->WriteSubAttribute(L"connectnum", connect->GetSubAttribute(L"routenum"));
}

auto identityOf(const Finding& finding)
{
    return std::tuple(finding.info->kind, finding.type, finding.id, std::string_view(finding.detail));
}

} // namespace

void RunRepairs(CObjectManager& manager, const std::vector<Finding>& findings, const FindOptions& options)
{
    const auto wants = [&](Repair repair) {
        return std::any_of(findings.begin(), findings.end(),
                           [&](const Finding& finding) { return finding.repair == repair; });
    };
    for (const Finding& finding : findings) {
        if (finding.repair == Repair::ConnectNumber) mendConnectNumber(manager, finding.id);
        if (finding.repair == Repair::DeleteNode) manager.DeleteNodeObject(finding.id);
    }
    CStringArray names;
    // The records first: the groups then number those that are left.
    if (wants(Repair::GroupRecords)) manager.DuplicateCheckSecgrouprec(names);
    if (wants(Repair::SectionGroups)) manager.DuplicateCheckSecgroup(names);
    if (wants(Repair::Placement)) {
        std::vector<CWeb*> webs = options.webs;
        if (webs.empty()) webs.assign(manager.GetWebDb().begin(), manager.GetWebDb().end());
        PlaceRecords(manager, webs, Keep::Yes);
    }
}

std::vector<Finding> RepairedFindings(const std::vector<Finding>& before, const std::vector<Finding>& after)
{
    std::set<decltype(identityOf(before.front()))> left;
    for (const Finding& finding : after)
        left.insert(identityOf(finding));
    std::vector<Finding> gone;
    std::copy_if(before.begin(), before.end(), std::back_inserter(gone), [&](const Finding& finding) {
        return finding.repair != Repair::None && !left.contains(identityOf(finding));
    });
    return gone;
}

} // namespace obmgr::tool
