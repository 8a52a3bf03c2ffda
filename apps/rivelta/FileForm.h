// The outer form of a pipe data file: size, encoding, root. Seen from its first bytes, without a parser.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace obmgr::tool {

struct FileForm {
    std::uint64_t size = 0;
    std::string declared;      // encoding that the prolog names; empty when it names none
    std::string detected;      // encoding of the bytes
    bool hasOuterRoot = false; // "pdroot", which files have from data version 14

    // ISO 639 code of the language that the encoding is made for: "ja", "ko", or empty for any.
    std::string_view Language() const;
    // The data version whose form this is, for a file that does not tell its version.
    int LikelyDataVersion() const;
};

// `head` is the beginning of the file, some thousand bytes.
FileForm FormOf(std::string_view head, std::uint64_t size);

} // namespace obmgr::tool
