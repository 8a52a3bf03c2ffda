// Scripts of edits and queries that run on the library and on the model alike.
//
// A step is data: which kind, and its arguments as plain numbers and texts. So a script can be printed, replayed and
// shortened. A kind knows how to choose arguments for the present design and how to apply them to the library and to
// the model. Both give an outcome, and the outcomes have to be equal. After every edit the driver compares all tables
// as well, field by field, so that an outcome holds only what the call itself gives back: its result, and the whole of
// each list handed in, what stood there before included.
//
// To plug in: write `std::vector<StepKind> MyEdits()`, one entry a member function, and add it to AllEdits() in
// NetworkAgainstModelTest.cpp; queries (sorts, say) are kinds of the same shape that change nothing, for AllQueries().
// An outcome may depend on nothing but the design and the arguments. A CInvalidArgException of the library is an
// outcome, too (the driver catches it and adds the text "raised"); a model function that has to raise throws `Raised`.
//
//     StepKind{"DeleteRouteObject", 2,
//              [](Choice& choice) { return Args{{choice.Route(), choice.Pick(2)}, {}}; },
//              [](OpenNetwork& library, const Args& args, Outcome& outcome) {
//                  outcome.Add(library.DeleteRouteObject(args.numbers[0], args.numbers[1] != 0));
//              },
//              [](Network& model, const Args& args, Outcome& outcome) {
//                  outcome.Add(DeleteRouteObject(model, args.numbers[0], args.numbers[1] != 0));
//              }}
#pragma once

#include "reference/Network.h"
#include "support/Store.h"

#include <functional>
#include <random>

namespace reference {

// Opens the protected members of the network.
class OpenNetwork : public support::OpenManager {
public:
    using CObjectManager::CheckDuplicateWebName;
    using CObjectManager::GetConnectRouteSortOrder;
    using CObjectManager::GetLastSpanFromRoute;
    using CObjectManager::ReverseSpanInRoute;
    using CObjectManager::SetUpperRouteObject;
};

struct Args {
    std::vector<int> numbers;
    std::vector<std::wstring> texts;
};

// Where the library raises CInvalidArgException.
struct Raised {};

// What a call gave back, as readable text. Equal when the texts are.
class Outcome {
public:
    void Add(bool result);
    void Add(int number);
    void Add(long number) { Add(static_cast<int>(number)); }
    void Add(unsigned long number) { Add(static_cast<int>(number)); }
    void Add(double number); // to twelve digits
    void Add(std::wstring_view text);
    void Add(const wchar_t* text) { Add(std::wstring_view(text)); }
    void Add(const CString& text) { Add(text.View()); }
    void Add(const Ids& ids);
    void Add(const CList<long, long>& ids);
    void Add(const CStringArray& texts);
    void Add(const std::vector<std::wstring>& texts);
    // A live object counts by its place in its table (two may have the same id), any other by its contents.
    void Add(const CObjectManager& library, const CPipeObject* object);
    void Add(const Network& model, Type type, const Record* record);
    template <class List> void AddObjects(const CObjectManager& library, const List& objects)
    {
        m_text += '[';
        for (const CPipeObject* const object : objects)
            Add(library, object);
        m_text += "] ";
    }
    void AddObjects(const Network& model, Type type, const Records& records);
    // Contents alone: for copies.
    void AddContents(const CPipeObject& object);
    void AddContents(const Record& record);

    bool operator==(const Outcome& other) const = default;
    const std::string& Text() const { return m_text; }

private:
    std::string m_text;
};

inline void ToList(const std::vector<int>& ids, CList<long, long>& list)
{
    for (const int id : ids)
        list.AddTail(id);
}

inline CString ToCString(const std::wstring& text)
{
    return CString(text.c_str());
}

inline support::Values ToValues(const Values& values)
{
    support::Values result;
    for (const auto& [key, value] : values)
        result.Add(CKeyValue(key.c_str(), value.c_str()));
    return result;
}

// The types of random records, beside nodes, spans and routes.
const std::vector<Type>& RecordTypes();
inline std::size_t LinkCount(Type type)
{
    return static_cast<std::size_t>(obmgr::RecordOf(type).links.count);
}

// Random arguments that fit the present design: mostly ids that are in use, sometimes not.
class Choice {
public:
    Choice(std::mt19937& random, const Network& network) : m_random(random), m_network(network) {}

    const Network& Design() const { return m_network; }
    int Pick(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); } // 0 ... count - 1
    bool OneIn(int count) { return Pick(count) == 0; }
    int Id(Type type);     // of the type; now and then 0, negative, of another type or of nothing
    int LiveId(Type type); // of the type, 0 when there is none
    int Route() { return Id(objectdata::Route); }
    int Span() { return Id(objectdata::Span); }
    int Node() { return Id(objectdata::Node); }
    int Web() { return Id(objectdata::Web); }
    // For candidate lists: often all ids of the type, else some, in any order, with repeated and unknown ones.
    Ids IdList(Type type);
    Ids RoutesOfWeb(int webId);  // the ids of a web's routes, now and then with a few gone or changed
    Ids Before(Type type);       // what a caller's list holds before the call: mostly nothing
    std::wstring Key(Type type); // one of the attributes that the network reads on the type
    std::wstring Value();        // mostly small numbers, so that ties are common; also bad ones and ""
    std::wstring Name();         // route numbers and names
    Type AnyType();              // mostly of the network itself
    // The type that a link of a record may name, one of them where there are several; NoOwner for a plain number.
    Type TargetOf(Type type, std::size_t link);
    int Link(Type type, std::size_t link); // a value for the link
    Values AllValues(Type type);           // most of the attributes that the network knows
    Values SomeValues(Type type);          // up to three pairs
    // Lists in Args: several lists in `numbers` are packed as count, ids, count, ids ...
    static void Pack(std::vector<int>& numbers, const Ids& ids);
    // Pairs go into `texts` as key, value, key, value ...
    static void Pack(std::vector<std::wstring>& texts, const Values& values);

private:
    std::mt19937& m_random;
    const Network& m_network;
};

// Takes the parts of `numbers` one by one: plain numbers and packed lists.
class Unpack {
public:
    explicit Unpack(const Args& args) : m_args(args) {}
    int Number() { return m_args.numbers.at(m_at++); }
    Ids List();
    std::wstring Text() { return m_args.texts.at(m_text++); }
    // All texts that are left.
    Values Pairs();

private:
    const Args& m_args;
    std::size_t m_at = 0;
    std::size_t m_text = 0;
};

struct StepKind {
    const char* name;
    int weight; // how often it is chosen, against the others
    std::function<Args(Choice&)> choose;
    std::function<void(OpenNetwork&, const Args&, Outcome&)> applyToLibrary;
    std::function<void(Network&, const Args&, Outcome&)> applyToModel;
    bool startsWithType = false; // the first number is a record type; for printing
};

} // namespace reference
