#include "persistence/SaxParser.h"

#include <new>

#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "common/Id32.h"
#include "common/Path.h"
#include "control/DlgProgress.h"
#include "persistence/PipeFileSource.h"
#include "persistence/PipeObjectException.h"
#include "persistence/ProgressTitle.h"
#include "persistence/SaxDefHandlers.h"
#include "persistence/SaxHandlers.h"
#include "persistence/XmlText.h"
#include "resources/LibraryStart.h"
#include "resources/Resources.h"

namespace {

constexpr int kProgressFromBytes = 1'000'001;
constexpr XMLFilePos kPositionLimit = 0x7FFFFFFF;

CString DescribeMessage(const XMLCh* message)
{
    return L"\nException message:" + obmgr::Shortened(obmgr::FromXml(message));
}

CString DescribeFailure(const XMLCh* message)
{
    return L"An error occured during parsing." + DescribeMessage(message);
}

// The line is shown by its halves, so that the number in the column's place is 0. Callers know the text that way.
CString DescribePosition(const xercesc::SAXParseException& failure)
{
    CString text = L"Error at file.\n" + obmgr::Shortened(obmgr::FromXml(failure.getSystemId()));
    const XMLFileLoc line = failure.getLineNumber();
    text.AppendFormat(L", line %d, column %d", obmgr::Id32(line), obmgr::Id32(line >> 32));
    return text + DescribeMessage(failure.getMessage());
}

enum class EmptyText { IsFailure, IsSuccess };

// Runs a parse and gives its result; what it raises ends here.
template <class Parse> bool RunParse(Parse&& parse, EmptyText emptyText, CString& error)
{
    obmgr::ParserMemory memory;
    try {
        try {
            parse(memory);
            return true;
        } catch (const xercesc::XMLException& failure) {
            error = DescribeFailure(failure.getMessage());
        } catch (const xercesc::SAXParseException& failure) {
            error = DescribePosition(failure);
        } catch (const SAXEndElementException&) {
            return true;
        } catch (const xercesc::SAXException& failure) {
            error = DescribeFailure(failure.getMessage());
        } catch (CPipeObjectException* failure) {
            error = failure->GetText();
            failure->Delete();
            return emptyText == EmptyText::IsSuccess && error.IsEmpty();
        }
    } catch (const xercesc::OutOfMemoryException&) {
        obmgr::TellOutOfMemory(error);
    } catch (const std::bad_alloc&) {
        obmgr::TellOutOfMemory(error);
    }
    return false;
}

} // namespace

void obmgr::TellOutOfMemory(CString& error) noexcept
{
    try {
        error = L"Out of memory.";
    } catch (const std::bad_alloc&) {
        error.Empty();
    }
}

bool CSaxParser::ReadPipeFile(const wchar_t* path, bool append, CString& error)
{
    obmgr::EnsureLibraryStarted();
    return RunParse(
        [&](obmgr::ParserMemory& memory) {
            const CString file = obmgr::SystemPath(path);
            CString sizeError;
            const long size = orn_get_filesize(file, sizeError);
            if (size < 1) throw new CPipeObjectException(sizeError);
            OrnSaxParser parser(memory, path, static_cast<int>(size));
            parser.setCalculateSrcOfs(true);
            SAXHandlers handlers(m_pManager, append);
            parser.ParseFile(file, handlers);
        },
        EmptyText::IsFailure, error);
}

bool CSaxParser::ReadWithHandlers(const CString& path, xercesc::HandlerBase& handlers, CString& error)
{
    obmgr::EnsureLibraryStarted();
    return RunParse(
        [&](obmgr::ParserMemory& memory) {
            obmgr::SafeParser parser(memory);
            parser.ParseFile(obmgr::SystemPath(path), handlers);
        },
        EmptyText::IsSuccess, error);
}

bool CSaxParser::ReadDefaults(const CString& path, CString& error)
{
    SAXDefHandlers handlers(m_pDefManager);
    return ReadWithHandlers(path, handlers, error);
}

SAXEndElementException::~SAXEndElementException() = default;

OrnSaxParser::OrnSaxParser(obmgr::ParserMemory& memory, const CString& file, int fileSize)
    : SafeParser(memory), m_strFile(file), m_nFileSize(fileSize)
{
}

OrnSaxParser::~OrnSaxParser() = default;

void OrnSaxParser::startDocument()
{
    if (m_nFileSize >= kProgressFromBytes) {
        m_pProgress = std::make_unique<CDlgProgress>();
        m_pProgress->Create();
        m_pProgress->SetRange(0, m_nFileSize);
        m_pProgress->SetTitle(obmgr::ProgressTitle(IDS_READ_TITLE, m_strFile));
        m_pProgress->PeekAndPump(1);
    }
    SAXParser::startDocument();
}

void OrnSaxParser::endDocument()
{
    m_pProgress.reset();
    SAXParser::endDocument();
}

void OrnSaxParser::startElement(const xercesc::XMLElementDecl& declaration, const unsigned int urlId,
                                const XMLCh* const prefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                const XMLSize_t attributeCount, const bool isEmpty, const bool isRoot)
{
    if (m_pProgress) ShowProgress();
    SafeParser::startElement(declaration, urlId, prefix, attributes, attributeCount, isEmpty, isRoot);
}

void OrnSaxParser::ShowProgress()
{
    const XMLFilePos position = getScanner().getSrcOffset();
    if (position < kPositionLimit) m_pProgress->SetPos(static_cast<int>(position));
    m_pProgress->PeekAndPump(1);
    if (m_pProgress->IsContinue()) return;
    m_pProgress.reset();
    throw new CPipeObjectException(IDS_READ_CANCELLED);
}

void OrnSaxParser::error(const unsigned int code, const XMLCh* const domain,
                         const xercesc::XMLErrorReporter::ErrTypes type, const XMLCh* const text,
                         const XMLCh* const systemId, const XMLCh* const publicId, const XMLFileLoc line,
                         const XMLFileLoc column)
{
    m_pProgress.reset();
    SAXParser::error(code, domain, type, text, systemId, publicId, line, column);
}
