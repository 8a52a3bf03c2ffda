// The town on paper, before any record exists: where streets run, where the pipes lie in them and how deep.
// The ground is a valley: it rises to the north, away from the works and the river, and to both sides of the main
// street. Every net is a tree that falls with it.
#pragma once

#include "Sections.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>
#include <vector>

namespace town {

struct Node {
    double x;
    double y;
    double ground;
    double oldGround;
    double bottom; // the lowest invert
    int web;
    long id = 0;
};

struct Span {
    int upper; // nodes
    int lower;
    int route;
    int number; // in its route, from 1 at the top
    double length;
    double upperInvert = 0;
    double lowerInvert = 0;
    int section = 0;
    double velocity = 0; // when full, m/s
    double capacity = 0; // m3/s
    double flow = 0;     // what is to be carried
    long id = 0;
};

struct Route {
    int web;
    int joins;              // the route that it flows into at that one's top, -1 at the end of the net
    int number;             // in its web
    int flowOrder;          // among the routes that join the same one
    bool isMain;            // part of the main line
    int spansAbove;         // with its own
    std::vector<int> spans; // from the top down
    long id = 0;
};

struct Web {
    int disposalType;
    const wchar_t* name;
    const wchar_t* end; // where the water goes
    const wchar_t* prefix;
    std::vector<int> routes;
    int endNode;
    long id = 0;
};

struct Plan {
    std::vector<Web> webs;
    std::vector<Route> routes;
    std::vector<Span> spans;
    std::vector<Node> nodes;

    const Span& TopSpan(const Route& route) const { return spans[static_cast<std::size_t>(route.spans.front())]; }
    const Span& LastSpan(const Route& route) const { return spans[static_cast<std::size_t>(route.spans.back())]; }
    const Node& Upper(const Span& span) const { return nodes[static_cast<std::size_t>(span.upper)]; }
    const Node& Lower(const Span& span) const { return nodes[static_cast<std::size_t>(span.lower)]; }
    const Route& RouteOf(const Span& span) const { return routes[static_cast<std::size_t>(span.route)]; }
    const Web& WebOf(const Route& route) const { return webs[static_cast<std::size_t>(route.web)]; }
    double Length(const Route& route) const
    {
        double length = 0;
        for (const int span : route.spans)
            length += spans[static_cast<std::size_t>(span)].length;
        return length;
    }
};

// Levels stand to the millimetre.
inline double ToMillimetre(double metres)
{
    return std::round(metres * 1000) / 1000;
}

// A street with a pipe, drawn against the flow.
struct Street {
    int joins;   // the street at whose upper end it starts (number in its net), 0 at the flow end
    int heading; // degrees from east, against the clock
    int spans;
};

inline constexpr int kNorth = 90;
inline constexpr int kEast = 0;
inline constexpr int kWest = 180;

// A street stands after the one that it joins.
inline constexpr Street kSanitaryStreets[] = {
    {0, kNorth, 8}, {1, kNorth, 6}, {1, kEast, 7},  {1, kWest, 7},   {3, kEast, 6},  {3, kNorth, 4},
    {4, kWest, 6},  {4, kNorth, 4}, {2, kNorth, 7}, {2, kEast, 8},   {2, kWest, 8},  {9, kNorth, 6},
    {9, kEast, 7},  {9, kWest, 7},  {10, kEast, 6}, {10, kNorth, 5}, {14, kWest, 6}, {14, kNorth, 6},
};
inline constexpr Street kStormStreets[] = {
    {0, kNorth, 6}, {1, kNorth, 6}, {1, kEast, 6}, {1, kWest, 5},  {2, kNorth, 6}, {2, kEast, 7}, {2, kWest, 7},
    {5, kNorth, 7}, {5, kEast, 6},  {5, kWest, 6}, {7, kNorth, 5}, {7, kWest, 5},  {6, kEast, 6}, {6, kNorth, 7},
};
inline constexpr Street kVacuumStreets[] = {
    {0, kWest, 6},  {1, kWest, 7}, {1, kNorth, 6}, {2, kWest, 7},
    {2, kNorth, 6}, {4, kWest, 6}, {4, kNorth, 7}, {3, kNorth, 6},
};

class Surveyor {
public:
    template <std::size_t N>
    void AddNet(const Web& web, const Street (&streets)[N], double endX, double endY, double spanLength)
    {
        m_plan.webs.push_back(web);
        m_firstRoute = m_plan.routes.size();
        m_spanLength = spanLength;
        const int end = AddNode(endX, endY);
        m_plan.webs.back().endNode = end;
        for (const Street& street : streets)
            AddRoute(street, end);
        CountSpansAbove();
        LayPipes();
    }

    Plan Take() { return std::move(m_plan); }

private:
    int AddNode(double x, double y)
    {
        const std::size_t index = m_plan.nodes.size();
        const double ground = ToMillimetre(12.5 + 0.0045 * y + 0.002 * std::abs(x - 4));
        const double oldGround = ToMillimetre(ground - 0.02 * static_cast<double>(index % 4));
        m_plan.nodes.push_back(
            {ToMillimetre(x), ToMillimetre(y), ground, oldGround, ground, static_cast<int>(m_plan.webs.size()) - 1});
        return static_cast<int>(index);
    }

    void AddRoute(const Street& street, int end)
    {
        std::vector<Route>& routes = m_plan.routes;
        const int web = static_cast<int>(m_plan.webs.size()) - 1;
        const int index = static_cast<int>(routes.size());
        const int joins = street.joins ? static_cast<int>(m_firstRoute) + street.joins - 1 : -1;
        const bool goesOn =
            joins < 0 || (At(joins).isMain && m_headings[static_cast<std::size_t>(joins)] == street.heading);
        routes.push_back({web, joins, index - static_cast<int>(m_firstRoute) + 1, 1, goesOn, street.spans, {}});
        m_headings.push_back(street.heading);
        m_plan.webs.back().routes.push_back(index);

        int below = joins < 0 ? end : m_plan.TopSpan(At(joins)).upper;
        for (int number = street.spans; number >= 1; --number) {
            // Streets are never quite straight, and manholes never quite a full length apart.
            const double bend = (number * 7 + index * 3) % 5 - 2;
            const double heading = (street.heading + bend) * 3.14159265358979323846 / 180;
            const double length = m_spanLength - (number * 3 + index) % 4 - (number * 37 + index * 11) % 85 / 100.0;
            const Node& low = m_plan.nodes[static_cast<std::size_t>(below)];
            const int above = AddNode(low.x + length * std::cos(heading), low.y + length * std::sin(heading));
            const Node& from = m_plan.nodes[static_cast<std::size_t>(above)];
            const Node& to = m_plan.nodes[static_cast<std::size_t>(below)];
            const double taped = std::round(std::hypot(from.x - to.x, from.y - to.y) * 100) / 100;
            Route& route = routes.back();
            route.spans.insert(route.spans.begin(), static_cast<int>(m_plan.spans.size()));
            m_plan.spans.push_back({above, below, index, number, taped});
            below = above;
        }
    }

    // Also tells the flow order: 1 for a route that joins alone, else from 2 on.
    void CountSpansAbove()
    {
        std::vector<int> joining(m_plan.routes.size());
        for (std::size_t i = m_firstRoute; i < m_plan.routes.size(); ++i)
            if (Route& route = m_plan.routes[i]; route.joins >= 0)
                route.flowOrder = ++joining[static_cast<std::size_t>(route.joins)] + 1;
        for (std::size_t i = m_plan.routes.size(); i-- > m_firstRoute;) {
            Route& route = m_plan.routes[i];
            if (route.joins < 0) continue;
            if (joining[static_cast<std::size_t>(route.joins)] == 1) route.flowOrder = 1;
            At(route.joins).spansAbove += route.spansAbove;
        }
    }

    // From the tops down: a street stands after the one that it joins, so backwards is downwards.
    void LayPipes()
    {
        for (std::size_t i = m_plan.routes.size(); i-- > m_firstRoute;) {
            const Route& route = m_plan.routes[i];
            const int section = SectionOf(route);
            for (const int s : route.spans) {
                Span& span = m_plan.spans[static_cast<std::size_t>(s)];
                span.section = section;
                Lay(span, kSections[section]);
                Calculate(span, kSections[section],
                          route.spansAbove - static_cast<int>(route.spans.size()) + span.number);
            }
        }
    }

    // Manning's formula for the full section, and a rough flow that grows with the number of spans.
    void Calculate(Span& span, const Section& section, int spansAbove)
    {
        constexpr double kRoughness = 0.013;
        constexpr double kPi = 3.14159265358979323846;
        const bool isRound = section.shape == Shape::Pipe || section.shape == Shape::Egg;
        const bool isClosed = isRound || section.shape == Shape::Box;
        const double area = isRound ? kPi / 4 * section.width * section.height
                                    : (section.width + section.topWidth) / 2 * section.height;
        const double wetted = isRound ? kPi * (section.width + section.height) / 2
                                      : section.width + 2 * section.height + (isClosed ? section.topWidth : 0);
        const double slope = (span.upperInvert - span.lowerInvert) / span.length;
        const double velocity = std::pow(area / wetted, 2.0 / 3) * std::sqrt(slope) / kRoughness;
        const int disposalType = m_plan.webs.back().disposalType;
        const double unitFlow = disposalType == 0 ? 0.0003 : disposalType == 2 ? 0.016 : 0.0001; // m3/s a span
        span.velocity = std::round(velocity * 1000) / 1000;
        span.capacity = std::round(velocity * area * 10000) / 10000;
        span.flow = std::round(unitFlow * spansAbove * 10000) / 10000;
    }

    void Lay(Span& span, const Section& section)
    {
        constexpr double kStepInManhole = 0.02;
        Node& upper = m_plan.nodes[static_cast<std::size_t>(span.upper)];
        Node& lower = m_plan.nodes[static_cast<std::size_t>(span.lower)];
        const bool isTop = upper.bottom == upper.ground;
        const double depth = LeastDepth(section);
        const double arriving = isTop ? upper.ground : upper.bottom - kStepInManhole;
        span.upperInvert = ToMillimetre(std::min(upper.ground - depth, arriving));
        const double fall = span.length * section.leastSlope / 1000;
        span.lowerInvert = ToMillimetre(std::min(lower.ground - depth, span.upperInvert - fall));
        upper.bottom = std::min(upper.bottom, span.upperInvert);
        lower.bottom = std::min(lower.bottom, span.lowerInvert);
    }

    int SectionOf(const Route& route) const
    {
        struct Choice {
            int spansAbove; // up to so many
            const wchar_t* name;
        };
        static constexpr Choice kSanitary[] = {{15, L"VUφ200"}, {45, L"VUφ250"}, {90, L"HPφ300"}, {999, L"HPφ350"}};
        static constexpr Choice kStorm[] = {{5, L"U型300×300"},  {6, L"U型450×450"},   {13, L"HPφ500"},
                                            {19, L"HPφ600"},     {24, L"卵形600×900"}, {30, L"HPφ800"},
                                            {70, L"□1000×1000"}, {80, L"□1500×1200"},  {999, L"開渠1200/2000×2000"}};
        static constexpr Choice kVacuum[] = {{8, L"PEφ75"}, {30, L"PEφ100"}, {999, L"PEφ150"}};
        const int disposalType = m_plan.WebOf(route).disposalType;
        const Choice* choice = disposalType == 0 ? kSanitary : disposalType == 2 ? kStorm : kVacuum;
        while (route.spansAbove > choice->spansAbove)
            ++choice;
        int section = 0;
        while (kSections[section].name != std::wstring_view(choice->name))
            ++section;
        return section;
    }

    Route& At(int route) { return m_plan.routes[static_cast<std::size_t>(route)]; }

    Plan m_plan;
    std::vector<int> m_headings; // by route
    std::size_t m_firstRoute = 0;
    double m_spanLength = 0;
};

inline Plan DrawPlan()
{
    Surveyor surveyor;
    surveyor.AddNet({0, L"瑞穂第一処理分区", L"瑞穂浄化センター", L"汚", {}, 0}, kSanitaryStreets, 0, 0, 32);
    surveyor.AddNet({2, L"瑞穂川左岸排水区", L"瑞穂川", L"雨", {}, 0}, kStormStreets, 9, -15, 32);
    surveyor.AddNet({4, L"川原真空処理分区", L"川原真空ステーション", L"真", {}, 0}, kVacuumStreets, -640, 220, 40);
    return surveyor.Take();
}

} // namespace town
