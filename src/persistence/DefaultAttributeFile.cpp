// The definition file of the default attributes.

#include <memory>
#include <new>
#include <string>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/util/IOException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLChar.hpp>
#include <xercesc/util/XMLExceptMsgs.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "common/Path.h"
#include "framework/AtomicFile.h"
#include "framework/CurrentDirectory.h"
#include "framework/File.h"
#include "persistence/PipeFileSource.h"
#include "persistence/SaxParser.h"
#include "persistence/XmlText.h"
#include "store/ObDefManager.h"

using obmgr::FromXml;
using obmgr::ToXml;

namespace {

// The results of SaveDefFile.
enum SaveResult { NothingToSave, ParserFailure, DocumentFailure, Completed, NoImplementation, OutOfMemory };

// The parser library's start and stop nest.
struct ParserStart {
    ParserStart() { xercesc::XMLPlatformUtils::Initialize(); }
    ~ParserStart() { xercesc::XMLPlatformUtils::Terminate(); }
    ParserStart(const ParserStart&) = delete;
    ParserStart& operator=(const ParserStart&) = delete;
};

struct Releaser {
    template <class Resource> void operator()(Resource* resource) const { resource->release(); }
};
template <class Resource> using Released = std::unique_ptr<Resource, Releaser>;

// No file could be read back that holds the text.
bool IsXmlText(const std::u16string& text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isPair = i + 1 < text.size() && xercesc::XMLChar1_0::isXMLChar(text[i], text[i + 1]);
        if (!isPair && !xercesc::XMLChar1_0::isXMLChar(text[i])) return false;
        i += isPair;
    }
    return true;
}

Released<xercesc::DOMDocument> MakeDocument(xercesc::DOMImplementation& implementation, const CString& version,
                                            const CTypedPtrList<CObList, CObDefault*>& entries)
{
    Released<xercesc::DOMDocument> document(implementation.createDocument(nullptr, u"pipedata", nullptr));
    xercesc::DOMElement& root = *document->getDocumentElement();
    CString comment;
    comment.Format(L"Default attributes defined by Rivelta %s.", version);
    root.appendChild(document->createComment(ToXml(comment.View()).c_str()));
    for (const CObDefault* const entry : entries) {
        if (!entry) continue;
        xercesc::DOMElement& record = *document->createElement(ToXml(entry->GetObjName().View()).c_str());
        for (const auto& [key, value] : entry->GetSubattribute()) {
            const std::u16string text = ToXml(value.View());
            if (!IsXmlText(text)) throw xercesc::DOMException(xercesc::DOMException::INVALID_CHARACTER_ERR);
            xercesc::DOMElement& child = *document->createElement(ToXml(key.View()).c_str());
            child.setAttribute(u"contents", text.c_str());
            record.appendChild(&child);
        }
        root.appendChild(&record);
    }
    return document;
}

void SetIfPossible(xercesc::DOMConfiguration& configuration, const XMLCh* parameter, bool value)
{
    if (configuration.canSetParameter(parameter, value)) configuration.setParameter(parameter, value);
}

// The document's bytes; false when the library has nothing to write documents with.
bool Serialize(const xercesc::DOMDocument& document, xercesc::MemBufFormatTarget& target)
{
    auto* const implementation =
        dynamic_cast<xercesc::DOMImplementationLS*>(xercesc::DOMImplementationRegistry::getDOMImplementation(u"LS"));
    if (!implementation) return false;
    const Released<xercesc::DOMLSSerializer> serializer(implementation->createLSSerializer());
    const Released<xercesc::DOMLSOutput> output(implementation->createLSOutput());
    if (!serializer || !output) return false;
    SetIfPossible(*serializer->getDomConfig(), xercesc::XMLUni::fgDOMWRTFormatPrettyPrint, true);
    SetIfPossible(*serializer->getDomConfig(), xercesc::XMLUni::fgDOMWRTXercesPrettyPrint, false);
    serializer->setNewLine(u"\n");
    output->setByteStream(&target);
    return serializer->write(&document, output.get());
}

// Puts the bytes in the place of the file, which stays as it was when that fails.
void ReplaceFile(const CString& path, const xercesc::MemBufFormatTarget& bytes)
{
    const std::u16string shownPath = ToXml(path.View());
    CString failure;
    obmgr::AtomicFile replacement;
    if (!replacement.Create(path, failure))
        ThrowXML1(xercesc::IOException, xercesc::XMLExcepts::File_CouldNotOpenFile, shownPath.c_str());
    try {
        CStdioFile file(replacement.TempPath(), CFile::modeCreate | CFile::modeWrite);
        file.Write(bytes.getRawBuffer(), static_cast<unsigned>(bytes.getLen()));
        file.Close();
    } catch (CFileException* fileFailure) {
        fileFailure->Delete();
        ThrowXML(xercesc::IOException, xercesc::XMLExcepts::File_CouldNotWriteToFile);
    }
    if (!replacement.Commit(failure)) ThrowXML(xercesc::IOException, xercesc::XMLExcepts::File_CouldNotWriteToFile);
}

SaveResult WriteDefaults(const CTypedPtrList<CObList, CObDefault*>& entries, const CString& path,
                         const CString& version, CString& error)
{
    const ParserStart parser;
    xercesc::DOMImplementation* const implementation =
        xercesc::DOMImplementationRegistry::getDOMImplementation(u"core");
    if (!implementation) {
        error = L"Requested implementation is not supported";
        return NoImplementation;
    }
    {
        const auto document = MakeDocument(*implementation, version, entries);
        xercesc::MemBufFormatTarget bytes;
        if (Serialize(*document, bytes)) ReplaceFile(path, bytes);
    }
    // Settled: the text comes with every completed save, and callers pay no heed to it.
    error = L"An error occurred creating the document";
    return Completed;
}

} // namespace

bool CObDefManager::ReadDefFile(const CString& givenPath, CString& error)
{
    CFileStatus status;
    CString path = GetLongFileName(obmgr::SystemPath(givenPath));
    if (!CFile::GetStatus(path, status)) {
        error.Format(L"File(%s) not found.", givenPath);
        return false;
    }
    obmgr::CurrentDirectoryGuard before;
    const int separator = path.ReverseFind(L'/');
    if (separator > 0 && obmgr::CurrentDirectory::Set(path.Left(separator)))
        path = path.Mid(separator + 1);
    else
        before.Release();
    if (!CSaxParser(nullptr, this).ReadDefaults(path, error)) return false;
    m_bEdit = false;
    return true;
}

int CObDefManager::SaveDefFile(const CString& path, const CString& version, CString& error)
{
    if (!m_bEdit) return NothingToSave;
    try {
        return WriteDefaults(m_listDef, path, version, error);
    } catch (const xercesc::OutOfMemoryException&) {
        error = L"OutOfMemoryException";
    } catch (const std::bad_alloc&) {
        error = L"OutOfMemoryException";
    } catch (const xercesc::XMLException& failure) {
        error.Format(L"Error Message:%s", FromXml(failure.getMessage()));
        return ParserFailure;
    } catch (const xercesc::DOMException& failure) {
        error.Format(L"DOMException code is:%d", failure.code);
        return DocumentFailure;
    }
    return OutOfMemory;
}
