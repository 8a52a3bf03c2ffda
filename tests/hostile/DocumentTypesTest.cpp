// Files whose document type, entities, hints or names lead elsewhere: nothing but the file itself is ever opened.
#include "hostile/HostileTest.h"

#include <sys/stat.h>
#include <xercesc/sax/AttributeList.hpp>

#include "persistence/SaxParser.h"
#include "store/ObDefManager.h"

using namespace hostile;

namespace {

// Keeps every text that the parser delivers.
class EveryText : public xercesc::HandlerBase {
public:
    void startElement(const XMLCh* const name, xercesc::AttributeList& attributes) override
    {
        m_text += name;
        for (XMLSize_t i = 0; i < attributes.getLength(); ++i)
            (m_text += attributes.getName(i)) += attributes.getValue(i);
    }
    void characters(const XMLCh* const chars, const XMLSize_t length) override { m_text.append(chars, length); }
    void processingInstruction(const XMLCh* const target, const XMLCh* const data) override
    {
        (m_text += target) += data;
    }

    bool HasMarker() const
    {
        return m_text.find(std::u16string(kMarker, std::end(kMarker) - 1)) != std::u16string::npos;
    }

private:
    std::u16string m_text;
};

class DocumentTypes : public HostileTest {
protected:
    DocumentTypes()
    {
        std::filesystem::create_directory(bait);
        support::writeBytes(bait / "secret.txt", kMarker);
        support::writeBytes(bait / "secret.dtd", "<!ENTITY e \"" + std::string(kMarker) +
                                                     "\"><!ATTLIST a contents CDATA \"" + kMarker + "\">");
        support::writeBytes(bait / "secret.xml", "<a contents=\"" + std::string(kMarker) + "\"/>");
        EXPECT_EQ(::mkfifo((bait / "fifo").c_str(), 0600), 0);
    }

    // Runs a read over the file with the bytes and looks that nothing else was opened and nobody called.
    template <class Read> void watched(const std::string& bytes, Read&& readFile)
    {
        const CString path = folder.Write("read.xml", bytes);
        OpenWatch watch(bait);
        readFile(path);
        EXPECT_EQ(watch.Opened(), std::vector<std::string>());
        EXPECT_FALSE(listener.HasCaller());
    }

    // The three readers that a file can come to.
    void expectHarmless(const std::string& bytes, bool loads)
    {
        SCOPED_TRACE(bytes.substr(0, 300));
        watched(bytes, [&](const CString& path) {
            CObjectManager manager;
            EXPECT_EQ(manager.CreatePipeObjectFromFile(path, error, false), loads) << error;
            if (!loads) {
                EXPECT_FALSE(error.IsEmpty());
            }
            EXPECT_EQ(describe(manager).find(kMarker), std::string::npos);
            EXPECT_LT(error.Find(L"MARKER"), 0) << error;
        });
        watched(bytes, [&](const CString& path) {
            CObDefManager defaults;
            defaults.ReadDefFile(path, error);
            for (const CObDefault* const entry : defaults.GetDefList()) {
                CMapStringToString values = entry->GetSubattribute();
                for (POSITION at = values.GetStartPosition(); at;) {
                    CString key;
                    CString value;
                    values.GetNextAssoc(at, key, value);
                    EXPECT_LT(value.Find(L"MARKER"), 0);
                }
            }
        });
        watched(bytes, [&](const CString& path) {
            EveryText all;
            CSaxParser().ReadWithHandlers(path, all, error);
            EXPECT_FALSE(all.HasMarker());
        });
    }

    const std::filesystem::path bait = folder / "bait";
    Listener listener;
    const std::string net = "127.0.0.1:" + listener.Port();
    const std::string body = "<pipedata><node id=\"1\"><a/></node></pipedata>";
};

} // namespace

TEST_F(DocumentTypes, TheWatchesSeeWhatTheyAreFor)
{
    OpenWatch watch(bait);
    EXPECT_EQ(watch.Opened(), std::vector<std::string>());
    EXPECT_EQ(support::readBytes(bait / "secret.txt"), kMarker);
    EXPECT_FALSE(watch.Opened().empty());

    // The same files with a parser as it comes from its makers.
    folder.Write("read.xml", "<!DOCTYPE pipedata [<!ENTITY e SYSTEM \"bait/secret.txt\">]><pipedata>&e;</pipedata>");
    EveryText all;
    xercesc::SAXParser parser;
    parser.setDocumentHandler(&all);
    parser.setErrorHandler(&all);
    parser.parse((folder / "read.xml").c_str());
    EXPECT_TRUE(all.HasMarker());
    EXPECT_FALSE(watch.Opened().empty());
}

TEST_F(DocumentTypes, HarmlessOnesLoadWithoutEffect)
{
    for (const char* const type :
         {"<!DOCTYPE pipedata>", "<!DOCTYPE pipedata []>", "<!DOCTYPE other [<!ELEMENT pipedata (node*)>]>",
          "<!DOCTYPE pipedata [<!ELEMENT pipedata EMPTY><!ATTLIST node id ID #REQUIRED>]>"})
        expectHarmless(type + body, true);
}

TEST_F(DocumentTypes, DefaultsOfAttributesDoNotAppear)
{
    const std::string marker = kMarker;
    expectHarmless("<!DOCTYPE pipedata [<!ATTLIST a contents CDATA \"" + marker + "\">]>" + body, true);
    expectHarmless("<!DOCTYPE pipedata [<!ATTLIST a contents CDATA #FIXED \"" + marker + "\">]>" + body, true);
    CObjectManager manager;
    EXPECT_FALSE(read(manager, "<!DOCTYPE pipedata [<!ATTLIST node id CDATA \"5\">]><pipedata><node/></pipedata>"));
    EXPECT_EQ(error, L"node ID=-1 data is illegal.");
}

TEST_F(DocumentTypes, EntitiesThatNameFilesAreRefusedUnopened)
{
    const std::string file = (bait / "secret.txt").string();
    const std::string fifo = (bait / "fifo").string();
    for (const std::string& id : {std::string("bait/secret.txt"), "./bait/../bait/secret.txt" + std::string(), file,
                                  "file://" + file, "file:" + file, std::string("bait/fifo"), "file://" + fifo}) {
        const std::string type = "<!DOCTYPE pipedata [<!ENTITY e SYSTEM \"" + id + "\">]>";
        expectHarmless(type + "<pipedata>&e;" + "<node id=\"1\"/></pipedata>", false);
        expectHarmless(type + "<pipedata><node id=\"1\"><a contents=\"&e;\"/></node></pipedata>", false);
        expectHarmless(type + body, true); // declared and never used
        expectHarmless("<!DOCTYPE pipedata [<!ENTITY % p SYSTEM \"" + id + "\"> %p; ]>" + body, true);
        expectHarmless("<!DOCTYPE pipedata SYSTEM \"" + id + "\">" + body, true);
    }
    expectHarmless(
        "<!DOCTYPE pipedata [<!ENTITY e SYSTEM \"bait/secret.txt\"><!ATTLIST a contents CDATA \"&e;\">]>" + body, true);
}

TEST_F(DocumentTypes, AFileOfDeclarationsIsSkipped)
{
    expectHarmless("<!DOCTYPE pipedata SYSTEM \"bait/secret.dtd\">" + body, true);
    expectHarmless("<!DOCTYPE pipedata PUBLIC \"-//X//Y//EN\" \"bait/secret.dtd\">" + body, true);
    expectHarmless("<!DOCTYPE pipedata SYSTEM \"bait/secret.dtd\"><pipedata>&e;</pipedata>", false);
    expectHarmless("<?xml version='1.0' standalone='no'?><!DOCTYPE pipedata SYSTEM \"bait/secret.dtd\">" + body, true);
}

TEST_F(DocumentTypes, AddressesAreNeverCalled)
{
    for (const std::string scheme : {"http", "https", "ftp"}) {
        const std::string id = "\"" + scheme + "://" + net + "/x\"";
        const std::string entity = "<!DOCTYPE pipedata [<!ENTITY e SYSTEM " + id + ">]>";
        expectHarmless(entity + "<pipedata>&e;</pipedata>", false);
        expectHarmless(entity + "<pipedata><node id=\"1\"><a contents=\"&e;\"/></node></pipedata>", false);
        expectHarmless("<!DOCTYPE pipedata [<!ENTITY % p SYSTEM " + id + "> %p; ]>" + body, true);
        expectHarmless("<!DOCTYPE pipedata SYSTEM " + id + ">" + body, true);
        expectHarmless("<!DOCTYPE pipedata PUBLIC \"-//X//Y//EN\" " + id + " [<!ENTITY e \"x\">]>" + body, true);
        expectHarmless(
            "<!DOCTYPE pipedata [<!NOTATION n SYSTEM " + id + "><!ENTITY e SYSTEM " + id + " NDATA n>]>" + body, true);
    }
}

TEST_F(DocumentTypes, HintsInsideTheDocumentAreNotFollowed)
{
    const std::string url = "http://" + net + "/x";
    expectHarmless("<?xml-stylesheet type=\"text/xsl\" href=\"" + url + "\"?>" + body, true);
    expectHarmless("<?xml-model href=\"bait/secret.xml\"?>" + body, true);
    expectHarmless("<pipedata xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xsi:schemaLocation=\"u " + url +
                       "\" xsi:noNamespaceSchemaLocation=\"bait/secret.xml\"><node id=\"1\"/></pipedata>",
                   true);
    const std::string include =
        "<xi:include xmlns:xi=\"http://www.w3.org/2001/XInclude\" href=\"bait/secret.xml\" parse=\"xml\"/>";
    expectHarmless("<pipedata>" + include + "</pipedata>", false);
    EXPECT_FALSE(readRecords(*std::make_unique<CObjectManager>(), include));
    EXPECT_EQ(error, L"xi:include ID=-1 data is illegal.");
    expectHarmless("<pipedata><node id=\"1\">" + include + "</node></pipedata>", true);
}

TEST_F(DocumentTypes, APathThatIsAnAddressIsNotCalled)
{
    for (const std::string scheme : {"http", "https", "ftp", "file"}) {
        const std::string address = scheme + "://" + net + "/x";
        const CString path = obmgr::PathFromNative(address);
        CObjectManager manager;
        EXPECT_FALSE(manager.CreatePipeObjectFromFile(path, error, false));
        EXPECT_EQ(error, L"Can not find the file " + path + L".");
        CSaxParser parser(&manager);
        EXPECT_FALSE(parser.ReadPipeFile(path, false, error));
        EveryText all;
        EXPECT_FALSE(parser.ReadWithHandlers(path, all, error));
        CObDefManager defaults;
        EXPECT_FALSE(defaults.ReadDefFile(path, error));
        EXPECT_FALSE(listener.HasCaller());
    }
    // Where folders bear the names, the path leads to a file, and that is not opened as an address either.
    const std::filesystem::path place = folder / "http:" / net;
    std::filesystem::create_directories(place);
    support::writeBytes(place / "x", body);
    ASSERT_TRUE(obmgr::CurrentDirectory::Set(support::toPath(folder.Path())));
    CObjectManager manager;
    EXPECT_TRUE(manager.CreatePipeObjectFromFile(obmgr::PathFromNative("http://" + net + "/x"), error, false)) << error;
    EXPECT_EQ(manager.GetAllDataCount(), 1);
    EXPECT_FALSE(listener.HasCaller());
}

// Unbounded expansion would not end, or end in an exhausted memory.
TEST_F(DocumentTypes, EntitiesAreNeverExpanded)
{
    std::string levels = "<!DOCTYPE pipedata [<!ENTITY e0 \"" + std::string(kMarker) + "\">";
    for (int level = 1; level <= 9; ++level) {
        levels += "<!ENTITY e" + std::to_string(level) + " \"";
        for (int i = 0; i < 10; ++i)
            levels += "&e" + std::to_string(level - 1) + ";";
        levels += "\">";
    }
    levels += "]>";
    expectHarmless(levels + "<pipedata>&e9;</pipedata>", false);
    expectHarmless(levels + "<pipedata><node id=\"1\"><a contents=\"&e9;\"/></node></pipedata>", false);
    expectHarmless(levels + body, true);

    const std::string ring = "<!DOCTYPE pipedata [<!ENTITY x \"&y;\"><!ENTITY y \"&x;\">]>";
    expectHarmless(ring + "<pipedata>&x;</pipedata>", false);
    expectHarmless(ring + "<pipedata><node id=\"1\"><a contents=\"&x;\"/></node></pipedata>", false);

    // The five that exist without a declaration cannot be made to mean something else.
    EXPECT_EQ(valueIn("<!DOCTYPE pipedata [<!ENTITY lt \"MARKER\"><!ENTITY amp \"MARKER\">]>"
                      "<pipedata><node id=\"1\"><a contents=\"&lt;&amp;\"/></node></pipedata>"),
              L"<&");
}

TEST_F(DocumentTypes, OneLargeEntityUsedOftenIsRefused)
{
    const std::string type = "<!DOCTYPE pipedata [<!ENTITY e \"" + std::string(1 << 20, 'x') + "\">]>";
    std::string uses;
    for (int i = 0; i < 2000; ++i)
        uses += "&e;";
    expectRefused(type + "<pipedata>" + uses + "</pipedata>");
    expectRefused(type + "<pipedata><node id=\"1\"><a contents=\"" + uses + "\"/></node></pipedata>");
}

// Two thousand elements with a default of a megabyte each.
TEST_F(DocumentTypes, LargeDefaultsOfAttributesAreNotMultiplied)
{
    std::string file = "<!DOCTYPE pipedata [<!ATTLIST a contents CDATA \"" + std::string(1 << 20, 'x') +
                       "\">]><pipedata><node id=\"1\">";
    for (int i = 0; i < 2000; ++i)
        file += "<a/>";
    EXPECT_EQ(valueIn(file + "</node></pipedata>"), L"");
}
