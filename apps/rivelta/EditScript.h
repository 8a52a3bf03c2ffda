// The script of `rivelta edit`: JSON in, operations with checked fields out.
#pragma once

#include "store/ObjectManager.h"

#include "Output.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace obmgr::tool {

struct OperationInfo;

// What an earlier operation will have made.
struct ResultRef {
    std::size_t operation; // in the script
    std::size_t result;    // of those that the operation has
    std::size_t entry;     // of a list
};
using IdValue = std::variant<long, ResultRef>;
// A key with its new text, or with nothing to remove it.
using Change = std::pair<std::string, std::optional<std::string>>;
// Nothing for a field that was left out.
using FieldValue = std::variant<std::monostate, IdValue, long, bool, std::string, std::vector<Change>>;

struct Operation {
    const OperationInfo* info;
    std::string as;                 // empty when it has no name
    std::vector<FieldValue> values; // one for each field of `info`
};

// Reads the file, "-" for standard input. Nothing after the reason was told on standard error; the exit code then is
// InputUnreadable.
std::optional<Json> LoadScript(const std::string& path);
// The operations of a script for this design. Nothing after every fault was told, with its path in the JSON, on
// standard error; the exit code then is WrongUsage.
std::optional<std::vector<Operation>> CheckScript(const Json& script, const CObjectManager& design,
                                                  const std::string& path);

} // namespace obmgr::tool
