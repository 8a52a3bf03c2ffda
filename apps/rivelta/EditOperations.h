// The operations of `rivelta edit`: one table of names, fields and functions.
#pragma once

#include "EditScript.h"
#include "Texts.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace obmgr::tool {

enum class FieldKind {
    Object,   // an id of any type
    Web,      // an id or a name
    Route,    // an id
    Span,     // an id
    Node,     // an id
    Connect,  // the id of a route, 0 for the flow end
    Count,    // a whole number from 1
    Disposal, // a disposal type
    Flag,     // true or false
    Text,     // a text
    Values,   // keys with texts
    Changes,  // keys with texts, or null to remove the key
};

struct Field {
    std::string_view name;
    FieldKind kind;
    bool isRequired = true;
};

struct ResultInfo {
    std::string_view name;
    OBJECTTYPE type;
    bool isList = false;
};

// The ids that an operation has made: for each of its results those that belong to it.
using Results = std::vector<std::vector<long>>;

// An operation that is being run: its fields, with ids in place of names, and what it makes.
class Step {
public:
    // `ids` has one entry for each field, 0 for those that are no ids or were left out.
    Step(CObjectManager& design, const Operation& operation, std::vector<long> ids);

    CObjectManager& Design() const { return m_design; }
    long Id(std::string_view field) const { return m_ids[IndexOf(field)]; }
    int Count(std::string_view field) const { return static_cast<int>(std::get<long>(Value(field))); }
    bool Flag(std::string_view field, bool whenLeftOut) const;
    std::string Text(std::string_view field) const { return std::get<std::string>(Value(field)); }
    // The keys and texts of "values"; none when it was left out.
    CKeyValueArray Values() const;
    const std::vector<Change>& Changes() const { return std::get<std::vector<Change>>(Value("values")); }

    void Give(std::string_view result, long id);
    void Give(std::string_view result, const CList<long, long>& ids);
    const Results& Made() const { return m_made; }

private:
    std::size_t IndexOf(std::string_view field) const;
    const FieldValue& Value(std::string_view field) const { return m_operation.values[IndexOf(field)]; }

    CObjectManager& m_design;
    const Operation& m_operation;
    std::vector<long> m_ids;
    Results m_made;
};

struct OperationInfo {
    std::string_view name;
    Text meaning;
    // Why it failed, in the language of the tool; empty when it is done.
    std::string (*run)(Step& step);
    std::vector<std::string_view> defaults; // tags whose default attributes it needs
    std::vector<Field> fields;
    std::vector<ResultInfo> results;
};

inline constexpr long kMostAtOnce = 1'000'000; // the highest count of an operation

std::span<const OperationInfo> Operations();
// Null when there is no such operation.
const OperationInfo* FindOperation(std::string_view name);
// The type of the id that a field holds; NoOwner for fields without ids, Any for an object.
OBJECTTYPE TypeOf(FieldKind kind);
// The table for a person, an operation in two lines.
std::string OperationsHelp();

} // namespace obmgr::tool
