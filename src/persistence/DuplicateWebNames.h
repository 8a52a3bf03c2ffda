// Webs that share a name after a read.
#pragma once

class CObjectManager;
class CWeb;

namespace obmgr {

// Asks for a new name of the web and writes it. `declined` counts the questions in a row that brought none: a person
// may decline and is asked again, but when nobody seems to be there the web gets the first free name.
void RenameDuplicateWeb(const CObjectManager& manager, CWeb& web, int& declined);

} // namespace obmgr
