// rivelta info: what a file holds.
#include "Commands.h"
#include "Design.h"
#include "Objects.h"
#include "Output.h"
#include "Table.h"
#include "Texts.h"

#include <array>
#include <unordered_map>
#include <unordered_set>

#include <CLI/CLI.hpp>

namespace obmgr::tool {

namespace {

// Counts of a web, or of all.
struct Extent {
    long routes = 0;
    long spans = 0;
    double length = 0.0; // metres
    std::unordered_set<std::int32_t> nodes;

    void AddSpan(const CSpan& span)
    {
        ++spans;
        length += span.GetSubAttributeDouble(L"splength", 0.0);
        for (const std::int32_t node : {span.Links()[0], span.Links()[1]})
            if (node != 0) nodes.insert(node);
    }

    Json ToJson() const { return {{"routes", routes}, {"spans", spans}, {"nodes", nodes.size()}, {"length", length}}; }
    std::vector<std::string> ToCells() const
    {
        return {std::to_string(routes), std::to_string(spans), std::to_string(nodes.size()),
                fmt::format("{:.2f}", length)};
    }
};

struct Extents {
    std::unordered_map<std::int32_t, Extent> byWeb;
    Extent outside; // routes and spans that belong to no web of the file
    Extent total;
};

Extents measure(const CObjectManager& manager)
{
    Extents extents;
    for (const CWeb* const web : manager.GetWebDb())
        extents.byWeb[web->GetId32()];
    const auto extentOfWeb = [&](std::int32_t web) -> Extent& {
        const auto found = extents.byWeb.find(web);
        return found == extents.byWeb.end() ? extents.outside : found->second;
    };
    for (const CRoute* const route : manager.GetRouteDb()) {
        ++extentOfWeb(route->Links()[0]).routes;
        ++extents.total.routes;
    }
    for (const CSpan* const span : manager.GetSpanDb()) {
        const CRoute* const route = manager.GetRouteDb().Find(span->Links()[2]);
        (route ? extentOfWeb(route->Links()[0]) : extents.outside).AddSpan(*span);
        extents.total.AddSpan(*span);
    }
    return extents;
}

std::string languageName(std::string_view code)
{
    if (code == "ja") return TextOf(Text::LanguageJapanese);
    if (code == "ko") return TextOf(Text::LanguageKorean);
    return TextOf(Text::LanguageAny);
}

class InfoCommand final : public Command {
public:
    const char* Name() const override { return "info"; }
    std::string Summary() const override { return TextOf(Text::InfoSummary); }
    std::string Description() const override { return TextOf(Text::InfoDescription); }
    const char* Example() const override { return "rivelta info town.xml"; }
    void AddOptions(CLI::App& app) override { app.add_option("FILE", m_file, TextOf(Text::ArgumentFile))->required(); }

    ExitCode Run(const CommonOptions& common) override
    {
        const auto design = OpenDesign(m_file);
        if (!design) return ExitCode::InputUnreadable;
        if (common.json)
            PrintAsJson(*design);
        else
            PrintForPeople(*design);
        return ExitCode::Done;
    }

private:
    static Json ProfileOf(const CObjectManager& manager)
    {
        Json profile = Json::object();
        for (const auto& [key, value] : manager.GetProfileObject().GetAttributes())
            profile[NameOfKey(key).text] = std::string(value);
        return profile;
    }

    static void PrintAsJson(const Design& design)
    {
        const CObjectManager& manager = design.manager;
        const FileForm& form = design.form;
        const Extents extents = measure(manager);
        Json records = Json::array();
        for (const OBJECTTYPE type : CanonicalOrder())
            if (const std::size_t count = manager.TableOf(type).Count(); count > 0)
                records.push_back({{"tag", RecordOf(type).tag}, {"meaning", PlainName(type)}, {"count", count}});
        Json webs = Json::array();
        for (const CWeb* const web : manager.GetWebDb()) {
            Json row = {{"id", web->GetId32()},
                        {"name", NameOf(*web)},
                        {"disposaltype", web->GetDisposalType()},
                        {"disposal", DisposalWord(web->GetDisposalType())}};
            row.update(extents.byWeb.at(web->GetId32()).ToJson());
            webs.push_back(std::move(row));
        }
        Json total = extents.total.ToJson();
        total["nodes"] = manager.GetNodeDb().GetCount();
        PrintJson({{"file", design.shownName},
                   {"size", form.size},
                   {"dataver", manager.GetProfileObject().GetDataver()},
                   {"encoding", {{"declared", form.declared}, {"detected", form.detected}}},
                   {"language", form.Language()},
                   {"profile", ProfileOf(manager)},
                   {"objects", manager.GetAllDataCount()},
                   {"records", std::move(records)},
                   {"webs", std::move(webs)},
                   {"outsideWebs", extents.outside.ToJson()},
                   {"total", std::move(total)}});
    }

    static void PrintForPeople(const Design& design)
    {
        const CObjectManager& manager = design.manager;
        const FileForm& form = design.form;
        Table facts({TextOf(Text::InfoFile), design.shownName});
        const std::string declared = form.declared.empty() ? TextOf(Text::InfoNotDeclared) : form.declared;
        facts.AddRow({TextOf(Text::InfoSize), Say(Text::InfoBytes, form.size)});
        facts.AddRow({TextOf(Text::InfoDataVersion), std::to_string(manager.GetProfileObject().GetDataver())});
        facts.AddRow({TextOf(Text::InfoEncoding), Say(Text::InfoEncodingBoth, form.detected, declared)});
        facts.AddRow({TextOf(Text::InfoLanguage), languageName(form.Language())});
        for (const auto& [key, value] : manager.GetProfileObject().GetAttributes())
            facts.AddRow({std::string(TextOf(Text::InfoProfile)) + ": " + NameOfKey(key).text, std::string(value)});
        facts.Print();

        Print("\n");
        Table records({TextOf(Text::ColumnType), TextOf(Text::ColumnMeaning), TextOf(Text::ColumnCount)});
        for (const OBJECTTYPE type : CanonicalOrder())
            if (const std::size_t count = manager.TableOf(type).Count(); count > 0)
                records.AddRow({std::string(RecordOf(type).tag), PlainName(type), std::to_string(count)});
        records.AddRow({TextOf(Text::InfoTotal), "", std::to_string(manager.GetAllDataCount())});
        records.Print();

        Print("\n");
        PrintWebs(manager);
    }

    static void PrintWebs(const CObjectManager& manager)
    {
        const Extents extents = measure(manager);
        Table webs({TextOf(Text::ColumnId), TextOf(Text::ColumnName), TextOf(Text::ColumnDisposal),
                    TextOf(Text::ColumnRoutes), TextOf(Text::ColumnSpans), TextOf(Text::ColumnNodes),
                    TextOf(Text::ColumnLength)});
        const auto addRow = [&webs](std::vector<std::string> cells, const Extent& extent) {
            for (std::string& cell : extent.ToCells())
                cells.push_back(std::move(cell));
            webs.AddRow(std::move(cells));
        };
        for (const CWeb* const web : manager.GetWebDb())
            addRow({std::to_string(web->GetId32()), NameOf(*web), DisposalWord(web->GetDisposalType())},
                   extents.byWeb.at(web->GetId32()));
        if (extents.outside.routes > 0 || extents.outside.spans > 0)
            addRow({"", TextOf(Text::InfoOutsideWebs), ""}, extents.outside);
        std::vector<std::string> total = extents.total.ToCells();
        total[2] = std::to_string(manager.GetNodeDb().GetCount());
        total.insert(total.begin(), {"", TextOf(Text::InfoTotal), ""});
        webs.AddRow(std::move(total));
        webs.Print();
    }

    std::string m_file;
};

} // namespace

std::unique_ptr<Command> MakeInfoCommand()
{
    return std::make_unique<InfoCommand>();
}

} // namespace obmgr::tool
