// Changes the default attributes that new records start with, keeps them in a file, and makes pens from them.
//
//   06_defaults_and_pens [FOLDER]
//
// Read 02_build_town (main.cpp) first. The lessons are
//   - one table of defaults serves the whole process, an entry for each tag;
//   - entries are changed by SetDefValue or UpdateDefValue, never added: without an entry nothing is changed;
//   - the table knows whether it has unsaved changes, and SaveDefFile writes only then;
//   - a whole range of pens is made at once, one for each type, from the values of the caller.

#include "store/ObDefManager.h"
#include "store/ObjectManager.h"

#include <filesystem>
#include <iostream>

namespace {

void AddEntry(CTypedPtrList<CObList, CObDefault*>& entries, const wchar_t* tag)
{
    entries.AddTail(new CObDefault(objectdata::Name2Type(tag), tag));
}

} // namespace

int main(int argc, char** argv)
{
    // An application ships a file with an entry for every tag. Two will do here.
    CObDefManager* const defaults = obmgr::GetObDefManager();
    CTypedPtrList<CObList, CObDefault*> entries;
    AddEntry(entries, L"drawpendat");
    AddEntry(entries, L"pipe");
    defaults->SetDefList(entries); // copies them
    ClearCObDefaultPtrList(entries);

    CMapStringToString pipe;
    pipe.SetAt(L"pethick", L"0.05");
    pipe.SetAt(L"pesectionkey", L"HP");
    defaults->UpdateDefValue(L"pipe", pipe);
    CMapStringToString pen;
    pen.SetAt(L"dpdpen", L"3");
    defaults->UpdateDefValue(L"drawpendat", pen);
    std::cout << "unsaved changes: " << (defaults->IsEdit() ? "yes" : "no") << '\n';

    namespace fs = std::filesystem;
    const fs::path folder = argc > 1 && fs::is_directory(argv[1]) ? fs::path(argv[1]) : fs::temp_directory_path();
    const fs::path file = folder / "rivelta_example_defaults.xml";
    const CString path = obmgr::FromUtf8(file.string());
    CString error;
    constexpr int kCompleted = 3; // the normal end; the text in `error` then says nothing
    if (defaults->SaveDefFile(path, L"1.0", error) != kCompleted) return std::cerr << error << '\n', 1;

    // Reading appends: who wants the file alone empties the table first.
    defaults->ClearDEFLIST();
    const bool isRead = defaults->ReadDefFile(path, error);
    fs::remove(file);
    if (!isRead) return std::cerr << error << '\n', 1;
    std::cout << "unsaved changes: " << (defaults->IsEdit() ? "yes" : "no") << '\n';

    CObjectManager design;
    const CKeyValueArray none;
    const CPipe* const made = design.CreatePipe(none);
    std::cout << "a new pipe starts with a wall of " << made->GetSubAttributeDouble(L"pethick", 0) << " m\n";
    std::cout << "a new node " << (design.CreateNode(none) ? "starts empty" : "has no entry to start from") << '\n';

    CMapStringToString values;
    design.GetDefValue(0, L"drawpendat", values);
    CMap<int, int, int, int> idOfType;
    design.CreateDrawpendat(CDrawpendat::kFirstType, CDrawpendat::kLastType, values, idOfType);
    int id = 0;
    idOfType.Lookup(34, id);
    const CDrawpendat* const drawn = design.GetDrawpendatObjectOriginal(id);
    std::cout << design.GetDrawpendatDb().GetCount() << " pens; the one of type 34 draws with pen "
              << drawn->GetSubAttribute(L"dpdpen") << " and stands at place " << drawn->GetSubAttribute(L"order")
              << '\n';
    std::cout << "What was learnt: change entries of the table, save and read it, make records that start from it.\n";
}
