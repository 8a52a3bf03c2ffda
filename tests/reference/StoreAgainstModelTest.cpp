// The store against the plain-scan model, through thousands of random edits.

#include "reference/RandomEdits.h"

#include <gmock/gmock.h>

namespace {

using namespace objectdata;
using Types = std::vector<objectdata::OBJECTTYPE>;

struct Run {
    const char* name;
    Types types;
    int rounds;
    int steps;
};

void PrintTo(const Run& run, std::ostream* stream)
{
    *stream << run.name;
}

class StoreAgainstModel : public testing::TestWithParam<Run> {};

TEST_P(StoreAgainstModel, EveryListOrderAndResultIsTheSame)
{
    const unsigned first = support::testSeed(1000);
    const int rounds = std::getenv("RIVELTA_SEED") ? 1 : GetParam().rounds;
    for (int round = 0; round < rounds; ++round) {
        const unsigned seed = first + static_cast<unsigned>(round);
        SCOPED_TRACE("RIVELTA_SEED=" + std::to_string(seed));
        reference::RandomEdits edits(seed, GetParam().types);
        for (int step = 0; step < GetParam().steps; ++step) {
            SCOPED_TRACE("step " + std::to_string(step));
            edits.Step();
            if (HasFailure()) return;
            if (step % 3 == 0) edits.CompareFamilies();
            if (step % 5 == 0) edits.CompareLookups();
            if (step % 10 == 0) edits.CompareObjects();
            if (HasFailure()) return;
        }
    }
}

Types AllTypes()
{
    const auto order = obmgr::CanonicalOrder();
    return {order.begin(), order.end()};
}

INSTANTIATE_TEST_SUITE_P(
    Designs, StoreAgainstModel,
    testing::Values(
        Run{"AllTypes", AllTypes(), 3, 1500},
        Run{"OwnersAndInflows", {Node, AreaInq, Inareaset, AreaSet, Nodeunit, IcpInq, IntPos}, 5, 1500},
        Run{"OneTable", {FixInq}, 4, 1500},
        Run{"SectionsByName", {Pipe, Obox, Egg, Section, SectGroup, SectGroupRec, Project, Route}, 4, 1500},
        Run{"MethodsByName", {Qrmulti, Qrmultidat, Qrrivertime, Areasupve, Qrline, Svperarea, Rural}, 4, 1500},
        Run{"DrawingFormats", {Drawpendat, Drawbeltdat, Drawsecinfodat, Profilearea, Profilelayout}, 4, 1500},
        Run{"RecordsOfSpans",
            {Span, Spdxfin, Drawbelttx, Secvalve, Ohaul, Areatset, Exec, Execdivide, Lcarry},
            8,
            1500}),
    [](const auto& row) { return row.param.name; });

} // namespace
