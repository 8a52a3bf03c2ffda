// Exceptions from what the library calls: handlers of a parse, copies in a transaction.
#include "hostile/HostileTest.h"

#include <new>
#include <optional>
#include <stdexcept>

#include <xercesc/sax/SAXException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "persistence/PipeObjectException.h"
#include "persistence/SaxParser.h"

using namespace hostile;

namespace {

// Calls `raise` at the n-th event of a parse.
class RaisingHandler : public xercesc::HandlerBase {
public:
    RaisingHandler(int at, const std::function<void()>& raise) : m_left(at), m_raise(raise) {}
    int Events() const { return m_events; }

    void startDocument() override { count(); }
    void endDocument() override { count(); }
    void startElement(const XMLCh* const, xercesc::AttributeList&) override { count(); }
    void endElement(const XMLCh* const) override { count(); }
    void characters(const XMLCh* const, const XMLSize_t) override { count(); }
    void ignorableWhitespace(const XMLCh* const, const XMLSize_t) override { count(); }
    void processingInstruction(const XMLCh* const, const XMLCh* const) override { count(); }
    void setDocumentLocator(const xercesc::Locator* const) override { count(); }
    void resetDocument() override { count(); }
    void resetErrors() override { count(); }
    void error(const xercesc::SAXParseException&) override { count(); }
    void fatalError(const xercesc::SAXParseException& failure) override
    {
        count();
        throw failure;
    }

private:
    void count()
    {
        ++m_events;
        if (--m_left == 0) m_raise();
    }

    int m_left;
    const std::function<void()>& m_raise;
    int m_events = 0;
};

enum class Ending { Success, Failure, PassesOn };

struct Raised {
    const char* name;
    std::function<void()> raise;
    Ending ending;
    const wchar_t* error; // with Failure
};

class Callbacks : public HostileTest {
protected:
    void SetUp() override
    {
        std::string records = "<?x y?>";
        for (int id = 1; id <= 10; ++id)
            records += "<node id=\"" + std::to_string(id) + "\"><a contents=\"&amp;\"/>text</node>\n";
        path = folder.Write("a.xml", document(records));
    }

    CString path;
};

} // namespace

TEST_F(Callbacks, AnyExceptionAtAnyEventLeavesCleanlyAndTheNextReadWorks)
{
    const Raised kinds[] = {
        {"early end", [] { throw SAXEndElementException(); }, Ending::Success, L""},
        {"harmless stop", [] { throw new CPipeObjectException(0U); }, Ending::Success, L""},
        {"refusal", [] { throw new CPipeObjectException(CString(L"refused")); }, Ending::Failure, L"refused"},
        {"exception of the parser's kind", [] { throw xercesc::SAXException("own"); }, Ending::Failure,
         L"An error occured during parsing.\nException message:own"},
        {"memory", [] { throw std::bad_alloc(); }, Ending::Failure, L"Out of memory."},
        {"memory of the parser", [] { throw xercesc::OutOfMemoryException(); }, Ending::Failure, L"Out of memory."},
        {"value", [] { throw std::runtime_error("own"); }, Ending::PassesOn, L""},
        {"number", [] { throw 5; }, Ending::PassesOn, L""},
        {"pointer of the application", [] { throw new CFileException; }, Ending::PassesOn, L""},
    };
    const std::function<void()> nothing = [] {};
    RaisingHandler counting(-1, nothing);
    ASSERT_TRUE(CSaxParser().ReadWithHandlers(path, counting, error)) << error;
    ASSERT_GT(counting.Events(), 40);

    for (const Raised& kind : kinds) {
        for (int at = 1; at <= counting.Events(); ++at) {
            SCOPED_TRACE(std::string(kind.name) + " at " + std::to_string(at));
            RaisingHandler handler(at, kind.raise);
            std::optional<bool> result;
            error.Empty();
            try {
                result = CSaxParser().ReadWithHandlers(path, handler, error);
            } catch (CFileException* passed) {
                passed->Delete();
            } catch (const std::runtime_error&) {
            } catch (int) {
            }
            EXPECT_EQ(handler.Events(), at);
            switch (kind.ending) {
            case Ending::Success:
                EXPECT_EQ(result, true);
                EXPECT_EQ(error, L"");
                break;
            case Ending::Failure:
                EXPECT_EQ(result, false);
                EXPECT_EQ(error, kind.error);
                break;
            case Ending::PassesOn: EXPECT_FALSE(result.has_value()); break;
            }
        }
        RaisingHandler again(-1, nothing);
        EXPECT_TRUE(CSaxParser().ReadWithHandlers(path, again, error)) << kind.name << error;
        EXPECT_EQ(again.Events(), counting.Events()) << kind.name;
    }
}

namespace {

struct CopyFailed {};

// Cannot be copied, as when memory ends in the middle of its copy constructor.
class UncopiableNode : public CNode {
public:
    using CNode::CNode;
    bool fails = true;

protected:
    CPipeObject* Clone() const override
    {
        if (fails) throw CopyFailed();
        return new CNode(*this);
    }
};

} // namespace

TEST_F(Callbacks, ACopyThatFailsInATransactionLeavesObjectAndTransactionAsTheyWere)
{
    CObjectManager manager;
    auto* const good = new CNode(1);
    auto* const bad = new UncopiableNode(2);
    ASSERT_TRUE(manager.GetNodeDb().Add(1, good));
    ASSERT_TRUE(manager.GetNodeDb().Add(2, bad));
    good->WriteSubAttribute(L"a", L"before");
    bad->WriteSubAttribute(L"a", L"before");
    const std::string before = describe(manager);

    bad->fails = false;
    manager.BeginTransaction();
    bad->fails = true;
    good->WriteSubAttribute(L"a", L"after");
    EXPECT_THROW(bad->WriteSubAttribute(L"a", L"after"), CopyFailed);
    EXPECT_THROW(bad->SetObjectId(9), CopyFailed);
    EXPECT_THROW(manager.GetNodeDb().Remove(bad), CopyFailed);
    EXPECT_EQ(bad->GetSubAttribute(L"a"), L"before");
    EXPECT_EQ(manager.GetNodeDb().Find(2), bad);
    EXPECT_EQ(manager.GetNodeDb().GetCount(), 2);
    manager.AbortTransaction();
    EXPECT_EQ(describe(manager), before);

    manager.BeginTransaction();
    EXPECT_TRUE(manager.GetNodeDb().Remove(manager.GetNodeObjectOriginal(1)));
    manager.CommitTransaction();
    EXPECT_EQ(manager.GetAllDataCount(), 1);
}
