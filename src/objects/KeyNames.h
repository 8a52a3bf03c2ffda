// Attribute keys as numbers. A design has twenty million attribute values under a few hundred keys, so each key is
// kept once per process and objects hold its number. Numbers are never given back. All operations may be called
// from any thread.
#pragma once

#include "common/Export.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace obmgr {

using KeyId = std::uint32_t;

struct KeyName {
    std::string text;    // UTF-8
    std::string opening; // how an element of the key begins in a file, up to its value
    bool isXmlName;      // can stand as an element name in a file
    bool isAscii;
};

// The number of the key, newly given when the key was never seen.
RIVELTA_API KeyId InternKey(std::string_view utf8);
RIVELTA_API KeyId InternKey(const wchar_t* key);
// The number of the key, nothing when no object ever had it.
RIVELTA_API std::optional<KeyId> LookUpKey(std::string_view utf8);
RIVELTA_API std::optional<KeyId> LookUpKey(const wchar_t* key);
// The reference stays good for the life of the process.
RIVELTA_API const KeyName& NameOfKey(KeyId key);

} // namespace obmgr
