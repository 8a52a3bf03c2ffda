// A place in a list or map. It stays good while other elements are added and removed.
#pragma once

struct __POSITION; // name as published
using POSITION = __POSITION*;
