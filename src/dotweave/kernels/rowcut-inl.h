/// @file
/// From thresholds or dots to rows of bits. Included once per instruction set, between foreach_target.h and
/// the end of the file that is compiled for each.

#if defined(DOTWEAVE_KERNELS_ROWCUT_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef DOTWEAVE_KERNELS_ROWCUT_INL_H_
#undef DOTWEAVE_KERNELS_ROWCUT_INL_H_
#else
#define DOTWEAVE_KERNELS_ROWCUT_INL_H_
#endif

#include "dotweave/cuttable.h"
#include "kernels/bitrow.h"

#include <hwy/highway.h>

#include <cstdint>
#include <cstring>

HWY_BEFORE_NAMESPACE();
// One file alone includes this header, once per instruction set, so nothing is defined in two places.
// NOLINTBEGIN(cert-dcl59-cpp,misc-definitions-in-headers)
namespace dotweave::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

using CColumns = hn::ScalableTag<std::int16_t>;
using CBytes = hn::ScalableTag<std::uint8_t>;

/// lower < t <= upper as one subtraction and one signed comparison: t - (lower + 1), taken without a sign, is
/// below upper - lower. Both sides carry a bias of 0x8000, since only signed lanes compare. Ranges whose
/// upper bound is not above the lower one print nothing and are sorted out before.
struct SRangeTest {
    std::int16_t base;
    std::int16_t limit;
};

SRangeTest RangeTest(SCutTable range)
{
    return {static_cast<std::int16_t>(range.lowerLimit + 1 + 0x8000),
            static_cast<std::int16_t>(range.upperLimit - range.lowerLimit - 0x8000)};
}

bool Range_IsEmpty(SCutTable range)
{
    return range.upperLimit <= range.lowerLimit;
}

bool Range_Contains(SCutTable range, std::uint16_t threshold)
{
    return range.lowerLimit < threshold && threshold <= range.upperLimit;
}

/// Up to 8 columns that fill no vector.
template <typename TIsSet>
HWY_INLINE std::uint8_t Bits8(int count, TIsSet isSet)
{
    unsigned int bits = 0;
    for (int i = 0; i < count; ++i)
        bits |= static_cast<unsigned int>(isSet(i)) << (7 - i);
    return static_cast<std::uint8_t>(bits);
}

#if HWY_TARGET <= HWY_AVX3

/// Cuts whole vectors, where a mask is a register of its own: one comparison gives the bits of all lanes.
/// @return the columns done
HWY_INLINE int Vectors_CutBits(const std::int16_t* columns, int count, SRangeTest test, std::uint8_t* bits)
{
    const CColumns d;
    const auto base = hn::Set(d, test.base);
    const auto limit = hn::Set(d, test.limit);
    const int lanes = static_cast<int>(hn::Lanes(d));
    std::uint8_t stored[8] = {};
    int i = 0;
    for (; i + lanes <= count; i += lanes) {
        const auto turned = hn::Reverse8(d, hn::LoadU(d, columns + i)); // first column in the highest bit
        hn::StoreMaskBits(d, hn::Lt(hn::Sub(turned, base), limit), stored);
        std::memcpy(bits + i / 8, stored, static_cast<std::size_t>(lanes / 8));
    }
    return i;
}

#else

/// Puts the groups of 8 columns in order when two vectors of columns have become one of bytes, 8 from the
/// first and 8 from the second in turn. A vector of 16 bytes has one group of each and is in order.
template <class TVector>
HWY_INLINE TVector Groups_InColumnOrder(CBytes d, TVector bytes)
{
#if HWY_TARGET == HWY_AVX2
    const hn::Repartition<std::uint32_t, CBytes> d32;
    alignas(32) static constexpr std::uint32_t ORDER[8] = {0, 1, 4, 5, 2, 3, 6, 7};
    return hn::BitCast(d, hn::TableLookupLanes(hn::BitCast(d32, bytes), hn::SetTableIndices(d32, ORDER)));
#else
    static_cast<void>(d);
    return bytes;
#endif
}

/// Cuts whole vectors, where a mask is a vector: the halves of two masks fill the bytes of one, which gives
/// twice the bits per move from vector to memory.
/// @return the columns done
HWY_INLINE int Vectors_CutBits(const std::int16_t* columns, int count, SRangeTest test, std::uint8_t* bits)
{
    const CColumns d;
    const CBytes d8;
    const hn::RebindToUnsigned<CColumns> du;
    const auto base = hn::Set(d, test.base);
    const auto limit = hn::Set(d, test.limit);
    const int lanes = static_cast<int>(hn::Lanes(d));
    // Of each 16 bytes: the 8 of the first vector, then those of the second, each first column last.
    alignas(16) static constexpr std::uint8_t TURN[16] = {14, 12, 10, 8, 6, 4, 2, 0,
                                                          15, 13, 11, 9, 7, 5, 3, 1};
    const auto turn = hn::LoadDup128(d8, TURN);
    const auto inside = [&](int at) HWY_ATTR {
        const auto offsets = hn::Sub(hn::LoadU(d, columns + at), base);
        return hn::BitCast(du, hn::VecFromMask(d, hn::Lt(offsets, limit)));
    };
    std::uint8_t stored[8] = {};
    int i = 0;
    for (; i + 2 * lanes <= count; i += 2 * lanes) {
        const auto both = hn::Or(hn::ShiftRight<8>(inside(i)), hn::ShiftLeft<8>(inside(i + lanes)));
        const auto sorted = Groups_InColumnOrder(d8, hn::TableLookupBytes(hn::BitCast(d8, both), turn));
        hn::StoreMaskBits(d8, hn::MaskFromVec(sorted), stored);
        std::memcpy(bits + i / 8, stored, static_cast<std::size_t>(lanes / 4));
    }
    return i;
}

#endif

/// Cuts `count` thresholds to bits.
HWY_INLINE void Row_CutBits(const std::uint16_t* thresholds, int count, SCutTable range, std::uint8_t* bits)
{
    if (Range_IsEmpty(range)) {
        std::memset(bits, 0, static_cast<std::size_t>(BytesOfBits(count)));
        return;
    }
    const auto* columns = reinterpret_cast<const std::int16_t*>(thresholds);
    for (int i = Vectors_CutBits(columns, count, RangeTest(range), bits); i < count; i += 8)
        bits[i / 8] = Bits8(count - i < 8 ? count - i : 8,
                            [&](int j) HWY_ATTR { return Range_Contains(range, thresholds[i + j]); });
}

/// The bits of `count` dot bytes: set where the byte is not 0.
HWY_INLINE void Row_PackBits(const std::uint8_t* dots, int count, std::uint8_t* bits)
{
    const CBytes d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    // Turns the 8 bytes of every group of columns round, so that the first column gets the highest bit.
    alignas(16) static constexpr std::uint8_t TURN[16] = {7,  6,  5,  4,  3,  2,  1, 0,
                                                          15, 14, 13, 12, 11, 10, 9, 8};
    const auto turn = hn::LoadDup128(d, TURN);
    std::uint8_t stored[8] = {};
    int i = 0;
    for (; i + lanes <= count; i += lanes) {
        const auto turned = hn::TableLookupBytes(hn::LoadU(d, dots + i), turn);
        hn::StoreMaskBits(d, hn::Ne(turned, hn::Zero(d)), stored);
        std::memcpy(bits + i / 8, stored, static_cast<std::size_t>(lanes / 8));
    }
    for (; i < count; i += 8)
        bits[i / 8] = Bits8(count - i < 8 ? count - i : 8, [&](int j) HWY_ATTR { return dots[i + j] != 0; });
}

} // namespace
} // namespace dotweave::HWY_NAMESPACE
// NOLINTEND(cert-dcl59-cpp,misc-definitions-in-headers)
HWY_AFTER_NAMESPACE();

#endif
