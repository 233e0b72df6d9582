#include "allocator.h"
#include "finishtail.h"
#include "peer.h"
#include "pressmodes.h"
#include "registry.h"

#include "constants.h"
#include "dotweave/maskdatastorage.h"
#include "peek.h"

#include <benchmark/benchmark.h>
#include <boost/thread/thread.hpp>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using CClock = std::chrono::steady_clock;

constexpr char CANNOT_BE_BUILT[] = "the mode cannot be built";

double Seconds(CClock::duration time)
{
    return std::chrono::duration<double>(time).count();
}

/// Time of one call, or nothing when it fails. What the caller does before and after, such as freeing the
/// mask, is not timed.
template <typename TWork>
std::optional<CClock::duration> Timed(TWork work)
{
    const CClock::time_point start = CClock::now();
    const bool isDone = work();
    const CClock::duration time = CClock::now() - start;
    return isDone ? std::optional(time) : std::nullopt;
}

std::size_t MaskBytes(const CMaskData_Base& mask)
{
    return static_cast<std::size_t>(mask.MaskBytes_OneColor()) *
           static_cast<std::size_t>(mask.MaskParam_Current().colorCount);
}

/// Work items of a mask.
int WorkItems(const CMaskData_Base& mask)
{
    const SMaskParam param = mask.MaskParam_Current();
    return param.colorCount * (mask.MaskBytes_OneColor() / mask.MaskBytes_OnePosition()) * param.yResPass;
}

/// Where the memory of a creation comes from: used before and kept by the C library, or fresh from the system.
enum class EMemory { Kept, Fresh };

/// Pauses between two creations. A press takes longer than the short one whenever it changes its mode.
constexpr std::chrono::microseconds SHORT_PAUSE(200);
constexpr std::chrono::microseconds NO_PAUSE(0);
/// Creations of one figure take so long, or it is one.
constexpr std::chrono::milliseconds FIGURE_TIME(2);

void Pause_Make(std::chrono::microseconds pause, EMemory memory)
{
    if (memory == EMemory::Fresh)
        CFreshMemory::KeptPages_Return();
    for (const CClock::time_point end = CClock::now() + pause; CClock::now() < end;)
        boost::this_thread::yield();
}

/// The median in seconds. Sorts a part of the times.
double Median_Take(std::vector<CClock::duration>& times)
{
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return Seconds(*middle);
}

/// Times a way to build a mask object, each time on a new object. Small masks are built several times, and
/// the median counts, because the machine's own work takes longer than they do when it comes in between.
template <typename TBuild>
void Mask_Bench(benchmark::State& state, TBuild build, std::chrono::microseconds pause = SHORT_PAUSE,
                EMemory memory = EMemory::Kept)
{
    std::size_t bytes = 0;
    for ([[maybe_unused]] const auto iteration : state) {
        std::vector<CClock::duration> times;
        for (CClock::duration sum(0); sum < FIGURE_TIME; sum += times.back()) {
            CMaskData_Base mask;
            Pause_Make(pause, memory);
            const std::optional<CClock::duration> time = Timed([&] { return build(mask); });
            if (!time) {
                state.SkipWithError(CANNOT_BE_BUILT);
                return;
            }
            times.push_back(*time);
            bytes = MaskBytes(mask);
            state.counters["items"] = WorkItems(mask);
        }
        state.SetIterationTime(Median_Take(times));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

void Create_Bench(benchmark::State& state, const SMaskParam& param)
{
    Mask_Bench(state, [&](CMaskData_Base& mask) { return mask.Create(param); });
}

void CreateInARow_Bench(benchmark::State& state, const SMaskParam& param)
{
    Mask_Bench(
        state, [&](CMaskData_Base& mask) { return mask.Create(param); }, NO_PAUSE);
}

/// The whole mask by the plain loops on the calling thread. None of the modes splits resolution passes.
void OneThread_Bench(benchmark::State& state, const SMaskParam& param)
{
    Mask_Bench(state, [&](CMaskData_Base& mask) {
        SMaskData_Base_Peek peek{mask};
        peek.Current() = param;
        peek.BaseMaskHeight() = THRESHOLD_MATRIX_SIZE;
        peek.BaseMaskWidth() = THRESHOLD_MATRIX_SIZE;
        return peek.InitNoneRes() && peek.InitResParam() && peek.InitMaskSize() && peek.CreateMaskData_Old();
    });
}

/// Create in memory of which no page has been touched before.
void Fresh_Bench(benchmark::State& state, const SMaskParam& param)
{
    const CFreshMemory fresh;
    Mask_Bench(
        state, [&](CMaskData_Base& mask) { return mask.Create(param); }, SHORT_PAUSE, EMemory::Fresh);
    CMaskData_Base mask;
    const std::size_t before = CFreshMemory::MappedBytes();
    if (!mask.Create(param))
        state.SkipWithError(CANNOT_BE_BUILT);
    else if (MaskBytes(mask) >= CFreshMemory::LARGE_BYTES &&
             CFreshMemory::MappedBytes() < before + MaskBytes(mask))
        state.SkipWithError("the mask did not come from fresh memory");
}

/// The same bytes by the plain OpenMP loop. As with Create, freeing them is not timed.
void Peer_Time(benchmark::State& state, const CPeer& peer, EMemory memory)
{
    for ([[maybe_unused]] const auto iteration : state) {
        std::vector<CClock::duration> times;
        for (CClock::duration sum(0); sum < FIGURE_TIME; sum += times.back()) {
            Pause_Make(SHORT_PAUSE, memory);
            std::unique_ptr<std::uint8_t[]> bytes;
            times.push_back(*Timed([&] {
                bytes = peer.Build();
                return true;
            }));
        }
        state.SetIterationTime(Median_Take(times));
    }
}

void Peer_Bench(benchmark::State& state, const SMaskParam& param)
{
    Peer_Time(state, CPeer(param), EMemory::Kept);
}

void FreshPeer_Bench(benchmark::State& state, const SMaskParam& param)
{
    const CPeer peer(param);
    const CFreshMemory fresh;
    Peer_Time(state, peer, EMemory::Fresh);
}

/// What the operating system takes for as many zeros as the mask has bytes.
void Zeroed_Bench(benchmark::State& state, const SMaskParam& param)
{
    std::size_t bytes = 0;
    {
        CMaskData_Base mask;
        if (mask.Create(param))
            bytes = MaskBytes(mask);
    }
    if (bytes == 0) {
        state.SkipWithError(CANNOT_BE_BUILT);
        return;
    }
    const CFreshMemory fresh;
    for ([[maybe_unused]] const auto iteration : state) {
        std::unique_ptr<std::uint8_t[]> zeros;
        const auto time = Timed([&] {
            zeros = std::make_unique<std::uint8_t[]>(bytes); // zeroed
            benchmark::DoNotOptimize(zeros.get());
            benchmark::ClobberMemory();
            return true;
        });
        state.SetIterationTime(Seconds(time.value_or(CClock::duration(0))));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

/// Making a listed mask the current one. Five are listed. The loop asks for them in the order in which they
/// were made, so each is at the front of the list, where it was least recently used.
void StorageHit_Bench(benchmark::State& state, const SMaskParam& param)
{
    std::array<SMaskParam, 5> listed = {};
    CMaskDataStorage storage;
    for (std::size_t i = 0; i < listed.size(); ++i) {
        listed[i] = param;
        listed[i].nozzleCount -= static_cast<std::int32_t>(i);
        if (!storage.MaskData_Current_Init(listed[i])) {
            state.SkipWithError(CANNOT_BE_BUILT);
            return;
        }
    }
    std::size_t next = 0;
    for ([[maybe_unused]] const auto iteration : state) {
        benchmark::DoNotOptimize(storage.MaskData_Current_Init(listed[next]));
        next = (next + 1) % listed.size();
    }
}

void FinishTail_Bench(benchmark::State& state, const SMaskParam& param)
{
    CFinishTail tail(param);
    for ([[maybe_unused]] const auto iteration : state)
        state.SetIterationTime(tail.Measure().count());
}

/// Starts as many threads as a generator has, keeps them all running without any work, and joins them. This
/// is what a creation costs before it reads the first threshold. The threads stay awake, because waking them
/// would cost more than they take from the caller.
void IdleThreads_Bench(benchmark::State& state)
{
    boost::thread::attributes attributes;
    attributes.set_stack_size(std::size_t{1} << 20U);
    for ([[maybe_unused]] const auto iteration : state) {
        std::atomic<bool> isOver = false;
        std::array<boost::thread, 7> threads;
        for (boost::thread& thread : threads) {
            thread = boost::thread(attributes, [&isOver] {
                while (!isOver)
                    boost::this_thread::yield();
            });
        }
        isOver = true;
        for (boost::thread& thread : threads)
            thread.join();
    }
}

using CBench = void (*)(benchmark::State&, const SMaskParam&);

benchmark::internal::Benchmark* Register(const char* name, const SPressMode& mode, CBench run)
{
    const auto bench = [run, param = mode.param](benchmark::State& state) { run(state, param); };
    return benchmark::RegisterBenchmark((std::string(name) + "/" + mode.name).c_str(), bench)
        ->Unit(benchmark::kMicrosecond);
}

} // namespace

void Create_Register()
{
    const auto modes = PressModes_Get();
    for (const SPressMode& mode : modes) {
        Register("create", mode, &Create_Bench)->UseManualTime();
        Register("create_in_a_row", mode, &CreateInARow_Bench)->UseManualTime();
        Register("one_thread", mode, &OneThread_Bench)->UseManualTime();
        Register("peer", mode, &Peer_Bench)->UseManualTime();
        if (CFreshMemory::IsAvailable()) {
            Register("fresh_create", mode, &Fresh_Bench)->UseManualTime();
            Register("fresh_peer", mode, &FreshPeer_Bench)->UseManualTime();
        }
    }
    Register("create", PressMode_W2Sine_Get(), &Create_Bench)->UseManualTime();
    if (CFreshMemory::IsAvailable())
        Register("fresh_zeros", modes[2], &Zeroed_Bench)->UseManualTime();
    benchmark::RegisterBenchmark("idle_threads", &IdleThreads_Bench)
        ->Unit(benchmark::kMicrosecond)
        ->UseRealTime();
    Register("storage_hit", modes[0], &StorageHit_Bench);
    Register("finish_tail", modes[0], &FinishTail_Bench)->UseManualTime();
}
