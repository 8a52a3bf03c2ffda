#include "persistence/SafeParser.h"

#include <new>

#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "persistence/PipeFileSource.h"
#include "persistence/PipeObjectException.h"

namespace obmgr {
namespace {

// Ours have four at most. The second limit is well above what a thousand attributes make the parser take.
constexpr XMLSize_t kMostAttributes = 1000;
constexpr std::uint32_t kMostTakenForElement = 20'000;

[[noreturn]] void RefuseAttributes()
{
    throw new CPipeObjectException(CString(L"An element has too many attributes."));
}

// The parser lets half a surrogate pair pass at the end of a value. What it stands for could never be saved.
bool HasHalfPair(const XMLCh* text)
{
    for (; *text; ++text) {
        if ((*text & 0xF800) != 0xD800) continue;
        if (*text >= 0xDC00 || (text[1] & 0xFC00) != 0xDC00) return true;
        ++text;
    }
    return false;
}

} // namespace

ParserMemory::~ParserMemory() = default;

void* ParserMemory::allocate(XMLSize_t size)
{
    if (++m_takenForElement > kMostTakenForElement) {
        m_takenForElement = 0; // what is taken while the parse ends is no matter
        RefuseAttributes();
    }
    void* const block = ::operator new(size, std::nothrow);
    if (!block) throw xercesc::OutOfMemoryException();
    return block;
}

void ParserMemory::deallocate(void* block)
{
    ::operator delete(block);
}

SafeParser::SafeParser(ParserMemory& memory) : SAXParser(nullptr, &memory), m_memory(memory)
{
    setValidationScheme(Val_Auto);
    // This scanner skips declarations unread. With another one, Val_Auto would follow a document type to wherever it
    // points, and no limit of entities would help against attribute defaults.
    useScanner(xercesc::XMLUni::fgWFXMLScanner);
    // A second fence, should another scanner ever be chosen. (No limit on entities beside it: this scanner counts the
    // predefined ones, so that ordinary files would break.)
    setDisableDefaultEntityResolution(true);
}

SafeParser::~SafeParser() = default;

void SafeParser::ParseFile(const CString& path, xercesc::HandlerBase& handlers)
{
    setDocumentHandler(&handlers);
    setErrorHandler(&handlers);
    const PipeFileSource source(path);
    parse(source);
}

void SafeParser::startElement(const xercesc::XMLElementDecl& declaration, const unsigned int urlId,
                              const XMLCh* const prefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                              const XMLSize_t attributeCount, const bool isEmpty, const bool isRoot)
{
    m_memory.NoteElement();
    if (attributeCount > kMostAttributes) RefuseAttributes();
    for (XMLSize_t i = 0; i < attributeCount; ++i)
        if (HasHalfPair(attributes.elementAt(i)->getValue()))
            throw xercesc::SAXParseException(u"a value with half a character", *getScanner().getLocator());
    SAXParser::startElement(declaration, urlId, prefix, attributes, attributeCount, isEmpty, isRoot);
}

} // namespace obmgr
