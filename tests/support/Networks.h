// Small sewer networks, written as text, and lists of their objects read back as text.
//
//     Network net("W: M = m-x-out; A>M = a-m");
//
// makes the web W with the routes M, which ends at a flow end, and A, which flows into M. A route's nodes stand from
// the top down, so M has the spans m-x and x-out. Nodes are made at first sight. Every object is called by its name
// here, a span by its two nodes.
#pragma once

#include "support/Store.h"

#include <map>
#include <memory>
#include <string_view>
#include <type_traits>

namespace support {

// An id list that is ready at once.
struct Ids : CList<long, long> {
    Ids() = default;
    Ids(std::initializer_list<long> ids) : Ids(std::vector<long>(ids)) {}
    explicit Ids(const std::vector<long>& ids)
    {
        for (const long id : ids)
            AddTail(id);
    }
};

using Spans = CTypedPtrList<CObList, CSpan*>;
using Routes = CTypedPtrList<CObList, CRoute*>;
using Nodes = CTypedPtrList<CObList, CNode*>;
using ConstSpans = CList<const CSpan*>;

// Any list or array of objects.
template <class List>
concept PointerList = std::is_pointer_v<typename List::value_type>;

// 0 for a null entry.
template <PointerList Objects> std::vector<long> idsOfObjects(const Objects& objects)
{
    std::vector<long> ids;
    for (const CPipeObject* object : objects)
        ids.push_back(object ? object->GetId32() : 0);
    return ids;
}

// A design that is written as text. Separators: ";" or a new line between routes, "," between chains of one route.
// Blanks do not count.
//     W: M = b-c, a-b        span b-c is made before a-b
//     W: R = a-b-c-a         a ring
//     W: A>B = a-b; B>A = b-a  a ring of routes: a connect route may be named before it is made
//     W: M                   a route without spans; named again later ("M = a-b") it gets them
// Webs get their name as "webname", routes as "routenum"; nothing else is set. Spans come without area records.
class Network {
public:
    Network() = default;
    explicit Network(std::string_view text) { Add(text); }

    void Add(std::string_view text);
    // One object each, made now; the name must be new, but a span may be made again (the first keeps the name).
    long AddWeb(const std::string& name, int disposalType = 0);
    long AddRoute(const std::string& name, long webId, long connectId);
    long AddNode(const std::string& name);
    long AddSpan(const std::string& upper, const std::string& lower, long routeId);

    // The id under a name. Raises std::out_of_range for a name that is not there.
    long operator[](const std::string& name) const { return m_ids.at(name); }
    // The ids of names with blanks between them.
    Ids List(std::string_view names) const;
    // Gives an object a name of its own, for readers.
    void Name(long id, const std::string& name);
    // Names the nodes, routes and webs that have no name yet, in table order: a copy after the "mark", "routenum" or
    // "webname" that it came with, a' for a second a; the others n1, n2, ..., R1, ..., W1, ...
    void NameNew();
    // Writes every node's name into its "mark".
    void MarkNodes();
    // An area record for every span without one.
    void AddAreas();

    CWeb& Web(const std::string& name) const { return *manager.GetWebObjectOriginal(m_ids.at(name)); }
    CRoute& Route(const std::string& name) const { return *manager.GetRouteObjectOriginal(m_ids.at(name)); }
    CSpan& Span(const std::string& name) const { return *manager.GetSpanObjectOriginal(m_ids.at(name)); }
    CNode& Node(const std::string& name) const { return *manager.GetNodeObjectOriginal(m_ids.at(name)); }

    // Sets `key` of named routes, spans, nodes or webs: net.Set(L"floworder", {{"A", L"2"}, {"B", L"1"}}).
    void Set(const wchar_t* key, std::initializer_list<std::pair<const char*, const wchar_t*>> valuesByName);
    // The values of `key` of named objects, with blanks between them; "-" where the key is not set.
    std::wstring Get(const wchar_t* key, std::string_view names) const;

    // The names with blanks between them; "#17" for an id without a name, "0" for none.
    std::string Names(const std::vector<long>& ids) const;
    std::string Names(const CList<long, long>& ids) const { return Names(toVector(ids)); }
    template <PointerList Objects> std::string Names(const Objects& objects) const
    {
        return Names(idsOfObjects(objects));
    }
    std::string NameOf(long id) const;
    // All webs and their routes as above, each with its spans in table order, then the spans without a route:
    //     W: M = m-x x-out; A>M = a-m | V: | 0 = b-c
    std::string Shape() const;
    // The nodes in table order.
    std::string AllNodes() const;
    // "upper-lower" of spans, as they run now.
    std::string Ends(std::string_view spans) const;
    // The names of the routes that routes flow into.
    std::string Connects(std::string_view routes) const;

    // What a call returns and the list that it leaves, as one text: "true: A B", "false:", "2: A B"; for a call
    // without a result just "A B". `before` names what the list holds before the call:
    //     net.After("X", [&](auto& out) { return net.manager.GetNextRouteIdAll(net["M"], out); })
    template <class Function> std::string After(std::string_view before, Function&& call) const
    {
        Ids list;
        Append(before, list);
        return Told(call, static_cast<CList<long, long>&>(list));
    }
    // The same for a list or array of live objects: net.AfterFor<Spans>(...).
    template <PointerList Objects, class Function> std::string AfterFor(std::string_view before, Function&& call) const
    {
        Objects objects;
        for (const long id : List(before))
            Append(objects, id);
        return Told(call, objects);
    }

private:
    DefaultsForAllTags m_defaults;

public:
    OpenManager manager;

private:
    void Append(std::string_view names, CList<long, long>& list) const;
    void NameNew(const CPipeObject& object, const wchar_t* key, const char* prefix);
    CPipeObject* Find(long id) const;
    template <class Objects> void Append(Objects& objects, long id) const
    {
        using Element = std::remove_cv_t<std::remove_pointer_t<typename Objects::value_type>>;
        auto* const object = static_cast<Element*>(Find(id));
        if constexpr (requires { objects.AddTail(object); })
            objects.AddTail(object);
        else
            objects.Add(object);
    }
    template <class Function, class Container> std::string Told(Function&& call, Container& list) const
    {
        using Result = std::invoke_result_t<Function, Container&>;
        std::string text;
        if constexpr (std::is_void_v<Result>) {
            call(list);
            return Names(list);
        } else {
            const Result result = call(list);
            if constexpr (std::is_same_v<Result, bool>)
                text = result ? "true:" : "false:";
            else
                text = std::to_string(result) + ":";
            const std::string names = Names(list);
            return names.empty() ? text : text + " " + names;
        }
    }

    std::map<std::string, long> m_ids;
    std::map<long, std::string> m_names;
};

} // namespace support
