// The launcher of all readers: runs the parser over a file with the handlers of a reader, and turns what goes wrong
// into a text.
#pragma once

#include <memory>

#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/SAXException.hpp>

#include "common/Export.h"
#include "framework/String.h"
#include "persistence/SafeParser.h"

class CDlgProgress;
class CObDefManager;
class CObjectManager;

class RIVELTA_API CSaxParser {
public:
    explicit CSaxParser(CObjectManager* manager = nullptr, CObDefManager* defManager = nullptr)
        : m_pManager(manager), m_pDefManager(defManager)
    {
    }

    // Reads the file into the manager's tables. With `append` ids are moved behind the manager's last one. False with
    // a text in `error`; the objects read until then stay.
    bool ReadPipeFile(const wchar_t* path, bool append, CString& error);
    // Runs the handlers over the file, without a progress dialog. True also when the handlers ended the parse early,
    // by SAXEndElementException or by a CPipeObjectException with an empty text.
    bool ReadWithHandlers(const CString& path, xercesc::HandlerBase& handlers, CString& error);
    // Reads the file into the default attribute manager.
    bool ReadDefaults(const CString& path, CString& error);

private:
    CObjectManager* m_pManager;   // borrowed
    CObDefManager* m_pDefManager; // borrowed
};

// Ends a parse early; carries nothing.
class RIVELTA_API SAXEndElementException : public xercesc::SAXException {
public:
    ~SAXEndElementException() override;
};

// The parser of the full reader: shows its progress and lets the person cancel when the file is large.
class RIVELTA_API OrnSaxParser : public obmgr::SafeParser {
public:
    // `fileSize` in bytes.
    OrnSaxParser(obmgr::ParserMemory& memory, const CString& file, int fileSize);
    ~OrnSaxParser() override;

    void startDocument() override;
    void endDocument() override;
    // Raises CPipeObjectException when the person has cancelled.
    void startElement(const xercesc::XMLElementDecl& declaration, const unsigned int urlId, const XMLCh* const prefix,
                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, const XMLSize_t attributeCount,
                      const bool isEmpty, const bool isRoot) override;
    void error(const unsigned int code, const XMLCh* const domain, const xercesc::XMLErrorReporter::ErrTypes type,
               const XMLCh* const text, const XMLCh* const systemId, const XMLCh* const publicId, const XMLFileLoc line,
               const XMLFileLoc column) override;

private:
    void ShowProgress();

    CString m_strFile;
    int m_nFileSize;
    std::unique_ptr<CDlgProgress> m_pProgress; // null unless the file is large
};

namespace obmgr {

// Puts "Out of memory." into `error`, or nothing when there is no room even for that.
void TellOutOfMemory(CString& error) noexcept;

} // namespace obmgr
