// Objects as a person names them.
#pragma once

#include "Output.h"
#include "objects/PipeObject.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class CObjectManager;
class CWeb;

namespace obmgr::tool {

// "Span", "スパン": the plain name of the type.
std::string PlainName(OBJECTTYPE type);
// The name that people know the object by, empty when its type has none.
std::string NameOf(const CPipeObject& object);
// The value of the key, empty when it is absent.
std::string ValueOf(const CPipeObject& object, std::string_view key);
// The word for a disposal type; the number when there is no such type.
std::string DisposalWord(int disposalType);

// The id that the text is; nothing when it is no whole number.
std::optional<long> IdFromText(std::string_view text);
// Every object with the id, table by table. Ids are unique in sound files only.
std::vector<const CPipeObject*> FindObjects(const CObjectManager& manager, long id);
// The webs with the name; when there is none the web whose id the text is.
std::vector<CWeb*> FindWebs(const CObjectManager& manager, std::string_view nameOrId);
// What to tell of a web that FindWebs does not find: with the names that are much like it, or how to see all.
std::string UnknownWebMessage(const CObjectManager& manager, const std::string& nameOrId, const std::string& file);
// The object that a link field of `from` leads to, or null.
const CPipeObject* TargetOf(const CObjectManager& manager, const CPipeObject& from, int link);
// The link fields that name `object`, table by table.
struct Reference {
    const CPipeObject* from;
    std::string_view field;
};
std::vector<Reference> ReferencesTo(const CObjectManager& manager, const CPipeObject& object);

// {"tag", "id", "name"}
Json Brief(const CPipeObject& object);
// "span 12 (No. 3)"
std::string BriefText(const CPipeObject& object);

// The type with the tag, whatever its case; null when there is none.
const RecordInfo* TypeByTag(std::string_view tag);
// The names out of `names` that are much like `name`, the nearest first, three at most.
std::vector<std::string> NearNames(std::string_view name, const std::vector<std::string>& names);

} // namespace obmgr::tool
