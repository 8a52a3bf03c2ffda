#include "Places.h"

#include "Objects.h"
#include "common/Text2Number.h"
#include "framework/Exception.h"

#include <cmath>
#include <utility>

#include <fmt/format.h>

namespace obmgr::tool {

namespace {

constexpr double kSameNumber = 1e-9;

struct PlacedType {
    OBJECTTYPE type;
    bool (CObjectManager::*place)(long webId, bool setLevel);
};

// Ground changes first: the levels of the others are measured from the ground.
constexpr PlacedType kPlacedTypes[] = {
    {objectdata::GlChange, &CObjectManager::update_GlChange},
    {objectdata::IntPos, &CObjectManager::update_IntPos},
    {objectdata::Lateral, &CObjectManager::update_Lateral},
    {objectdata::Vjoint, &CObjectManager::update_Vjoint},
};
// A crossing gets the dimensions of its section when its points are levelled.
constexpr OBJECTTYPE kChangedTypes[] = {objectdata::GlChange, objectdata::IntPos, objectdata::Inters,
                                        objectdata::Lateral, objectdata::Vjoint};

// The values from before, put back unless they are let go.
class KeptValues {
public:
    explicit KeptValues(const CObjectManager& manager)
    {
        for (const OBJECTTYPE type : kChangedTypes)
            manager.TableOf(type).ForEach(
                [&](CPipeObject& object) { m_kept.emplace_back(&object, object.GetAttributes()); });
    }
    KeptValues(const KeptValues&) = delete;
    KeptValues& operator=(const KeptValues&) = delete;
    ~KeptValues()
    {
        for (const auto& [object, attributes] : m_kept)
            if (!object->GetAttributes().SharesWith(attributes)) object->SetAttributes(attributes);
    }

    std::vector<Move> Moves() const
    {
        std::vector<Move> moves;
        for (const auto& [object, attributes] : m_kept)
            if (!object->GetAttributes().SharesWith(attributes)) AppendMoves(*object, attributes, moves);
        return moves;
    }
    void LetGo() { m_kept.clear(); }

private:
    static bool IsSame(std::string_view before, std::string_view after)
    {
        return before == after || (!before.empty() && std::abs(ToDouble(before) - ToDouble(after)) <= kSameNumber);
    }
    static void AppendMoves(const CPipeObject& object, const Attributes& before, std::vector<Move>& moves)
    {
        for (const auto& [key, after] : object.GetAttributes()) {
            const std::string_view value = before.Find(key);
            if (value.data() && IsSame(value, after)) continue;
            moves.push_back({object.GetObjectType(), object.GetId32(), NameOf(object), NameOfKey(key).text,
                             value.data() ? std::optional<std::string>(value) : std::nullopt, std::string(after)});
        }
    }

    std::vector<std::pair<CPipeObject*, Attributes>> m_kept;
};

bool place(CObjectManager& manager, const CWeb& web, const PlacedType& row)
{
    if (manager.GetRouteNumInWeb(web.GetId32()) == 0) return true;
    try {
        return (manager.*row.place)(web.GetId32(), true);
    } catch (const CInvalidArgException&) {
        return false;
    }
}

} // namespace

std::string Move::Shown() const
{
    return fmt::format("{}={} -> {}", key, before.value_or(""), after);
}

Placement PlaceRecords(CObjectManager& manager, const std::vector<CWeb*>& webs, Keep keep)
{
    KeptValues before(manager);
    Placement placement;
    for (const PlacedType& row : kPlacedTypes)
        for (const CWeb* const web : webs)
            if (!place(manager, *web, row)) placement.notPlaced.push_back({web, row.type});
    placement.moves = before.Moves();
    if (keep == Keep::Yes) before.LetGo();
    return placement;
}

} // namespace obmgr::tool
