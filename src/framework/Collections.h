// All containers of the interface.
#pragma once

#include "framework/Array.h"
#include "framework/List.h"
#include "framework/Map.h"
#include "framework/PtrArray.h"
#include "framework/PtrList.h"
