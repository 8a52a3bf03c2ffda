// Undo of every edit of the network: after an abort a save has the bytes from before the edit, and the edit made again
// gives the same results, ids included, and the same bytes.

#include "reference/BothSides.h"
#include "reference/NetworkEdits.h"
#include "reference/NetworkSorts.h"
#include "reference/RandomNetworks.h"
#include "support/Files.h"

#include "framework/File.h"
#include "persistence/PipeDataFile.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using namespace reference;

std::vector<StepKind> EveryEdit()
{
    std::vector<StepKind> edits = NetworkEdits();
    for (const StepKind& edit : SortEdits())
        edits.push_back(edit);
    return edits;
}

std::vector<std::string> EveryName()
{
    std::vector<std::string> names;
    for (const StepKind& edit : EveryEdit())
        names.emplace_back(edit.name);
    return names;
}

class Undo : public testing::TestWithParam<std::string> {
protected:
    std::string Bytes(CObjectManager& manager) const
    {
        CStdioFile file;
        CString error;
        EXPECT_TRUE(obmgr::OpenForDataVersion(file, support::toPath(m_folder / "save.xml"), 14));
        EXPECT_TRUE(manager.WritePipeObject(file, error, 14));
        file.Close();
        return support::readBytes(m_folder / "save.xml");
    }

    support::TempFolder m_folder;
};

std::string Apply(const StepKind& edit, OpenNetwork& library, const Args& args)
{
    Outcome outcome;
    edit.applyToLibrary(library, args, outcome);
    return outcome.Text() + std::to_string(library.GetCurrentObjectId());
}

TEST_P(Undo, BringsBackTheDesignAndTheIds)
{
    const std::vector<StepKind> edits = EveryEdit();
    const auto edit =
        std::find_if(edits.begin(), edits.end(), [&](const StepKind& kind) { return kind.name == GetParam(); });
    const std::vector<StepKind> base = BaseEdits(0);
    const unsigned first = support::testSeed(4000);
    const int rounds = std::getenv("RIVELTA_SEED") ? 1 : 6;
    bool hasChanged = GetParam() == "CopyAreaInqObject"; // which does nothing
    for (int round = 0; round < rounds || !hasChanged; ++round) {
        ASSERT_LT(round, 60) << "no edit changed anything";
        const unsigned seed = first + static_cast<unsigned>(round);
        SCOPED_TRACE("RIVELTA_SEED=" + std::to_string(seed));
        std::mt19937 random(seed);
        BothSides design;
        for (const Step& step : RandomDesign(random, 2, 5))
            ASSERT_EQ(design.Run(base[step.kind], step.args), "");
        for (int left = 3; left > 0; --left)
            design.Add(objectdata::SectGroupRec, {}, {{L"order", L"7"}});
        for (int left = 10; left > 0; --left)
            ASSERT_EQ(design.RunRandom(random, edits), "");

        Choice choice(random, design.network);
        const Args args = edit->choose(choice);
        const std::string before = Bytes(design.library);
        design.library.BeginTransaction();
        const std::string outcome = Apply(*edit, design.library, args);
        const std::string after = Bytes(design.library);
        design.library.AbortTransaction();
        ASSERT_EQ(Bytes(design.library), before);

        design.library.BeginTransaction();
        EXPECT_EQ(Apply(*edit, design.library, args), outcome);
        design.library.CommitTransaction();
        ASSERT_EQ(Bytes(design.library), after);
        hasChanged = hasChanged || after != before;
    }
}

INSTANTIATE_TEST_SUITE_P(Edits, Undo, testing::ValuesIn(EveryName()), [](const auto& row) { return row.param; });

} // namespace
