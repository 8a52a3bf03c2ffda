// Finds records by what they are called instead of by id: routes, manhole classes, pipe sections, methods.
//
//   04_find_records [FILE]
//
// Read 01_open_and_walk.cpp first. The lessons are
//   - names are compared exactly, and the first record with the name counts;
//   - a look-up that finds nothing says so (false, 0 or null) and raises no error;
//   - dimensions of a section come by its name, whatever its kind;
//   - what belongs to an owner comes as a list of ids, sorted by "order" where the list has an order.

#include "store/ObjectManager.h"

#include <iostream>

namespace {

void ShowSection(const CObjectManager& design, const CString& name)
{
    CString kind;
    double height = 0;
    double width = 0;
    double top = 0;
    double bottom = 0;
    if (!design.GetPipeInfo(name, &height, &width, &top, &bottom, nullptr, kind)) {
        std::cout << "section " << name << ": none\n";
        return;
    }
    std::cout << "section " << name << ": " << kind << ", inside " << width << " x " << height << " m, walls " << top
              << " and " << bottom << " m\n";
}

void ShowInflows(const CObjectManager& design, const CRoute& route)
{
    CList<long, long> inflowIds;
    design.GetAreaInqIdList(static_cast<long>(route.GetObjectId()), inflowIds);
    for (const long id : inflowIds) {
        double houses = 0;
        double area = 0;
        CStringArray numbers;
        CStringArray comments;
        design.GetSumHouseAreaOfAreainq(static_cast<unsigned long>(id), houses, area, numbers, comments);
        std::cout << "inflow " << id << " into route " << route.GetSubAttribute(L"routenum") << ": " << houses
                  << " houses, " << area << " ha in " << numbers.GetSize() << " parts\n";
    }
}

} // namespace

int main(int argc, char** argv)
{
    CObjectManager design;
    CString error;
    const CString path = obmgr::FromUtf8(argc > 1 ? argv[1] : "samples/mizuho.xml");
    if (!design.CreatePipeObjectFromFile(path, error, false)) return std::cerr << error << '\n', 1;

    // Web 0 stands for the one that the project calls its active web.
    const long routeId = design.GetRouteIdFromRouteNum(L"3", 0);
    std::cout << "route 3 of the active web has the id " << routeId << '\n';
    long manholeId = 0;
    if (design.GetManHoleId(L"1", manholeId))
        std::cout << "manhole class 1 is " << design.GetManHoleObjectOriginal(manholeId)->GetSubAttribute(L"mhname")
                  << '\n';
    for (const wchar_t* const name : {L"VUφ200", L"□1000×1000", L"卵形600×900", L"no such section"})
        ShowSection(design, name);

    CString tag;
    const CProject* const project = design.GetProjectObjectOriginal();
    const CString method = project ? project->GetSubAttribute(L"defqr") : CString();
    if (const long id = design.GetFuncRecId(method, tag))
        std::cout << "storm method " << method << " is the " << tag << " with the id " << id << '\n';

    CStringArray groups;
    design.GetSectGroupNameList(groups);
    for (int i = 0; i < static_cast<int>(groups.GetSize()); ++i)
        std::cout << "section group " << groups[i] << '\n';
    for (const CRoute* route : design.GetRouteDb())
        ShowInflows(design, *route);
    std::cout << "What was learnt: ask by name, mind the answer \"none\", read dimensions by the section's name.\n";
}
