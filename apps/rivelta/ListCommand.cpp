// rivelta list: the records of a type as a table.
#include "Commands.h"
#include "Design.h"
#include "DisplayText.h"
#include "Objects.h"
#include "Output.h"
#include "Table.h"
#include "Texts.h"

#include <algorithm>
#include <unordered_set>

#include <CLI/CLI.hpp>

namespace obmgr::tool {

namespace {

constexpr int kWidestCell = 40; // on a terminal

struct Condition {
    std::string key;
    std::string value;
    bool isEqual = true;
};

// Nothing for a text without "=".
std::optional<Condition> parseCondition(const std::string& text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) return std::nullopt;
    const bool isEqual = text[equals - 1] != '!';
    const std::string key = text.substr(0, isEqual ? equals : equals - 1);
    if (key.empty()) return std::nullopt;
    return Condition{key, text.substr(equals + 1), isEqual};
}

// A column of a type: the id, a link field or an attribute key.
class Column {
public:
    Column(const RecordInfo& record, const std::string& name) : m_name(name), m_isId(name == "id")
    {
        for (int link = 0; link < record.links.count; ++link)
            if (record.links.fields[static_cast<std::size_t>(link)].name == name) m_link = link;
    }

    const std::string& Name() const { return m_name; }
    bool IsNumber() const { return m_isId || m_link >= 0; }
    long NumberOf(const CPipeObject& object) const
    {
        return m_isId ? object.GetId32() : object.Links()[static_cast<std::size_t>(m_link)];
    }
    std::string TextOf(const CPipeObject& object) const
    {
        return IsNumber() ? std::to_string(NumberOf(object)) : ValueOf(object, m_name);
    }

private:
    std::string m_name;
    bool m_isId;
    int m_link = -1;
};

class ListCommand final : public Command {
public:
    const char* Name() const override { return "list"; }
    std::string Summary() const override { return TextOf(Text::ListSummary); }
    std::string Description() const override { return TextOf(Text::ListDescription); }
    const char* Example() const override
    {
        return "rivelta list town.xml span --where routeid=35 --columns id,spname,splength";
    }
    void AddOptions(CLI::App& app) override
    {
        app.add_option("FILE", m_file, TextOf(Text::ArgumentFile))->required();
        app.add_option("TYPE", m_type, TextOf(Text::ListType))->required();
        app.add_option("--where", m_where, TextOf(Text::ListWhere))->type_name("KEY=VALUE")->allow_extra_args(false);
        app.add_option("--columns", m_columns, TextOf(Text::ListColumns))
            ->type_name("KEY,...")
            ->delimiter(',')
            ->allow_extra_args(false);
    }

    ExitCode Run(const CommonOptions& common) override
    {
        const RecordInfo* const record = TypeByTag(m_type);
        if (!record) return RefuseType();
        std::vector<Condition> conditions;
        for (const std::string& text : m_where) {
            const auto condition = parseCondition(text);
            if (!condition) {
                Complain(Say(Text::UsageBadWhere, text));
                return ExitCode::WrongUsage;
            }
            conditions.push_back(*condition);
        }

        const auto design = OpenDesign(m_file);
        if (!design) return ExitCode::InputUnreadable;
        const ObjectTable& table = design->manager.TableOf(record->type);
        const std::vector<std::string> keys = KeysOf(*record, table);
        WarnOfUnknownKeys(*record, table, conditions, keys);

        std::vector<Column> columns;
        for (const std::string& name : m_columns.empty() ? keys : m_columns)
            columns.emplace_back(*record, name);
        const std::vector<const CPipeObject*> rows = Select(*record, table, conditions);
        if (common.json)
            PrintAsJson(rows, columns);
        else
            PrintForPeople(rows, columns);
        return ExitCode::Done;
    }

private:
    ExitCode RefuseType() const
    {
        std::vector<std::string> tags;
        for (const RecordInfo& record : Records())
            tags.emplace_back(record.tag);
        const auto near = NearNames(m_type, tags);
        const std::string advice =
            near.empty() ? TextOf(Text::UsageAllTypes) : Say(Text::UsageNear, fmt::format("{}", fmt::join(near, ", ")));
        Complain(Say(Text::UsageUnknownType, m_type) + "\n" + advice);
        return ExitCode::WrongUsage;
    }

    // The id, the link fields, then every attribute key in the order in which the records bring them.
    static std::vector<std::string> KeysOf(const RecordInfo& record, const ObjectTable& table)
    {
        std::vector<std::string> keys = {"id"};
        for (const LinkField& field : record.links.All())
            keys.emplace_back(field.name);
        std::unordered_set<KeyId> seen;
        table.ForEach([&](const CPipeObject& object) {
            for (const auto& [key, value] : object.GetAttributes())
                if (seen.insert(key).second) keys.push_back(NameOfKey(key).text);
        });
        return keys;
    }

    void WarnOfUnknownKeys(const RecordInfo& record, const ObjectTable& table, const std::vector<Condition>& conditions,
                           const std::vector<std::string>& keys) const
    {
        if (table.Count() == 0) return;
        std::vector<std::string> wanted = m_columns;
        for (const Condition& condition : conditions)
            wanted.push_back(condition.key);
        for (const std::string& key : wanted) {
            if (std::find(keys.begin(), keys.end(), key) != keys.end()) continue;
            std::string message = Say(Text::WarnUnknownKey, record.tag, key);
            if (const auto near = NearNames(key, keys); !near.empty())
                message += "\n" + Say(Text::UsageNear, fmt::format("{}", fmt::join(near, ", ")));
            Complain(ShownName(m_file), message);
        }
    }

    static std::vector<const CPipeObject*> Select(const RecordInfo& record, const ObjectTable& table,
                                                  const std::vector<Condition>& conditions)
    {
        std::vector<std::pair<Column, const Condition*>> tests;
        tests.reserve(conditions.size());
        for (const Condition& condition : conditions)
            tests.emplace_back(Column(record, condition.key), &condition);
        std::vector<const CPipeObject*> rows;
        table.ForEach([&](const CPipeObject& object) {
            const bool fits = std::all_of(tests.begin(), tests.end(), [&](const auto& test) {
                return (test.first.TextOf(object) == test.second->value) == test.second->isEqual;
            });
            if (fits) rows.push_back(&object);
        });
        return rows;
    }

    // Row by row: the array as a whole may be larger than the design.
    static void PrintAsJson(const std::vector<const CPipeObject*>& rows, const std::vector<Column>& columns)
    {
        const char* separator = "[\n";
        for (const CPipeObject* const object : rows) {
            Json row = Json::object();
            for (const Column& column : columns)
                if (column.IsNumber())
                    row[column.Name()] = column.NumberOf(*object);
                else if (const auto key = LookUpKey(column.Name()); key && object->GetAttributes().Contains(*key))
                    row[column.Name()] = column.TextOf(*object);
            Print(separator + JsonText(row, -1));
            separator = ",\n";
        }
        Print(rows.empty() ? "[]\n" : "\n]\n");
    }

    void PrintForPeople(const std::vector<const CPipeObject*>& rows, const std::vector<Column>& columns) const
    {
        std::vector<std::string> titles;
        titles.reserve(columns.size());
        for (const Column& column : columns)
            titles.push_back(WithoutControls(column.Name()));
        Table table(titles);
        for (const CPipeObject* const object : rows) {
            std::vector<std::string> cells;
            cells.reserve(columns.size());
            for (const Column& column : columns)
                cells.push_back(column.TextOf(*object));
            table.AddRow(std::move(cells));
        }
        std::vector<std::string> leftOut;
        if (const int width = TerminalColumns(); width > 0) {
            table.LimitCells(kWidestCell);
            if (m_columns.empty()) leftOut = table.DropColumnsBeyond(width);
        }
        table.Print();
        if (leftOut.empty()) return;
        FlushOutput();
        Complain(Say(Text::ListColumnsLeftOut, leftOut.size(), fmt::format("{}", fmt::join(leftOut, ", "))));
    }

    std::string m_file;
    std::string m_type;
    std::vector<std::string> m_where;
    std::vector<std::string> m_columns;
};

} // namespace

std::unique_ptr<Command> MakeListCommand()
{
    return std::make_unique<ListCommand>();
}

} // namespace obmgr::tool
