// The parser of all readers, set up so that a file can do no harm: document type declarations are skipped, no entity
// but the predefined ones exists, nothing but the file itself is opened, and no element has attributes without end.
#pragma once

#include <cstddef>
#include <cstdint>

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>

#include "common/Export.h"
#include "framework/String.h"

namespace obmgr {

// The memory of one parser; outlives it and its exceptions. The parser compares each attribute of an element with all
// before it and tells of none until it has the last one, yet it takes memory for each. So memory taken again and again
// without a new element means more attributes than any element has, and ends the parse by a CPipeObjectException.
class ParserMemory : public xercesc::MemoryManager {
public:
    ~ParserMemory() override;

    void* allocate(XMLSize_t size) override;
    void deallocate(void* block) override;
    xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }

    void NoteElement() noexcept { m_takenForElement = 0; }

private:
    std::uint32_t m_takenForElement = 0;
};

class RIVELTA_API SafeParser : public xercesc::SAXParser {
public:
    explicit SafeParser(ParserMemory& memory);
    ~SafeParser() override;

    // Runs the handlers over the file. Raises what the parser and the handlers raise.
    void ParseFile(const CString& path, xercesc::HandlerBase& handlers);

    void startElement(const xercesc::XMLElementDecl& declaration, const unsigned int urlId, const XMLCh* const prefix,
                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, const XMLSize_t attributeCount,
                      const bool isEmpty, const bool isRoot) override;

private:
    ParserMemory& m_memory;
};

} // namespace obmgr
