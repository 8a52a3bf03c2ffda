// tagSeekSect: a pipe section in the list of all their names.
#pragma once

#include "framework/String.h"

struct tagSeekSect {
    long id = 0;
    CString name;
};
