#include "persistence/SaxDefHandlers.h"

#include <memory>

#include <xercesc/sax/AttributeList.hpp>

#include "objects/ObjectTypes.h"
#include "persistence/XmlText.h"
#include "store/ObDefManager.h"

namespace {

const XMLCh* FindContents(const xercesc::AttributeList& attributes)
{
    for (XMLSize_t i = 0; i < attributes.getLength(); ++i)
        if (obmgr::EqualsIgnoringCase(attributes.getName(i), u"contents")) return attributes.getValue(i);
    return nullptr;
}

} // namespace

SAXDefHandlers::~SAXDefHandlers() = default;

void SAXDefHandlers::startElement(const XMLCh* const name, xercesc::AttributeList& attributes)
{
    const CString text = obmgr::FromXml(name);
    if (m_bInObject) {
        m_pCurrent->GetSubattribute().SetAt(text, obmgr::FromXml(FindContents(attributes)));
        return;
    }
    const objectdata::OBJECTTYPE type = objectdata::Name2Type(text);
    if (type < 0) return;
    auto entry = std::make_unique<CObDefault>(type, text);
    m_pDefManager->GetDefList().AddTail(entry.get());
    m_pCurrent = entry.release();
    m_bInObject = true;
}

void SAXDefHandlers::endElement(const XMLCh* const name)
{
    if (objectdata::Name2Type(obmgr::FromXml(name)) >= 0) m_bInObject = false;
}
