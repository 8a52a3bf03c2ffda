// Loading and saving of a whole city. Floors: a bare parse of the same file, a raw write of the same bytes. Peer: a
// document library that writes the same content. Files are in a memory-backed folder where there is one.

#include "Files.h"
#include "City.h"
#include "Memory.h"
#include "Ratios.h"

#include <malloc.h>
#ifdef RIVELTA_BENCH_PUGIXML
#include <pugixml.hpp>
#endif
#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>

#include <filesystem>
#include <fstream>
#include <memory>

namespace {

namespace fs = std::filesystem;

constexpr long kSmall = 20'000;
constexpr long kLarge = 100'000;

// The city's file; made at the first use.
fs::path CityFile(long spans)
{
    const fs::path path = bench::Folder::Get().File("city" + std::to_string(spans) + ".xml");
    if (!fs::exists(path)) {
        CObjectManager manager;
        bench::MakeCity(manager, bench::Size(spans));
        if (!bench::Save(manager, path)) std::abort();
        bench::Figures::Put("bytes/" + std::to_string(spans), static_cast<double>(fs::file_size(path)));
    }
    return path;
}

double HeapInUse()
{
    const auto info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

void Load(benchmark::State& state)
{
    const fs::path path = CityFile(state.range(0));
    double heap = 0;
    double peak = 0;
    for (auto _ : state) {
        state.PauseTiming();
        malloc_trim(0);
        auto manager = std::make_unique<CObjectManager>();
        const double heapBefore = HeapInUse();
        const double before = bench::StatusBytes("VmRSS");
        bench::ResetPeak();
        state.ResumeTiming();
        CString error;
        if (!manager->CreatePipeObjectFromFile(CString(path.wstring().c_str()), error, false))
            state.SkipWithError("load failed");
        state.PauseTiming();
        heap = HeapInUse() - heapBefore;
        peak = bench::StatusBytes("VmHWM") - before;
        manager.reset();
        state.ResumeTiming();
    }
    state.counters["heap"] = heap;
    state.counters["peak"] = peak;
    state.counters["bytes"] = static_cast<double>(fs::file_size(path));
}

void BareParse(benchmark::State& state)
{
    using namespace xercesc;
    const fs::path path = CityFile(state.range(0));
    const std::u16string name = path.u16string();
    for (auto _ : state) {
        SAXParser parser;
        HandlerBase handler;
        parser.setCalculateSrcOfs(true);
        parser.setDocumentHandler(&handler);
        parser.setErrorHandler(&handler);
        const LocalFileInputSource source(reinterpret_cast<const XMLCh*>(name.c_str()));
        parser.parse(source);
    }
}

CObjectManager& LoadedCity()
{
    static CObjectManager* const manager = [] {
        auto* const made = new CObjectManager;
        bench::MakeCity(*made, bench::Size(kLarge));
        return made;
    }();
    return *manager;
}

void SaveAll(benchmark::State& state)
{
    CObjectManager& manager = LoadedCity();
    const fs::path path = bench::Folder::Get().File("saved.xml");
    double extra = 0;
    for (auto _ : state) {
        state.PauseTiming();
        fs::remove(path);
        malloc_trim(0);
        const double before = bench::StatusBytes("RssAnon");
        bench::ResetPeak();
        state.ResumeTiming();
        if (!bench::Save(manager, path)) state.SkipWithError("save failed");
        state.PauseTiming();
        extra = bench::StatusBytes("RssAnon") - before;
        state.ResumeTiming();
    }
    state.counters["extra"] = std::max(extra, 0.0);
}

void RawWrite(benchmark::State& state)
{
    const fs::path source = CityFile(kLarge);
    std::vector<char> bytes(fs::file_size(source));
    std::ifstream(source, std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    const fs::path path = bench::Folder::Get().File("raw.xml");
    constexpr std::size_t kPiece = 256 * 1024;
    for (auto _ : state) {
        state.PauseTiming();
        fs::remove(path);
        state.ResumeTiming();
        FILE* const file = std::fopen(path.c_str(), "wb");
        std::setvbuf(file, nullptr, _IONBF, 0);
        for (std::size_t at = 0; at < bytes.size(); at += kPiece)
            if (std::fwrite(bytes.data() + at, 1, std::min(kPiece, bytes.size() - at), file) == 0) break;
        std::fclose(file);
    }
}

#ifdef RIVELTA_BENCH_PUGIXML
void SaveWithDocumentLibrary(benchmark::State& state)
{
    pugi::xml_document document;
    document.load_file(CityFile(kLarge).c_str());
    const fs::path path = bench::Folder::Get().File("document.xml");
    for (auto _ : state) {
        state.PauseTiming();
        fs::remove(path);
        state.ResumeTiming();
        document.save_file(path.c_str(), "", pugi::format_default, pugi::encoding_utf16_le);
    }
}
BENCHMARK(SaveWithDocumentLibrary)->Unit(benchmark::kMillisecond)->Repetitions(3)->ReportAggregatesOnly();
#endif

BENCHMARK(BareParse)->Arg(kSmall)->Arg(kLarge)->Unit(benchmark::kMillisecond)->Repetitions(3)->ReportAggregatesOnly();
BENCHMARK(Load)->Arg(kSmall)->Arg(kLarge)->Unit(benchmark::kMillisecond)->Repetitions(3)->ReportAggregatesOnly();
BENCHMARK(RawWrite)->Unit(benchmark::kMillisecond)->Repetitions(3)->ReportAggregatesOnly();
BENCHMARK(SaveAll)->Unit(benchmark::kMillisecond)->Repetitions(3)->ReportAggregatesOnly();

} // namespace

int main(int argc, char** argv)
{
    const CObjectManager startsTheParser;
    bench::Figures::Put("16 MB", 16.0 * 1024 * 1024);
    return bench::Run(argc, argv,
                      {
                          {"load / bare parse, 20k spans", "Load/20000", "BareParse/20000", 1.35},
                          {"load / bare parse, 100k spans", "Load/100000", "BareParse/100000", 1.35},
                          {"load, 100k / 20k spans", "Load/100000", "Load/20000", 5.5},
                          {"heap after load / bytes of the file", "Load/100000:heap", "Load/100000:bytes", 0.30},
                          {"peak while loading / heap after it", "Load/100000:peak", "Load/100000:heap", 1.3},
                          {"save / raw write", "SaveAll", "RawWrite", 3.0},
                          {"save / document library", "SaveAll", "SaveWithDocumentLibrary", 1.2},
                          {"extra memory of a save / 16 MB", "SaveAll:extra", "16 MB", 1.0},
                      });
}
