// AtomicFile: replaces a file as a whole or not at all.
#pragma once

#include <string>

#include "common/Export.h"
#include "framework/String.h"

namespace obmgr {

// A new content for `target` is written to TempPath(), a file of its own in the folder of the target, and Commit puts
// it in the target's place: flushed to disk and renamed. Until then, and when anything fails, the target is as it was.
//
// What becomes of the target:
// - A symbolic link stays; the file that it leads to is replaced, or made when the link leads nowhere yet.
// - The mode bits of the old file are kept, and its owner and group where the system allows it; where the group cannot
//   be kept it gets the rights of the others. A new file gets what the umask leaves. While it is written only its
//   owner can read the temporary file.
// - Other hard links to the old file keep the old content: the name gets a new file.
// - A folder, a device, a FIFO or a socket is refused, and so is a file that may not be written: these cannot be
//   replaced as a whole. Whoever wants to write into them opens them as they are.
// A temporary file that a killed process left behind is in nobody's way.
class RIVELTA_API AtomicFile {
public:
    AtomicFile();
    // Removes the temporary file when it was not committed.
    virtual ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    // Makes the temporary file, empty. False with a text in `error` when the target cannot be replaced. An earlier
    // temporary file of this object is discarded.
    bool Create(const CString& target, CString& error);
    // Where to write; empty when there is no temporary file. The writer closes the file before Commit.
    CString TempPath() const;

    // Flushes the temporary file to disk and puts it in the target's place. On false the target is untouched and the
    // temporary file is gone, but for one case that the text tells of: the file was replaced and its folder could
    // not be flushed.
    bool Commit(CString& error);
    // Removes the temporary file.
    void Discard() noexcept;

protected:
    // fsync, for tests of its failure: 0, or -1 and errno.
    virtual int Sync(int descriptor);

private:
    bool TakeOverRights(CString& error);

    int m_descriptor = -1;
    std::string m_target; // native, absolute, links resolved
    std::string m_temp;
    unsigned m_mode = 0;
    long m_owner = -1; // -1: as the system gives it
    long m_group = -1;
};

} // namespace obmgr
