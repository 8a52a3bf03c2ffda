// Random designs as scripts, and the edits that damage them: direct changes of links, attributes and ids, records that
// come and go, transactions.
#pragma once

#include "reference/NetworkScript.h"

namespace reference {

// A kind with chosen arguments.
struct Step {
    std::size_t kind; // in the list that the script runs over
    Args args;
    int lastId = 0; // the id counter before the step; a shortened script puts it back, so that ids stay as they were
};

// Index of the kind that adds a record with a given id; BaseEdits() begins with it.
inline constexpr std::size_t kAddRecord = 0;

// Direct changes. The damaging ones weigh `damage`; at 0 sound networks stay sound. With `sharedIds` several records
// may come to have one id.
std::vector<StepKind> BaseEdits(int damage, bool sharedIds = false);

// Installs the default attributes of the reference design, apart from those of the given types.
void InstallDefaults(const std::set<Type>& without);

// Sound webs: trees of routes that meet at their tops, each route a chain of spans, each node with its own
// coordinates or some at the same place; with records around them. In random table order.
std::vector<Step> RandomDesign(std::mt19937& random, int webs, int routes);

} // namespace reference
