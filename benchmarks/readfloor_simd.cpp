// Compiled once per instruction set, like the kernels. Includes no containers or algorithms.

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "readfloor_simd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "readfloor.h"

HWY_BEFORE_NAMESPACE();
namespace dotweave_bench::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

std::uint16_t Sum(const std::uint16_t* thresholds, std::size_t count)
{
    const hn::ScalableTag<std::uint16_t> d;
    const std::size_t lanes = hn::Lanes(d);
    // Four sums in parallel: a single one would wait for its own last addition.
    auto sum0 = hn::Zero(d);
    auto sum1 = hn::Zero(d);
    auto sum2 = hn::Zero(d);
    auto sum3 = hn::Zero(d);
    std::size_t i = 0;
    for (; i + 4 * lanes <= count; i += 4 * lanes) {
        sum0 = hn::Add(sum0, hn::LoadU(d, thresholds + i));
        sum1 = hn::Add(sum1, hn::LoadU(d, thresholds + i + lanes));
        sum2 = hn::Add(sum2, hn::LoadU(d, thresholds + i + 2 * lanes));
        sum3 = hn::Add(sum3, hn::LoadU(d, thresholds + i + 3 * lanes));
    }
    HWY_ALIGN std::uint16_t parts[HWY_MAX_BYTES / sizeof(std::uint16_t)];
    hn::Store(hn::Add(hn::Add(sum0, sum1), hn::Add(sum2, sum3)), d, parts);
    unsigned int sum = 0;
    for (std::size_t lane = 0; lane < lanes; ++lane)
        sum += parts[lane];
    for (; i < count; ++i)
        sum += thresholds[i];
    return static_cast<std::uint16_t>(sum);
}

std::int64_t Target()
{
    return HWY_TARGET;
}

} // namespace
} // namespace dotweave_bench::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace dotweave_bench {
namespace {

HWY_EXPORT(Sum);
HWY_EXPORT(Target);

} // namespace
} // namespace dotweave_bench

std::uint16_t ReadFloor_Sum(const std::uint16_t* thresholds, std::size_t count)
{
    using namespace dotweave_bench;
    return HWY_DYNAMIC_DISPATCH(Sum)(thresholds, count);
}

std::int64_t ReadFloor_Target()
{
    using namespace dotweave_bench;
    return HWY_DYNAMIC_DISPATCH(Target)();
}

#endif
