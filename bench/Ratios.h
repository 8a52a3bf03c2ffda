// Running of the benchmarks with a table of ratios at the end: each figure next to the floor or peer that was
// measured in the same run. With RIVELTA_BENCH_SMOKE set the sizes shrink and the ratios say nothing.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

namespace bench {

inline bool IsSmoke()
{
    return std::getenv("RIVELTA_BENCH_SMOKE") != nullptr;
}

// A size, or a small one in a smoke run.
inline long Size(long full)
{
    return IsSmoke() ? (full + 999) / 1000 * 10 : full;
}

struct Ratio {
    std::string what;
    std::string figure; // benchmark or counter whose value is divided ...
    std::string floor;  // ... by this one's
    double limit;       // what the ratio must be at most
};

// Processor time is the steadier one, for work that waits for no file.
enum class Clock { Wall, Processor };

// Benchmarks report through it; other figures (bytes) are put in by name.
class Figures : public benchmark::ConsoleReporter {
public:
    explicit Figures(Clock clock = Clock::Wall) : m_clock(clock) {}

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            const bool isMedian = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            const bool isOnly = run.run_type == Run::RT_Iteration && run.repetitions <= 1;
            if (!isMedian && !isOnly) continue;
            const std::string name =
                run.run_name.function_name + (run.run_name.args.empty() ? "" : "/" + run.run_name.args);
            // A benchmark that takes the time itself has it as its wall time.
            const bool isProcessor = m_clock == Clock::Processor && run.run_name.time_type.empty();
            Put(name, isProcessor ? run.GetAdjustedCPUTime() : run.GetAdjustedRealTime());
            for (const auto& [counter, value] : run.counters)
                Put(name + ":" + counter, value.value);
        }
        ConsoleReporter::ReportRuns(runs);
    }

    static void Put(const std::string& name, double value) { Values()[name] = value; }

    static void PrintRatios(const std::vector<Ratio>& ratios)
    {
        std::printf("\n%-58s %12s %12s %9s %9s\n", "ratio", "figure", "floor", "ratio", "at most");
        for (const Ratio& ratio : ratios) {
            const auto figure = Values().find(ratio.figure);
            const auto floor = Values().find(ratio.floor);
            if (figure == Values().end() || floor == Values().end()) continue;
            const double value = figure->second / floor->second;
            std::printf("%-58s %12.4g %12.4g %9.4g %9.4g %s\n", ratio.what.c_str(), figure->second, floor->second,
                        value, ratio.limit,
                        value <= ratio.limit ? "ok"
                        : IsSmoke()          ? "(smoke)"
                                             : "ABOVE");
        }
    }

private:
    Clock m_clock;

    static std::map<std::string, double>& Values()
    {
        static std::map<std::string, double> values;
        return values;
    }
};

inline int Run(int argc, char** argv, const std::vector<Ratio>& ratios, Clock clock = Clock::Wall)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    Figures figures(clock);
    benchmark::RunSpecifiedBenchmarks(&figures);
    benchmark::Shutdown();
    Figures::PrintRatios(ratios);
    return 0;
}

} // namespace bench
