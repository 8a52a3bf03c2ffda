// KelArgHeader: the base of argument records, which tell an operation what it works for.
#pragma once

#include "common/Export.h"
#include "framework/Object.h"

class RIVELTA_API KelArgHeader : public CObject {
    DECLARE_DYNAMIC(KelArgHeader)

public:
    KelArgHeader() = default;
    ~KelArgHeader() override;

    // Takes over the source's values as far as this record has fields for them. A null source changes nothing.
    virtual void Copy(const KelArgHeader* source);
};
