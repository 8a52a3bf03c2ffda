// Keys that records of the type are not made with. Files may hold them, and they are kept; most often they are
// misspelt. What a type is made with is what the default attributes say; types that these do not tell of are not
// looked at.
#include "Objects.h"
#include "findings/Finders.h"
#include "store/ObDefManager.h"

#include <algorithm>
#include <map>

namespace obmgr::tool {

namespace {

constexpr std::string_view kSpanCoordinates[] = {"csx", "csy", "csz", "cex", "cey", "cez"};

// Map records number the keys of their points: "gmx1", "gmy1", "gmx2"...
bool isPointKey(std::string_view key)
{
    const std::size_t digits = key.find_first_of("0123456789");
    return digits != std::string_view::npos && digits > 0 && (key[digits - 1] == 'x' || key[digits - 1] == 'y') &&
           key.find_first_not_of("0123456789", digits) == std::string_view::npos;
}

bool isCoordinate(OBJECTTYPE type, std::string_view key)
{
    if (type == objectdata::Span)
        return std::find(std::begin(kSpanCoordinates), std::end(kSpanCoordinates), key) != std::end(kSpanCoordinates);
    const bool hasPoints = type == objectdata::Geometry || RecordOf(type).save == 0;
    return hasPoints && isPointKey(key);
}

struct Use {
    const CPipeObject* first;
    std::size_t count = 0;
};

} // namespace

void FindUnknownKeys(const FindContext& context, Findings& findings)
{
    for (const RecordInfo& record : Records()) {
        CMapStringToString defaults;
        if (!GetObDefManager()->GetDefValue(FromUtf8(record.tag), defaults)) continue;
        std::unordered_map<KeyId, bool> isKnown;
        std::map<KeyId, Use> unknown; // in the order in which the keys were first met
        context.manager.TableOf(record.type).ForEach([&](const CPipeObject& object) {
            if (!findings.scope.Contains(object)) return;
            for (const auto& [key, value] : object.GetAttributes()) {
                const auto [known, isNew] = isKnown.emplace(key, false);
                if (isNew) {
                    const std::string& name = NameOfKey(key).text;
                    CString ignored;
                    known->second = defaults.Lookup(FromUtf8(name), ignored) || isCoordinate(record.type, name);
                }
                if (!known->second) ++unknown.try_emplace(key, Use{&object}).first->second.count;
            }
        });
        for (const auto& [key, use] : unknown)
            findings.Add(FindingKind::UnknownKey, *use.first,
                         fmt::format("\"{}\", {} x {}", NameOfKey(key).text, use.count, record.tag));
    }
}

} // namespace obmgr::tool
