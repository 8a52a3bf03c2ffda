// The default attribute file of samples/: an entry for every record type, and in it every key that the library reads
// or writes by name.

#include "objects/ObjectTypes.h"
#include "store/ObDefManager.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

// The keys by record. Every record has "order" besides.
constexpr struct {
    const wchar_t* tag;
    const wchar_t* keys;
} kKeysOfRecords[] = {
    {L"project", L"prjname cityname company defsv defrural defqr defcombi defsvvac defruralvac activweb"},
    {L"node", L"mholeno ndnewgl ndoldgl ndtype ndstationno ndcommentf ndcomments ndcommentt manholecode mholedepth "
              L"oldmholedepth manholecapid divno divownerid"},
    {L"span", L"splength spslant spsecrecname spsecrecnamesub sphst sphfdt splent spnoarea spradt sparcdir spattrib "
              L"spve spqrall spqin spqout spqu rainqrall sewageqrall spcommentf spcomments spcommentt lowercentinv "
              L"uppercentinv newgl oldgl subsecfai calcstylename order spno spname"},
    {L"route", L"routenum subnum rttype rtattrib rtstate rtcomment rtglmode connectnum floworder order rtnumber "
               L"rtscomment rtablerfracex"},
    {L"web", L"webname personname areaname1 areaname2 subareaname1 subareaname2 outareaname wbendrname wbareasetflg "
             L"activweb webcurrentrouteid disposaltype calcstylename"},
    {L"manhole", L"mhcode mhname mhmaker mhheight mhwidth"},
    {L"section", L"sekeyword sename sedrawmk seplanetext danmencode"},
    {L"pipe", L"pename pedia pedia2 pethick pebase pesectionkey"},
    {L"obox", L"obname obbwidth obtwidth obheight obbthick obtthick obbase obsectionkey"},
    {L"cbox", L"cbname cbwidth cbheight cbbthick cbtthick cbbase cbsectionkey"},
    {L"ubox", L"ubname ubbwidth ubtwidth ubheight ubbthick ubtthick ubbase ubsectionkey"},
    {L"egg", L"egname egdia egdia2 egthick egbase egsectionkey"},
    {L"areainq", L"arspanid arspannum arsecrecname arouttext arinv ararrivetime arlength"},
    {L"areaoutq", L"aospanid aospannum aosecrec aoouttext aoinv"},
    {L"areaset", L"asratiosetnum asarea ashouser ashousel"},
    {L"fixinq", L"fxspanid fxspannum fxsecrecname fxouttext fxinq fxinv"},
    {L"icpinq", L"icinnodeid"},
    {L"glchange", L"glspanid glglid gltype glspannum glindist gldistdir gldist glhilevel glinhi glelev glouttext "
                  L"glstationno"},
    {L"inters", L"shape inwidth inheight itsecrecid itwidth itheight itcol itrow ittype defbase"},
    {L"intpos", L"ipspanid ipspannum ipindist ipdistdir ipdist iphilevel ipinhi ipinv ipouttext danmencode defbase"},
    {L"lateral",
     L"laspanid launitid laspannum laindist ladistdir ladist lasecrecname lawidth laheight lahilevel lainhi "
     L"laelev laouttext"},
    {L"mountinq", L"mtspanid mtspannum mtouttext mtarea mtlength mtslant mtrainratio mtlateratio"},
    {L"secgroup", L"sgname"},
    {L"secgrouprec", L"srsecgroupname srsectionkey srstsecname srendsecname"},
    {L"ratioset", L"rtnumber rtscomment"},
    {L"svperarea", L"saname"},
    {L"svperpopula", L"spname"},
    {L"svyokohama", L"syname"},
    {L"qrrational", L"qrname"},
    {L"qrexperiment", L"qename"},
    {L"qrmulti", L"qmname"},
    {L"qrmultidat", L"qmdqrmultiname qmdarea"},
    {L"qrline", L"qlname"},
    {L"qrriver", L"qvname"},
    {L"areasupve", L"avqrname avarea"},
    {L"qrrivertime", L"qtqrname qtarea"},
    {L"combi", L"csname"},
    {L"rural", L"rrname"},
    {L"outq", L"oqspanid oqspannum oqsecrecname oqouttext oqoutq oqinv"},
    {L"calcfig", L"cfpdepthfig cfpdepthmode"},
    {L"drawfig", L"dfspanlenfig dfspanlenmode dfslfig dfslmode dfphfig dfphmode dfpdepthfig dfpdepthmode dfmdepthfig "
                 L"dfmdepthmode dfroutelenfig dfroutelenmode dfareafig dfareamode dfdhfig dfdhmode dfcoverfig "
                 L"dfcovermode dfsubhfig dfsubhmode dftimefig dftimemode dfvfig dfvmode dfqrfig dfqrmode dfqufig "
                 L"dfqumode sclmkfig"},
    {L"execution", L"ecnum"},
    {L"retain", L"ernum"},
    {L"timber", L"tbnum"},
    {L"foundation", L"fdnum"},
    {L"profilearang", L"parangname"},
    {L"profilearea", L"pareawebid pareastrouteid pareaendrouteid"},
    {L"profilelayout", L"ploutpage ploutstspid ploutendspid ploutdir ploutstpos"},
    {L"drawformdat", L"dformname tltext dfdyscale openpipetop lvlmemotxbase rtablerfracex drawsecinfoleaderbase "
                     L"drawcodezeromhole"},
    {L"drawpendat", L"dpdtype dpdpen order"},
    {L"drawfontdat", L"dfttype order"},
    {L"drawbeltdat", L"dbdgcin dbddrawmode drawcodezeromhole"},
    {L"drawsecinfodat", L"dsidgcin"},
    {L"sheetarea", L"sareawebid sareastrouteid sareaendrouteid"},
    {L"sheetarang", L"sarangtype"},
    {L"spdxfin", L"sdispanid"},
    {L"drawbelttx", L"dbtspanid"},
    {L"inareaset", L"iasratiosetnum iasarea iashouser iashousel"},
    {L"outareaset", L"oasratiosetnum oasarea oashouser oashousel"},
    {L"ppmark", L"pmkcode pmktype"},
    {L"attbox", L"abcode2 abname"},
    {L"attboxvu", L"abcodevu2 abnamevu"},
    {L"execdivide", L"execwebid execrouteid execaspid execroadid execspanid execuppernodeid execlowernodeid"},
    {L"lcarry", L"lcrywebid lcryuprouteid lcrylorouteid lcrymidrouteid"},
    {L"nodeunit", L"nuownspid nuname nuhi nuangle"},
    {L"launit", L"lunum lucode"},
    {L"vjoint", L"vjspid vjinletid vjspnum vjindist vjdist vjouttext vjsecrecname"},
    {L"vacunit", L"vunum vucode"},
    {L"secvalve", L"svspid svname svdist"},
    {L"ohaul", L"ohspid ohname ohdist"},
};

class DefaultAttributes : public testing::Test {
protected:
    void SetUp() override
    {
        CString error;
        const CString path = obmgr::FromUtf8(RIVELTA_SOURCE_DIR "/samples/default_attributes.xml");
        ASSERT_TRUE(m_defaults.ReadDefFile(path, error)) << error;
    }

    CObDefManager m_defaults;
};

TEST_F(DefaultAttributes, HasEveryTagOnceInTheOrderOfTheTypes)
{
    std::vector<std::string> tags;
    for (const CObDefault* entry : m_defaults.GetDefList())
        tags.push_back(obmgr::ToUtf8(entry->GetObjName().View()));
    std::vector<std::string> expected;
    for (const obmgr::RecordInfo& record : obmgr::Records())
        expected.emplace_back(record.tag);
    EXPECT_EQ(tags, expected);
}

TEST_F(DefaultAttributes, HasEveryKeyThatTheLibraryKnowsByName)
{
    for (const auto& [tag, keys] : kKeysOfRecords) {
        CMapStringToString values;
        ASSERT_TRUE(m_defaults.GetDefValue(tag, values)) << CString(tag);
        std::wistringstream words(keys);
        for (std::wstring key; words >> key;)
            EXPECT_TRUE(values.PLookup(key.c_str())) << CString(tag) << " has no " << CString(std::move(key));
    }
}

TEST_F(DefaultAttributes, HasAnOrderInEveryEntry)
{
    for (const CObDefault* entry : m_defaults.GetDefList())
        EXPECT_TRUE(entry->GetSubattribute().PLookup(L"order")) << entry->GetObjName();
}

// Such a key would end its entry when the file is read.
TEST_F(DefaultAttributes, HasNoKeySpelledLikeATag)
{
    for (const CObDefault* entry : m_defaults.GetDefList())
        for (const auto& [key, value] : entry->GetSubattribute())
            EXPECT_EQ(objectdata::Name2Type(key), objectdata::NoOwner) << entry->GetObjName() << ": " << key;
}

TEST_F(DefaultAttributes, AreReadWithoutCountingAsEdited)
{
    EXPECT_FALSE(m_defaults.IsEdit());
}

} // namespace
