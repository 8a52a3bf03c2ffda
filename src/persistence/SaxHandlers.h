// The full reader: elements of a pipe data file become objects in the tables of a manager.
#pragma once

#include <array>
#include <cstdint>

#include <xercesc/sax/HandlerBase.hpp>

#include "common/Export.h"
#include "objects/ObjectTypes.h"
#include "persistence/ElementNames.h"
#include "persistence/XmlText.h"

class CObjectManager;
class CPipeObject;

class RIVELTA_API SAXHandlers : public xercesc::HandlerBase {
public:
    SAXHandlers(CObjectManager* manager, bool append);
    SAXHandlers(const SAXHandlers&) = delete;
    SAXHandlers& operator=(const SAXHandlers&) = delete;
    ~SAXHandlers() override;

    // Raises CPipeObjectException for a record that cannot be added.
    void startElement(const XMLCh* const name, xercesc::AttributeList& attributes) override;
    void endElement(const XMLCh* const name) override;

    // The attribute as a 32-bit number; with `shift` one that is not 0 is moved behind the manager's last id. False
    // when there is no such attribute, it is no whole number, or the moved number is 2147483647, with `value` then
    // the number as it stands in the file, if it is one.
    bool GetIntAttribute(const xercesc::AttributeList& attributes, const XMLCh* name, bool shift, long& value) const;

private:
    void ReadRecord(const XMLCh* name, const obmgr::ElementNames::Name& meaning,
                    const xercesc::AttributeList& attributes);
    bool AddRecord(const obmgr::RecordInfo& row, long id, const xercesc::AttributeList& attributes);
    void ReadSubAttribute(const XMLCh* name, obmgr::ElementNames::Name& meaning,
                          const xercesc::AttributeList& attributes);
    void OfferSubAttribute(const XMLCh* name, const XMLCh* value);
    long Shifted(long id) const;
    void FinishRecord() noexcept;

    CObjectManager* m_pManager;        // borrowed
    CPipeObject* m_pCurrent = nullptr; // borrowed: where sub-attributes go
    bool m_bAppend;
    int m_nDepth = 0;

    bool m_isFiltering = false; // the current object wants to be asked about each pair
    bool m_isGrowing = false;   // the current object is one that this read has added and not finished
    obmgr::ElementNames m_names;
    obmgr::Utf8Text m_value;
    // Room that the last record of each type took: the guess for the next one.
    std::array<std::size_t, obmgr::kTypeCount> m_roomOfType{};
};
