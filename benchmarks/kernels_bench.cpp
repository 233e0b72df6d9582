#include "pressmodes.h"
#include "registry.h"
#include "targets.h"
#include "workitem.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

/// One of the members of CWorkItem that fill its lines.
using CWay = void (CWorkItem::*)();

void BytesProcessed_Set(benchmark::State& state, std::size_t bytes)
{
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

void Reference_Bench(benchmark::State& state, CWorkItem& item)
{
    for ([[maybe_unused]] const auto iteration : state) {
        item.Reference_Run();
        benchmark::ClobberMemory();
    }
    BytesProcessed_Set(state, item.OutputBytes());
}

/// Checks that one way gives the bytes of the plain loops on one instruction set, then times it.
void Target_Bench(benchmark::State& state, CWorkItem& item, CWay way, std::int64_t target)
{
    const CTargetChoice choice(target);
    item.Lines_Spoil();
    item.Reference_Run();
    const std::vector<std::uint8_t> expected = item.Lines();
    item.Lines_Spoil();
    (item.*way)();
    if (item.Lines() != expected) {
        state.SkipWithError("the bytes are not those of the reference");
        return;
    }
    for ([[maybe_unused]] const auto iteration : state) {
        (item.*way)();
        benchmark::ClobberMemory();
    }
    BytesProcessed_Set(state, item.OutputBytes());
}

void Read_Bench(benchmark::State& state, CWorkItem& item)
{
    for ([[maybe_unused]] const auto iteration : state)
        benchmark::DoNotOptimize(item.Thresholds_Read());
    BytesProcessed_Set(state, item.ThresholdBytes());
}

void Write_Bench(benchmark::State& state, CWorkItem& item)
{
    for ([[maybe_unused]] const auto iteration : state) {
        item.Bytes_Write();
        benchmark::ClobberMemory();
    }
    BytesProcessed_Set(state, item.OutputBytes());
}

void Register(const std::string& name, std::function<void(benchmark::State&)> run)
{
    benchmark::RegisterBenchmark(name.c_str(), std::move(run))->Unit(benchmark::kMicrosecond);
}

} // namespace

void Kernels_Register()
{
    const std::vector<std::int64_t> targets = Targets_Get();
    for (const SPressMode& mode : PressModes_Get()) {
        const auto item = std::make_shared<CWorkItem>(mode.param);
        const std::string prefix = std::string("kernel/") + mode.name;
        Register(prefix + "/reference", [item](benchmark::State& state) { Reference_Bench(state, *item); });
        for (const std::int64_t target : targets) {
            const auto registerWay = [&](const char* name, CWay way) {
                Register(prefix + name + Target_Name(target), [item, way, target](benchmark::State& state) {
                    Target_Bench(state, *item, way, target);
                });
            };
            registerWay("/fused/", &CWorkItem::Fused_Run);
            registerWay("/blocks/", &CWorkItem::Blocks_Run);
        }
        Register(prefix + "/read", [item](benchmark::State& state) { Read_Bench(state, *item); });
        Register(prefix + "/write", [item](benchmark::State& state) { Write_Bench(state, *item); });
    }
}
