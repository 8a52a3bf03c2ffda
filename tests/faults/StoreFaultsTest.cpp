// The store when memory runs out: for every allocation of an operation, once alone and once with all later ones, the
// tables stay whole, an abort brings everything back, and nothing leaks (the sanitizer watches).

#include "faults/FailingAllocations.h"
#include "framework/Exception.h"
#include "support/Dump.h"
#include "support/FamilyTable.h"

#include <gmock/gmock.h>

#include <memory>
#include <new>

namespace {

using faults::FailingAllocations;
using support::dump;
using support::OpenManager;
using support::values;

void ExpectWhole(const CObjectManager& manager)
{
    support::expectWhole(manager, L"k");
}

// A design with indexes in use, an id twice, id lists out of step and retired objects.
class Design {
public:
    Design()
    {
        for (int i = 0; i < 40; ++i) {
            manager.CreateNode(values({{L"k", i % 2 == 0 ? L"a" : L"b"}}));
            manager.CreateAreaSet(1 + i % 3, values({{L"k", L"a"}}));
        }
        manager.CreateDrawpendat(values({{L"k", L"a"}}));
        manager.CreateQrmulti(values({{L"qmname", L"m"}}));
        manager.CreateQrmultidat(values({{L"qmdqrmultiname", L"m"}}));
        manager.GetNodeObjectOriginal(3)->SetObjectId(5);
        manager.GetNodeObjectOriginal(7)->SetObjectId(700);
        manager.DeleteAreaSetObject(4);
        ExpectWhole(manager);
    }
    support::DefaultsForAllTags defaults;
    OpenManager manager;
};

struct Edit {
    const char* name;
    void (*run)(CObjectManager& manager);
    bool allOrNothing = true; // a failure leaves the objects as they were
};

void PrintTo(const Edit& edit, std::ostream* stream)
{
    *stream << edit.name;
}

// A key and a text that no object had yet, so that their first use allocates.
CString NewText()
{
    static int number = 0;
    return CString(L"a text of more than a few letters, and new each time: ") + std::to_wstring(++number).c_str();
}

const Edit kEdits[] = {
    {"AddNode",
     [](CObjectManager& m) {
         auto node = std::make_unique<CNode>(900);
         if (m.GetNodeDb().Add(900, node.get())) node.release();
     }},
    {"AddNodeUnderAnotherId",
     [](CObjectManager& m) {
         auto node = std::make_unique<CNode>(5);
         if (m.GetNodeDb().Add(901, node.get())) node.release();
     }},
    {"AddMany",
     [](CObjectManager& m) {
         for (unsigned long id = 1000; id < 1040; ++id) {
             auto node = std::make_unique<CNode>(id);
             if (m.GetNodeDb().Add(static_cast<long>(id), node.get())) node.release();
         }
     },
     false},
    {"CreateNode",
     [](CObjectManager& m) {
         m.CreateNode(values({{L"k", L"c"}}));
     },
     false},
    {"CreateAreaSet",
     [](CObjectManager& m) {
         m.CreateAreaSet(2, values({{NewText(), L"c"}}));
     },
     false},
    {"CreateFromAMap",
     [](CObjectManager& m) {
         CMapStringToString map;
         map.SetAt(L"k", NewText());
         m.CreateDrawpendat(map);
     },
     false},
    {"CreateWeb", [](CObjectManager& m) { m.CreateWeb(0, values({})); }, false},
    {"Remove", [](CObjectManager& m) { m.GetNodeDb().Remove(m.GetNodeObjectOriginal(9)); }},
    {"RemoveEqualIds", [](CObjectManager& m) { m.GetNodeDb().Remove(m.GetNodeObjectOriginal(5)); }},
    {"RemoveMany",
     [](CObjectManager& m) {
         for (CAreaSet* area : m.GetAreaSetDb())
             m.GetAreaSetDb().Remove(area);
     },
     false},
    {"DeleteByName", [](CObjectManager& m) { m.DeleteQrmultiObject(82); }, false},
    {"DeleteOwned", [](CObjectManager& m) { m.DeleteSpanAreaset(2); }, false},
    {"Set",
     [](CObjectManager& m) {
         std::unique_ptr<CNode> copy(m.GetNodeObject(9));
         copy->WriteSubAttribute(L"k", L"set");
         m.SetNodeObjectData(copy.get());
         copy.release();
     }},
    {"SetOfASpan",
     [](CObjectManager& m) {
         std::unique_ptr<CAreaSet> copy(m.GetAreaSetObject(2));
         copy->SetOwnerId(77);
         m.SetAreaSetObjectData(copy.get());
         copy.release();
     }},
    {"SetObjectId", [](CObjectManager& m) { m.GetNodeObjectOriginal(9)->SetObjectId(950); }},
    {"SetObjectIdToOneInUse", [](CObjectManager& m) { m.GetNodeObjectOriginal(9)->SetObjectId(11); }},
    {"SetObjectIdFromEqualOnes", [](CObjectManager& m) { m.GetNodeObjectOriginal(5)->SetObjectId(11); }},
    {"SetLink", [](CObjectManager& m) { m.GetAreaSetObjectOriginal(2)->SetSpanId(88); }},
    {"WriteAKnownKey", [](CObjectManager& m) { m.GetNodeObjectOriginal(9)->WriteSubAttribute(L"k", NewText()); }},
    {"WriteANewKey", [](CObjectManager& m) { m.GetNodeObjectOriginal(9)->WriteSubAttribute(NewText(), L"v"); }},
    {"WriteALargeValue",
     [](CObjectManager& m) {
         m.GetNodeObjectOriginal(9)->WriteSubAttribute(L"k", std::wstring(100'000, L'x').c_str());
     }},
    {"SetSubAttribute",
     [](CObjectManager& m) {
         CMapStringToString map;
         map.SetAt(NewText(), L"v");
         m.GetNodeObjectOriginal(9)->SetSubAttribute(map);
     }},
    {"AddSubAttribute",
     [](CObjectManager& m) {
         m.GetNodeObjectOriginal(9)->AddSubAttribute(values({{L"k", L"z"}, {NewText(), L"v"}}));
     }},
    {"SetStatus", [](CObjectManager& m) { m.GetNodeObjectOriginal(9)->SetStatus(4); }},
    {"ListIds",
     [](CObjectManager& m) {
         CList<long, long> ids;
         m.GetAreaSetIdList(2, ids);
         m.GetProfileareaIdList(ids);
         m.GetQrmultidatIdList(L"m", ids);
     }},
    {"LookUp",
     [](CObjectManager& m) {
         CString type;
         m.GetSectRecId(NewText(), type, nullptr);
         m.GetFuncRecId(L"m", type);
     }},
    {"ResetIdLists", [](CObjectManager& m) { m.ResetObjectIdList(); }},
    {"EmptyTheFormats", [](CObjectManager& m) { m.DrawFigureInitialize(); }, false},
    {"Clear", [](CObjectManager& m) { m.GetNodeDb().Clear(); }},
};

class StoreFaults : public testing::TestWithParam<Edit> {};
INSTANTIATE_TEST_SUITE_P(Edits, StoreFaults, testing::ValuesIn(kEdits), [](const auto& row) { return row.param.name; });

// Runs the edit with the given failure; false when it needed fewer allocations.
bool RunWithFailure(const Edit& edit, CObjectManager& manager, std::size_t allocation, bool sticky)
{
    const FailingAllocations failing(allocation, sticky);
    try {
        edit.run(manager);
    } catch (const std::bad_alloc&) {
    }
    return FailingAllocations::HasFailed();
}

constexpr std::size_t kMostAllocations = 5000;

TEST_P(StoreFaults, OutsideATransactionTablesStayWhole)
{
    for (const bool sticky : {false, true}) {
        std::size_t allocation = 0;
        for (;; ++allocation) {
            SCOPED_TRACE("allocation " + std::to_string(allocation) + (sticky ? " and all later ones" : ""));
            Design design;
            const std::string before = dump(design.manager);
            bool threw = false;
            bool failed = false;
            {
                const FailingAllocations failing(allocation, sticky);
                try {
                    GetParam().run(design.manager);
                } catch (const std::bad_alloc&) {
                    threw = true;
                }
                failed = FailingAllocations::HasFailed();
            }
            if (threw && GetParam().allOrNothing) {
                ASSERT_EQ(dump(design.manager), before);
            }
            ExpectWhole(design.manager);
            if (HasFatalFailure()) return;
            if (threw && GetParam().allOrNothing) GetParam().run(design.manager); // works now
            ExpectWhole(design.manager);
            design.manager.BeginTransaction();
            design.manager.CommitTransaction();
            if (HasFatalFailure() || !failed) break;
        }
        ASSERT_LT(allocation, kMostAllocations);
    }
}

TEST_P(StoreFaults, InATransactionTheAbortBringsEverythingBack)
{
    for (const bool sticky : {false, true}) {
        std::size_t allocation = 0;
        for (bool failed = true; failed && allocation < kMostAllocations; ++allocation) {
            SCOPED_TRACE("allocation " + std::to_string(allocation) + (sticky ? " and all later ones" : ""));
            Design design;
            const std::string before = dump(design.manager);
            const long lastId = design.manager.GetCurrentObjectId();
            design.manager.BeginTransaction();
            failed = RunWithFailure(GetParam(), design.manager, allocation, sticky);
            ExpectWhole(design.manager);
            {
                const FailingAllocations none(0, true); // an abort needs no memory
                design.manager.AbortTransaction();
            }
            ASSERT_EQ(dump(design.manager), before);
            ASSERT_EQ(design.manager.GetCurrentObjectId(), lastId);
            ExpectWhole(design.manager);
            if (HasFatalFailure()) return;
        }
        ASSERT_LT(allocation, kMostAllocations);
    }
}

TEST_P(StoreFaults, InATransactionTheCommitNeedsNoMemory)
{
    Design design;
    design.manager.BeginTransaction();
    GetParam().run(design.manager);
    const std::string after = dump(design.manager);
    {
        const FailingAllocations none(0, true);
        design.manager.CommitTransaction();
    }
    EXPECT_EQ(dump(design.manager), after);
    ExpectWhole(design.manager);
    EXPECT_EQ(design.manager.GetNodeDb().Untyped().RetiredCount(), 0u);
}

TEST(StoreFaultsOfBegin, ABeginThatFailsLeavesTheObjectsAndLaterEndsHarmless)
{
    for (const bool sticky : {false, true}) {
        std::size_t allocation = 0;
        for (bool failed = true; failed; ++allocation) {
            SCOPED_TRACE("allocation " + std::to_string(allocation));
            ASSERT_LT(allocation, kMostAllocations);
            Design design;
            const std::string before = dump(design.manager);
            {
                const FailingAllocations failing(allocation, sticky);
                try {
                    design.manager.BeginTransaction();
                } catch (const std::bad_alloc&) {
                }
                failed = FailingAllocations::HasFailed();
            }
            ASSERT_EQ(dump(design.manager), before);
            if (!failed) {
                design.manager.DeleteNodeObject(9);
                design.manager.AbortTransaction();
                ASSERT_EQ(dump(design.manager), before);
                break;
            }
            // The tables before the one that failed count a transaction, the nesting does not.
            unsigned begun = 0;
            for (const auto type : obmgr::CanonicalOrder())
                begun += design.manager.TableOf(type).TransactionCount();
            EXPECT_LT(begun, 93u);
            design.manager.BeginTransaction();
            design.manager.DeleteAreaSetObject(2);
            design.manager.AbortTransaction();
            ExpectWhole(design.manager);
            design.manager.AbortTransaction(); // one too many: the count wraps, nothing is done
            ExpectWhole(design.manager);
        }
        EXPECT_GT(allocation, 1u) << "a begin has something to note";
    }
}

TEST(StoreFaultsOfManagers, AManagerThatCannotBeMadeLeaksNothing)
{
    CObjectManager first; // starts the library
    std::size_t allocation = 0;
    for (bool failed = true; failed; ++allocation) {
        ASSERT_LT(allocation, kMostAllocations);
        const FailingAllocations failing(allocation, false);
        try {
            const std::unique_ptr<CObject> made(CObjectManager::CreateObject());
        } catch (const std::bad_alloc&) {
        }
        failed = FailingAllocations::HasFailed();
    }
    EXPECT_GT(allocation, 1u);
}

TEST(StoreFaultsOfManagers, ACopyThatCannotBeMadeLeaksNothing)
{
    Design design;
    for (const support::Family* family : support::familiesWith(&support::Family::copy)) {
        std::size_t allocation = 0;
        for (bool failed = true; failed; ++allocation) {
            ASSERT_LT(allocation, kMostAllocations);
            const FailingAllocations failing(allocation, false);
            try {
                const std::unique_ptr<CPipeObject> copy(family->copy(design.manager, 9));
            } catch (const std::bad_alloc&) {
            }
            failed = FailingAllocations::HasFailed();
        }
    }
    EXPECT_EQ(design.manager.GetNodeDb().GetCount(), 40);
}

} // namespace
