// Builds a design from nothing: the sample town "Mizuho" of samples/, through the public interface alone, and saves it.
//
//   02_build_town [OUTPUT [DEFAULTS]]
//
// Read 01_open_and_walk.cpp first. Here the lessons are
//   - a new record starts with the default attributes of its tag, so these are read before anything is made;
//   - a record is made by the Create operation of its type, with the ids of what it belongs to and with its own keys;
//   - everything happens in one transaction: when a step fails, an abort leaves no half town behind;
//   - a net is laid by operations on whole routes, and copied and turned round like that, too: see Network.cpp;
//   - a second file can be read into the design, under new ids;
//   - the save replaces the file as a whole.
// The same program writes the same bytes, whenever and wherever it runs.

#include "Town.h"

#include "persistence/PipeDataFile.h"
#include "store/ObDefManager.h"

#include <cstdio>
#include <filesystem>

namespace {

// Records can only be made when their tag has an entry in the table of defaults, be it an empty one.
bool ReadDefaults(const std::filesystem::path& path, CString& error)
{
    CObDefManager* const defaults = obmgr::GetObDefManager();
    if (!path.empty()) return defaults->ReadDefFile(obmgr::FromUtf8(path.string()), error);
    std::puts("No default attributes given: records hold the keys that this program sets, and no others.");
    CTypedPtrList<CObList, CObDefault*> entries;
    for (const obmgr::RecordInfo& record : obmgr::Records())
        entries.AddTail(new CObDefault(record.type, obmgr::FromUtf8(record.tag)));
    defaults->SetDefList(entries);
    ClearCObDefaultPtrList(entries);
    return true;
}

void SignDesign(CFileProfile& profile)
{
    profile.SetAppName(L"Rivelta 瑞穂町");
    profile.SetVersion(L"1.00");
    profile.SetDate(L"2024/04/01");
    profile.SetTime(L"09:00:00");
}

int Fail(const char* what, const CString& error)
{
    std::fprintf(stderr, "%s: %s\n", what, obmgr::ToUtf8(error.View()).c_str());
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    const std::filesystem::path output = argc > 1 ? argv[1] : std::filesystem::temp_directory_path() / "mizuho.xml";
    CString error;
    if (!ReadDefaults(argc > 2 ? argv[2] : "", error)) return Fail("default attributes", error);

    town::Plan plan = town::DrawPlan();
    CObjectManager design;
    design.BeginTransaction();
    town::MakeLibrary(design);
    if (!town::MakeNetwork(design, plan)) {
        design.AbortTransaction();
        return Fail("the net", L"a step failed, nothing was made");
    }
    town::MakeFlows(design, plan);
    town::MakeAlongside(design, plan);
    town::MakeDrawings(design, plan);
    design.CommitTransaction();
    const CString path = obmgr::FromUtf8(output.string());
    if (!town::AddMap(design, plan, path + L".map", error)) return Fail("map data", error);

    SignDesign(*design.GetFileProfile());
    CStringArray details;
    if (!obmgr::SaveDesign(design, path, town::kDataVersion, true, error, details))
        return Fail(output.string().c_str(), error);
    std::printf("%s: %d records, %d of them spans in %d routes of %d webs\n", output.string().c_str(),
                design.GetAllDataCount(), design.GetSpanDb().GetCount(), design.GetRouteDb().GetCount(),
                design.GetWebDb().GetCount());
    std::puts("What was learnt: read the defaults, make records in a transaction, save the design as a whole.");
}
