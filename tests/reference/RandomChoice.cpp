// Random arguments that fit a design.
#include "reference/NetworkScript.h"

#include <algorithm>
#include <array>

namespace reference {

using namespace objectdata;

namespace {

// Attributes that the network reads or writes, by type; Id keys hold the id of another record.
struct KeyOf {
    Type type;
    const wchar_t* key;
    Type target = NoOwner;
};

constexpr KeyOf kKeys[] = {{Node, L"order"},
                           {Node, L"cx"},
                           {Node, L"cy"},
                           {Node, L"cz"},
                           {Node, L"divno"},
                           {Node, L"divownerid", Node},
                           {Node, L"mholeno"},
                           {Node, L"planesetflg"},
                           {Span, L"order"},
                           {Span, L"spno"},
                           {Span, L"splength"},
                           {Span, L"lowercentinv"},
                           {Span, L"lowercentinv"},
                           {Span, L"uppercentinv"},
                           {Span, L"calcstylename"},
                           {Span, L"splent"},
                           {Span, L"csx"},
                           {Span, L"csy"},
                           {Span, L"csz"},
                           {Span, L"cex"},
                           {Span, L"spradt"},
                           {Span, L"sparcdir"},
                           {Span, L"spsecrecname"},
                           {Span, L"spnoarea"},
                           {Span, L"sphst"},
                           {Span, L"sphfdt"},
                           {Route, L"routenum"},
                           {Route, L"connectnum"},
                           {Route, L"rtstate"},
                           {Route, L"floworder"},
                           {Route, L"floworder"},
                           {Route, L"order"},
                           {Route, L"order"},
                           {Web, L"wbareasetflg"},
                           {Web, L"wbendrname"},
                           {Web, L"order"},
                           {Web, L"webname"},
                           {AreaSet, L"asarea"},
                           {AreaSet, L"asratiosetnum"},
                           {AreaSet, L"ashousel"},
                           {AreaSet, L"ashouser"},
                           {AreaInq, L"order"},
                           {AreaOutq, L"order"},
                           {FixInq, L"order"},
                           {IcpInq, L"order"},
                           {IcpInq, L"icinnodeid", Node},
                           {MountInq, L"order"},
                           {Outq, L"order"},
                           {Inareaset, L"iasratiosetnum"},
                           {Outareaset, L"oasratiosetnum"},
                           {RaitoSet, L"rtnumber"},
                           {GlChange, L"glspanid", Span},
                           {Lateral, L"launitid", Launit},
                           {Lateral, L"laspanid", Span},
                           {Vjoint, L"vjinletid", Vacunit},
                           {Vjoint, L"vjspid", Span},
                           {Secvalve, L"svspid", Span},
                           {Ohaul, L"ohspid", Span},
                           {IntPos, L"ipspanid", Span},
                           {Spdxfin, L"sdispanid", Span},
                           {Drawbelttx, L"dbtspanid", Span},
                           {Project, L"activweb", Web}};

constexpr const wchar_t* kValues[] = {L"0",   L"1",    L"1",        L"2",       L"2",    L"3",  L"4",
                                      L"10",  L"-1",   L"",         L" 2",      L"2x",   L"x",  L"-",
                                      L"0.5", L"2.25", L"2.250008", L"2.25001", L"1e-5", L"-2", L"99999999999"};
// Sums of these are exact in any order.
constexpr const wchar_t* kExactValues[] = {L"0",  L"0.5", L"1", L"2.25", L"3",
                                           L"-1", L"",    L"x", L"1024", L"99999999999"};
constexpr const wchar_t* kNames[] = {L"", L"1", L"2", L"10", L"A1", L"A2", L"A10", L"a1", L"x", L"E"};
constexpr const wchar_t* kCoordinates[] = {L"0", L"0", L"1", L"1.00000000005", L"0.0000000001", L"5"};

std::wstring ValueFor(const KeyOf& key, Choice& choice)
{
    if (key.target != NoOwner) return IntText(choice.Id(key.target));
    const std::wstring_view name = key.key;
    const auto isOne = [&](auto... names) { return ((name == names) || ...); };
    if (isOne(L"cx", L"cy", L"cz")) return kCoordinates[choice.Pick(std::size(kCoordinates))];
    if (isOne(L"routenum", L"connectnum", L"wbendrname", L"webname", L"mholeno", L"spsecrecname")) return choice.Name();
    if (isOne(L"asarea", L"splength")) return kExactValues[choice.Pick(std::size(kExactValues))];
    if (isOne(L"divno", L"rtstate", L"wbareasetflg") && !choice.OneIn(8)) return IntText(choice.Pick(3));
    if (isOne(L"spnoarea") && !choice.OneIn(8)) return IntText(choice.OneIn(4));
    return choice.Value();
}

} // namespace

const std::vector<Type>& RecordTypes()
{
    static const std::vector<Type> types = {
        AreaSet,  AreaSet,   AreaInq,    AreaOutq, FixInq,        IcpInq,    MountInq,   Outq,
        GlChange, Inters,    IntPos,     Lateral,  Launit,        Vjoint,    Vacunit,    Secvalve,
        Ohaul,    Inareaset, Outareaset, RaitoSet, Areatset,      Spdxfin,   Drawbelttx, Nodeunit,
        Geometry, Calcfig,   Drawfig,    Sheetfig, DivideSpanRec, SubSecRec, Project,    Web};
    return types;
}

Type Choice::AnyType()
{
    switch (Pick(8)) {
    case 0:
    case 1: return objectdata::Span;
    case 2:
    case 3: return objectdata::Route;
    case 4: return objectdata::Node;
    default: return RecordTypes()[m_random() % RecordTypes().size()];
    }
}

Type Choice::TargetOf(Type type, std::size_t link)
{
    const obmgr::LinkField& field = obmgr::RecordOf(type).links.fields[link];
    if (!field.isReference) return NoOwner;
    if (type == IntPos) return OneIn(5) ? objectdata::Span : OneIn(2) ? objectdata::Route : Inters;
    if (field.target == Any) return OneIn(2) ? objectdata::Node : objectdata::Span;
    return field.target;
}

int Choice::Link(Type type, std::size_t link)
{
    const Type target = TargetOf(type, link);
    return target == NoOwner ? Pick(6) : Id(target);
}

Values Choice::AllValues(Type type)
{
    Values values;
    for (const KeyOf& key : kKeys)
        if (key.type == type && !OneIn(6)) values.emplace_back(key.key, ValueFor(key, *this));
    return values;
}

int Choice::LiveId(Type type)
{
    const std::vector<RecordPtr>& live = m_network[type].live;
    return live.empty() ? 0 : live[m_random() % live.size()]->id;
}

int Choice::Id(Type type)
{
    switch (Pick(24)) {
    case 0: return Pick(3) - 1;
    case 1: return Pick(m_network.Base().lastId + 3);
    case 2: return LiveId(AnyType());
    default: return LiveId(type);
    }
}

Ids Choice::IdList(Type type)
{
    Ids ids = Network::IdsOf(m_network.All(type));
    if (OneIn(2)) std::shuffle(ids.begin(), ids.end(), m_random);
    if (OneIn(2) && !ids.empty()) ids.resize(m_random() % ids.size());
    if (OneIn(4)) ids.push_back(Id(type));
    return ids;
}

Ids Choice::RoutesOfWeb(int webId)
{
    Ids ids = Network::IdsOf(m_network.RoutesOf(webId));
    if (OneIn(4) && !ids.empty()) ids.erase(ids.begin() + Pick(static_cast<int>(ids.size())));
    if (OneIn(8)) ids.push_back(Route());
    return ids;
}

Ids Choice::Before(Type type)
{
    Ids ids;
    if (OneIn(3))
        for (int left = 1 + Pick(3); left > 0; --left)
            ids.push_back(Id(type));
    return ids;
}

std::wstring Choice::Key(Type type)
{
    std::vector<const wchar_t*> keys;
    for (const KeyOf& key : kKeys)
        if (key.type == type) keys.push_back(key.key);
    return keys.empty() ? L"other" : keys[m_random() % keys.size()];
}

std::wstring Choice::Value()
{
    return kValues[m_random() % std::size(kValues)];
}

std::wstring Choice::Name()
{
    return kNames[m_random() % std::size(kNames)];
}

Values Choice::SomeValues(Type type)
{
    Values values;
    for (int left = Pick(4); left > 0; --left) {
        const std::wstring name = Key(type);
        const KeyOf* const key =
            std::find_if(std::begin(kKeys), std::end(kKeys), [&](const KeyOf& k) { return k.key == name; });
        values.emplace_back(name, key == std::end(kKeys) ? Value() : ValueFor(*key, *this));
    }
    return values;
}

} // namespace reference
