// The reader of the default attribute file.
#pragma once

#include <xercesc/sax/HandlerBase.hpp>

#include "common/Export.h"

class CObDefault;
class CObDefManager;

// Appends an entry for each element that is named like a tag. A child that is named like a tag ends the entry, and
// those behind it are then skipped or taken for entries.
class RIVELTA_API SAXDefHandlers : public xercesc::HandlerBase {
public:
    explicit SAXDefHandlers(CObDefManager* manager) : m_pDefManager(manager) {}
    SAXDefHandlers(const SAXDefHandlers&) = delete;
    SAXDefHandlers& operator=(const SAXDefHandlers&) = delete;
    ~SAXDefHandlers() override;

    void startElement(const XMLCh* const name, xercesc::AttributeList& attributes) override;
    void endElement(const XMLCh* const name) override;

private:
    CObDefManager* m_pDefManager; // borrowed
    bool m_bInObject = false;
    CObDefault* m_pCurrent = nullptr; // borrowed: the entry being filled
};
