// What can be known to be wrong with a design: the codes, and one call that finds everything.
#pragma once

#include "Texts.h"
#include "store/ObjectManager.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace obmgr::tool {

enum class Severity { Error, Warning, Note };

// What --fix can do; it is done to the whole design, or to the webs that are checked.
enum class Repair {
    None,
    ConnectNumber, // "connectnum" gets the number of the connect route
    DeleteNode,
    SectionGroups, // groups of one name become the first of them, those without a name go
    GroupRecords,  // of equal records the first stays
    Placement,     // records along routes are placed and levelled anew
};

enum class FindingKind {
#define OBM_FINDING(name, code, severity, repair) name,
#include "findings/Codes.def"
};

struct FindingInfo {
    FindingKind kind;
    std::string_view code;
    Severity severity;
    Repair repair;
    Text sentence; // goes on from the object: "flows into itself..."
};

// The rows of Codes.def.
std::span<const FindingInfo> FindingTable();
const FindingInfo& InfoOf(FindingKind kind);

// The word that programs get: "error", "connectNumber"; "" for no repair.
std::string_view WordOf(Severity severity);
std::string_view WordOf(Repair repair);
// The words for a person.
const char* NameOf(Severity severity);
const char* NameOf(Repair repair);

struct Finding {
    const FindingInfo* info;
    OBJECTTYPE type;
    long id;
    std::string name;   // of the object, empty when it has none
    std::string detail; // ids and values, the same in every language; may be empty
    Repair repair;      // None also where the repair of the code would lose something

    // The sentence with the detail.
    std::string Message() const;
};

struct FindOptions {
    std::vector<CWeb*> webs; // only what belongs to one of them; empty for everything
};

// Errors first, then by code and in the order of the file. The design is the same before and after; records along
// routes are placed on trial in between. When a cancel is asked for the findings so far come back.
std::vector<Finding> FindAll(CObjectManager& manager, const FindOptions& options = {});

std::size_t CountOf(const std::vector<Finding>& findings, Severity severity);

} // namespace obmgr::tool
