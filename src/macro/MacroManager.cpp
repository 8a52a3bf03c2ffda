#include "macro/MacroManager.h"

IMPLEMENT_DYNCREATE(KelMacroManager, CObject)
