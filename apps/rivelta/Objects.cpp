#include "Objects.h"

#include "Texts.h"
#include "common/Text2Number.h"
#include "resources/Resources.h"
#include "store/ObjectManager.h"

#include <algorithm>
#include <cstddef>

namespace obmgr::tool {

namespace {

// Where a type keeps the name that people know its objects by; of several keys the first that is not empty counts.
struct NameKey {
    OBJECTTYPE type;
    std::string_view key;
};

constexpr NameKey kNameKeys[] = {
    {objectdata::Project, "prjname"},
    {objectdata::Web, "webname"},
    {objectdata::Route, "routenum"},
    {objectdata::Span, "spname"},
    {objectdata::Span, "spno"},
    {objectdata::Node, "mholeno"},
    {objectdata::ManHole, "mhname"},
    {objectdata::ManHole, "mhcode"},
    {objectdata::Section, "sename"},
    {objectdata::Section, "sekeyword"},
    {objectdata::Pipe, "pename"},
    {objectdata::Obox, "obname"},
    {objectdata::Cbox, "cbname"},
    {objectdata::Ubox, "ubname"},
    {objectdata::Egg, "egname"},
    {objectdata::SectGroup, "sgname"},
    {objectdata::SectGroupRec, "srsecgroupname"},
    {objectdata::RaitoSet, "rtscomment"},
    {objectdata::RaitoSet, "rtnumber"},
    {objectdata::Svperarea, "saname"},
    {objectdata::Svperpopula, "spname"},
    {objectdata::Svyokohama, "syname"},
    {objectdata::Qrrational, "qrname"},
    {objectdata::Qrexperiment, "qename"},
    {objectdata::Qrmulti, "qmname"},
    {objectdata::Qrmultidat, "qmdqrmultiname"},
    {objectdata::Qrline, "qlname"},
    {objectdata::Qrriver, "qvname"},
    {objectdata::Areasupve, "avqrname"},
    {objectdata::Qrrivertime, "qtqrname"},
    {objectdata::Combi, "csname"},
    {objectdata::Rural, "rrname"},
    {objectdata::Execution, "ecnum"},
    {objectdata::Retain, "ernum"},
    {objectdata::Timber, "tbnum"},
    {objectdata::Foundation, "fdnum"},
    {objectdata::Profilearang, "parangname"},
    {objectdata::Drawformdat, "dformname"},
    {objectdata::AttBox, "abname"},
    {objectdata::AttBox, "abcode2"},
    {objectdata::AttBoxvu, "abnamevu"},
    {objectdata::AttBoxvu, "abcodevu2"},
    {objectdata::Nodeunit, "nuname"},
    {objectdata::Launit, "lunum"},
    {objectdata::Launit, "lucode"},
    {objectdata::Vacunit, "vunum"},
    {objectdata::Vacunit, "vucode"},
    {objectdata::Secvalve, "svname"},
    {objectdata::Ohaul, "ohname"},
    {objectdata::PpMark, "pmkcode"},
};

std::size_t editDistance(std::wstring_view a, std::wstring_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t substituted = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, substituted});
        }
    }
    return row.back();
}

std::string lowerCase(std::string_view text)
{
    std::string result(text);
    for (char& c : result)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return result;
}

} // namespace

std::string PlainName(OBJECTTYPE type)
{
    return ToUtf8(ResourceText(IDS_NAME_PROJECT + static_cast<unsigned>(type)).View());
}

std::string ValueOf(const CPipeObject& object, std::string_view key)
{
    const auto id = LookUpKey(key);
    return id ? std::string(object.GetAttributes().Find(*id)) : std::string();
}

std::string NameOf(const CPipeObject& object)
{
    for (const NameKey& row : kNameKeys)
        if (row.type == object.GetObjectType())
            if (std::string name = ValueOf(object, row.key); !name.empty()) return name;
    return {};
}

std::string DisposalWord(int disposalType)
{
    if (disposalType < 0 || disposalType > static_cast<int>(IDS_DISPOSAL_5 - IDS_DISPOSAL_0))
        return std::to_string(disposalType);
    return ToUtf8(ResourceText(IDS_DISPOSAL_0 + static_cast<unsigned>(disposalType)).View());
}

std::optional<long> IdFromText(std::string_view text)
{
    const CString wide = FromUtf8(text);
    if (!IsIntegerText(wide.View())) return std::nullopt;
    return ToLong(wide.View());
}

std::vector<const CPipeObject*> FindObjects(const CObjectManager& manager, long id)
{
    std::vector<const CPipeObject*> found;
    for (const OBJECTTYPE type : CanonicalOrder())
        if (const CPipeObject* const object = manager.TableOf(type).Find(id)) found.push_back(object);
    return found;
}

std::vector<CWeb*> FindWebs(const CObjectManager& manager, std::string_view nameOrId)
{
    std::vector<CWeb*> found;
    for (CWeb* const web : manager.GetWebDb())
        if (NameOf(*web) == nameOrId) found.push_back(web);
    if (!found.empty()) return found;
    const auto id = IdFromText(nameOrId);
    if (CWeb* const web = id ? manager.GetWebDb().Find(*id) : nullptr) found.push_back(web);
    return found;
}

std::string UnknownWebMessage(const CObjectManager& manager, const std::string& nameOrId, const std::string& file)
{
    std::vector<std::string> names;
    for (const CWeb* const web : manager.GetWebDb())
        names.push_back(NameOf(*web));
    const auto near = NearNames(nameOrId, names);
    return Say(Text::UnknownWeb, nameOrId) + "\n" +
           (near.empty() ? Say(Text::AdviceWebs, file)
                         : Say(Text::UsageNear, fmt::format("{}", fmt::join(near, ", "))));
}

const CPipeObject* TargetOf(const CObjectManager& manager, const CPipeObject& from, int link)
{
    const auto index = static_cast<std::size_t>(link);
    const LinkField& field = RecordOf(from.GetObjectType()).links.fields[index];
    const std::int32_t id = from.Links()[index];
    if (!field.isReference || id == 0) return nullptr;
    if (field.target >= 0) return manager.TableOf(field.target).Find(id);
    const auto found = FindObjects(manager, id);
    return found.empty() ? nullptr : found.front();
}

std::vector<Reference> ReferencesTo(const CObjectManager& manager, const CPipeObject& object)
{
    std::vector<Reference> references;
    if (object.GetId32() == 0) return references;
    for (const OBJECTTYPE type : CanonicalOrder()) {
        const LinkFields& links = RecordOf(type).links;
        for (int link = 0; link < links.count; ++link) {
            const LinkField& field = links.fields[static_cast<std::size_t>(link)];
            if (!field.isReference || (field.target >= 0 && field.target != object.GetObjectType())) continue;
            manager.TableOf(type).VisitByLink(link, object.GetId32(), [&](CPipeObject& from) {
                references.push_back({&from, field.name});
                return true;
            });
        }
    }
    return references;
}

Json Brief(const CPipeObject& object)
{
    return {{"tag", RecordOf(object.GetObjectType()).tag}, {"id", object.GetId32()}, {"name", NameOf(object)}};
}

std::string BriefText(const CPipeObject& object)
{
    std::string text = std::string(RecordOf(object.GetObjectType()).tag) + " " + std::to_string(object.GetId32());
    if (const std::string name = NameOf(object); !name.empty()) text += " \"" + name + "\"";
    return text;
}

const RecordInfo* TypeByTag(std::string_view tag)
{
    return FindByTag(lowerCase(tag));
}

std::vector<std::string> NearNames(std::string_view name, const std::vector<std::string>& names)
{
    constexpr std::size_t kMostNames = 3;
    constexpr std::size_t kFarthest = 2;
    const std::string wanted = lowerCase(name).substr(0, 64);
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& candidate : names) {
        const std::string lower = lowerCase(candidate);
        const bool isPart = wanted.size() >= 3 &&
                            (lower.find(wanted) != std::string::npos || (lower.size() >= 3 && wanted.find(lower) == 0));
        const CString letters = FromUtf8(lower);
        const std::size_t distance = editDistance(FromUtf8(wanted).View(), letters.View());
        if (distance <= kFarthest && distance < letters.View().size())
            near.emplace_back(distance, candidate);
        else if (isPart)
            near.emplace_back(kFarthest + distance, candidate);
    }
    std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> result;
    for (std::size_t i = 0; i < near.size() && i < kMostNames; ++i)
        result.push_back(near[i].second);
    return result;
}

} // namespace obmgr::tool
