#include "tool/SoundDesign.h"

#include <gtest/gtest.h>

namespace {

const char* const kDesign = R"(<?xml version="1.0" encoding="UTF-8"?>
<pipedata>
<profile><dataver contents="13"/></profile>
<project id="1"><prjname contents="P"/><activweb contents="30"/></project>
<node id="2"><mholeno contents="a"/><ndnewgl contents="13"/></node>
<node id="3"><mholeno contents="b"/><ndnewgl contents="13"/></node>
<node id="4"><mholeno contents="c"/><ndnewgl contents="13"/></node>
<node id="5"><mholeno contents="out"/><ndnewgl contents="13"/></node>
<node id="6"><mholeno contents="x"/><ndnewgl contents="13"/></node>
<span id="10" uppernode="2" lowernode="3" routeid="20"><spno contents="1"/><splength contents="10"/><uppercentinv contents="11.0"/><lowercentinv contents="10.9"/><newgl contents="13"/><spsecrecname contents="VU200"/></span>
<span id="11" uppernode="3" lowernode="4" routeid="20"><spno contents="2"/><splength contents="20"/><uppercentinv contents="10.9"/><lowercentinv contents="10.7"/><newgl contents="13"/><spsecrecname contents="VU200"/></span>
<span id="12" uppernode="4" lowernode="5" routeid="20"><spno contents="3"/><splength contents="30"/><uppercentinv contents="10.7"/><lowercentinv contents="10.4"/><newgl contents="13"/><spsecrecname contents="B1000"/></span>
<span id="13" uppernode="6" lowernode="2" routeid="21"><spno contents="1"/><splength contents="5"/><uppercentinv contents="11.2"/><lowercentinv contents="11.1"/><newgl contents="13.1"/><spsecrecname contents="VU200"/></span>
<route id="20" webid="30" connectid="0"><routenum contents="T"/><connectnum contents="end"/></route>
<route id="21" webid="30" connectid="20"><routenum contents="A"/><connectnum contents="T"/></route>
<web id="30" disposaltype="0"><webname contents="West"/></web>
<manhole id="40"><mhcode contents="1"/></manhole>
<manhole id="41"><mhcode contents="2"/></manhole>
<section id="42" setype="0"><sekeyword contents="VU"/></section>
<pipe id="43"><pename contents="VU200"/><pedia contents="0.2"/><pethick contents="0.01"/><pesectionkey contents="VU"/></pipe>
<cbox id="44"><cbname contents="B1000"/><cbheight contents="1"/><cbwidth contents="1"/></cbox>
<secgroup id="45"><sgname contents="G"/></secgroup>
<secgrouprec id="46"><srsecgroupname contents="G"/><srsectionkey contents="VU"/><srstsecname contents="VU200"/></secgrouprec>
<fixinq id="47" fxrouteid="20"><fxspanid contents="11"/><fxspannum contents="2"/></fixinq>
<inters id="52"><shape contents="1"/><inwidth contents="0.5"/><itcol contents="1"/><itsecrecid contents="0"/><itwidth contents="0.5"/><itheight contents="0.5"/></inters>
<intpos id="51" obj1id="20" obj2id="52"><ipspanid contents="11"/><ipspannum contents="2"/><ipindist contents="3"/><ipdistdir contents="0"/><ipdist contents="3"/><iphilevel contents="3"/><ipinhi contents="11"/><ipinv contents="11"/></intpos>
<glchange id="50" glrouteid="20"><glspanid contents="11"/><glspannum contents="0"/><glindist contents="15"/><gldistdir contents="0"/><gldist contents="5"/><gltype contents="2"/><glhilevel contents="1"/><glinhi contents="12.8"/><glelev contents="12.8"/></glchange>
<lateral id="53" larouteid="20"><laspanid contents="10"/><laspannum contents="1"/><laindist contents="4"/><ladistdir contents="0"/><ladist contents="4"/><lasecrecname contents="VU200"/><lawidth contents="0.22"/><laheight contents="0.22"/><lahilevel contents="1"/><lainhi contents="11.4"/><laelev contents="11.4"/></lateral>
<vjoint id="54" vjrouteid="20"><vjspid contents="10"/><vjspnum contents="1"/><vjindist contents="2"/><vjdist contents="2"/></vjoint>
<secvalve id="55"><svspid contents="10"/><svname contents="V"/><svdist contents="1"/></secvalve>
</pipedata>
)";

} // namespace

std::string SoundDesign()
{
    return kDesign;
}

std::string SoundDesignWith(const std::string& records)
{
    return SoundDesignWith(std::vector<Change>(), records);
}

std::string SoundDesignWith(const std::vector<Change>& changes, const std::string& records)
{
    std::string design = kDesign;
    for (const Change& change : changes) {
        const std::size_t at = design.find(change.from);
        if (at == std::string::npos)
            ADD_FAILURE() << "not in the design: " << change.from;
        else
            design.replace(at, change.from.size(), change.to);
    }
    return design.insert(design.find("</pipedata>"), records);
}
