// A whole design as text, to tell whether a call changed anything; and whether its tables are in order.
#pragma once

#include "store/ObjectManager.h"

#include <string>

namespace support {

// Everything that a caller can see of the objects: id, status, links and attributes, table by table.
std::string dump(const CObjectManager& manager);

// Every look-up by id, by the first link and by the value of `key` against a walk of the list.
void expectWhole(const CObjectManager& manager, const wchar_t* key);

} // namespace support
