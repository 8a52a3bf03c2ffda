// rivelta tree: the routes of each web as a tree.
#include "Commands.h"
#include "Design.h"
#include "DisplayText.h"
#include "Objects.h"
#include "Output.h"
#include "RouteTrees.h"
#include "Texts.h"

#include <algorithm>

#include <CLI/CLI.hpp>

namespace obmgr::tool {

namespace {

using Root = RouteTree::Root;

// Deeper routes are drawn at this level, with their own as a number: the lines of a long chain would grow without end.
constexpr std::size_t kDeepestDrawn = 40;

struct Extent {
    long routes = 0;
    long spans = 0;
    double length = 0.0; // metres

    void Add(const CObjectManager& manager, const CRoute& route)
    {
        ++routes;
        spans += manager.GetSpanNumInRoute(route.GetId32());
        double ofRoute = 0.0;
        if (manager.GetRouteLength(route.GetId32(), ofRoute)) length += ofRoute;
    }
    void Add(const Extent& other)
    {
        routes += other.routes;
        spans += other.spans;
        length += other.length;
    }

    Json ToJson() const { return {{"routes", routes}, {"spans", spans}, {"length", length}}; }
    std::string ToText() const { return Say(Text::TreeTotal, routes, spans, length); }
};

struct Lines {
    const char* passing;
    const char* none;
    const char* branch;
    const char* lastBranch;
};
constexpr Lines kDrawn = {"│  ", "   ", "├─ ", "└─ "};
constexpr Lines kPlain = {"|  ", "   ", "|- ", "`- "};

// Puts the lines before the routes of a tree, row after row.
class Branches {
public:
    explicit Branches(const Lines& lines) : m_lines(lines) {}

    std::string Before(const RouteTree::Row& row)
    {
        m_isPassing.resize(row.level + 1);
        m_isPassing[row.level] = !row.isLast;
        const std::size_t drawn = std::min(row.level, kDeepestDrawn);
        std::string text;
        for (std::size_t level = 0; level < drawn; ++level)
            text += m_isPassing[level] ? m_lines.passing : m_lines.none;
        text += row.isLast ? m_lines.lastBranch : m_lines.branch;
        if (row.level > kDeepestDrawn) text += Say(Text::TreeLevel, row.level + 1);
        return text;
    }

private:
    const Lines& m_lines;
    std::vector<bool> m_isPassing; // whether the line of a level goes on below
};

const char* rootWord(Root root)
{
    switch (root) {
    case Root::FlowEnd: return "flowEnd";
    case Root::Ring: return "ring";
    case Root::Nowhere: return "nowhere";
    case Root::OtherWeb: return "otherWeb";
    }
    return "";
}

std::string rootText(const RouteTree& tree)
{
    const std::int32_t connectId = tree.rows.front().route->Links()[1];
    switch (tree.root) {
    case Root::Ring: return TextOf(Text::TreeRing);
    case Root::Nowhere: return Say(Text::TreeNowhere, connectId);
    case Root::OtherWeb: return Say(Text::TreeOtherWeb, connectId);
    case Root::FlowEnd: break;
    }
    return {};
}

class TreeCommand final : public Command {
public:
    const char* Name() const override { return "tree"; }
    std::string Summary() const override { return TextOf(Text::TreeSummary); }
    std::string Description() const override { return TextOf(Text::TreeDescription); }
    const char* Example() const override { return "rivelta tree town.xml --web East"; }
    void AddOptions(CLI::App& app) override
    {
        app.add_option("FILE", m_file, TextOf(Text::ArgumentFile))->required();
        app.add_option("--web", m_web, TextOf(Text::TreeWeb))->type_name("NAME");
    }

    ExitCode Run(const CommonOptions& common) override
    {
        const auto design = OpenDesign(m_file);
        if (!design) return ExitCode::InputUnreadable;
        const CObjectManager& manager = design->manager;
        std::vector<CWeb*> webs;
        if (m_web) {
            webs = FindWebs(manager, *m_web);
            if (webs.empty()) {
                Complain(design->shownName, UnknownWebMessage(manager, *m_web, m_file));
                return ExitCode::WrongUsage;
            }
        } else {
            webs.assign(manager.GetWebDb().begin(), manager.GetWebDb().end());
        }
        if (common.json)
            PrintAsJson(*design, webs);
        else
            PrintForPeople(manager, webs);
        return ExitCode::Done;
    }

private:
    // Routes that no web of the file has; when one web is asked for they do not matter.
    std::vector<const CRoute*> OutsideWebs(const CObjectManager& manager) const
    {
        std::vector<const CRoute*> outside;
        if (m_web) return outside;
        for (const CRoute* const route : manager.GetRouteDb())
            if (!manager.GetWebDb().Find(route->Links()[0])) outside.push_back(route);
        return outside;
    }

    static Json RouteJson(const CObjectManager& manager, const CRoute& route, std::size_t level)
    {
        Extent extent;
        extent.Add(manager, route);
        return {{"id", route.GetId32()},     {"name", NameOf(route)},         {"level", level},
                {"webid", route.Links()[0]}, {"connectid", route.Links()[1]}, {"spans", extent.spans},
                {"length", extent.length}};
    }

    static Json FlowEndsOf(const CObjectManager& manager, const CWeb& web)
    {
        Json ends = Json::array();
        CList<long, long> nodeIds;
        manager.GetFlowEndNodeIdList(web.GetId32(), nodeIds);
        for (const long id : nodeIds)
            if (const CNode* const node = manager.GetNodeDb().Find(id)) ends.push_back(Brief(*node));
        return ends;
    }

    // Flat, with levels: programs would have to recurse into nested arrays, and a chain can be long.
    void PrintAsJson(const Design& design, const std::vector<CWeb*>& webs) const
    {
        const CObjectManager& manager = design.manager;
        Extent total;
        Json webRows = Json::array();
        for (const CWeb* const web : webs) {
            Extent extent;
            Json treeRows = Json::array();
            const RouteTrees trees(manager, *web);
            for (const RouteTree& tree : trees.Trees()) {
                Json routes = Json::array();
                for (const RouteTree::Row& row : tree.rows) {
                    routes.push_back(RouteJson(manager, *row.route, row.level));
                    extent.Add(manager, *row.route);
                }
                treeRows.push_back({{"root", rootWord(tree.root)}, {"routes", std::move(routes)}});
            }
            total.Add(extent);
            webRows.push_back({{"id", web->GetId32()},
                               {"name", NameOf(*web)},
                               {"flowEnds", FlowEndsOf(manager, *web)},
                               {"trees", std::move(treeRows)},
                               {"total", extent.ToJson()}});
        }
        Json outside = Json::array();
        for (const CRoute* const route : OutsideWebs(manager)) {
            outside.push_back(RouteJson(manager, *route, 0));
            total.Add(manager, *route);
        }
        PrintJson({{"file", design.shownName},
                   {"webs", std::move(webRows)},
                   {"outsideWebs", std::move(outside)},
                   {"total", total.ToJson()}});
    }

    static void PrintRoute(const CObjectManager& manager, const CRoute& route, const std::string& before,
                           Extent& extent)
    {
        Extent own;
        own.Add(manager, route);
        extent.Add(own);
        Print(before + WithoutControls(Say(Text::TreeRoute, NameOf(route), route.GetId32(), own.length, own.spans)) +
              "\n");
    }

    void PrintForPeople(const CObjectManager& manager, const std::vector<CWeb*>& webs) const
    {
        const Lines& lines = IsUtf8Shown() ? kDrawn : kPlain;
        Extent total;
        for (const CWeb* const web : webs) {
            Extent extent;
            PrintHead(manager, *web);
            bool isFirstApart = true;
            const RouteTrees trees(manager, *web);
            for (const RouteTree& tree : trees.Trees()) {
                if (tree.root != Root::FlowEnd) {
                    if (std::exchange(isFirstApart, false)) Print(std::string(TextOf(Text::TreeApart)) + "\n");
                    Print(rootText(tree) + "\n");
                }
                Branches branches(lines);
                for (const RouteTree::Row& row : tree.rows)
                    PrintRoute(manager, *row.route, branches.Before(row), extent);
            }
            Print(extent.ToText() + "\n\n");
            total.Add(extent);
        }
        if (const auto outside = OutsideWebs(manager); !outside.empty()) {
            Print(std::string(TextOf(Text::TreeOutside)) + "\n");
            for (const CRoute* const route : outside)
                PrintRoute(manager, *route, lines.none, total);
            Print("\n");
        }
        if (!m_web) Print(TextOf(Text::TreeAllWebs) + total.ToText() + "\n");
    }

    static void PrintHead(const CObjectManager& manager, const CWeb& web)
    {
        Print(WithoutControls(BriefText(web)) + "  (" + DisposalWord(web.GetDisposalType()) + ")\n");
        std::string ends;
        CList<long, long> nodeIds;
        manager.GetFlowEndNodeIdList(web.GetId32(), nodeIds);
        for (const long id : nodeIds)
            if (const CNode* const node = manager.GetNodeDb().Find(id))
                ends += (ends.empty() ? "" : ", ") + BriefText(*node);
        Print(WithoutControls(ends.empty() ? TextOf(Text::TreeNoFlowEnd) : Say(Text::TreeFlowEnd, ends)) + "\n");
    }

    std::string m_file;
    std::optional<std::string> m_web;
};

} // namespace

std::unique_ptr<Command> MakeTreeCommand()
{
    return std::make_unique<TreeCommand>();
}

} // namespace obmgr::tool
