// rivelta edit: a list of operations in one transaction.
#include "Commands.h"
#include "Design.h"
#include "EditOperations.h"
#include "EditScript.h"
#include "Objects.h"
#include "Output.h"
#include "Save.h"
#include "Texts.h"
#include "ToolInterface.h"
#include "control/UserInterface.h"

#include <CLI/CLI.hpp>

namespace obmgr::tool {

namespace {

// Runs the operations of a script. What they change stays for the caller's commit or abort.
class Runner {
public:
    Runner(CObjectManager& design, const std::vector<Operation>& operations)
        : m_design(design), m_operations(operations)
    {
    }

    // The reason when the operation failed, after which no other may run.
    std::string Run(std::size_t index)
    {
        const Operation& operation = m_operations[index];
        std::vector<long> ids;
        std::string reason;
        for (std::size_t i = 0; i < operation.values.size() && reason.empty(); ++i)
            ids.push_back(Resolve(operation.info->fields[i], operation.values[i], reason));
        if (!reason.empty()) return reason;
        Step step(m_design, operation, std::move(ids));
        reason = operation.info->run(step);
        m_made.push_back(step.Made());
        return reason;
    }

    const std::vector<Results>& Made() const { return m_made; }

private:
    // The id that a field means now; 0 for fields that mean none.
    long Resolve(const Field& field, const FieldValue& value, std::string& reason) const
    {
        const IdValue* const idValue = std::get_if<IdValue>(&value);
        if (!idValue) return 0;
        long id = 0;
        OBJECTTYPE type = TypeOf(field.kind);
        if (const long* const literal = std::get_if<long>(idValue)) {
            id = *literal;
        } else {
            const ResultRef& ref = std::get<ResultRef>(*idValue);
            const std::vector<long>& entries = m_made[ref.operation][ref.result];
            if (ref.entry >= entries.size()) {
                reason = Say(Text::WhyNoSuchResult, field.name, entries.size());
                return 0;
            }
            id = entries[ref.entry];
            if (type == objectdata::Any) type = m_operations[ref.operation].info->results[ref.result].type;
        }
        if (id == 0) return 0; // the flow end
        const bool isThere =
            type == objectdata::Any ? !FindObjects(m_design, id).empty() : m_design.TableOf(type).Find(id) != nullptr;
        if (!isThere) reason = Say(Text::WhyGone, field.name, id);
        return id;
    }

    CObjectManager& m_design;
    const std::vector<Operation>& m_operations;
    std::vector<Results> m_made; // of each operation so far
};

class EditCommand final : public Command {
public:
    const char* Name() const override { return "edit"; }
    std::string Summary() const override { return TextOf(Text::EditSummary); }
    std::string Description() const override { return Say(Text::EditDescription) + OperationsHelp(); }
    const char* Example() const override { return "rivelta edit town.xml --script plan.json -o new.xml"; }
    void AddOptions(CLI::App& app) override
    {
        app.add_option("FILE", m_file, TextOf(Text::ArgumentFile))->required();
        app.add_option("--script", m_script, TextOf(Text::EditScript))->type_name("FILE.json")->required();
        app.add_option("-o,--output", m_out, TextOf(Text::EditOut))->type_name("OUT");
        app.add_flag("--dry-run", m_isDryRun, TextOf(Text::EditDryRun));
    }

    ExitCode Run(const CommonOptions& common) override
    {
        if (m_file == "-" && m_script == "-") return Refuse(Text::UsageOneStandardInput);
        const std::string& out = m_out ? *m_out : m_file;
        if (common.json && out == "-" && !m_isDryRun) return Refuse(Text::UsageJsonToStandardOutput);
        const auto script = LoadScript(m_script);
        if (!script) return ExitCode::InputUnreadable;
        const auto design = OpenDesign(m_file);
        if (!design) return ExitCode::InputUnreadable;
        const auto operations = CheckScript(*script, design->manager, m_script);
        if (!operations) return ExitCode::WrongUsage;

        Runner runner(design->manager, *operations);
        design->manager.BeginTransaction();
        for (std::size_t i = 0; i < operations->size(); ++i) {
            const std::string reason = runner.Run(i);
            if (reason.empty() && !IsCancelRequested()) continue;
            design->manager.AbortTransaction();
            if (reason.empty()) {
                Complain(design->shownName, TextOf(Text::WriteCancelled));
                return ExitCode::OutputUnwritable;
            }
            Complain(design->shownName, Say(Text::EditFailed, i, (*operations)[i].info->name, reason));
            return ExitCode::FaultsFound;
        }
        const int count = design->manager.GetAllDataCount();
        const int dataver = VersionOf(*design);
        if (m_isDryRun) {
            design->manager.AbortTransaction();
        } else {
            design->manager.CommitTransaction();
            const ToolInterface ui(IsLarge(design->form));
            if (!SaveTo(design->manager, out, dataver)) return ExitCode::OutputUnwritable;
        }

        if (common.json) {
            PrintJson({{"input", design->shownName},
                       {"output", m_isDryRun ? Json(nullptr) : Json(out)},
                       {"dataver", dataver},
                       {"objects", count},
                       {"operations", ResultsJson(*operations, runner.Made())}});
        } else if (m_isDryRun || out != "-") {
            PrintResults(*operations, runner.Made());
            Print((m_isDryRun ? Say(Text::EditDryRunDone, operations->size())
                              : Say(Text::EditDone, out, operations->size(), count, dataver)) +
                  "\n");
        }
        return ExitCode::Done;
    }

private:
    static ExitCode Refuse(Text message)
    {
        Complain(TextOf(message));
        return ExitCode::WrongUsage;
    }

    static Json ResultsJson(const std::vector<Operation>& operations, const std::vector<Results>& made)
    {
        Json rows = Json::array();
        for (std::size_t i = 0; i < operations.size(); ++i) {
            const OperationInfo& info = *operations[i].info;
            Json results = Json::object();
            for (std::size_t r = 0; r < info.results.size(); ++r)
                results[std::string(info.results[r].name)] =
                    info.results[r].isList ? Json(made[i][r]) : Json(made[i][r].front());
            Json row = {{"op", info.name}};
            if (!operations[i].as.empty()) row["as"] = operations[i].as;
            row["results"] = std::move(results);
            rows.push_back(std::move(row));
        }
        return rows;
    }

    static void PrintResults(const std::vector<Operation>& operations, const std::vector<Results>& made)
    {
        for (std::size_t i = 0; i < operations.size(); ++i) {
            const OperationInfo& info = *operations[i].info;
            std::vector<std::string> texts;
            for (std::size_t r = 0; r < info.results.size(); ++r)
                texts.push_back(fmt::format("{} {}", info.results[r].name, fmt::join(made[i][r], " ")));
            if (!texts.empty())
                Print(Say(Text::EditResult, i, info.name, fmt::format("{}", fmt::join(texts, ", "))) + "\n");
        }
    }

    std::string m_file;
    std::string m_script;
    std::optional<std::string> m_out;
    bool m_isDryRun = false;
};

} // namespace

std::unique_ptr<Command> MakeEditCommand()
{
    return std::make_unique<EditCommand>();
}

} // namespace obmgr::tool
