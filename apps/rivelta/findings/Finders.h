// For the finders: where they read from and where they report to.
#pragma once

#include "findings/Findings.h"
#include "findings/Net.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include <fmt/format.h>

namespace obmgr::tool {

// Which objects are looked at.
class Scope {
public:
    Scope(const CObjectManager& manager, const std::vector<CWeb*>& webs);

    bool IsEverything() const { return m_webs.empty(); }
    // Whether the object belongs to one of the webs: by its owners, by its route, by the span that it stands on. What
    // belongs to no web is in the scope of everything only.
    bool Contains(const CPipeObject& object) const;

private:
    const CPipeObject* OwnerOf(const CPipeObject& object) const;

    const CObjectManager& m_manager;
    std::unordered_set<const CPipeObject*> m_webs;
    std::unordered_set<std::int32_t> m_nodes; // of the spans of the webs
};

struct Findings {
    void Add(FindingKind kind, const CPipeObject& object, std::string detail)
    {
        Add(kind, object, std::move(detail), InfoOf(kind).repair);
    }
    void Add(FindingKind kind, const CPipeObject& object, std::string detail, Repair repair);

    const Scope& scope;
    std::vector<Finding> list;
};

struct FindContext {
    CObjectManager& manager;
    const Net& net;
    const std::vector<CWeb*>& webs; // that are checked
};

// One subject each; none of them changes the design.
void FindInRoutes(const FindContext& context, Findings& findings);
void FindInSpans(const FindContext& context, Findings& findings);
void FindInNodes(const FindContext& context, Findings& findings);
void FindInWebs(const FindContext& context, Findings& findings);
void FindInLinks(const FindContext& context, Findings& findings);
void FindInReferenceKeys(const FindContext& context, Findings& findings);
void FindTwins(const FindContext& context, Findings& findings);
void FindUnknownSections(const FindContext& context, Findings& findings);
void FindInLevels(const FindContext& context, Findings& findings);
void FindOffRoute(const FindContext& context, Findings& findings);
void FindStalePlaces(const FindContext& context, Findings& findings);
void FindUnknownKeys(const FindContext& context, Findings& findings);

// A key that holds the id of another object, 0 for none.
struct ReferenceKey {
    OBJECTTYPE type;
    std::string_view key;
    std::vector<OBJECTTYPE> targets; // one of these types
    bool isPlacement = false;        // worked out when the record is placed on its route
};
const std::vector<ReferenceKey>& ReferenceKeys();

// "12, 15, 20, ..."
std::string Listed(const std::vector<std::string>& texts, std::string_view separator = ", ");
// key="value"
std::string Quoted(std::string_view key, std::string_view value);

} // namespace obmgr::tool
