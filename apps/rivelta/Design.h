// Opening a pipe data file for a command.
#pragma once

#include "Command.h"
#include "FileForm.h"
#include "store/ObjectManager.h"

#include <memory>
#include <string>

namespace obmgr::tool {

struct Design {
    CObjectManager manager;
    FileForm form;
    std::string shownName; // the file as messages name it
};

// Reads the file, "-" for standard input. Null after the reason was told on standard error; the exit code then is
// InputUnreadable. Web names are as in the file, double ones too, which a warning tells of.
std::unique_ptr<Design> OpenDesign(const std::string& path);

// The data version of the file; one that the file does not tell is taken from its form, with a warning.
int VersionOf(const Design& design);

// Fills the process's default attributes from the file, or from the installed one when none is given. False after
// the reason was told on standard error.
bool LoadDefaults(const std::optional<std::string>& path);

// Whether work on a file of this form takes long enough for a progress bar.
bool IsLarge(const FileForm& form);

// How messages name a file that was given as `path`.
std::string ShownName(const std::string& path);

} // namespace obmgr::tool
