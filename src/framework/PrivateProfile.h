// Private profiles: texts and numbers under a section and a key, in a text file that the user keeps by hand.
//
//     ; a comment
//     [section]
//     key=value
#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

#include "common/Export.h"
#include "framework/String.h"

namespace obmgr {

// The content of a profile.
//
// - Lines end with LF, CR LF or CR. A NUL ends what counts of its line.
// - Names of sections and keys are compared without the case of ASCII letters. The first section of the name is the
//   only one that is looked at, and in it the first key of the name.
// - Spaces, tabs and control characters round names and values do not count. What a pair of double or single quotes
//   encloses is the value as it stands. A value may hold "=" and ";".
// - Lines without "=" and lines before the first section hold no key.
class RIVELTA_API PrivateProfile {
public:
    static constexpr int kTextSize = 256;

    PrivateProfile() = default;
    // The bytes of a file: UTF-16LE or UTF-8 as the mark says; without a mark UTF-8 when all of it is valid, and
    // Shift_JIS otherwise.
    explicit PrivateProfile(std::string_view bytes);

    // The value, or the default without the blanks at its end; cut to size - 1 characters, empty when there is no
    // room for one. An empty value is a value.
    CString Text(const CString& section, const CString& key, const CString& defaultText = CString(),
                 int size = kTextSize) const;

    // The decimal number at the start of the value, with its sign: 0 when there is none, modulo 2^32 when it is too
    // large. The default when there is no such key.
    int Int(const CString& section, const CString& key, int defaultValue) const;

private:
    std::optional<std::string_view> Find(const CString& section, const CString& key) const;

    std::string m_text; // UTF-8 without a mark
};

// The same, out of the file as it is at the moment of the call. A file that cannot be read is an empty profile. A
// relative path begins at the current folder.
RIVELTA_API CString ProfileText(const CString& path, const CString& section, const CString& key,
                                const CString& defaultText = CString(), int size = PrivateProfile::kTextSize);
RIVELTA_API int ProfileInt(const CString& path, const CString& section, const CString& key, int defaultValue);

// The clock by which a file counts as written a while ago; for tests. Null brings the system's back.
RIVELTA_API void SetProfileClock(std::time_t (*clock)());

} // namespace obmgr
