// Sections that are named but not there, and levels of pipes that stick out of the ground.
#include "Objects.h"
#include "common/Text2Number.h"
#include "findings/Finders.h"
#include "store/SectionKinds.h"

#include <optional>

namespace obmgr::tool {

namespace {

constexpr double kLevelTolerance = 1e-5; // metres, as in all comparisons of levels

struct SectionNameKey {
    OBJECTTYPE type;
    std::string_view key;
};

constexpr SectionNameKey kSectionNameKeys[] = {
    {objectdata::Span, "spsecrecname"},   {objectdata::Span, "spsecrecnamesub"}, {objectdata::Lateral, "lasecrecname"},
    {objectdata::Vjoint, "vjsecrecname"}, {objectdata::AreaInq, "arsecrecname"}, {objectdata::AreaOutq, "aosecrec"},
    {objectdata::FixInq, "fxsecrecname"}, {objectdata::Outq, "oqsecrecname"},
};

constexpr bool isClosed(OBJECTTYPE type)
{
    return type != objectdata::Obox && type != objectdata::Ubox;
}

// The sections by name; of several of one name the first in look-up order counts.
class Sections {
public:
    explicit Sections(const CObjectManager& manager)
    {
        for (const SectionKind& kind : kSectionKinds) {
            const std::string name = ToUtf8(kind.nameKey);
            const std::string height = ToUtf8(kind.height);
            manager.TableOf(kind.type).ForEach([&](const CPipeObject& section) {
                m_heights.emplace(ValueOf(section, name),
                                  isClosed(kind.type) ? ToDouble(ValueOf(section, height)) : 0.0);
            });
        }
    }
    bool Has(const std::string& name) const { return m_heights.contains(name); }
    // From the invert to the crown, metres; 0 for open sections, which have none, and unknown ones.
    double HeightOf(const std::string& name) const
    {
        const auto found = m_heights.find(name);
        return found == m_heights.end() ? 0.0 : found->second;
    }

private:
    std::unordered_map<std::string, double> m_heights;
};

void findSectionName(const Sections& sections, const CPipeObject& object, std::string_view key, Findings& findings)
{
    const std::string name = ValueOf(object, key);
    if (!name.empty() && !sections.Has(name)) findings.Add(FindingKind::SectionUnknown, object, Quoted(key, name));
}

// A level of 0 stands for one that was not entered: it is what new records have.
std::optional<double> level(const CPipeObject* object, std::string_view key)
{
    const double value = object ? ToDouble(ValueOf(*object, key)) : 0.0;
    return value == 0.0 ? std::nullopt : std::optional(value);
}

std::optional<double> groundBelow(const FindContext& context, const CSpan& span)
{
    if (const CSpan* const next = context.net.From(LowerNode(span)).first) return level(next, "newgl");
    return level(context.manager.GetNodeDb().Find(LowerNode(span)), "ndnewgl");
}

struct End {
    std::string_view key;
    std::optional<double> invert;
    std::optional<double> ground;

    bool IsAbove(double height) const { return invert && ground && *invert + height > *ground + kLevelTolerance; }
    std::string Detail(double height) const
    {
        const std::string crown = height > 0.0 ? fmt::format(" + {:.3f}", height) : std::string();
        return fmt::format("{}={:.3f}{} > {:.3f}", key, *invert, crown, *ground);
    }
};

} // namespace

void FindUnknownSections(const FindContext& context, Findings& findings)
{
    const Sections sections(context.manager);
    for (const SectionNameKey& row : kSectionNameKeys)
        context.manager.TableOf(row.type).ForEach(
            [&](const CPipeObject& object) { findSectionName(sections, object, row.key, findings); });
    for (const CInters* const crossing : context.manager.GetIntersDb())
        if (ToLong(ValueOf(*crossing, "shape")) == 0) findSectionName(sections, *crossing, "inwidth", findings);
}

void FindInLevels(const FindContext& context, Findings& findings)
{
    const Sections sections(context.manager);
    for (const CSpan* const span : context.manager.GetSpanDb()) {
        const End ends[] = {{"uppercentinv", level(span, "uppercentinv"), level(span, "newgl")},
                            {"lowercentinv", level(span, "lowercentinv"), groundBelow(context, *span)}};
        const auto tell = [&](FindingKind kind, double height) {
            for (const End& end : ends)
                if (end.IsAbove(height)) {
                    findings.Add(kind, *span, end.Detail(height));
                    return true;
                }
            return false;
        };
        if (!tell(FindingKind::InvertAboveGround, 0.0))
            tell(FindingKind::CrownAboveGround, sections.HeightOf(ValueOf(*span, "spsecrecname")));
    }
}

} // namespace obmgr::tool
