// What the tests of files share: a folder, English texts, an interface that notes everything, and designs from text.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "framework/CurrentDirectory.h"
#include "framework/File.h"
#include "framework/Language.h"
#include "persistence/PipeDataFile.h"
#include "resources/Resources.h"
#include "store/ObjectManager.h"
#include "support/Files.h"
#include "support/RecordingInterface.h"

class PersistenceTest : public testing::Test {
protected:
    PersistenceTest()
    {
        obmgr::SetSystemLanguageForTests(obmgr::kEnglishUnitedStates);
        EXPECT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::English));
    }
    ~PersistenceTest() override { obmgr::SetSystemLanguageForTests(std::nullopt); }

    // A version 13 file with these records, in UTF-8 for the sake of readable tests.
    static std::string document(const std::string& records)
    {
        return "<?xml version = \"1.0\" encoding = \"UTF-8\"?>\n<pipedata>\n" + records + "</pipedata>\n";
    }

    // Reads the bytes as a file of the folder.
    bool read(CObjectManager& manager, const std::string& bytes, bool append = false)
    {
        error.Empty();
        return manager.CreatePipeObjectFromFile(folder.Write("read.xml", bytes), error, append);
    }
    bool readRecords(CObjectManager& manager, const std::string& records, bool append = false)
    {
        return read(manager, document(records), append);
    }

    // The bytes of a complete save.
    std::string save(CObjectManager& manager, int dataver)
    {
        error.Empty();
        CStdioFile file;
        EXPECT_TRUE(obmgr::OpenForDataVersion(file, support::toPath(folder / "save.xml"), dataver));
        EXPECT_TRUE(manager.WritePipeObject(file, error, dataver)) << error;
        file.Close();
        return support::readBytes(folder / "save.xml");
    }

    support::TempFolder folder;
    support::RecordingInterface interface;
    CString error;
    obmgr::CurrentDirectoryGuard directory;
};
