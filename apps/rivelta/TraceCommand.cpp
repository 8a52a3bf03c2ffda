// rivelta trace: the spans along the flow, down to the flow end or up to all sources.
#include "Commands.h"
#include "Design.h"
#include "DisplayText.h"
#include "Objects.h"
#include "Output.h"
#include "Table.h"
#include "Texts.h"

#include <unordered_set>

#include <CLI/CLI.hpp>

namespace obmgr::tool {

namespace {

enum SpanLink : int { kUpperNode, kLowerNode, kRoute };

// A span of a trace, and how far its far end is from the start.
struct Row {
    const CSpan* span;
    double distance; // metres
};

// How a line downstream ends: at a node that no span leaves, or in a span that is listed already.
struct End {
    const CSpan* last;
    const CSpan* joins; // null at a flow end
};

struct Trace {
    std::vector<Row> rows;
    std::vector<End> ends; // one for each line downstream
    double length = 0.0;
};

double lengthOf(const CSpan& span)
{
    return span.GetSubAttributeDouble(L"splength", 0.0);
}

class Tracer {
public:
    explicit Tracer(const CObjectManager& manager) : m_manager(manager) {}

    void Down(const CSpan& start)
    {
        if (m_listed.count(&start)) return;
        double distance = 0.0;
        const CSpan* last = nullptr;
        const CSpan* next = &start;
        while (next && !m_listed.count(next)) {
            List(*next, distance += lengthOf(*next));
            last = next;
            long below = 0;
            next = m_manager.GetLowerSpan(last->GetId32(), below) ? m_manager.GetSpanDb().Find(below) : nullptr;
        }
        m_trace.ends.push_back({last, next});
    }

    // Without recursion, which a long line would exhaust.
    void Up(const CSpan& start)
    {
        std::vector<Row> waiting = {{&start, 0.0}};
        while (!waiting.empty()) {
            const Row row = waiting.back();
            waiting.pop_back();
            if (m_listed.count(row.span)) continue;
            const double distance = row.distance + lengthOf(*row.span);
            List(*row.span, distance);
            CArray<const CSpan*> inflows;
            m_manager.GetFlowInSpanToSpan(row.span->GetId32(), inflows);
            for (auto i = inflows.GetSize(); i-- > 0;) // the first of the file is to be taken first
                waiting.push_back({inflows[i], distance});
        }
    }

    const Trace& Result() const { return m_trace; }

private:
    void List(const CSpan& span, double distance)
    {
        m_listed.insert(&span);
        m_trace.rows.push_back({&span, distance});
        m_trace.length += lengthOf(span);
    }

    const CObjectManager& m_manager;
    std::unordered_set<const CSpan*> m_listed;
    Trace m_trace;
};

class TraceCommand final : public Command {
public:
    const char* Name() const override { return "trace"; }
    std::string Summary() const override { return TextOf(Text::TraceSummary); }
    std::string Description() const override { return TextOf(Text::TraceDescription); }
    const char* Example() const override { return "rivelta trace town.xml --from 812 --down"; }
    void AddOptions(CLI::App& app) override
    {
        app.add_option("FILE", m_file, TextOf(Text::ArgumentFile))->required();
        app.add_option("--from", m_span, TextOf(Text::TraceFrom))->type_name("SPAN");
        app.add_option("--node", m_node, TextOf(Text::TraceNode))->type_name("NODE");
        app.add_flag("--up", m_isUp, TextOf(Text::TraceUp));
        app.add_flag("--down", m_isDown, TextOf(Text::TraceDown));
    }

    ExitCode Run(const CommonOptions& common) override
    {
        if (m_span.has_value() == m_node.has_value()) return Refuse(TextOf(Text::UsageTraceStart));
        if (m_isUp == m_isDown) return Refuse(TextOf(Text::UsageTraceDirection));
        const std::string& startText = m_span ? *m_span : *m_node;
        const auto id = IdFromText(startText);
        if (!id) return Refuse(Say(Text::UsageBadId, startText));

        const auto design = OpenDesign(m_file);
        if (!design) return ExitCode::InputUnreadable;
        const CObjectManager& manager = design->manager;
        const OBJECTTYPE type = m_span ? objectdata::Span : objectdata::Node;
        const CPipeObject* const start = manager.TableOf(type).Find(*id);
        if (!start) {
            Complain(design->shownName, Say(Text::UnknownIdOfType, RecordOf(type).tag, startText, m_file));
            return ExitCode::WrongUsage;
        }

        Tracer tracer(manager);
        for (const CSpan* const span : StartSpans(manager, *start))
            m_isUp ? tracer.Up(*span) : tracer.Down(*span);
        if (common.json)
            PrintAsJson(*design, *start, tracer.Result());
        else
            PrintForPeople(manager, tracer.Result());
        return ExitCode::Done;
    }

private:
    static ExitCode Refuse(const std::string& message)
    {
        Complain(message);
        return ExitCode::WrongUsage;
    }

    std::vector<const CSpan*> StartSpans(const CObjectManager& manager, const CPipeObject& start) const
    {
        if (m_span) return {static_cast<const CSpan*>(&start)};
        std::vector<const CSpan*> spans;
        const int link = m_isUp ? kLowerNode : kUpperNode;
        manager.GetSpanDb().Untyped().VisitByLink(link, start.GetId32(), [&spans](CPipeObject& span) {
            spans.push_back(static_cast<const CSpan*>(&span));
            return true;
        });
        return spans;
    }

    static Json RouteJson(const CObjectManager& manager, const CSpan& span)
    {
        const CPipeObject* const route = TargetOf(manager, span, kRoute);
        return route ? Brief(*route) : Json(nullptr);
    }

    void PrintAsJson(const Design& design, const CPipeObject& start, const Trace& trace) const
    {
        Json spans = Json::array();
        for (const Row& row : trace.rows)
            spans.push_back({{"id", row.span->GetId32()},
                             {"name", NameOf(*row.span)},
                             {"route", RouteJson(design.manager, *row.span)},
                             {"uppernode", row.span->Links()[kUpperNode]},
                             {"lowernode", row.span->Links()[kLowerNode]},
                             {"length", lengthOf(*row.span)},
                             {"distance", row.distance}});
        Json result = {{"file", design.shownName},  {"start", Brief(start)},      {"direction", m_isUp ? "up" : "down"},
                       {"spans", std::move(spans)}, {"count", trace.rows.size()}, {"length", trace.length}};
        if (m_isDown) {
            Json& ends = result["ends"] = Json::array();
            for (const End& end : trace.ends)
                ends.push_back({{"span", end.last->GetId32()},
                                {"node", end.last->Links()[kLowerNode]},
                                {"joins", end.joins ? Json(end.joins->GetId32()) : Json(nullptr)}});
        }
        PrintJson(result);
    }

    static void PrintForPeople(const CObjectManager& manager, const Trace& trace)
    {
        Table table({TextOf(Text::ColumnId), TextOf(Text::ColumnName), TextOf(Text::ColumnRouteId),
                     TextOf(Text::ColumnRoute), TextOf(Text::ColumnUpperNode), TextOf(Text::ColumnLowerNode),
                     TextOf(Text::ColumnLength), TextOf(Text::ColumnDistance)});
        for (const Row& row : trace.rows) {
            const CPipeObject* const route = TargetOf(manager, *row.span, kRoute);
            table.AddRow({std::to_string(row.span->GetId32()), NameOf(*row.span),
                          std::to_string(row.span->Links()[kRoute]), route ? NameOf(*route) : std::string(),
                          std::to_string(row.span->Links()[kUpperNode]), std::to_string(row.span->Links()[kLowerNode]),
                          fmt::format("{:.2f}", lengthOf(*row.span)), fmt::format("{:.2f}", row.distance)});
        }
        if (!trace.rows.empty()) table.Print();
        Print(Say(Text::TraceTotal, trace.rows.size(), trace.length) + "\n");
        for (const End& end : trace.ends) {
            const CPipeObject* const node = TargetOf(manager, *end.last, kLowerNode);
            const std::int32_t nodeId = end.last->Links()[kLowerNode];
            Print(WithoutControls(end.joins ? Say(Text::TraceJoins, end.last->GetId32(), end.joins->GetId32())
                                            : Say(Text::TraceEnd, end.last->GetId32(),
                                                  node ? BriefText(*node) : "node " + std::to_string(nodeId))) +
                  "\n");
        }
    }

    std::string m_file;
    std::optional<std::string> m_span;
    std::optional<std::string> m_node;
    bool m_isUp = false;
    bool m_isDown = false;
};

} // namespace

std::unique_ptr<Command> MakeTraceCommand()
{
    return std::make_unique<TraceCommand>();
}

} // namespace obmgr::tool
