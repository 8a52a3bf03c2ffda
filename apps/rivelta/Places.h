// Placing and levelling the records that lie along routes, and what that changes.
#pragma once

#include "store/ObjectManager.h"

#include <optional>
#include <string>
#include <vector>

namespace obmgr::tool {

// A value that is another one now.
struct Move {
    OBJECTTYPE type;
    long id;
    std::string name; // of the record, empty when it has none
    std::string key;
    std::optional<std::string> before; // nothing for a key that is new
    std::string after;

    // "gldist=1.5 -> 2.25"
    std::string Shown() const;
};

// Records of a type in a web that could not all be placed: a route has no order of spans, or a span number is negative.
struct NotPlaced {
    const CWeb* web;
    OBJECTTYPE type;
};

struct Placement {
    std::vector<Move> moves; // by type, in the order of the file
    std::vector<NotPlaced> notPlaced;
};

enum class Keep { No, Yes };

// Ground changes, crossing points, laterals and vacuum joints of the webs. Numbers that differ by less than a
// nanometre have not moved. With Keep::No every value is put back.
Placement PlaceRecords(CObjectManager& manager, const std::vector<CWeb*>& webs, Keep keep);

} // namespace obmgr::tool
