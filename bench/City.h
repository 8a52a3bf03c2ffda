// An invented city of any size, made through the public interface: trees of routes with the records that a real
// design carries, three and a half objects a span and the attributes that a real file has. The same number of spans
// gives the same city.
#pragma once

#include "common/Text2Number.h"
#include "store/ObDefManager.h"
#include "store/ObjectManager.h"

#include <string>
#include <vector>

namespace bench {

class City {
public:
    explicit City(CObjectManager& manager) : m_manager(manager) {}

    void Build(long spans)
    {
        constexpr long kSpansOfRoute = 6;
        constexpr long kSpansOfWeb = 2000;
        const long project = Add<CProject>({{L"prjname", L"瑞穂市公共下水道"}, {L"cityname", L"瑞穂市"}});
        (void)project;
        long web = 0;
        long route = 0;
        long lower = 0;
        for (long i = 0; i < spans; ++i) {
            if (i % kSpansOfWeb == 0) {
                web =
                    Add<CWeb>({{L"webname", Text(L"第%ld処理分区", i / kSpansOfWeb + 1)}, {L"wbareasetflg", L"1"}}, 0L);
                route = 0;
            }
            if (i % kSpansOfRoute == 0) {
                route = Add<CRoute>(RouteValues(i), web, route);
                lower = AddNode(i + spans);
                for (int change = 0; change < 5; ++change)
                    AddGlChange(route, i);
            }
            const long upper = AddNode(i);
            const long span = Add<CSpan>(SpanValues(i), upper, lower, route);
            lower = upper;
            Add<CAreaSet>({{L"asratiosetnum", L"1"},
                           {L"asarea", L"0.1250000000000"},
                           {L"ashouser", L"3"},
                           {L"ashousel", L"2"},
                           {L"order", L"1"}},
                          span);
            if (i % 4 == 0) AddLateral(route, span, i);
        }
    }

private:
    struct Pair {
        const wchar_t* key;
        std::wstring value;
    };

    template <class T, class... Link> long Add(const std::vector<Pair>& values, Link... links)
    {
        const long id = ++m_lastId;
        T* const object = new T(static_cast<unsigned long>(id), Narrow(links)...);
        for (const Pair& pair : values)
            object->WriteSubAttribute(pair.key, pair.value.c_str());
        object->ShrinkAttributes();
        m_manager.TableOf(object->GetObjectType()).Add(id, object);
        return id;
    }
    static int Narrow(long value) { return static_cast<int>(value); }

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

    static std::vector<Pair> RouteValues(long i)
    {
        return {{L"routenum", Text(L"%ld", i / 6 + 1)},
                {L"subnum", L""},
                {L"rttype", L"1"},
                {L"rtattrib", L"0"},
                {L"rtstate", L"0"},
                {L"rtcomment", L""},
                {L"rtglmode", L"0"},
                {L"connectnum", Text(L"%ld", i / 6)},
                {L"floworder", L"1"},
                {L"order", Text(L"%ld", i / 6 + 1)}};
    }

    static std::vector<Pair> SpanValues(long i)
    {
        return {{L"spno", Text(L"%ld", i % 6 + 1)},
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
                       {L"laspannum", Text(L"%ld", i % 6 + 1)},
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
    long m_lastId = 0;
};

inline void MakeCity(CObjectManager& manager, long spans)
{
    City(manager).Build(spans);
}

} // namespace bench
