#include "common/ArgHeader.h"

IMPLEMENT_DYNAMIC(KelArgHeader, CObject)

KelArgHeader::~KelArgHeader() = default;

void KelArgHeader::Copy(const KelArgHeader*) {}
