// Direct changes of a design, and transactions.
#include "reference/RandomNetworks.h"
#include "support/FamilyTable.h"

#include <algorithm>
#include <memory>

namespace reference {

using namespace objectdata;

namespace {

const support::Family& FamilyOf(Type type)
{
    return support::families()[static_cast<std::size_t>(type)];
}

// ---- live objects by id and place among those with the id ----

CPipeObject* LiveOf(OpenNetwork& library, Type type, int id, int nth)
{
    CPipeObject* found = nullptr;
    library.TableOf(type).ForEach([&](CPipeObject& object) {
        if (object.GetId32() == id && nth-- == 0) found = &object;
    });
    return found;
}

Record* LiveOf(const Network& model, Type type, int id, int nth)
{
    for (Record* const record : model.All(type))
        if (record->id == id && nth-- == 0) return record;
    return nullptr;
}

// Type, id, place of a random live record.
Args LiveRecord(Type type, Choice& choice)
{
    const Records all = choice.Design().All(type);
    if (all.empty()) return {{static_cast<int>(type), 0, 0}, {}};
    const std::size_t place = static_cast<std::size_t>(choice.Pick(static_cast<int>(all.size())));
    int nth = 0;
    for (std::size_t i = 0; i < place; ++i)
        nth += all[i]->id == all[place]->id;
    return {{static_cast<int>(type), all[place]->id, nth}, {}};
}

// An edit of one live record, the same for both sides: edit(object, unpack) gets what follows type, id and place.
template <class LibraryEdit, class ModelEdit>
StepKind EditOfLive(const char* name, int weight, std::function<Args(Choice&)> choose, LibraryEdit inLibrary,
                    ModelEdit inModel)
{
    return {name, weight, std::move(choose),
            [=](OpenNetwork& library, const Args& args, Outcome& outcome) {
                Unpack in(args);
                const auto type = static_cast<Type>(in.Number());
                const int id = in.Number();
                CPipeObject* const object = LiveOf(library, type, id, in.Number());
                outcome.Add(object != nullptr);
                if (object) inLibrary(*object, in);
            },
            [=](Network& model, const Args& args, Outcome& outcome) {
                Unpack in(args);
                const auto type = static_cast<Type>(in.Number());
                const int id = in.Number();
                Record* const record = LiveOf(model, type, id, in.Number());
                outcome.Add(record != nullptr);
                if (record) inModel(*record, in);
            }};
}

void SetLinkOf(CPipeObject& object, int link, int id)
{
    if (link < static_cast<int>(object.Links().size())) object.SetLink(link, id);
}

void SetLinkOf(Record& record, int link, int id)
{
    if (link < static_cast<int>(record.links.size())) record.links[static_cast<std::size_t>(link)] = id;
}

// ---- the edits ----

StepKind AddRecord(bool sharedIds)
{
    // Type, id, links. An id above the counter moves it.
    return {"add", 3,
            [=](Choice& choice) {
                const Type type = choice.AnyType();
                const int next = choice.Design().Base().lastId + 1;
                Args args{{static_cast<int>(type), sharedIds && choice.OneIn(12) ? choice.Id(type) : next}, {}};
                for (std::size_t link = 0; link < LinkCount(type); ++link)
                    args.numbers.push_back(choice.Link(type, link));
                Choice::Pack(args.texts, choice.SomeValues(type));
                return args;
            },
            [](OpenNetwork& library, const Args& args, Outcome& outcome) {
                Unpack in(args);
                const auto type = static_cast<Type>(in.Number());
                const int id = in.Number();
                std::unique_ptr<CPipeObject> object(static_cast<CPipeObject*>(FamilyOf(type).make()));
                object->SetObjectId(static_cast<unsigned long>(id));
                for (std::size_t link = 0; link < LinkCount(type); ++link)
                    object->SetLink(static_cast<int>(link), in.Number());
                object->AddSubAttribute(ToValues(in.Pairs()));
                const bool added = library.TableOf(type).Add(id, object.get());
                if (added) object.release();
                if (id > library.GetCurrentObjectId()) library.SetObjectId(id);
                outcome.Add(added);
            },
            [](Network& model, const Args& args, Outcome& outcome) {
                Unpack in(args);
                const auto type = static_cast<Type>(in.Number());
                const auto record = std::make_shared<Record>();
                record->id = in.Number();
                for (std::size_t link = 0; link < LinkCount(type); ++link)
                    record->links.push_back(in.Number());
                for (const auto& [key, value] : in.Pairs())
                    record->Set(key, value);
                outcome.Add(model[type].Add(record->id, record));
                model.Base().lastId = std::max(model.Base().lastId, record->id);
            }};
}

StepKind CreateByFamily()
{
    return {"create", 3,
            [](Choice& choice) {
                Type type = choice.AnyType();
                while (!FamilyOf(type).create)
                    type = choice.AnyType();
                Args args{{static_cast<int>(type)}, {}};
                for (std::size_t link = 0; link < LinkCount(type); ++link)
                    args.numbers.push_back(choice.Link(type, link));
                Choice::Pack(args.texts, choice.SomeValues(type));
                return args;
            },
            [](OpenNetwork& library, const Args& args, Outcome& outcome) {
                Unpack in(args);
                const auto type = static_cast<Type>(in.Number());
                long links[] = {0, 0, 0};
                for (std::size_t link = 0; link < LinkCount(type); ++link)
                    links[link] = in.Number();
                long id = -5;
                outcome.Add(FamilyOf(type).create(library, links[0], links[1], ToValues(in.Pairs()), &id));
                outcome.Add(id);
            },
            [](Network& model, const Args& args, Outcome& outcome) {
                Unpack in(args);
                const auto type = static_cast<Type>(in.Number());
                Ids links;
                for (std::size_t link = 0; link < LinkCount(type); ++link)
                    links.push_back(in.Number());
                const Record* const record = model.Create(type, links, in.Pairs());
                outcome.Add(record != nullptr);
                outcome.Add(record ? record->id : -5);
            }};
}

StepKind Write(int weight)
{
    return EditOfLive(
        "write", weight,
        [](Choice& choice) {
            const Type type = choice.AnyType();
            Args args = LiveRecord(type, choice);
            Choice::Pack(args.texts, choice.SomeValues(type));
            return args;
        },
        [](CPipeObject& object, Unpack& in) {
            for (const auto& [key, value] : in.Pairs())
                object.WriteSubAttribute(key.c_str(), value.c_str());
        },
        [](Record& record, Unpack& in) {
            for (const auto& [key, value] : in.Pairs())
                record.Set(key, value);
        });
}

StepKind ReplaceAttributes()
{
    return EditOfLive(
        "replace all attributes", 1,
        [](Choice& choice) {
            const Type type = choice.AnyType();
            Args args = LiveRecord(type, choice);
            Choice::Pack(args.texts, choice.SomeValues(type));
            return args;
        },
        [](CPipeObject& object, Unpack& in) {
            CMapStringToString values;
            for (const auto& [key, value] : in.Pairs())
                values.SetAt(key.c_str(), value.c_str());
            object.SetSubAttribute(values);
        },
        [](Record& record, Unpack& in) {
            record.attributes.clear();
            for (const auto& [key, value] : in.Pairs())
                record.Set(key, value);
        });
}

// Arguments: type, id, place, link, new id.
Args LinkChange(Choice& choice)
{
    const Type type = choice.AnyType();
    Args args = LiveRecord(type, choice);
    const std::size_t links = LinkCount(type);
    const int link = links == 0 ? 0 : choice.Pick(static_cast<int>(links));
    args.numbers.push_back(link);
    args.numbers.push_back(links == 0 ? 0 : choice.Link(type, static_cast<std::size_t>(link)));
    return args;
}

StepKind SetLink(int weight)
{
    return EditOfLive(
        "set link", weight, LinkChange,
        [](CPipeObject& object, Unpack& in) {
            const int link = in.Number();
            SetLinkOf(object, link, in.Number());
        },
        [](Record& record, Unpack& in) {
            const int link = in.Number();
            SetLinkOf(record, link, in.Number());
        });
}

// An id that is in use or, far above the counter, one that nothing has.
StepKind SetId(int weight, bool sharedIds)
{
    return EditOfLive(
        "set id", weight,
        [=](Choice& choice) {
            const Type type = choice.AnyType();
            Args args = LiveRecord(type, choice);
            args.numbers.push_back(sharedIds ? choice.Id(type) : 1'000'000 + choice.Pick(1'000'000'000));
            return args;
        },
        [](CPipeObject& object, Unpack& in) { object.SetObjectId(static_cast<unsigned long>(in.Number())); },
        [](Record& record, Unpack& in) { record.id = in.Number(); });
}

// A copy is changed and handed in.
StepKind SetData(int weight)
{
    return {"set from copy", weight,
            [](Choice& choice) {
                Args args = LinkChange(choice);
                Choice::Pack(args.texts, choice.SomeValues(static_cast<Type>(args.numbers[0])));
                return args;
            },
            [](OpenNetwork& library, const Args& args, Outcome& outcome) {
                Unpack in(args);
                const support::Family& family = FamilyOf(static_cast<Type>(in.Number()));
                if (!family.set || !family.copy) return;
                std::unique_ptr<CPipeObject> copy(family.copy(library, in.Number()));
                outcome.Add(copy != nullptr);
                if (!copy) return;
                in.Number();
                const int link = in.Number();
                SetLinkOf(*copy, link, in.Number());
                for (const auto& [key, value] : in.Pairs())
                    copy->WriteSubAttribute(key.c_str(), value.c_str());
                family.set(library, copy.release());
            },
            [](Network& model, const Args& args, Outcome& outcome) {
                Unpack in(args);
                const auto type = static_cast<Type>(in.Number());
                if (!FamilyOf(type).set || !FamilyOf(type).copy) return;
                Record* const live = model.Find(type, in.Number());
                outcome.Add(live != nullptr);
                if (!live) return;
                const auto copy = std::make_shared<Record>(*live);
                in.Number();
                const int link = in.Number();
                SetLinkOf(*copy, link, in.Number());
                for (const auto& [key, value] : in.Pairs())
                    copy->Set(key, value);
                *live = *copy;
                model[type].retired.push_back(copy);
            }};
}

StepKind RemoveRecord(int weight)
{
    return {"remove", weight,
            [](Choice& choice) {
                const Type type = choice.AnyType();
                return Args{{static_cast<int>(type), choice.Id(type)}, {}};
            },
            [](OpenNetwork& library, const Args& args, Outcome& outcome) {
                obmgr::ObjectTable& table = library.TableOf(static_cast<Type>(args.numbers[0]));
                outcome.Add(table.Remove(table.Find(args.numbers[1])));
            },
            [](Network& model, const Args& args, Outcome& outcome) {
                outcome.Add(model.Remove(static_cast<Type>(args.numbers[0]), args.numbers[1]));
            }};
}

StepKind Begin()
{
    return {"BeginTransaction", 2, [](Choice&) { return Args{}; },
            [](OpenNetwork& library, const Args&, Outcome&) { library.BeginTransaction(); },
            [](Network& model, const Args&, Outcome&) { model.Base().Begin(); }};
}

StepKind Commit()
{
    return {"CommitTransaction", 1, [](Choice&) { return Args{}; },
            [](OpenNetwork& library, const Args&, Outcome&) { library.CommitTransaction(); },
            [](Network& model, const Args&, Outcome&) { model.Base().Commit(); }};
}

StepKind Abort()
{
    return {"AbortTransaction", 1, [](Choice&) { return Args{}; },
            [](OpenNetwork& library, const Args&, Outcome&) { library.AbortTransaction(); },
            [](Network& model, const Args&, Outcome&) {
                if (!model.Base().Abort()) throw Raised();
            }};
}

StepKind ResetIds()
{
    return {"ResetObjectIdList", 1, [](Choice&) { return Args{}; },
            [](OpenNetwork& library, const Args&, Outcome&) { library.ResetObjectIdList(); },
            [](Network& model, const Args&, Outcome&) { model.Base().ResetIdLists(); }};
}

// Takes the defaults of a type away, or gives all back.
StepKind ChangeDefaults()
{
    return {"change defaults", 1,
            [](Choice& choice) {
                static constexpr Type kTypes[] = {Node, Span, Route, AreaSet, Calcfig, Web, Sheetfig};
                const Type type = kTypes[choice.Pick(std::size(kTypes))];
                return Args{{choice.OneIn(3) ? static_cast<int>(type) : -1}, {}};
            },
            [](OpenNetwork&, const Args& args, Outcome&) {
                std::set<Type> without;
                if (args.numbers[0] >= 0) without.insert(static_cast<Type>(args.numbers[0]));
                InstallDefaults(without);
            },
            [](Network& model, const Args& args, Outcome&) {
                model.withoutDefaults.clear();
                if (args.numbers[0] >= 0) model.withoutDefaults.insert(static_cast<Type>(args.numbers[0]));
            }};
}

} // namespace

std::vector<StepKind> BaseEdits(int damage, bool sharedIds)
{
    std::vector<StepKind> edits = {AddRecord(sharedIds), CreateByFamily(),        Write(6),
                                   ReplaceAttributes(),  SetLink(4 * damage),     SetId(damage, sharedIds),
                                   SetData(damage),      RemoveRecord(2 * damage)};
    for (StepKind& edit : edits)
        edit.startsWithType = true;
    for (const StepKind& edit : {Begin(), Commit(), Abort(), ResetIds(), ChangeDefaults()})
        edits.push_back(edit);
    return edits;
}

} // namespace reference
