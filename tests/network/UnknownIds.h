// One row for every member of the network and every id that it takes: what the id should name, and a call that tells
// whether an id that names nothing is answered as it should be.
#pragma once

#include "network/RecordsOfNetwork.h"

#include <functional>

namespace unknown_ids {

using objectdata::OBJECTTYPE;
using support::Ids;

using Manager = support::OpenManager;
using IdList = CList<long, long>;
using IdMap = CMap<long, long&, CList<long, long>*, CList<long, long>*>;

// Valid ids for the other arguments of a call; in an empty design they are unknown, too.
struct Others {
    long web, route, span, node;
    bool exist;
};

struct Row {
    std::string name;
    OBJECTTYPE type; // what the id should name
    // Calls with the id; true when the call came back as it should for one that names nothing.
    std::function<bool(Manager&, const Others&, long id)> fails;
    bool zeroIsValid = false; // 0 has a meaning of its own
    bool mayChange = false;   // fails half-way by its nature, or trusts the id
};

inline void PrintTo(const Row& row, std::ostream* stream)
{
    *stream << row.name;
}

// ---- rows of like members ----

template <class List> Row lists(const char* name, OBJECTTYPE type, bool (CObjectManager::*member)(long, List&) const)
{
    return {name, type, [member](Manager& m, const Others&, long id) {
                List found;
                return !(m.*member)(id, found) && found.IsEmpty();
            }};
}
template <class List> Row fills(const char* name, OBJECTTYPE type, void (CObjectManager::*member)(long, List&) const)
{
    return {name, type, [member](Manager& m, const Others&, long id) {
                List found;
                (m.*member)(id, found);
                return found.IsEmpty();
            }};
}
template <class Array> Row counts(const char* name, OBJECTTYPE type, int (CObjectManager::*member)(long, Array&) const)
{
    return {name, type, [member](Manager& m, const Others&, long id) {
                Array found;
                return (m.*member)(id, found) == 0 && found.IsEmpty();
            }};
}
template <class Number> Row zero(const char* name, OBJECTTYPE type, Number (CObjectManager::*member)(long) const)
{
    return {name, type, [member](Manager& m, const Others&, long id) { return (m.*member)(id) == 0; }};
}
template <class Id> Row measures(const char* name, OBJECTTYPE type, bool (CObjectManager::*member)(Id, double&) const)
{
    return {name, type, [member](Manager& m, const Others&, long id) {
                double value = 0.0;
                return !(m.*member)(static_cast<Id>(id), value) && value == 0.0;
            }};
}
inline Row finds(const char* name, OBJECTTYPE type, bool (CObjectManager::*member)(long, long&) const)
{
    return {name, type, [member](Manager& m, const Others&, long id) {
                long found = -77;
                return !(m.*member)(id, found) && found == -77;
            }};
}
inline Row deletes(const char* name, OBJECTTYPE type, bool (CObjectManager::*member)(long))
{
    return {name, type, [member](Manager& m, const Others&, long id) { return !(m.*member)(id); }};
}
inline Row deletesWith(const char* name, OBJECTTYPE type, bool (CObjectManager::*member)(long, bool))
{
    return {name, type,
            [member](Manager& m, const Others&, long id) { return !(m.*member)(id, false) && !(m.*member)(id, true); }};
}
// A record without a match is no failure.
inline Row deletesNone(const char* name, OBJECTTYPE type, bool (CObjectManager::*member)(long))
{
    return {name, type, [member](Manager& m, const Others&, long id) { return (m.*member)(id); }};
}
// Sorts that keep every id, known or not.
inline Row sortsAll(const char* name, OBJECTTYPE type, void (CObjectManager::*member)(IdList&) const)
{
    return {name, type, [member](Manager& m, const Others&, long id) {
                Ids ids{id, id};
                (m.*member)(ids);
                return toVector(ids) == std::vector<long>{id, id};
            }};
}
// Sorts that drop unknown ids.
inline Row sortsKnown(const char* name, OBJECTTYPE type, bool (CObjectManager::*member)(IdList&) const)
{
    return {name, type, [member](Manager& m, const Others&, long id) {
                Ids ids{id, id};
                return (m.*member)(ids) && ids.IsEmpty();
            }};
}
template <class Result>
inline Row sortsRoutes(const char* name, Result (CObjectManager::*member)(const IdList&, IdList&) const)
{
    return {name, objectdata::Route, [member](Manager& m, const Others&, long id) {
                const Ids in{id};
                Ids out;
                if constexpr (std::is_same_v<Result, bool>) {
                    return !(m.*member)(in, out) && out.IsEmpty();
                } else {
                    (m.*member)(in, out);
                    return toVector(out) == std::vector<long>{id};
                }
            }};
}
inline Row zeroIsValid(Row row)
{
    row.zeroIsValid = true;
    return row;
}
inline Row mayChange(Row row)
{
    row.mayChange = true;
    return row;
}

using M = CObjectManager;

std::vector<Row> constructionRows();
std::vector<Row> spanRows();
std::vector<Row> webRows();
std::vector<Row> routeRows();
std::vector<Row> orderRows();
std::vector<Row> deletionRows();
std::vector<Row> copyRows();

} // namespace unknown_ids
