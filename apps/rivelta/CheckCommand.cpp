// rivelta check: everything that can be known to be wrong with a design, and the repairs that exist.
#include "Commands.h"
#include "Design.h"
#include "DisplayText.h"
#include "Objects.h"
#include "Output.h"
#include "Save.h"
#include "Texts.h"
#include "ToolInterface.h"
#include "control/UserInterface.h"
#include "findings/Findings.h"
#include "findings/Repairs.h"

#include <algorithm>

#include <CLI/CLI.hpp>

namespace obmgr::tool {

namespace {

Json wordOrNull(Repair repair)
{
    return repair == Repair::None ? Json(nullptr) : Json(WordOf(repair));
}

Json findingsJson(const std::vector<Finding>& findings)
{
    Json rows = Json::array();
    for (const Finding& finding : findings)
        rows.push_back({{"code", finding.info->code},
                        {"severity", WordOf(finding.info->severity)},
                        {"tag", RecordOf(finding.type).tag},
                        {"id", finding.id},
                        {"name", finding.name},
                        {"message", finding.Message()},
                        {"repair", wordOrNull(finding.repair)}});
    return rows;
}

Json countsJson(const std::vector<Finding>& findings)
{
    return {{"errors", CountOf(findings, Severity::Error)},
            {"warnings", CountOf(findings, Severity::Warning)},
            {"notes", CountOf(findings, Severity::Note)}};
}

std::string countsText(const std::vector<Finding>& findings)
{
    return Say(Text::CheckCounts, CountOf(findings, Severity::Error), CountOf(findings, Severity::Warning),
               CountOf(findings, Severity::Note));
}

std::string lineOf(const Finding& finding)
{
    const std::string name = finding.name.empty() ? std::string() : " \"" + finding.name + "\"";
    return WithoutControls(fmt::format("{} {}  {} {}{}: {}", finding.info->code, NameOf(finding.info->severity),
                                       RecordOf(finding.type).tag, finding.id, name, finding.Message())) +
           "\n";
}

class CheckCommand final : public Command {
public:
    const char* Name() const override { return "check"; }
    std::string Summary() const override { return TextOf(Text::CheckSummary); }
    std::string Description() const override { return TextOf(Text::CheckDescription); }
    const char* Example() const override { return "rivelta check town.xml --fix -o mended.xml"; }
    void AddOptions(CLI::App& app) override
    {
        app.add_option("FILE", m_file, TextOf(Text::ArgumentFile));
        app.add_option("--web", m_web, TextOf(Text::CheckWeb))->type_name("NAME");
        app.add_flag("--fix", m_fixes, TextOf(Text::CheckFix));
        app.add_option("-o,--output", m_out, TextOf(Text::EditOut))->type_name("OUT");
        app.add_flag("--codes", m_showsCodes, TextOf(Text::CheckCodes));
    }

    ExitCode Run(const CommonOptions& common) override
    {
        if (m_showsCodes) return PrintCodes(common.json);
        if (m_file.empty())
            return Refuse(Say(Text::UsageMissing, "FILE") + "\n" + Say(Text::UsageSeeHelp, "rivelta help check"));
        if (m_out && !m_fixes) return Refuse(TextOf(Text::UsageOutputWithoutFix));
        const std::string& out = m_out ? *m_out : m_file;
        if (m_fixes && common.json && out == "-") return Refuse(TextOf(Text::UsageJsonToStandardOutput));

        const auto design = OpenDesign(m_file);
        if (!design) return ExitCode::InputUnreadable;
        CObjectManager& manager = design->manager;
        FindOptions options;
        if (m_web) {
            options.webs = FindWebs(manager, *m_web);
            if (options.webs.empty()) return Refuse(UnknownWebMessage(manager, *m_web, m_file));
        }
        const ToolInterface ui(IsLarge(design->form));
        std::vector<Finding> findings = FindAll(manager, options);
        if (IsCancelRequested()) return Cancelled(*design);
        if (!m_fixes) {
            if (common.json)
                PrintJson({{"file", design->shownName},
                           {"findings", findingsJson(findings)},
                           {"counts", countsJson(findings)}});
            else
                PrintFindings(findings);
            return CodeFor(findings);
        }

        const bool isFixable = std::any_of(findings.begin(), findings.end(),
                                           [](const Finding& finding) { return finding.repair != Repair::None; });
        std::vector<Finding> repaired;
        if (isFixable) {
            manager.BeginTransaction();
            RunRepairs(manager, findings, options);
            std::vector<Finding> left = FindAll(manager, options);
            if (IsCancelRequested()) {
                manager.AbortTransaction();
                return Cancelled(*design);
            }
            manager.CommitTransaction();
            repaired = RepairedFindings(findings, left);
            findings = std::move(left);
        }
        // Without a repair a file is not written over with itself.
        const bool isWritten = isFixable || m_out || out == "-";
        if (isWritten && !SaveTo(manager, out, VersionOf(*design))) return ExitCode::OutputUnwritable;
        if (common.json)
            PrintJson({{"file", design->shownName},
                       {"output", isWritten ? Json(out) : Json(nullptr)},
                       {"repaired", findingsJson(repaired)},
                       {"findings", findingsJson(findings)},
                       {"counts", countsJson(findings)}});
        else if (out == "-")
            Complain(Say(Text::CheckRepairedCount, repaired.size()) + "\n" + countsText(findings));
        else
            PrintRepaired(repaired, findings, isWritten ? Say(Text::CheckWritten, out) : TextOf(Text::CheckNotWritten));
        return CodeFor(findings);
    }

private:
    static ExitCode Refuse(const std::string& message)
    {
        Complain(message);
        return ExitCode::WrongUsage;
    }
    static ExitCode Cancelled(const Design& design)
    {
        Complain(design.shownName, TextOf(Text::CheckCancelled));
        return ExitCode::InputUnreadable;
    }
    static ExitCode CodeFor(const std::vector<Finding>& findings)
    {
        return CountOf(findings, Severity::Error) == 0 ? ExitCode::Done : ExitCode::FaultsFound;
    }

    static void PrintFindings(const std::vector<Finding>& findings)
    {
        std::size_t fixable = 0;
        for (const Finding& finding : findings) {
            Print(lineOf(finding));
            if (finding.repair != Repair::None) ++fixable;
        }
        Print(countsText(findings) + "\n");
        if (fixable > 0) Print(Say(Text::CheckFixable, fixable) + "\n");
    }

    static void PrintRepaired(const std::vector<Finding>& repaired, const std::vector<Finding>& left,
                              const std::string& written)
    {
        for (const Finding& finding : repaired)
            Print(Say(Text::CheckRepaired, NameOf(finding.repair)) + lineOf(finding));
        Print(Say(Text::CheckRepairedCount, repaired.size()) + " " + written + "\n");
        PrintFindings(left);
    }

    // For a person it is the page of the documentation.
    static ExitCode PrintCodes(bool asJson)
    {
        if (asJson) {
            Json rows = Json::array();
            for (const FindingInfo& info : FindingTable())
                rows.push_back(
                    {{"code", info.code},
                     {"severity", WordOf(info.severity)},
                     {"meaning", TextOf(info.sentence)},
                     {"repair", wordOrNull(info.repair)},
                     {"repairMeaning", info.repair == Repair::None ? Json(nullptr) : Json(NameOf(info.repair))}});
            PrintJson(rows);
            return ExitCode::Done;
        }
        Print(TextOf(Text::CodesHead));
        for (const FindingInfo& info : FindingTable())
            Print(fmt::format("| {} | {} | {} | {} |\n", info.code, NameOf(info.severity), TextOf(info.sentence),
                              NameOf(info.repair)));
        return ExitCode::Done;
    }

    std::string m_file;
    std::optional<std::string> m_web;
    std::optional<std::string> m_out;
    bool m_fixes = false;
    bool m_showsCodes = false;
};

} // namespace

std::unique_ptr<Command> MakeCheckCommand()
{
    return std::make_unique<CheckCommand>();
}

} // namespace obmgr::tool
