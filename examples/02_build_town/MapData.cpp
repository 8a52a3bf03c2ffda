// Lines and areas of the map beneath the plan. Maps come from surveyors as files of their own, which a design takes in
// by reading them after what it has. The manager has no Create operation for them, so who makes such a file adds the
// objects to the tables of an empty design. A full save leaves map data out: who wants it asks for it.
#include "Keys.h"
#include "Town.h"

#include "persistence/PipeDataFile.h"

#include <filesystem>
#include <memory>

namespace town {
namespace {

struct Point {
    double x;
    double y;
};

class MapMaker {
public:
    // The keys start with the prefix: name, number of points, coordinates.
    template <class T>
    void Add(CObjectDataBase<T>& table, std::unique_ptr<T> object, const wchar_t* prefix, const wchar_t* name,
             std::initializer_list<Point> points)
    {
        const CString start = prefix;
        Keys keys;
        keys.Text(start + L"name", name).Number(start + L"count", static_cast<long>(points.size()));
        long number = 0;
        for (const Point& point : points) {
            CString index;
            index.Format(L"%d", ++number);
            keys.Real(start + L"x" + index, point.x).Real(start + L"y" + index, point.y);
        }
        object->SetObjectId(static_cast<unsigned long>(m_nextId));
        object->AddSubAttribute(keys);
        if (table.Add(m_nextId, object.get())) object.release(); // the table's now
        ++m_nextId;
    }

private:
    long m_nextId = 1;
};

void DrawMap(CObjectManager& design, const Plan& plan)
{
    MapMaker map;
    map.Add(design.GetPublineDb(), std::make_unique<CPubline>(), L"pl", L"県道瑞穂線 東側",
            {{5, -20}, {5, 400}, {6, 860}});
    map.Add(design.GetPublineDb(), std::make_unique<CPubline>(), L"pl", L"県道瑞穂線 西側",
            {{-5, -20}, {-5, 400}, {-4, 860}});
    map.Add(design.GetGllineDb(), std::make_unique<CGlline>(), L"gll", L"等高線 14.0m",
            {{-420, 145}, {4, 333}, {430, 143}});
    for (const Web& web : plan.webs) {
        const auto kind = web.disposalType;
        const Point end = {plan.nodes[static_cast<std::size_t>(web.endNode)].x,
                           plan.nodes[static_cast<std::size_t>(web.endNode)].y};
        map.Add(design.GetUsedareaDb(), std::make_unique<CUsedarea>(0, kind), L"ua", L"第一種住居地域",
                {{end.x - 200, end.y}, {end.x + 200, end.y}, {end.x + 200, end.y + 400}, {end.x - 200, end.y + 400}});
        map.Add(design.GetNoareaDb(), std::make_unique<CNoarea>(0, kind), L"na", L"瑞穂神社境内",
                {{end.x + 40, end.y + 90}, {end.x + 90, end.y + 90}, {end.x + 90, end.y + 140}});
        map.Add(design.GetDivideDb(), std::make_unique<CDivide>(0, kind), L"dv", L"区画割線",
                {{end.x - 200, end.y + 200}, {end.x + 200, end.y + 200}});
        map.Add(design.GetBorderDb(), std::make_unique<CBorder>(0, kind), L"bd", web.name,
                {{end.x - 420, end.y - 30},
                 {end.x + 440, end.y - 30},
                 {end.x + 440, end.y + 860},
                 {end.x - 420, end.y + 860}});
    }
}

} // namespace

bool AddMap(CObjectManager& design, const Plan& plan, const CString& scratchPath, CString& error)
{
    CObjectManager survey;
    DrawMap(survey, plan);
    CStringArray details;
    if (!obmgr::SaveDesign(survey, scratchPath, kDataVersion, true, error, details)) return false;
    // Appending moves the ids of the file behind those of the design.
    const bool isRead = design.CreatePipeObjectFromFile(scratchPath, error, true);
    std::filesystem::remove(obmgr::ToUtf8(scratchPath.View()));
    return isRead;
}

} // namespace town
