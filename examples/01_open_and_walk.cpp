// Opens a design and walks over it: every route, and in it the lengths of its spans.
//
//   01_open_and_walk [FILE]
//
// The first example: there is none to read before it. The lessons are
//   - a design is a CObjectManager, filled from a file;
//   - the table of a type, Get<T>Db(), is walked with a range-for, in the order of the file;
//   - records that belong to another record are asked for by its id, and the live objects stay the design's.

#include "store/ObjectManager.h"

#include <iostream>

int main(int argc, char** argv)
{
    CObjectManager design;
    CString error;
    const CString path = obmgr::FromUtf8(argc > 1 ? argv[1] : "samples/mizuho.xml");
    if (!design.CreatePipeObjectFromFile(path, error, false)) return std::cerr << error << '\n', 1;
    for (const CRoute* route : design.GetRouteDb()) {
        std::cout << "route " << route->GetSubAttribute(L"routenum") << '\n';
        CList<long, long> spanIds;
        design.GetSpanIdList(static_cast<long>(route->GetObjectId()), spanIds);
        for (const long id : spanIds)
            std::cout << "  " << design.GetSpanObjectOriginal(id)->GetSubAttributeDouble(L"splength", 0) << " m\n";
    }
    std::cout
        << "What was learnt: read a file into a CObjectManager, walk its tables, ask for what belongs to a record.\n";
}
