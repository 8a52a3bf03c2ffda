#include "findings/Findings.h"

#include "Objects.h"
#include "common/Text2Number.h"
#include "control/DlgProgress.h"
#include "findings/Finders.h"

#include <algorithm>

namespace obmgr::tool {

namespace {

constexpr FindingInfo kTable[] = {
#define OBM_FINDING(name, code, severity, repair)                                                                      \
    {FindingKind::name, code, Severity::severity, Repair::repair, Text::Finds##name},
#include "findings/Codes.def"
};

using Finder = void (*)(const FindContext&, Findings&);
constexpr Finder kFinders[] = {
    FindInRoutes, FindInSpans,         FindInNodes,  FindInWebs,   FindInLinks,     FindInReferenceKeys,
    FindTwins,    FindUnknownSections, FindInLevels, FindOffRoute, FindStalePlaces, FindUnknownKeys,
};

constexpr std::size_t kMostListed = 8;

} // namespace

std::span<const FindingInfo> FindingTable()
{
    return kTable;
}

const FindingInfo& InfoOf(FindingKind kind)
{
    return kTable[static_cast<std::size_t>(kind)];
}

std::string_view WordOf(Severity severity)
{
    switch (severity) {
    case Severity::Error: return "error";
    case Severity::Warning: return "warning";
    case Severity::Note: return "note";
    }
    return "";
}

std::string_view WordOf(Repair repair)
{
    switch (repair) {
    case Repair::None: return "";
    case Repair::ConnectNumber: return "connectNumber";
    case Repair::DeleteNode: return "deleteNode";
    case Repair::SectionGroups: return "sectionGroups";
    case Repair::GroupRecords: return "groupRecords";
    case Repair::Placement: return "placement";
    }
    return "";
}

const char* NameOf(Severity severity)
{
    switch (severity) {
    case Severity::Error: return TextOf(Text::SeverityError);
    case Severity::Warning: return TextOf(Text::SeverityWarning);
    case Severity::Note: return TextOf(Text::SeverityNote);
    }
    return "";
}

const char* NameOf(Repair repair)
{
    switch (repair) {
    case Repair::None: return "";
    case Repair::ConnectNumber: return TextOf(Text::RepairConnectNumber);
    case Repair::DeleteNode: return TextOf(Text::RepairDeleteNode);
    case Repair::SectionGroups: return TextOf(Text::RepairSectionGroups);
    case Repair::GroupRecords: return TextOf(Text::RepairGroupRecords);
    case Repair::Placement: return TextOf(Text::RepairPlacement);
    }
    return "";
}

std::string Finding::Message() const
{
    return detail.empty() ? TextOf(info->sentence) : std::string(TextOf(info->sentence)) + " (" + detail + ")";
}

std::size_t CountOf(const std::vector<Finding>& findings, Severity severity)
{
    return static_cast<std::size_t>(std::count_if(
        findings.begin(), findings.end(), [&](const Finding& finding) { return finding.info->severity == severity; }));
}

std::vector<Finding> FindAll(CObjectManager& manager, const FindOptions& options)
{
    const Net net(manager);
    const Scope scope(manager, options.webs);
    std::vector<CWeb*> webs = options.webs;
    if (webs.empty()) webs.assign(manager.GetWebDb().begin(), manager.GetWebDb().end());
    const FindContext context{manager, net, webs};
    Findings findings{scope, {}};

    CDlgProgress progress;
    progress.Create();
    progress.SetWindowText(FromUtf8(TextOf(Text::CheckProgress)));
    progress.SetRange(0, static_cast<int>(std::size(kFinders)));
    int done = 0;
    for (const Finder find : kFinders) {
        find(context, findings);
        progress.SetPos(++done);
        progress.PeekAndPump(1);
        if (!progress.IsContinue()) break;
    }
    std::stable_sort(findings.list.begin(), findings.list.end(), [](const Finding& a, const Finding& b) {
        if (a.info->severity != b.info->severity) return a.info->severity < b.info->severity;
        return a.info < b.info;
    });
    return std::move(findings.list);
}

void Findings::Add(FindingKind kind, const CPipeObject& object, std::string detail, Repair repair)
{
    if (!scope.Contains(object)) return;
    list.push_back(
        {&InfoOf(kind), object.GetObjectType(), object.GetId32(), NameOf(object), std::move(detail), repair});
}

Scope::Scope(const CObjectManager& manager, const std::vector<CWeb*>& webs)
    : m_manager(manager), m_webs(webs.begin(), webs.end())
{
    if (IsEverything()) return;
    for (const CSpan* const span : manager.GetSpanDb())
        if (Contains(*span)) m_nodes.insert({UpperNode(*span), LowerNode(*span)});
}

bool Scope::Contains(const CPipeObject& object) const
{
    if (IsEverything()) return true;
    const CPipeObject* at = &object;
    // No record is farther from its web: an area record, its inflow, the route, the web.
    for (int steps = 0; at && steps < 4; ++steps) {
        if (at->GetObjectType() == objectdata::Web) return m_webs.contains(at);
        if (at->GetObjectType() == objectdata::Node) return m_nodes.contains(at->GetId32());
        at = OwnerOf(*at);
    }
    return false;
}

// The next object on the way to the web.
const CPipeObject* Scope::OwnerOf(const CPipeObject& object) const
{
    const OBJECTTYPE type = object.GetObjectType();
    if (type == objectdata::IntPos) {
        for (const std::int32_t id : object.Links())
            if (const CRoute* const route = m_manager.GetRouteDb().Find(id)) return route;
        return nullptr;
    }
    if (type == objectdata::Inters) return m_manager.GetWebDb().Find(m_manager.GetWebIdFromInters(object.GetId32()));
    const RecordInfo& record = RecordOf(type);
    for (int link = 0; link < record.links.count; ++link)
        if (const LinkField& field = record.links.fields[static_cast<std::size_t>(link)];
            field.isReference && field.target == record.owner)
            return TargetOf(m_manager, object, link);
    for (const ReferenceKey& row : ReferenceKeys())
        if (row.type == type && row.targets.front() == objectdata::Span)
            return m_manager.GetSpanDb().Find(ToLong(ValueOf(object, row.key)));
    return nullptr;
}

std::string Listed(const std::vector<std::string>& texts, std::string_view separator)
{
    const auto shown = texts.begin() + static_cast<std::ptrdiff_t>(std::min(texts.size(), kMostListed));
    std::string text = fmt::format("{}", fmt::join(texts.begin(), shown, separator));
    if (texts.size() > kMostListed) text += std::string(separator) + "...";
    return text;
}

std::string Quoted(std::string_view key, std::string_view value)
{
    return fmt::format("{}=\"{}\"", key, value);
}

} // namespace obmgr::tool
