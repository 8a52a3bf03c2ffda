// tagSortBranch: one chain through the tree of routes, made for the time of one sort.
#pragma once

#include "framework/Collections.h"

struct tagSortBranch {
    CList<long, long> routeIds; // from a head route down to the lowest of the set; the other way in the reverse form
    double length = 0.0;        // sum of the routes' lengths, metres
};
