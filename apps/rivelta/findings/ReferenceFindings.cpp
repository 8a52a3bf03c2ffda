// References that lead nowhere or to the wrong thing: link fields, keys that hold ids, and the ids themselves.
#include "Objects.h"
#include "common/Text2Number.h"
#include "findings/Finders.h"

#include <algorithm>

namespace obmgr::tool {

namespace {

using namespace objectdata;

constexpr std::string_view kConnectField = "connectid"; // 0 is the flow end

class TypesById {
public:
    explicit TypesById(const CObjectManager& manager)
    {
        for (const OBJECTTYPE type : CanonicalOrder())
            manager.TableOf(type).ForEach(
                [&](const CPipeObject& object) { m_first.emplace(object.GetId32(), &object); });
    }
    // The first object with the id, or null.
    const CPipeObject* Find(std::int32_t id) const
    {
        const auto found = m_first.find(id);
        return found == m_first.end() ? nullptr : found->second;
    }

private:
    std::unordered_map<std::int32_t, const CPipeObject*> m_first;
};

std::string tagAndId(const CPipeObject& object)
{
    return fmt::format("{} {}", RecordOf(object.GetObjectType()).tag, object.GetId32());
}

void findInLink(const FindContext& context, const TypesById& all, const CPipeObject& object, std::size_t link,
                Findings& findings)
{
    const LinkField& field = RecordOf(object.GetObjectType()).links.fields[link];
    const std::int32_t id = object.Links()[link];
    const std::string detail = fmt::format("{}={}", field.name, id);
    if (id == 0) {
        if (field.name != kConnectField) findings.Add(FindingKind::LinkEmpty, object, detail);
    } else if (field.target >= 0 && context.manager.TableOf(field.target).Find(id)) {
        return;
    } else if (const CPipeObject* const other = all.Find(id); !other) {
        findings.Add(FindingKind::LinkDangles, object, detail);
    } else if (field.target >= 0) {
        findings.Add(FindingKind::LinkWrongType, object, fmt::format("{}: {}", detail, tagAndId(*other)));
    }
}

void findInKey(const FindContext& context, const TypesById& all, const CPipeObject& object, const ReferenceKey& row,
               std::string_view value, Findings& findings)
{
    if (value.empty() || value == "0") return;
    const std::string detail = Quoted(row.key, value);
    const Repair repair = row.isPlacement ? Repair::Placement : Repair::None;
    const std::optional<long> id = IdFromText(value);
    const CPipeObject* const other = id ? all.Find(static_cast<std::int32_t>(*id)) : nullptr;
    if (!other)
        findings.Add(FindingKind::KeyDangles, object, detail, repair);
    else if (std::none_of(row.targets.begin(), row.targets.end(),
                          [&](OBJECTTYPE type) { return context.manager.TableOf(type).Find(*id) != nullptr; }))
        findings.Add(FindingKind::KeyWrongType, object, fmt::format("{}: {}", detail, tagAndId(*other)), repair);
}

} // namespace

const std::vector<ReferenceKey>& ReferenceKeys()
{
    static const std::vector<ReferenceKey> rows = {
        {Project, "activweb", {Web}},
        {Web, "activweb", {Web}},
        {Web, "webcurrentrouteid", {Route}},
        {Node, "divownerid", {Node}},
        {Node, "manholecapid", {Manholecapcode}},
        {AreaInq, "arspanid", {Span}},
        {AreaOutq, "aospanid", {Span}},
        {FixInq, "fxspanid", {Span}},
        {IcpInq, "icinnodeid", {Node}},
        {MountInq, "mtspanid", {Span}},
        {Outq, "oqspanid", {Span}},
        {Inters, "itsecrecid", {Pipe, Obox, Cbox, Ubox, Egg}},
        {IntPos, "ipspanid", {Span}, true},
        {GlChange, "glspanid", {Span}, true},
        {GlChange, "glglid", {GlChange}},
        {Lateral, "laspanid", {Span}, true},
        {Lateral, "launitid", {Launit}},
        {Vjoint, "vjspid", {Span}, true},
        {Vjoint, "vjinletid", {Vacunit}},
        {Nodeunit, "nuownspid", {Span}},
        {Secvalve, "svspid", {Span}},
        {Ohaul, "ohspid", {Span}},
        {Execdivide, "execwebid", {Web}},
        {Execdivide, "execrouteid", {Route}},
        {Execdivide, "execaspid", {Aspcode}},
        {Execdivide, "execroadid", {Roadcode}},
        {Execdivide, "execspanid", {Span}},
        {Execdivide, "execuppernodeid", {Node}},
        {Execdivide, "execlowernodeid", {Node}},
        {Lcarry, "lcrywebid", {Web}},
        {Lcarry, "lcryuprouteid", {Route}},
        {Lcarry, "lcrylorouteid", {Route}},
        {Lcarry, "lcrymidrouteid", {Route}},
        {Profilearea, "pareawebid", {Web}},
        {Profilearea, "pareastrouteid", {Route}},
        {Profilearea, "pareaendrouteid", {Route}},
        {Profilelayout, "ploutstspid", {Span}},
        {Profilelayout, "ploutendspid", {Span}},
        {Sheetarea, "sareawebid", {Web}},
        {Sheetarea, "sareastrouteid", {Route}},
        {Sheetarea, "sareaendrouteid", {Route}},
        {Spdxfin, "sdispanid", {Span}},
        {Drawbelttx, "dbtspanid", {Span}},
    };
    return rows;
}

void FindInLinks(const FindContext& context, Findings& findings)
{
    const TypesById all(context.manager);
    for (const OBJECTTYPE type : CanonicalOrder()) {
        const LinkFields& links = RecordOf(type).links;
        context.manager.TableOf(type).ForEach([&](const CPipeObject& object) {
            if (object.GetId32() <= 0)
                findings.Add(FindingKind::IdNotItsOwn, object, {});
            else if (const CPipeObject* const other = all.Find(object.GetId32()); other != &object)
                findings.Add(FindingKind::IdNotItsOwn, object, tagAndId(*other));
            for (std::size_t link = 0; link < static_cast<std::size_t>(links.count); ++link)
                if (links.fields[link].isReference) findInLink(context, all, object, link, findings);
        });
    }
}

void FindInReferenceKeys(const FindContext& context, Findings& findings)
{
    const TypesById all(context.manager);
    for (const ReferenceKey& row : ReferenceKeys())
        if (const auto key = LookUpKey(row.key))
            context.manager.TableOf(row.type).ForEach([&](const CPipeObject& object) {
                findInKey(context, all, object, row, object.GetAttributes().Find(*key), findings);
            });
}

} // namespace obmgr::tool
