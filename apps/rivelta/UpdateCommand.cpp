// rivelta update: places and levels the records that lie along routes.
#include "Commands.h"
#include "Design.h"
#include "DisplayText.h"
#include "Objects.h"
#include "Output.h"
#include "Places.h"
#include "Save.h"
#include "Texts.h"
#include "ToolInterface.h"
#include "control/UserInterface.h"

#include <map>
#include <set>

#include <CLI/CLI.hpp>

namespace obmgr::tool {

namespace {

// How many records of each type have moved, in type order.
std::map<OBJECTTYPE, std::size_t> movedRecords(const std::vector<Move>& moves)
{
    std::map<OBJECTTYPE, std::set<long>> ids;
    for (const Move& move : moves)
        ids[move.type].insert(move.id);
    std::map<OBJECTTYPE, std::size_t> counts;
    for (const auto& [type, ofType] : ids)
        counts[type] = ofType.size();
    return counts;
}

class UpdateCommand final : public Command {
public:
    const char* Name() const override { return "update"; }
    std::string Summary() const override { return TextOf(Text::UpdateSummary); }
    std::string Description() const override { return TextOf(Text::UpdateDescription); }
    const char* Example() const override { return "rivelta update town.xml placed.xml --web East"; }
    void AddOptions(CLI::App& app) override
    {
        app.add_option("FILE", m_file, TextOf(Text::ArgumentFile))->required();
        app.add_option("OUT", m_out, TextOf(Text::ConvertOut))->required();
        app.add_option("--web", m_web, TextOf(Text::TreeWeb))->type_name("NAME");
    }

    ExitCode Run(const CommonOptions& common) override
    {
        if (common.json && m_out == "-") {
            Complain(TextOf(Text::UsageJsonToStandardOutput));
            return ExitCode::WrongUsage;
        }
        const auto design = OpenDesign(m_file);
        if (!design) return ExitCode::InputUnreadable;
        CObjectManager& manager = design->manager;
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

        const ToolInterface ui(IsLarge(design->form));
        const Placement placement = PlaceRecords(manager, webs, Keep::Yes);
        if (!placement.notPlaced.empty()) return TellNotPlaced(*design, placement);
        const int dataver = VersionOf(*design);
        if (!SaveTo(manager, m_out, dataver)) return ExitCode::OutputUnwritable;
        if (common.json)
            PrintAsJson(*design, webs, placement.moves, dataver);
        else if (m_out != "-")
            PrintForPeople(placement.moves);
        return ExitCode::Done;
    }

private:
    static ExitCode TellNotPlaced(const Design& design, const Placement& placement)
    {
        for (const NotPlaced& row : placement.notPlaced)
            Complain(design.shownName,
                     Say(Text::UpdateNotPlaced, BriefText(*row.web), RecordOf(row.type).tag, design.shownName));
        return ExitCode::FaultsFound;
    }

    void PrintAsJson(const Design& design, const std::vector<CWeb*>& webs, const std::vector<Move>& moves,
                     int dataver) const
    {
        Json webRows = Json::array();
        for (const CWeb* const web : webs)
            webRows.push_back(Brief(*web));
        Json rows = Json::array();
        for (const Move& move : moves)
            rows.push_back({{"tag", RecordOf(move.type).tag},
                            {"id", move.id},
                            {"name", move.name},
                            {"key", move.key},
                            {"old", move.before ? Json(*move.before) : Json(nullptr)},
                            {"new", move.after}});
        Json counts = Json::object();
        for (const auto& [type, count] : movedRecords(moves))
            counts[std::string(RecordOf(type).tag)] = count;
        PrintJson({{"input", design.shownName},
                   {"output", m_out},
                   {"dataver", dataver},
                   {"webs", std::move(webRows)},
                   {"moves", std::move(rows)},
                   {"moved", std::move(counts)}});
    }

    void PrintForPeople(const std::vector<Move>& moves) const
    {
        for (const Move& move : moves)
            Print(WithoutControls(fmt::format("{} {}: {}", RecordOf(move.type).tag, move.id, move.Shown())) + "\n");
        std::size_t records = 0;
        for (const auto& [type, count] : movedRecords(moves)) {
            Print(Say(Text::UpdateCount, RecordOf(type).tag, count) + "\n");
            records += count;
        }
        Print(Say(Text::UpdateDone, m_out, records, moves.size()) + "\n");
    }

    std::string m_file;
    std::string m_out;
    std::optional<std::string> m_web;
};

} // namespace

std::unique_ptr<Command> MakeUpdateCommand()
{
    return std::make_unique<UpdateCommand>();
}

} // namespace obmgr::tool
