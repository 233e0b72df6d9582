// The sheet: how long a mode takes on paper, and how much memory.
// Patches are 1088 x 2176 pixels of a head of 544 rows in 8 passes, supersample 4.

#include "figures/patchfigures.h"
#include "sheet/idealsheet.h"
#include "sheet/printedpatch.h"
#include "sheet/tint.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <stdexcept>
#if __has_include(<sys/resource.h>)
#include <sys/resource.h>
#endif

using namespace dotweave;

namespace {

constexpr SMaskParam MODE = {544, 8,   1, 1, 1, 1, FeatherMode_Nozzle, 50.0F, FeatherNozzle_Smooth_3,
                             1,   100, 0};

const CMaskData_Base& Mask_Get()
{
    static const std::unique_ptr<CMaskData_Base> mask = [] {
        auto created = std::make_unique<CMaskData_Base>();
        if (!created->Create(MODE))
            throw std::runtime_error("the mode cannot be built");
        return created;
    }();
    return *mask;
}

SPatchOptions Options_Get(int lineCount)
{
    SPatchOptions options;
    options.window = {CPassLayout(Mask_Get()).SteadyLine_First(), lineCount, 1088};
    return options;
}

/// The most memory that the process has had so far; 0 where the system does not say.
double PeakMegabytes()
{
#ifdef RUSAGE_SELF
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
#else
    return 0;
#endif
}

void Patch_Time(benchmark::State& state, const CBitImage* image, const SSheetErrors& errors,
                const SPatchOptions& options)
{
    static_cast<void>(Mask_Get());
    const double before = PeakMegabytes();
    for ([[maybe_unused]] auto _ : state) {
        double sum = 0;
        Patch_Print(Mask_Get(), 0, image, errors, options,
                    [&sum](const SPatchLines& lines) { sum += static_cast<double>(lines.reflectance[0]); });
        benchmark::DoNotOptimize(sum);
    }
    state.counters["peak_mb"] = PeakMegabytes();
    state.counters["grown_mb"] = PeakMegabytes() - before;
}

SSheetErrors AllErrors()
{
    SSheetErrors errors;
    errors.advanceConstant = 0.25;
    errors.advanceSigma = 0.1;
    errors.rowSigmaX = errors.rowSigmaY = 0.1;
    errors.tilt = 0.001;
    errors.bidirectional = 0.5;
    errors.volumeSigma = 0.1;
    errors.deadRows = {100};
    return errors;
}

void FullTone(benchmark::State& state)
{
    Patch_Time(state, nullptr, {}, Options_Get(static_cast<int>(state.range(0))));
}
BENCHMARK(FullTone)->Arg(2176)->Arg(21760)->Unit(benchmark::kMillisecond)->UseRealTime();

void FullToneDensity(benchmark::State& state)
{
    SPatchOptions options = Options_Get(2176);
    options.overlap = EOverlap::Density;
    Patch_Time(state, nullptr, {}, options);
}
BENCHMARK(FullToneDensity)->Unit(benchmark::kMillisecond)->UseRealTime();

void TintWithAllErrors(benchmark::State& state)
{
    const CBitImage tint = Tint_Make(0.4, Tint_Matrix(0));
    Patch_Time(state, &tint, AllErrors(), Options_Get(2176));
}
BENCHMARK(TintWithAllErrors)->Unit(benchmark::kMillisecond)->UseRealTime();

void FullToneOneThread(benchmark::State& state)
{
    SPatchOptions options = Options_Get(2176);
    options.threadCount = 1;
    Patch_Time(state, nullptr, {}, options);
}
BENCHMARK(FullToneOneThread)->Unit(benchmark::kMillisecond)->UseRealTime();

void AllFiguresOfATint(benchmark::State& state)
{
    const CBitImage tint = Tint_Make(0.4, Tint_Matrix(0));
    for ([[maybe_unused]] auto _ : state) {
        const SPatchFigures figures = PatchFigures(Mask_Get(), 0, &tint, {}, Options_Get(2176), {});
        benchmark::DoNotOptimize(figures.graininess);
    }
    state.counters["peak_mb"] = PeakMegabytes();
}
BENCHMARK(AllFiguresOfATint)->Unit(benchmark::kMillisecond)->UseRealTime();

void IdealSheetOfOneCycle(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        const CIdealSheet sheet(Mask_Get(), 0, SheetWindow_Cycle(CPassLayout(Mask_Get())));
        benchmark::DoNotOptimize(sheet.Count(0, 0));
    }
}
BENCHMARK(IdealSheetOfOneCycle)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
