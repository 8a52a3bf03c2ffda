// Names that stand twice: what is reported, what is removed, and each name against each later one as a model.

#include "integrity/LiteralChecks.h"
#include "support/Dump.h"
#include "support/Networks.h"

#include <gmock/gmock.h>

#include <random>

namespace {

using integrity::literalFirstPair;
using support::Network;
using support::values;

class NameChecks : public testing::Test {
protected:
    void AddGroup(const wchar_t* name) { m_manager.CreateSectGroup(values({{L"sgname", name}})); }
    long AddRecord(const wchar_t* group, const wchar_t* section, const wchar_t* from = L"", const wchar_t* to = L"",
                   const wchar_t* order = L"0")
    {
        return m_manager
            .CreateSectGroupRec(values({{L"srsecgroupname", group},
                                        {L"srsectionkey", section},
                                        {L"srstsecname", from},
                                        {L"srendsecname", to},
                                        {L"order", order}}))
            ->GetId32();
    }
    template <class T> static std::vector<long> IdsOf(const CObjectDataBase<T>& table)
    {
        std::vector<long> ids;
        for (const T* object : table)
            ids.push_back(object->GetId32());
        return ids;
    }
    static std::vector<std::wstring> Texts(const CStringArray& names)
    {
        std::vector<std::wstring> texts;
        for (const CString& name : names)
            texts.emplace_back(name.View());
        return texts;
    }

    support::DefaultsForAllTags m_defaults;
    support::OpenManager m_manager;
};

using Texts = std::vector<std::wstring>;

// ---- the checks over one table ----

TEST_F(NameChecks, OfATableWithOneObjectFindNothing)
{
    m_manager.CreateManHole(values({{L"mhcode", L"M1"}}));
    m_manager.CreateSection(0, values({{L"sekeyword", L"PVC"}}));
    AddGroup(L"X");
    long id = -77;
    CString name = L"before";
    EXPECT_FALSE(m_manager.CheckManHoleCode(id));
    EXPECT_FALSE(m_manager.CheckSection(id));
    EXPECT_FALSE(m_manager.CheckSectGroupName(id));
    EXPECT_FALSE(m_manager.CheckSectGroupName(id, name));
    EXPECT_EQ(id, -77);
    EXPECT_EQ(name, L"") << "emptied first";
}

TEST_F(NameChecks, OfEmptyTablesFindNothing)
{
    long id = -77;
    long other = -78;
    EXPECT_FALSE(m_manager.CheckManHoleCode(id));
    EXPECT_FALSE(m_manager.CheckSection(id));
    EXPECT_FALSE(m_manager.CheckSectGroupName(id));
    EXPECT_FALSE(m_manager.CheckAllPipeName(id, other));
    EXPECT_EQ(id, -77);
    EXPECT_EQ(other, -78);
}

TEST_F(NameChecks, GiveTheLaterObjectOfThePairWhoseFirstStandsFirst)
{
    std::vector<long> ids;
    for (const wchar_t* code : {L"A", L"B", L"C", L"B", L"A", L"A"})
        ids.push_back(m_manager.CreateManHole(values({{L"mhcode", code}}))->GetId32());
    long id = 0;
    EXPECT_TRUE(m_manager.CheckManHoleCode(id));
    EXPECT_EQ(id, ids[4]) << "the second A, though the second B comes before it";
}

TEST_F(NameChecks, CompareExactly)
{
    for (const wchar_t* keyword : {L"pvc", L"PVC", L"PVC ", L"ＰＶＣ"})
        m_manager.CreateSection(0, values({{L"sekeyword", keyword}}));
    long id = 0;
    EXPECT_FALSE(m_manager.CheckSection(id));
    const long twin = m_manager.CreateSection(0, values({{L"sekeyword", L"ＰＶＣ"}}))->GetId32();
    EXPECT_TRUE(m_manager.CheckSection(id));
    EXPECT_EQ(id, twin);
}

TEST_F(NameChecks, TakeTwoObjectsWithoutAKeyForADuplicate)
{
    m_manager.CreateManHole(values({{L"mhcode", L""}}));
    const long second = m_manager.CreateManHole({})->GetId32();
    long id = 0;
    EXPECT_TRUE(m_manager.CheckManHoleCode(id));
    EXPECT_EQ(id, second);
}

TEST_F(NameChecks, OfGroupsGiveTheNameToo)
{
    AddGroup(L"X");
    AddGroup(L"Y");
    AddGroup(L"Y");
    long id = 0;
    long otherId = 0;
    CString name;
    EXPECT_TRUE(m_manager.CheckSectGroupName(id, name));
    EXPECT_EQ(name, L"Y");
    EXPECT_EQ(id, IdsOf(m_manager.GetSectGroupDb())[2]);
    EXPECT_TRUE(m_manager.CheckSectGroupName(otherId));
    EXPECT_EQ(otherId, id);
}

// ---- pipe sections ----

TEST_F(NameChecks, OfPipeSectionsListThemKindByKind)
{
    const long egg = m_manager.CreateEgg(values({{L"egname", L"E"}}))->GetId32();
    const long uShape = m_manager.CreateUbox(values({{L"ubname", L"U"}}))->GetId32();
    const long closed = m_manager.CreateCbox(values({{L"cbname", L"C"}}))->GetId32();
    const long open = m_manager.CreateObox(values({{L"obname", L"O"}}))->GetId32();
    const long pipe = m_manager.CreatePipe(values({{L"pename", L"P"}}))->GetId32();
    const long nameless = m_manager.CreatePipe({})->GetId32();
    CList<tagSeekSect, const tagSeekSect&> names;
    names.AddTail(tagSeekSect{5, L"before"});
    m_manager.GetAllSectName(names);
    std::vector<std::pair<long, std::wstring>> found;
    for (const tagSeekSect& section : names)
        found.emplace_back(section.id, section.name.View());
    EXPECT_THAT(found, testing::ElementsAre(testing::Pair(5, L"before"), testing::Pair(pipe, L"P"),
                                            testing::Pair(nameless, L""), testing::Pair(open, L"O"),
                                            testing::Pair(closed, L"C"), testing::Pair(uShape, L"U"),
                                            testing::Pair(egg, L"E")));
}

TEST_F(NameChecks, OfPipeSectionsGoAcrossTheKinds)
{
    const long egg = m_manager.CreateEgg(values({{L"egname", L"300"}}))->GetId32();
    m_manager.CreateObox(values({{L"obname", L"200"}}));
    long id = 0;
    long otherId = 0;
    EXPECT_FALSE(m_manager.CheckAllPipeName(id, otherId));
    const long pipe = m_manager.CreatePipe(values({{L"pename", L"300"}}))->GetId32();
    EXPECT_TRUE(m_manager.CheckAllPipeName(id, otherId));
    EXPECT_EQ(id, pipe);
    EXPECT_EQ(otherId, egg);
}

// ---- calculation styles ----

TEST(FunctionNames, AreUsedWhenASpanOfTheWebHasThem)
{
    Network net("W: M = m-x-out; A>M = a-m; V: R = r-s");
    net.Set(L"calcstylename", {{"m-x", L"Rational"}, {"a-m", L"Rural"}, {"r-s", L"Other"}});
    const auto isUsed = [&](const char* web, const wchar_t* name) {
        return net.manager.IsUsedFunctionName(net[web], name);
    };
    EXPECT_TRUE(isUsed("W", L"Rational"));
    EXPECT_TRUE(isUsed("W", L"Rural"));
    EXPECT_FALSE(isUsed("W", L"Other"));
    EXPECT_FALSE(isUsed("W", L"rural"));
    EXPECT_TRUE(isUsed("W", L"")) << "x-out has none";
    EXPECT_FALSE(isUsed("V", L""));
}

TEST(FunctionNames, AreNotUsedInAWebWithoutAnOrderOfSpans)
{
    Network net("W: M = m-out; A = a-b-a; V:");
    net.Set(L"calcstylename", {{"m-out", L"Rational"}});
    EXPECT_FALSE(net.manager.IsUsedFunctionName(net["W"], L"Rational"));
    EXPECT_FALSE(net.manager.IsUsedFunctionName(net["V"], L"Rational"));
    for (const long id : {0L, -1L, 4711L, net["M"]})
        EXPECT_FALSE(net.manager.IsUsedFunctionName(id, L"Rational"));
}

// ---- section groups ----

TEST_F(NameChecks, OfThreeGroupsOfANameRemoveTwoAndNameItOnce)
{
    for (int i = 0; i < 3; ++i)
        AddGroup(L"X");
    const std::vector<long> before = IdsOf(m_manager.GetSectGroupDb());
    CStringArray names;
    names.Add(L"before");
    EXPECT_TRUE(m_manager.DuplicateCheckSecgroup(names));
    EXPECT_EQ(NameChecks::Texts(names), ::Texts{L"X"});
    EXPECT_EQ(IdsOf(m_manager.GetSectGroupDb()), std::vector<long>{before[0]});
    EXPECT_FALSE(m_manager.DuplicateCheckSecgroup(names)) << "none is left";
    EXPECT_TRUE(names.IsEmpty());
}

TEST_F(NameChecks, OfGroupsNumberTheRecordsOfAMergedGroupAnew)
{
    for (const wchar_t* name : {L"X", L"Y", L"X"})
        AddGroup(name);
    const long third = AddRecord(L"X", L"k", L"a", L"b", L"7");
    const long other = AddRecord(L"Y", L"k", L"a", L"b", L"7");
    const long first = AddRecord(L"X", L"k", L"c", L"d", L"2");
    const long second = AddRecord(L"X", L"k", L"e", L"f", L"2");
    CStringArray names;
    EXPECT_TRUE(m_manager.DuplicateCheckSecgroup(names));
    const auto orderOf = [&](long id) {
        return m_manager.GetSectGroupRecObjectOriginal(id)->GetSubAttributeInt(L"order", -1);
    };
    EXPECT_EQ(orderOf(first), 1);
    EXPECT_EQ(orderOf(second), 2);
    EXPECT_EQ(orderOf(third), 3);
    EXPECT_EQ(orderOf(other), 7) << "no twin of that name";
}

TEST_F(NameChecks, OfGroupsRemoveThoseWithoutAName)
{
    AddGroup(L"X");
    m_manager.CreateSectGroup({});
    CStringArray names;
    EXPECT_TRUE(m_manager.DuplicateCheckSecgroup(names));
    EXPECT_TRUE(names.IsEmpty()) << "one alone is no duplicate";
    EXPECT_EQ(m_manager.GetSectGroupDb().GetCount(), 1);
    m_manager.CreateSectGroup({});
    AddGroup(L"");
    EXPECT_TRUE(m_manager.DuplicateCheckSecgroup(names));
    EXPECT_EQ(NameChecks::Texts(names), ::Texts{L""});
    EXPECT_EQ(m_manager.GetSectGroupDb().GetCount(), 1);
}

TEST_F(NameChecks, OfEmptyTablesRemoveNothing)
{
    CStringArray names;
    EXPECT_FALSE(m_manager.DuplicateCheckSecgroup(names));
    EXPECT_FALSE(m_manager.DuplicateCheckSecgrouprec(names));
}

TEST_F(NameChecks, OfRecordsRemoveAllButTheFirstOfEqualOnes)
{
    const long first = AddRecord(L"G", L"k", L"a", L"b", L"1");
    const long other = AddRecord(L"G", L"k", L"a", L"c", L"2");
    AddRecord(L"G", L"k", L"a", L"b", L"3"); // the order does not count
    AddRecord(L"G", L"k", L"a", L"c", L"4");
    const long inOtherGroup = AddRecord(L"H", L"k", L"a", L"b", L"5");
    AddRecord(L"H", L"k", L"a", L"b", L"6");
    CStringArray names;
    names.Add(L"before");
    EXPECT_TRUE(m_manager.DuplicateCheckSecgrouprec(names));
    EXPECT_EQ(NameChecks::Texts(names), ::Texts{L"k"}) << "the section key, once";
    EXPECT_EQ(IdsOf(m_manager.GetSectGroupRecDb()), (std::vector<long>{first, other, inOtherGroup}));
    EXPECT_FALSE(m_manager.DuplicateCheckSecgrouprec(names));
    EXPECT_TRUE(names.IsEmpty());
}

TEST_F(NameChecks, OfRecordsAreNotFooledByALineFeedInAValue)
{
    AddRecord(L"G\nk", L"a", L"b", L"c");
    AddRecord(L"G", L"k\na", L"b", L"c");
    AddRecord(L"G", L"k", L"a\nb", L"c");
    AddRecord(L"G", L"k", L"a", L"b\nc");
    CStringArray names;
    EXPECT_FALSE(m_manager.DuplicateCheckSecgrouprec(names));
    EXPECT_EQ(m_manager.GetSectGroupRecDb().GetCount(), 4);
}

TEST_F(NameChecks, BringRemovedGroupsAndRecordsBackWithTheTransaction)
{
    for (int i = 0; i < 2; ++i) {
        AddGroup(L"X");
        AddRecord(L"X", L"k", L"a", L"b", L"9");
    }
    const std::string before = support::dump(m_manager);
    m_manager.BeginTransaction();
    CStringArray names;
    EXPECT_TRUE(m_manager.DuplicateCheckSecgroup(names));
    EXPECT_TRUE(m_manager.DuplicateCheckSecgrouprec(names));
    EXPECT_NE(support::dump(m_manager), before);
    m_manager.AbortTransaction();
    EXPECT_EQ(support::dump(m_manager), before);
}

// ---- against each name with each later one ----

// One of a few texts; some are empty, one joins two others.
const wchar_t* anyText(std::mt19937& random, int different)
{
    static const wchar_t* const texts[] = {L"", L"a", L"b", L"a\nb", L"A", L"c", L"管", L"d", L"e", L"f", L"g", L"h"};
    return texts[random() % static_cast<unsigned>(different)];
}

template <class T> void expectFirstPair(const CObjectDataBase<T>& table, const wchar_t* key, bool found, long id)
{
    std::vector<std::wstring> names;
    std::vector<long> ids;
    for (const T* object : table) {
        names.emplace_back(object->GetSubAttribute(key).View());
        ids.push_back(object->GetId32());
    }
    std::size_t first = 0;
    std::size_t second = 0;
    ASSERT_EQ(found, literalFirstPair(names, first, second));
    if (!found) return;
    EXPECT_EQ(id, ids[second]);
}

TEST(NameChecksAtRandom, FindTheFirstPairThatEachNameAgainstEachLaterOneFinds)
{
    const support::DefaultsForAllTags defaults;
    std::mt19937 random(support::testSeed(3104));
    for (int round = 0; round < 1500; ++round) {
        CObjectManager manager;
        const int different = 1 + static_cast<int>(random() % 12);
        for (int left = static_cast<int>(random() % 8); left > 0; --left) {
            const auto value = [&](const wchar_t* key) {
                return random() % 10 == 0 ? support::Values() : values({{key, anyText(random, different)}});
            };
            manager.CreateManHole(value(L"mhcode"));
            manager.CreateSection(0, value(L"sekeyword"));
            manager.CreateSectGroup(value(L"sgname"));
            switch (random() % 5) {
            case 0: manager.CreatePipe(value(L"pename")); break;
            case 1: manager.CreateObox(value(L"obname")); break;
            case 2: manager.CreateCbox(value(L"cbname")); break;
            case 3: manager.CreateUbox(value(L"ubname")); break;
            default: manager.CreateEgg(value(L"egname"));
            }
        }
        long id = 0;
        bool found = manager.CheckManHoleCode(id);
        expectFirstPair(manager.GetManHoleDb(), L"mhcode", found, id);
        found = manager.CheckSection(id);
        expectFirstPair(manager.GetSectionDb(), L"sekeyword", found, id);
        found = manager.CheckSectGroupName(id);
        expectFirstPair(manager.GetSectGroupDb(), L"sgname", found, id);

        CList<tagSeekSect, const tagSeekSect&> sections;
        manager.GetAllSectName(sections);
        std::vector<std::wstring> names;
        std::vector<long> ids;
        for (const tagSeekSect& section : sections) {
            names.emplace_back(section.name.View());
            ids.push_back(section.id);
        }
        std::size_t first = 0;
        std::size_t second = 0;
        long otherId = 0;
        ASSERT_EQ(manager.CheckAllPipeName(id, otherId), literalFirstPair(names, first, second));
        if (second < ids.size()) {
            EXPECT_EQ(id, ids[first]);
            EXPECT_EQ(otherId, ids[second]);
        }
    }
}

// Groups and records with few names; some have one id.
void addRandomGroups(CObjectManager& manager, std::mt19937& random)
{
    const int different = 1 + static_cast<int>(random() % 6);
    for (int left = static_cast<int>(random() % 10); left > 0; --left)
        manager.CreateSectGroup(random() % 8 == 0 ? support::Values()
                                                  : values({{L"sgname", anyText(random, different)}}));
    for (int left = static_cast<int>(random() % 20); left > 0; --left) {
        CSectGroupRec* const record = manager.CreateSectGroupRec({});
        for (const wchar_t* key : {L"srsecgroupname", L"srsectionkey", L"srstsecname", L"srendsecname"})
            if (random() % 8 > 0) record->WriteSubAttribute(key, anyText(random, different));
        record->WriteSubAttributeInt(L"order", static_cast<int>(random() % 5));
    }
    if (random() % 4 > 0) return;
    const auto share = [&](auto& table) {
        if (table.GetCount() < 2) return;
        std::vector<CPipeObject*> objects;
        for (CPipeObject* object : table)
            objects.push_back(object);
        objects[random() % objects.size()]->SetObjectId(objects[random() % objects.size()]->GetObjectId());
    };
    share(manager.GetSectGroupDb());
    share(manager.GetSectGroupRecDb());
}

template <class Call> std::string afterCheck(unsigned seed, Call&& call)
{
    std::mt19937 random(seed);
    CObjectManager manager;
    addRandomGroups(manager, random);
    CStringArray names;
    const bool any = call(manager, names);
    std::string text = any ? "true" : "false";
    for (const CString& name : names)
        text += " [" + obmgr::ToUtf8(name.View()) + ']';
    return text + '\n' + support::dump(manager);
}

TEST(NameChecksAtRandom, RemoveAndNumberAsOneWalkOfTheTableDoes)
{
    const support::DefaultsForAllTags defaults;
    const unsigned first = support::testSeed(3105);
    for (unsigned seed = first; seed < first + 1000; ++seed) {
        ASSERT_EQ(afterCheck(seed, [](auto& manager, auto& names) { return manager.DuplicateCheckSecgroup(names); }),
                  afterCheck(seed, integrity::literalDuplicateCheckSecgroup))
            << "RIVELTA_SEED=" << seed;
        ASSERT_EQ(afterCheck(seed, [](auto& manager, auto& names) { return manager.DuplicateCheckSecgrouprec(names); }),
                  afterCheck(seed, integrity::literalDuplicateCheckSecgrouprec))
            << "RIVELTA_SEED=" << seed;
    }
}

// ---- size ----

TEST_F(NameChecks, OfManyNamesLookAtEachOnce)
{
    constexpr int kCount = 30'000;
    for (int i = 0; i < kCount; ++i) {
        const std::wstring name = std::to_wstring(i);
        m_manager.CreateManHole(values({{L"mhcode", name.c_str()}}));
        m_manager.CreatePipe(values({{L"pename", name.c_str()}}));
        AddGroup(name.c_str());
        AddRecord(name.c_str(), L"k");
    }
    long id = 0;
    long otherId = 0;
    CStringArray names;
    EXPECT_FALSE(m_manager.CheckManHoleCode(id));
    EXPECT_FALSE(m_manager.CheckAllPipeName(id, otherId));
    EXPECT_FALSE(m_manager.CheckSectGroupName(id));
    EXPECT_FALSE(m_manager.DuplicateCheckSecgroup(names));
    EXPECT_FALSE(m_manager.DuplicateCheckSecgrouprec(names));
    AddGroup(L"0");
    EXPECT_TRUE(m_manager.DuplicateCheckSecgroup(names));
}

} // namespace
