#include "reference/RandomEdits.h"

#include "framework/Exception.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace reference {
namespace {

using namespace objectdata;

// Keys by which the library looks records up, and two that it does not know.
constexpr const wchar_t* kKeys[] = {
    L"order",        L"sdispanid",    L"dbtspanid",    L"svspid",       L"ohspid",         L"qmdqrmultiname",
    L"avqrname",     L"qtqrname",     L"qrname",       L"qename",       L"qlname",         L"qvname",
    L"qmname",       L"pename",       L"obname",       L"cbname",       L"ubname",         L"egname",
    L"pesectionkey", L"obsectionkey", L"cbsectionkey", L"ubsectionkey", L"egsectionkey",   L"sekeyword",
    L"saname",       L"spname",       L"syname",       L"csname",       L"rrname",         L"routenum",
    L"activweb",     L"parangname",   L"mhcode",       L"sgname",       L"srsecgroupname", L"iasratiosetnum",
    L"iasarea",      L"iashousel",    L"rtnumber",     L"rtscomment",   L"other",          L"\u7BA1"};

constexpr const wchar_t* kValues[] = {L"", L"1", L"2", L"3", L"-1", L"10", L" 2", L"2x", L"x", L"-", L"99999999999"};

// Tags without defaults: their Create fails and leaves the object.
constexpr objectdata::OBJECTTYPE kWithoutDefaults[] = {Lcarry, Rural, Attuser};

bool HasDefaults(objectdata::OBJECTTYPE type)
{
    return std::find(std::begin(kWithoutDefaults), std::end(kWithoutDefaults), type) == std::end(kWithoutDefaults);
}

std::vector<int> ToInts(const CList<long, long>& ids)
{
    std::vector<int> result;
    for (const long id : ids)
        result.push_back(static_cast<int>(id));
    return result;
}

// The list behind an entry that it held before, or a mark that no id list has when the result does not fit it.
template <class Fill> std::vector<int> Listed(Fill&& fill)
{
    CList<long, long> ids;
    ids.AddTail(-77);
    const bool any = fill(ids);
    std::vector<int> result = ToInts(ids);
    if (result.empty() || result.front() != -77 || any != (result.size() > 1)) return {-12345, -12345};
    result.erase(result.begin());
    return result;
}

Condition HasLink(std::size_t link, int id)
{
    return [=](const Record& record) { return record.links[link] == id; };
}

Condition HasText(const wchar_t* key, std::wstring text)
{
    return [=](const Record& record) { return record.Get(key) == text; };
}

Condition HasNumber(const wchar_t* key, int number)
{
    return [=](const Record& record) { return record.Int(key) == number; };
}

int IdOf(const Record* record)
{
    return record ? record->id : 0;
}

} // namespace

RandomEdits::RandomEdits(unsigned seed, std::vector<Type> types)
    : m_random(seed), m_types(std::move(types)), m_model(static_cast<std::size_t>(obmgr::kTypeCount))
{
    auto* const table = new CObDefManager;
    for (const support::Family& family : support::families()) {
        if (!HasDefaults(family.type)) continue;
        const std::string_view tag = obmgr::RecordOf(family.type).tag;
        auto* const entry = new CObDefault(family.type, std::wstring(tag.begin(), tag.end()).c_str());
        entry->GetSubattribute().SetAt(L"def", L"d");
        entry->GetSubattribute().SetAt(L"order", L"2");
        table->GetDefList().AddTail(entry);
    }
    CObjectManager::ReSetDefManager(table);
}

int RandomEdits::PickId()
{
    if (m_random() % 8 == 0) return Pick(60) - 5;
    const Table& table = m_model[PickType()];
    return table.live.empty() ? Pick(40) : table.live[m_random() % table.live.size()]->id;
}

std::wstring RandomEdits::PickKey()
{
    return m_random() % 4 == 0 ? L"order" : kKeys[m_random() % std::size(kKeys)];
}

std::wstring RandomEdits::PickValue()
{
    return kValues[m_random() % std::size(kValues)];
}

void RandomEdits::Step()
{
    switch (Pick(20)) {
    case 0:
    case 1:
    case 2:
    case 3:
    case 4: return Create();
    case 5: return CreateWebOrSpan();
    case 6: return AddWithAnyId();
    case 7:
    case 8:
    case 9:
    case 10: return EditLive();
    case 11:
    case 12: return SetCopy();
    case 13:
    case 14: return Delete();
    case 15: return DeleteByKey();
    case 16:
    case 17:
    case 18: return Transact();
    default: return ClearOrReset();
    }
}

// ---- edits ----

Record* RandomEdits::CreateInModel(Type type, const std::vector<int>& links, const support::Values& values)
{
    const auto record = std::make_shared<Record>();
    record->id = ++m_model.lastId;
    record->links = links;
    if (!m_model[type].Add(record->id, record)) return nullptr;
    if (!HasDefaults(type)) return nullptr;
    record->Set(L"def", L"d");
    record->Set(L"order", L"2");
    for (const CKeyValue& pair : values)
        record->Set(std::wstring(pair.GetKey().View()), std::wstring(pair.GetValue().View()));
    return record.get();
}

void RandomEdits::Create()
{
    const Type type = PickType();
    const support::Family& family = FamilyOf(type);
    if (!family.create) return;
    support::Values values;
    for (int left = Pick(4); left > 0; --left)
        values.Add(CKeyValue(PickKey().c_str(), PickValue().c_str()));
    std::vector<int> links(static_cast<std::size_t>(obmgr::RecordOf(type).links.count));
    for (int& link : links)
        link = PickId();
    const long first = links.empty() ? 0 : links[0];
    const long second = links.size() < 2 ? 0 : links[1];
    const Record* const expected = CreateInModel(type, links, values);
    if (family.createFromMap && Pick(3) == 0) {
        CMapStringToString map;
        for (const CKeyValue& pair : values)
            map.SetAt(pair.GetKey(), pair.GetValue());
        EXPECT_EQ(family.createFromMap(m_manager, map), static_cast<unsigned>(IdOf(expected)));
    } else if (Pick(2) == 0) {
        long id = -5;
        EXPECT_EQ(family.create(m_manager, first, second, values, &id), expected != nullptr);
        EXPECT_EQ(id, expected ? expected->id : -5);
    } else {
        const CPipeObject* const made = family.createObject(m_manager, first, second, values);
        ASSERT_EQ(made != nullptr, expected != nullptr) << family.name;
        if (made) {
            EXPECT_EQ(made->GetId32(), expected->id);
        }
    }
}

void RandomEdits::CreateWebOrSpan()
{
    const support::Values none;
    if (Pick(2) == 0) {
        const int kind = Pick(6);
        const Record* const web = CreateInModel(Web, {kind}, none);
        const bool complete = web && CreateInModel(Calcfig, {web->id}, none) &&
                              CreateInModel(Drawfig, {web->id}, none) && CreateInModel(Sheetfig, {web->id}, none);
        EXPECT_EQ(m_manager.CreateWeb(kind, none) != nullptr, complete);
        return;
    }
    const std::vector<int> links = {PickId(), PickId(), PickId()};
    const Record* const span = CreateInModel(Span, links, none);
    const bool complete = span && CreateInModel(AreaSet, {span->id}, none);
    long id = -5;
    EXPECT_EQ(m_manager.CreateSpan(links[0], links[1], links[2], none, &id), complete);
    EXPECT_EQ(id, span ? span->id : -5);
}

// The id handed to the table need not be the record's own.
void RandomEdits::AddWithAnyId()
{
    const Type type = PickType();
    const int id = PickId();
    const auto record = std::make_shared<Record>();
    record->id = Pick(3) == 0 ? PickId() : id;
    record->links.resize(static_cast<std::size_t>(obmgr::RecordOf(type).links.count));
    std::unique_ptr<CPipeObject> object(static_cast<CPipeObject*>(FamilyOf(type).make()));
    object->SetObjectId(static_cast<unsigned long>(record->id));
    const bool added = TableOf(type).Add(id, object.get());
    if (added) object.release();
    EXPECT_EQ(added, m_model[type].Add(id, record)) << FamilyOf(type).name << " " << id;
}

void RandomEdits::EditCopy(CPipeObject& object, Record& record, const std::wstring& key, const std::wstring& value,
                           int link, int id)
{
    object.WriteSubAttribute(key.c_str(), value.c_str());
    record.Set(key, value);
    if (!record.links.empty()) {
        const auto at = static_cast<std::size_t>(link) % record.links.size();
        object.SetLink(static_cast<int>(at), id);
        record.links[at] = id;
    }
    object.SetStatus(link);
    record.status = link;
}

void RandomEdits::EditLive()
{
    const Type type = PickType();
    const std::vector<RecordPtr>& live = m_model[type].live;
    if (live.empty()) return;
    std::size_t place = m_random() % live.size();
    Record& record = *live[place];
    CPipeObject* object = nullptr;
    TableOf(type).ForEach([&](CPipeObject& o) {
        if (place-- == 0) object = &o;
    });
    ASSERT_NE(object, nullptr);
    switch (Pick(7)) {
    case 0: {
        const int id = PickId();
        object->SetObjectId(static_cast<unsigned long>(id));
        record.id = id;
        return;
    }
    case 1: {
        CMapStringToString values;
        record.attributes.clear();
        for (int left = Pick(3); left > 0; --left) {
            const std::wstring key = PickKey();
            const std::wstring value = PickValue();
            values.SetAt(key.c_str(), value.c_str());
            record.Set(key, value);
        }
        object->SetSubAttribute(values);
        return;
    }
    case 2: {
        support::Values values;
        for (int left = Pick(3); left > 0; --left) {
            const std::wstring key = PickKey();
            const std::wstring value = PickValue();
            values.Add(CKeyValue(key.c_str(), value.c_str()));
            record.Set(key, value);
        }
        object->AddSubAttribute(values);
        return;
    }
    default: EditCopy(*object, record, PickKey(), PickValue(), Pick(5), PickId());
    }
}

void RandomEdits::SetCopy()
{
    const Type type = PickType();
    const support::Family& family = FamilyOf(type);
    if (!family.set || !family.copy) return;
    const int id = PickId();
    std::unique_ptr<CPipeObject> copy(family.copy(m_manager, id));
    const Record* const source = m_model[type].Find(id);
    ASSERT_EQ(copy != nullptr, source != nullptr) << family.name << " " << id;
    if (!copy) return;
    const auto record = std::make_shared<Record>(*source);
    EditCopy(*copy, *record, PickKey(), PickValue(), Pick(5), PickId());
    if (Pick(6) == 0) {
        record->id = PickId();
        copy->SetObjectId(static_cast<unsigned long>(record->id));
    }
    Record* const live = m_model[type].Find(record->id);
    for (int times = 1 + Pick(2); times > 0; --times)
        family.set(m_manager, copy.get());
    if (!live) return;
    copy.release();
    *live = *record;
    m_model[type].retired.push_back(record);
}

void RandomEdits::Delete()
{
    DeleteById(PickType(), PickId());
}

void RandomEdits::DeleteById(Type type, int id)
{
    const Record* const found = m_model[type].Find(id);
    const std::wstring name = [&] {
        const std::pair<Type, const wchar_t*> keys[] = {{Qrrational, L"qrname"},
                                                        {Qrexperiment, L"qename"},
                                                        {Qrline, L"qlname"},
                                                        {Qrriver, L"qvname"},
                                                        {Qrmulti, L"qmname"}};
        for (const auto& [method, key] : keys)
            if (method == type && found) return found->Get(key);
        return std::wstring();
    }();
    bool expected = found != nullptr;
    bool result = false;
    switch (type) {
    case Node:
        m_model.RemoveWhere(Nodeunit, HasLink(0, id));
        m_model.RemoveWhere(IcpInq, HasLink(0, id));
        result = m_manager.DeleteNodeObject(id);
        break;
    case AreaInq: result = m_manager.DeleteAreaInqObject(id); break;
    case AreaOutq: result = m_manager.DeleteAreaOutqObject(id); break;
    case Qrrational: result = m_manager.DeleteQrrationalObject(id); break;
    case Qrexperiment: result = m_manager.DeleteQrexperimentObject(id); break;
    case Qrline: result = m_manager.DeleteQrlineObject(id); break;
    case Qrriver: result = m_manager.DeleteQrriverObject(id); break;
    case Qrmulti: result = m_manager.DeleteQrmultiObject(id); break;
    case Exec: result = m_manager.DeleteExecObject(id); break;
    case Geometry: result = m_manager.DeleteGeometrySelfObject(id); break;
    default:
        if (FamilyOf(type).remove)
            result = FamilyOf(type).remove(m_manager, id);
        else
            result = TableOf(type).Remove(TableOf(type).Find(id));
    }
    EXPECT_EQ(result, expected) << FamilyOf(type).name << " " << id;
    if (!found) return;
    m_model[type].Remove(id);
    if (type == AreaInq) m_model.RemoveWhere(Inareaset, HasLink(0, id));
    if (type == AreaOutq) m_model.RemoveWhere(Outareaset, HasLink(0, id));
    if (type == Qrrational || type == Qrexperiment || type == Qrline || type == Qrriver)
        m_model.RemoveWhere(Areasupve, HasText(L"qtqrname", name));
    if (type == Qrmulti) {
        m_model.RemoveWhere(Qrmultidat, HasText(L"qmdqrmultiname", name));
        m_model.RemoveWhere(Qrrivertime, HasText(L"qtqrname", name));
    }
    if (type == Exec) {
        m_model.RemoveWhere(Execdivide, HasLink(0, id));
        m_model.RemoveWhere(Lcarry, HasLink(0, id));
    }
}

void RandomEdits::DeleteByKey()
{
    const int id = PickId();
    const std::wstring name = PickValue();
    const CString text = name.c_str();
    switch (Pick(13)) {
    case 0:
        m_manager.DeleteAreasupveObject(text);
        m_model.RemoveWhere(Areasupve, HasText(L"qtqrname", name));
        return;
    case 1:
        m_manager.DeleteQrmultidatObject(text);
        m_model.RemoveWhere(Qrmultidat, HasText(L"qmdqrmultiname", name));
        return;
    case 2:
        m_manager.DeleteQrrivertimeObject(text);
        m_model.RemoveWhere(Qrrivertime, HasText(L"qtqrname", name));
        return;
    case 3:
        EXPECT_TRUE(m_manager.DeleteSpanSpdxfin(id));
        m_model.RemoveWhere(Spdxfin, HasNumber(L"sdispanid", id));
        return;
    case 4:
        EXPECT_TRUE(m_manager.DeleteSpanDrawbelttx(id));
        m_model.RemoveWhere(Drawbelttx, HasNumber(L"dbtspanid", id));
        return;
    case 5: EXPECT_EQ(m_manager.DeleteSpanAreaset(id), m_model.RemoveWhere(AreaSet, HasLink(0, id)) > 0); return;
    case 6: EXPECT_EQ(m_manager.DeleteSpanAreatset(id), m_model.RemoveWhere(Areatset, HasLink(0, id)) > 0); return;
    case 7:
        EXPECT_TRUE(m_manager.DeleteAreatset(id));
        m_model.RemoveWhere(Areatset, HasLink(0, id));
        return;
    case 8: EXPECT_EQ(m_manager.DeleteAreaInqInareaset(id), m_model.RemoveWhere(Inareaset, HasLink(0, id)) > 0); return;
    case 9:
        EXPECT_EQ(m_manager.DeleteAreaOutqOutareaset(id), m_model.RemoveWhere(Outareaset, HasLink(0, id)) > 0);
        return;
    case 10: EXPECT_EQ(m_manager.DeleteGeometryObject(id), m_model.RemoveWhere(Geometry, HasLink(0, id)) > 0); return;
    case 11:
        EXPECT_TRUE(m_manager.DeleteIcpInqByNode(id));
        m_model.RemoveWhere(IcpInq, HasLink(0, id));
        return;
    default:
        if (Pick(4) != 0) return;
        m_manager.DrawFigureInitialize();
        for (const Type type :
             {Drawformdat, Drawpendat, Drawfontdat, Drawbeltdat, Drawsecinfodat, Drawindxfdat, Drawintextdat})
            m_model.RemoveWhere(type, [](const Record&) { return true; });
    }
}

void RandomEdits::Transact()
{
    switch (Pick(4)) {
    case 0:
    case 1:
        m_manager.BeginTransaction();
        m_model.Begin();
        return;
    case 2:
        m_manager.CommitTransaction();
        m_model.Commit();
        return;
    default: {
        bool done = true;
        try {
            m_manager.AbortTransaction();
        } catch (const CInvalidArgException&) {
            done = false;
        }
        EXPECT_EQ(done, m_model.Abort());
    }
    }
}

void RandomEdits::ClearOrReset()
{
    switch (Pick(12)) {
    case 0: {
        const Type type = PickType();
        TableOf(type).Clear();
        m_model[type].Clear();
        return;
    }
    case 1:
        if (Pick(8) != 0) return;
        m_manager.Initialize();
        m_model.Initialize();
        return;
    default: m_manager.ResetObjectIdList(); m_model.ResetIdLists();
    }
}

// ---- comparisons ----

void RandomEdits::CompareObjects() const
{
    ASSERT_EQ(m_manager.GetCurrentObjectId(), m_model.lastId);
    ASSERT_EQ(m_manager.GetAllDataCount(), m_model.Count());
    ASSERT_EQ(m_manager.GetMaxObjectId(), m_model.MaxId());
    for (const support::Family& family : support::families()) {
        const obmgr::ObjectTable& table = m_manager.TableOf(family.type);
        const Table& expected = m_model[family.type];
        ASSERT_EQ(table.Count(), expected.live.size()) << family.name;
        ASSERT_EQ(table.RetiredCount(), expected.retired.size()) << family.name;
        ASSERT_EQ(table.TransactionCount(), expected.transactionCount) << family.name;
        std::size_t place = 0;
        table.ForEach([&](const CPipeObject& object) {
            const Record& record = *expected.live[place++];
            EXPECT_EQ(object.GetId32(), record.id) << family.name;
            EXPECT_EQ(object.GetStatus(), record.status) << family.name << " " << record.id;
            EXPECT_TRUE(
                std::equal(object.Links().begin(), object.Links().end(), record.links.begin(), record.links.end()))
                << family.name << " " << record.id;
            CMapStringToString values;
            object.GetSubAttribute(values);
            std::vector<std::pair<std::wstring, std::wstring>> attributes;
            for (const auto& [key, value] : values)
                attributes.emplace_back(key.View(), value.View());
            EXPECT_EQ(attributes, record.attributes) << family.name << " " << record.id;
        });
    }
}

void RandomEdits::CompareFamilies()
{
    static constexpr Type kSorted[] = {Web,      AreaInq, AreaOutq,    FixInq,        IcpInq,
                                       MountInq, Outq,    Profilearea, Profilelayout, Sheetarea};
    const int owner = PickId();
    for (const Type type : m_types) {
        const support::Family& family = FamilyOf(type);
        const Table& table = m_model[type];
        const bool isSorted = std::find(std::begin(kSorted), std::end(kSorted), type) != std::end(kSorted);
        const std::vector<int> all = IdsOf(table.live);
        const auto inOrder = [&](const std::vector<int>& ids) { return isSorted ? SortedByOrder(table, ids) : ids; };
        const int id = PickId();
        const CPipeObject* const found = TableOf(type).Find(id);
        ASSERT_EQ(found ? found->GetId32() : 0, IdOf(table.Find(id))) << family.name;
        if (family.live) {
            EXPECT_EQ(family.live(m_manager, id), found) << family.name;
        }
        if (family.ids) {
            EXPECT_EQ(Listed([&](auto& ids) { return family.ids(m_manager, ids); }), inOrder(all)) << family.name;
        }
        if (family.idsByOrder) {
            EXPECT_EQ(Listed([&](auto& ids) { return family.idsByOrder(m_manager, ids); }), SortedByOrder(table, all))
                << family.name;
        }
        if (family.objects) {
            EXPECT_EQ(Listed([&](auto& ids) { return family.objects(m_manager, ids); }), all) << family.name;
        }
        if (family.constObjects) {
            EXPECT_EQ(Listed([&](auto& ids) { return family.constObjects(m_manager, ids); }), all) << family.name;
        }
        if (family.ownedIds) {
            EXPECT_EQ(Listed([&](auto& ids) { return family.ownedIds(m_manager, owner, ids); }),
                      inOrder(IdsOf(table.Where(HasLink(0, owner)))))
                << family.name << " of " << owner;
        }
        if (family.ownedObjects) {
            EXPECT_EQ(Listed([&](auto& ids) { return family.ownedObjects(m_manager, owner, ids); }),
                      IdsOf(table.Where(HasLink(0, owner))))
                << family.name << " of " << owner;
        }
    }
    const auto expectWhere = [&](Type type, const Condition& condition, auto&& fill) {
        EXPECT_EQ(Listed(fill), IdsOf(m_model[type].Where(condition))) << FamilyOf(type).name << " of " << owner;
    };
    const std::wstring name = PickValue();
    const CString text = name.c_str();
    expectWhere(
        IntPos, [&](const Record& record) { return record.links[0] == owner || record.links[1] == owner; },
        [&](auto& ids) { return m_manager.GetIntPosIdList(owner, ids); });
    // True for a list that was not empty before, as long as the table is not.
    const auto expectLinked = [&](Type type, std::size_t link, auto&& fill) {
        CList<long, long> ids;
        ids.AddTail(-77);
        std::vector<int> expected = IdsOf(m_model[type].Where(HasLink(link, owner)));
        expected.insert(expected.begin(), -77);
        EXPECT_EQ(fill(ids), m_model[type].First([](const Record&) { return true; }) != nullptr);
        EXPECT_EQ(ToInts(ids), expected) << FamilyOf(type).name << " of " << owner;
    };
    expectLinked(Route, 0, [&](auto& ids) { return m_manager.GetRouteIdList(owner, ids); });
    expectLinked(Span, 2, [&](auto& ids) { return m_manager.GetSpanIdList(owner, ids); });
    expectWhere(Spdxfin, HasNumber(L"sdispanid", owner),
                [&](auto& ids) { return m_manager.GetSpdxfinIdList(owner, ids); });
    expectWhere(Drawbelttx, HasNumber(L"dbtspanid", owner),
                [&](auto& ids) { return m_manager.GetDrawbelttxIdList(owner, ids); });
    expectWhere(Secvalve, HasNumber(L"svspid", owner),
                [&](auto& ids) { return m_manager.GetSecvalveIdList(owner, ids); });
    expectWhere(Ohaul, HasNumber(L"ohspid", owner), [&](auto& ids) { return m_manager.GetOhaulIdList(owner, ids); });
    expectWhere(Qrmultidat, HasText(L"qmdqrmultiname", name),
                [&](auto& ids) { return m_manager.GetQrmultidatIdList(text, ids); });
    expectWhere(Areasupve, HasText(L"avqrname", name),
                [&](auto& ids) { return m_manager.GetAreasupveIdList(text, ids); });
    expectWhere(Qrrivertime, HasText(L"qtqrname", name),
                [&](auto& ids) { return m_manager.GetQrrivertimeIdList(text, ids); });
    expectWhere(SectGroupRec, HasText(L"srsecgroupname", name),
                [&](auto& ids) { return m_manager.GetSecgrouprecIdList(text, ids); });
}

void RandomEdits::CompareLookups()
{
    const std::pair<Type, std::pair<const wchar_t*, const wchar_t*>> sections[] = {{Pipe, {L"pename", L"pesectionkey"}},
                                                                                   {Obox, {L"obname", L"obsectionkey"}},
                                                                                   {Cbox, {L"cbname", L"cbsectionkey"}},
                                                                                   {Ubox, {L"ubname", L"ubsectionkey"}},
                                                                                   {Egg, {L"egname", L"egsectionkey"}}};
    const int kinds[] = {0, 2, 1, 3, 4};
    const std::pair<Type, const wchar_t*> methods[] = {
        {Svperarea, L"saname"},    {Svperpopula, L"spname"}, {Svyokohama, L"syname"}, {Qrrational, L"qrname"},
        {Qrexperiment, L"qename"}, {Qrmulti, L"qmname"},     {Qrline, L"qlname"},     {Qrriver, L"qvname"},
        {Combi, L"csname"},        {Rural, L"rrname"}};
    const std::wstring name = PickValue();
    const CString text = name.c_str();
    const int id = PickId();
    const auto tagOf = [](Type type) {
        const std::string_view tag = obmgr::RecordOf(type).tag;
        return std::wstring(tag.begin(), tag.end());
    };

    const Record* section = nullptr;
    std::wstring tag;
    for (const auto& [type, keys] : sections) {
        section = m_model[type].First(HasText(keys.first, name));
        if (!section) continue;
        tag = tagOf(type);
        break;
    }
    CString type;
    CPipeSection* object = nullptr;
    EXPECT_EQ(static_cast<int>(m_manager.GetSectRecId(text, type, &object)), IdOf(section)) << name;
    EXPECT_EQ(object != nullptr, section != nullptr);
    EXPECT_EQ(std::wstring(type.View()), tag);

    long sectionId = -5;
    int expectedId = -5;
    for (const auto& [kind, keys] : sections) {
        for (const RecordPtr& record : m_model[kind].Where(HasText(keys.second, name))) {
            if (expectedId != -5) break;
            const Record* const hit = m_model[Section].First(HasText(L"sekeyword", record->Get(keys.second)));
            if (hit) expectedId = hit->id;
        }
    }
    EXPECT_EQ(m_manager.GetSectId(text, sectionId), expectedId != -5);
    EXPECT_EQ(sectionId, expectedId);

    int kind = -5;
    int expectedKind = -5;
    for (std::size_t i = 0; i < std::size(sections) && expectedKind == -5; ++i)
        if (m_model[sections[i].first].Find(id)) expectedKind = kinds[i];
    EXPECT_EQ(m_manager.GetSectType(id, kind), expectedKind != -5);
    EXPECT_EQ(kind, expectedKind);

    const Record* method = nullptr;
    std::wstring methodTag = L"before";
    for (const auto& [methodType, key] : methods) {
        method = m_model[methodType].First(HasText(key, name));
        if (!method) continue;
        methodTag = tagOf(methodType);
        break;
    }
    CString found = L"before";
    EXPECT_EQ(m_manager.GetFuncRecId(text, found), IdOf(method));
    EXPECT_EQ(std::wstring(found.View()), methodTag);

    const Table& projects = m_model[Project];
    const auto routeOf = [&](int web) {
        if (web == 0) {
            if (projects.live.empty()) return 0;
            web = projects.live.front()->Int(L"activweb");
        }
        return IdOf(m_model[Route].First(
            [&](const Record& route) { return route.Get(L"routenum") == name && route.links[0] == web; }));
    };
    EXPECT_EQ(m_manager.GetRouteIdFromRouteNum(text, id), routeOf(id));
    EXPECT_EQ(m_manager.GetRouteIdFromRouteNum(text, 0), routeOf(0));
    long projectId = -5;
    EXPECT_EQ(m_manager.GetProjectId(projectId), !projects.live.empty());
    EXPECT_EQ(projectId, projects.live.empty() ? -5 : projects.live.front()->id);

    const CProfilearang* const range = m_manager.GetProfilearangObjectFromName(text);
    EXPECT_EQ(range ? range->GetId32() : 0, IdOf(m_model[Profilearang].First(HasText(L"parangname", name))));
    long manhole = 0;
    m_manager.GetManHoleId(text, manhole);
    EXPECT_EQ(manhole, IdOf(m_model[ManHole].First(HasText(L"mhcode", name))));

    CStringArray names;
    m_manager.GetSectGroupNameList(names);
    std::vector<std::wstring> groupNames;
    for (const CString& group : names)
        groupNames.emplace_back(group.View());
    std::vector<std::wstring> expectedNames;
    for (const RecordPtr& group : m_model[SectGroup].live)
        expectedNames.push_back(group->Get(L"sgname"));
    EXPECT_EQ(groupNames, expectedNames);

    // The sum over area records: sorted by number, each id then stands for the first record that has it.
    std::vector<std::pair<int, int>> areas;
    for (const RecordPtr& area : m_model[Inareaset].Where(HasLink(0, id)))
        areas.emplace_back(m_model[Inareaset].Find(area->id)->Int(L"iasratiosetnum"), area->id);
    std::stable_sort(areas.begin(), areas.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::wstring> numbers;
    std::vector<std::wstring> comments;
    for (const auto& [number, areaId] : areas) {
        numbers.push_back(m_model[Inareaset].Find(areaId)->Get(L"iasratiosetnum"));
        std::wstring comment;
        for (const RecordPtr& ratio : m_model[RaitoSet].live)
            if (ratio->Get(L"rtnumber") == numbers.back()) comment = ratio->Get(L"rtscomment");
        comments.push_back(comment);
    }
    double houses = -1;
    double area = -1;
    CStringArray foundNumbers;
    CStringArray foundComments;
    const bool any =
        m_manager.GetSumHouseAreaOfAreainq(static_cast<unsigned long>(id), houses, area, foundNumbers, foundComments);
    EXPECT_EQ(any, id != 0 && !areas.empty());
    if (id == 0) {
        numbers.clear();
        comments.clear();
    }
    ASSERT_EQ(foundNumbers.GetSize(), static_cast<std::ptrdiff_t>(numbers.size()));
    ASSERT_EQ(foundComments.GetSize(), static_cast<std::ptrdiff_t>(comments.size()));
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto at = static_cast<std::ptrdiff_t>(i);
        EXPECT_EQ(std::wstring(foundNumbers[at].View()), numbers[i]);
        EXPECT_EQ(std::wstring(foundComments[at].View()), comments[i]);
    }
}

} // namespace reference
