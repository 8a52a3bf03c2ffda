// rivelta show: one object whole.
#include "Commands.h"
#include "Design.h"
#include "Objects.h"
#include "Output.h"
#include "Table.h"
#include "Texts.h"

#include <CLI/CLI.hpp>

namespace obmgr::tool {

namespace {

// Whether the code of the field is a disposal type: a section's "setype" is a code of another kind.
bool isDisposalField(std::string_view name)
{
    return name == "disposaltype" || name == "ppdispotype";
}

class ShowCommand final : public Command {
public:
    const char* Name() const override { return "show"; }
    std::string Summary() const override { return TextOf(Text::ShowSummary); }
    std::string Description() const override { return TextOf(Text::ShowDescription); }
    const char* Example() const override { return "rivelta show town.xml 35"; }
    void AddOptions(CLI::App& app) override
    {
        app.add_option("FILE", m_file, TextOf(Text::ArgumentFile))->required();
        app.add_option("ID", m_id, TextOf(Text::ShowId))->required();
    }

    ExitCode Run(const CommonOptions& common) override
    {
        const auto id = IdFromText(m_id);
        if (!id) {
            Complain(Say(Text::UsageBadId, m_id));
            return ExitCode::WrongUsage;
        }
        const auto design = OpenDesign(m_file);
        if (!design) return ExitCode::InputUnreadable;
        const auto objects = FindObjects(design->manager, *id);
        if (objects.empty()) {
            Complain(design->shownName, Say(Text::ShowUnknownId, m_id, m_file));
            return ExitCode::WrongUsage;
        }
        Json all = Json::array();
        for (const CPipeObject* const object : objects)
            if (common.json)
                all.push_back(ToJson(design->manager, *object));
            else
                PrintForPeople(design->manager, *object, object == objects.front());
        if (common.json) PrintJson(all);
        return ExitCode::Done;
    }

private:
    static Json ToJson(const CObjectManager& manager, const CPipeObject& object)
    {
        const RecordInfo& record = RecordOf(object.GetObjectType());
        Json links = Json::object();
        for (int link = 0; link < record.links.count; ++link) {
            const LinkField& field = record.links.fields[static_cast<std::size_t>(link)];
            Json& entry = links[std::string(field.name)];
            entry["value"] = object.Links()[static_cast<std::size_t>(link)];
            if (!field.isReference) continue;
            const CPipeObject* const target = TargetOf(manager, object, link);
            entry["target"] = target ? Brief(*target) : Json(nullptr);
        }
        Json attributes = Json::object();
        for (const auto& [key, value] : object.GetAttributes())
            attributes[NameOfKey(key).text] = std::string(value);
        Json references = Json::array();
        for (const Reference& reference : ReferencesTo(manager, object)) {
            Json entry = Brief(*reference.from);
            entry["field"] = reference.field;
            references.push_back(std::move(entry));
        }
        Json result = Brief(object);
        result["meaning"] = PlainName(record.type);
        result["links"] = std::move(links);
        result["attributes"] = std::move(attributes);
        result["referredBy"] = std::move(references);
        return result;
    }

    static void PrintForPeople(const CObjectManager& manager, const CPipeObject& object, bool isFirst)
    {
        const RecordInfo& record = RecordOf(object.GetObjectType());
        if (!isFirst) Print("\n");
        Table({BriefText(object) + "  (" + PlainName(record.type) + ")"}).Print();

        Rows links;
        for (int link = 0; link < record.links.count; ++link) {
            const LinkField& field = record.links.fields[static_cast<std::size_t>(link)];
            const std::int32_t value = object.Links()[static_cast<std::size_t>(link)];
            std::string meaning;
            if (const CPipeObject* const target = TargetOf(manager, object, link))
                meaning = "-> " + BriefText(*target);
            else if (field.isReference && value != 0)
                meaning = std::string("-> ") + TextOf(Text::ShowNoTarget);
            else if (isDisposalField(field.name))
                meaning = DisposalWord(value);
            links.push_back({std::string(field.name), std::to_string(value), meaning});
        }
        PrintSection(Text::ShowLinks, links);

        Rows attributes;
        for (const auto& [key, value] : object.GetAttributes())
            attributes.push_back({NameOfKey(key).text, std::string(value)});
        PrintSection(Text::ShowAttributes, attributes);

        Rows references;
        for (const Reference& reference : ReferencesTo(manager, object))
            references.push_back({BriefText(*reference.from), "." + std::string(reference.field)});
        PrintSection(Text::ShowReferredBy, references);
    }

    using Rows = std::vector<std::vector<std::string>>;
    static void PrintSection(Text title, const Rows& rows)
    {
        Print(std::string(TextOf(title)) + ":\n");
        if (rows.empty()) return Print(std::string("  ") + TextOf(Text::ShowNone) + "\n");
        Table table(std::vector<std::string>(rows.front().size()));
        for (const auto& row : rows)
            table.AddRow(row);
        table.Print(2);
    }

    std::string m_file;
    std::string m_id;
};

} // namespace

std::unique_ptr<Command> MakeShowCommand()
{
    return std::make_unique<ShowCommand>();
}

} // namespace obmgr::tool
