// Edits a design in transactions: one that is thought better of, and one that stays.
//
//   03_edit_in_transaction [FILE [OUTPUT]]
//
// Read 01_open_and_walk.cpp first. The lessons are
//   - BeginTransaction fixes the state that AbortTransaction brings back: values, removed records and issued ids;
//   - transactions nest, and only the outermost end counts;
//   - pointers to live objects end with an abort, ids do not: look the object up again;
//   - a removed record stays readable until the commit.

#include "persistence/PipeDataFile.h"
#include "store/ObjectManager.h"

#include <iostream>

namespace {

void Print(const char* when, const CObjectManager& design, long nodeId)
{
    const CNode* const node = design.GetNodeObjectOriginal(nodeId);
    std::cout << when << ": ground " << node->GetSubAttributeDouble(L"ndnewgl", 0) << " m at "
              << node->GetSubAttribute(L"mholeno") << ", " << design.GetManHoleDb().GetCount()
              << " manhole classes, last id " << design.GetCurrentObjectId() << '\n';
}

} // namespace

int main(int argc, char** argv)
{
    CObjectManager design;
    CString error;
    const CString path = obmgr::FromUtf8(argc > 1 ? argv[1] : "samples/mizuho.xml");
    if (!design.CreatePipeObjectFromFile(path, error, false)) return std::cerr << error << '\n', 1;
    CList<long, long> manholeIds;
    if (design.GetNodeDb().IsEmpty() || !design.GetManHoleIdList(manholeIds)) return std::cerr << "no manholes\n", 1;
    const long nodeId = static_cast<long>((*design.GetNodeDb().begin())->GetObjectId());
    Print("as it was read", design, nodeId);

    design.BeginTransaction();
    design.GetNodeObjectOriginal(nodeId)->WriteSubAttributeDouble(L"ndnewgl", 99.0);
    const CManHole* const removed = design.GetManHoleObjectOriginal(manholeIds.GetHead());
    design.DeleteManHoleObject(manholeIds.GetHead());
    std::cout << "removed, yet readable: " << removed->GetSubAttribute(L"mhname") << '\n';
    Print("within the first", design, nodeId);
    design.AbortTransaction();
    Print("after the abort", design, nodeId);

    design.BeginTransaction();
    design.GetNodeObjectOriginal(nodeId)->WriteSubAttribute(L"ndcommentt", L"測量済");
    design.BeginTransaction(); // an operation that has a transaction of its own
    design.GetNodeObjectOriginal(nodeId)->WriteSubAttributeDouble(L"ndnewgl", 12.75);
    design.CommitTransaction();
    design.CommitTransaction();
    Print("after the commit", design, nodeId);

    CStringArray details;
    constexpr int kDataVersion = 14;
    if (argc > 2 && !obmgr::SaveDesign(design, obmgr::FromUtf8(argv[2]), kDataVersion, true, error, details))
        return std::cerr << error << '\n', 1;
    std::cout << "What was learnt: begin, change, then commit or abort; after an abort everything is as it was.\n";
}
