// Managers on threads of their own: each belongs to one thread, and what they share (attribute keys, the default
// attributes, attribute blocks) bears it. Meant for the thread sanitizer, which a single run does not always alarm:
// everything is done ten times.

#include "framework/File.h"
#include "persistence/PipeDataFile.h"
#include "store/ObDefManager.h"
#include "store/ObjectManager.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kRepeats = 10;
constexpr int kObjects = 300;

class Managers : public testing::Test {
protected:
    void SetUp() override
    {
        auto* const defaults = new CObDefManager;
        auto* const node = new CObDefault(objectdata::Node, L"node");
        node->GetSubattribute().SetAt(L"ndtype", L"1");
        defaults->GetDefList().AddTail(node);
        CObjectManager::ReSetDefManager(defaults);
        m_folder = std::filesystem::temp_directory_path() / ("rivelta_threads_" + std::to_string(::getpid()));
        std::filesystem::create_directories(m_folder);
    }
    void TearDown() override
    {
        std::filesystem::remove_all(m_folder);
        CObjectManager::ReSetDefManager(new CObDefManager);
    }
    CString File(const std::wstring& name) const { return CString((m_folder / name).wstring().c_str()); }

    std::filesystem::path m_folder;
};

// A design made, edited, taken back, saved and read again; true when what was read is what was saved.
bool WorkOnADesign(const CString& path, int seed)
{
    CObjectManager manager;
    const CKeyValueArray none;
    for (int i = 0; i < kObjects; ++i) {
        CNode* const node = manager.CreateNode(none);
        if (!node) return false;
        // Keys that no other thread and no earlier round has used.
        node->WriteSubAttributeInt((L"key" + std::to_wstring(seed) + L"x" + std::to_wstring(i)).c_str(), i);
    }
    manager.BeginTransaction();
    manager.GetNodeObjectOriginal(1)->WriteSubAttribute(L"ndtype", L"2");
    manager.DeleteNodeObject(2);
    manager.AbortTransaction();

    CString error;
    CStringArray details;
    if (!obmgr::SaveDesign(manager, path, 14, true, error, details)) return false;
    CObjectManager again;
    if (!again.CreatePipeObjectFromFile(path, error, false)) return false;
    return again.GetAllDataCount() == manager.GetAllDataCount() &&
           again.GetNodeObjectOriginal(2)->GetSubAttribute(L"ndtype") == L"1";
}

TEST_F(Managers, OnTwoThreadsShareTheDefaultAttributesAndTheKeys)
{
    // Reading a file moves the process into the file's folder, so both threads work in the same one.
    for (int round = 0; round < kRepeats; ++round) {
        bool first = false;
        bool second = false;
        std::thread other([&] { first = WorkOnADesign(File(L"first.xml"), 2 * round); });
        second = WorkOnADesign(File(L"second.xml"), 2 * round + 1);
        other.join();
        EXPECT_TRUE(first && second) << "round " << round;
    }
}

TEST_F(Managers, CopiesAreWrittenAndFreedOnAnotherThreadWhileTheirOriginalsChange)
{
    CObjectManager manager;
    for (int i = 0; i < kObjects; ++i)
        manager.CreateNode(CKeyValueArray());
    for (int round = 0; round < kRepeats; ++round) {
        std::vector<std::unique_ptr<CNode>> copies;
        for (const CNode* node : manager.GetNodeDb())
            copies.emplace_back(manager.GetNodeObject(node->GetId32()));
        bool written = true;
        std::thread writer([&] {
            CStdioFile file;
            ASSERT_TRUE(obmgr::OpenForDataVersion(file, File(L"copies.xml"), 13));
            for (auto& copy : copies) {
                written = copy->FileOut(file, 13, false) && written;
                copy.reset();
            }
        });
        manager.BeginTransaction();
        for (CNode* node : manager.GetNodeDb())
            node->WriteSubAttributeInt(L"ndtype", round);
        manager.DeleteNodeObject(1);
        if (round % 2)
            manager.AbortTransaction();
        else
            manager.CommitTransaction();
        writer.join();
        EXPECT_TRUE(written);
    }
}

} // namespace
