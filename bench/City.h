// An invented city of any size, made through the public interface: trees of routes with the records that a real
// design carries, three and a half objects a span and the attributes that a real file has. The same number of spans
// in the same shape gives the same city.
#pragma once

#include "common/Text2Number.h"
#include "store/ObDefManager.h"
#include "store/ObjectManager.h"

#include <string>
#include <vector>

namespace bench {

// How the routes of a web hang together.
enum class Tree {
    Comb, // four fifths of the routes are the main line; each fifth route joins it
    Bushy // two routes flow into each route
};

struct Shape {
    long spansOfRoute = 20;
    long routesOfWeb = 250;
    Tree tree = Tree::Comb;
};

// Of a comb; routes are counted from 0 within their web.
inline bool IsSideRoute(long route)
{
    return route % 5 == 4;
}

// The route that a route of its web flows into; -1 for the one at the flow end.
inline long RouteBelow(Tree tree, long route)
{
    if (route == 0) return -1;
    if (tree == Tree::Bushy) return (route - 1) / 2;
    return IsSideRoute(route - 1) ? route - 2 : route - 1;
}

class City {
public:
    explicit City(CObjectManager& manager, const Shape& shape = {}) : m_manager(manager), m_shape(shape) {}

    // Webs, routes and spans are added from the flow end upwards.
    void Build(long spans)
    {
        const long project = Add<CProject>({{L"prjname", L"瑞穂市公共下水道"}, {L"cityname", L"瑞穂市"}});
        (void)project;
        long web = 0;
        std::vector<long> routes;   // of the web
        std::vector<long> topNodes; // of those routes
        for (long i = 0; i < spans; ++i) {
            const long number = i / m_shape.spansOfRoute; // of the route
            const long place = number % m_shape.routesOfWeb;
            if (i % m_shape.spansOfRoute == 0) {
                if (place == 0) {
                    web = AddWeb(number / m_shape.routesOfWeb);
                    routes.clear();
                    topNodes.clear();
                }
                const long below = RouteBelow(m_shape.tree, place);
                topNodes.push_back(below < 0 ? AddNode(i + spans) : topNodes[Index(below)]);
                routes.push_back(Add<CRoute>(RouteValues(number, place), web, below < 0 ? 0 : routes[Index(below)]));
                for (int change = 0; change < 5; ++change)
                    AddGlChange(routes.back(), i);
            }
            const long upper = AddNode(i);
            const long span = Add<CSpan>(SpanValues(i), upper, topNodes.back(), routes.back());
            topNodes.back() = upper;
            Add<CAreaSet>({{L"asratiosetnum", L"1"},
                           {L"asarea", L"0.1250000000000"},
                           {L"ashouser", L"3"},
                           {L"ashousel", L"2"},
                           {L"order", L"1"}},
                          span);
            if (i % 4 == 0) AddLateral(routes.back(), span, i);
        }
    }

private:
    // Constructors take links unsigned and codes signed.
    struct Link32 {
        long value;
        operator unsigned long() const { return static_cast<unsigned long>(value); }
        operator int() const { return static_cast<int>(value); }
    };
    struct Pair {
        const wchar_t* key;
        std::wstring value;
    };

    template <class T, class... Link> long Add(const std::vector<Pair>& values, Link... links)
    {
        const long id = ++m_lastId;
        T* const object = new T(static_cast<unsigned long>(id), Link32{links}...);
        for (const Pair& pair : values)
            object->WriteSubAttribute(pair.key, pair.value.c_str());
        object->ShrinkAttributes();
        m_manager.TableOf(object->GetObjectType()).Add(id, object);
        return id;
    }
    static std::size_t Index(long value) { return static_cast<std::size_t>(value); }

    static std::wstring Text(const wchar_t* format, long number)
    {
        CString text;
        text.Format(format, number);
        return text.GetString();
    }
    static std::wstring Metres(long seed, double from, double step)
    {
        return obmgr::FormatDouble(from + step * static_cast<double>(seed % 997), 13).GetString();
    }

    long AddNode(long i)
    {
        return Add<CNode>({{L"mholeno", Text(L"M-%ld", i)},
                           {L"ndtype", L"1"},
                           {L"ndnewgl", Metres(i, 21.5, 0.0137)},
                           {L"ndoldgl", Metres(i, 21.5, 0.0137)},
                           {L"cx", Metres(i, 12345.5, 3.25)},
                           {L"cy", Metres(i, -54321.25, 2.75)},
                           {L"cz", Metres(i, 21.5, 0.0137)},
                           {L"planesetflg", L"1"},
                           {L"manholecode", L"1号人孔"},
                           {L"mholedepth", Metres(i, 1.8, 0.003)},
                           {L"oldmholedepth", Metres(i, 1.8, 0.003)},
                           {L"ndstationno", L""},
                           {L"ndcommentf", L""},
                           {L"ndcomments", L"国道下"},
                           {L"ndcommentt", L""},
                           {L"manholecapid", L"0"},
                           {L"divno", L"0"},
                           {L"divownerid", L"0"},
                           {L"order", Text(L"%ld", i + 1)}});
    }

    long AddWeb(long number)
    {
        return Add<CWeb>({{L"webname", Text(L"第%ld処理分区", number + 1)},
                          {L"wbareasetflg", L"1"},
                          {L"wbendrname", L"放流"},
                          {L"order", Text(L"%ld", number + 1)}},
                         0L);
    }

    std::vector<Pair> RouteValues(long number, long place) const
    {
        const long below = RouteBelow(m_shape.tree, place);
        return {{L"routenum", Text(L"%ld", number + 1)},
                {L"subnum", L""},
                {L"rttype", L"1"},
                {L"rtattrib", L"0"},
                {L"rtstate", L"0"},
                {L"rtcomment", L""},
                {L"rtglmode", L"0"},
                {L"connectnum", below < 0 ? L"放流" : Text(L"%ld", number - place + below + 1)},
                {L"floworder", Text(L"%ld", FlowOrder(place))},
                {L"order", Text(L"%ld", number + 1)}};
    }

    // 1 for a route that is alone on its connect route, else 2 and 3.
    long FlowOrder(long place) const
    {
        if (m_shape.tree == Tree::Bushy) return place == 0 ? 1 : 3 - place % 2;
        return IsSideRoute(place) ? 3 : place > 0 && IsSideRoute(place - 1) ? 2 : 1;
    }

    std::vector<Pair> SpanValues(long i) const
    {
        return {{L"spno", Text(L"%ld", i % m_shape.spansOfRoute + 1)},
                {L"splength", Metres(i, 20.0, 0.041)},
                {L"spslant", Metres(i, 3.0, 0.001)},
                {L"spsecrecname", L"HPφ250"},
                {L"spsecrecnamesub", L""},
                {L"sphst", Metres(i, 18.2, 0.0071)},
                {L"sphfdt", L"0.0200000000000"},
                {L"splent", Metres(i, 19.0, 0.041)},
                {L"spnoarea", L"0"},
                {L"spradt", L"0.0000000000000"},
                {L"sparcdir", L"0"},
                {L"spattrib", L"0"},
                {L"spve", Metres(i, 0.8, 0.0005)},
                {L"spqrall", Metres(i, 0.012, 0.00003)},
                {L"spqin", L"0.0000000000000"},
                {L"spqout", L"0.0000000000000"},
                {L"spqu", Metres(i, 0.03, 0.00001)},
                {L"rainqrall", L"0.0000000000000"},
                {L"sewageqrall", Metres(i, 0.002, 0.00001)},
                {L"spcommentf", L""},
                {L"spcomments", L""},
                {L"spcommentt", L"推進工法"},
                {L"lowercentinv", Metres(i, 17.9, 0.0071)},
                {L"uppercentinv", Metres(i, 18.1, 0.0071)},
                {L"newgl", Metres(i, 21.4, 0.0137)},
                {L"oldgl", Metres(i, 21.4, 0.0137)},
                {L"subsecfai", L""},
                {L"calcstylename", L"汚水原単位法"},
                {L"order", Text(L"%ld", i + 1)}};
    }

    void AddGlChange(long route, long i)
    {
        Add<CGlChange>({{L"glspanid", L"0"},
                        {L"glglid", L"0"},
                        {L"gltype", L"2"},
                        {L"glspannum", L"1"},
                        {L"glindist", Metres(i, 4.0, 0.01)},
                        {L"gldistdir", L"0"},
                        {L"gldist", Metres(i, 4.0, 0.01)},
                        {L"glhilevel", L"1"},
                        {L"glinhi", Metres(i, 21.0, 0.01)},
                        {L"glelev", Metres(i, 21.0, 0.01)},
                        {L"glouttext", L""},
                        {L"glstationno", L""},
                        {L"order", L"1"}},
                       route);
    }

    void AddLateral(long route, long span, long i)
    {
        Add<CLateral>({{L"laspanid", Text(L"%ld", span)},
                       {L"launitid", L"0"},
                       {L"laspannum", Text(L"%ld", i % m_shape.spansOfRoute + 1)},
                       {L"laindist", Metres(i, 5.0, 0.01)},
                       {L"ladistdir", L"0"},
                       {L"ladist", Metres(i, 5.0, 0.01)},
                       {L"lasecrecname", L"VUφ150"},
                       {L"lawidth", L"0.1500000000000"},
                       {L"laheight", L"0.1500000000000"},
                       {L"lahilevel", L"0"},
                       {L"lainhi", L"1.2000000000000"},
                       {L"laelev", Metres(i, 19.0, 0.01)},
                       {L"laouttext", L"宅地桝"},
                       {L"order", L"1"}},
                      route);
    }

    CObjectManager& m_manager;
    Shape m_shape;
    long m_lastId = 0;
};

inline void MakeCity(CObjectManager& manager, long spans)
{
    City(manager).Build(spans);
}

// Default attributes of the records that copies and creations make.
inline void InstallDefaults()
{
    auto* const defaults = new CObDefManager;
    const auto add = [defaults](objectdata::OBJECTTYPE type, const wchar_t* tag,
                                std::initializer_list<const wchar_t*> keys) {
        auto* const entry = new CObDefault(type, tag);
        for (const wchar_t* key : keys)
            entry->GetSubattribute().SetAt(key, L"0");
        defaults->GetDefList().AddTail(entry);
    };
    add(objectdata::Node, L"node",
        {L"mholeno", L"ndtype", L"ndnewgl", L"ndoldgl", L"cx", L"cy", L"cz", L"planesetflg", L"order"});
    add(objectdata::AreaSet, L"areaset", {L"asratiosetnum", L"asarea", L"ashouser", L"ashousel", L"order"});
    CObjectManager::ReSetDefManager(defaults);
}

} // namespace bench
