// Whole pipe data files: how one is opened for a data version, and saves that never leave a broken file.
#pragma once

#include "common/Export.h"
#include "framework/Collections.h"
#include "framework/String.h"
#include "framework/TextEncoding.h"

class CFileException;
class CObjectManager;
class CStdioFile;

namespace obmgr {

// From this version on a file is UTF-16 behind a mark and has a second root outside.
inline constexpr int kFirstUtf16Dataver = 14;

// The encoding in which a file of the version is to be opened: UTF-16LE from version 14 on, before that Shift_JIS, or
// EUC-KR on a Korean system. (There the prolog says EUC-KR in any version, behind the UTF-16 mark from version 14 on.
// With the text in UTF-16 such a file can be read back: the mark and the text agree, and our reader knows the frame.)
RIVELTA_API TextEncoding EncodingForDataVersion(int dataver);

// Makes or empties the file and opens it in that encoding. False on failure, told of in `failure` if it is given.
RIVELTA_API bool OpenForDataVersion(CStdioFile& file, const CString& path, int dataver,
                                    CFileException* failure = nullptr);

// A complete save that replaces the file as a whole, on disk when this returns; when it fails or is cancelled, the old
// file stays as it was. With `withMapData` the map data, which a full save leaves out, follow in the same frame.
// On false `error` says why. `details` gets the lines of records that could not be written.
RIVELTA_API bool SaveDesign(CObjectManager& manager, const CString& path, int dataver, bool withMapData, CString& error,
                            CStringArray& details);

} // namespace obmgr
