/// @file
/// From the bit rows of the X resolution passes to a mask line. Included once per instruction set, between
/// foreach_target.h and the end of the file that is compiled for each.

#if defined(DOTWEAVE_KERNELS_LINEPACK_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef DOTWEAVE_KERNELS_LINEPACK_INL_H_
#undef DOTWEAVE_KERNELS_LINEPACK_INL_H_
#else
#define DOTWEAVE_KERNELS_LINEPACK_INL_H_
#endif

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

using CBytes16 = hn::FixedTag<std::uint8_t, 16>;

/// X resolution passes that the tables take; more are packed bit by bit.
constexpr int TABLE_PASSES_MAX = 8;
constexpr int BITS_PER_PIXEL_MAX = 2;
/// Output bytes of 8 columns at most.
constexpr int GROUP_BYTES_MAX = BITS_PER_PIXEL_MAX * TABLE_PASSES_MAX;

/// A table lookup takes 4 columns of a pass, which is half a byte of its bits.
enum ENibble { Nibble_High, Nibble_Low, Nibble_Count };

/// How 8 columns of all X resolution passes turn into output bytes: 8 columns of k passes with b bits are k *
/// b whole bytes. Each byte is the OR of table lookups by the nibbles of the passes' bits.
struct SPackTables {
    alignas(16) std::uint8_t nibble[TABLE_PASSES_MAX][GROUP_BYTES_MAX][Nibble_Count][16];
};

void PackTables_Fill(SPackTables& tables, int xResPass, int bitsPerPixel)
{
    std::memset(&tables, 0, sizeof tables);
    const int columnBits = xResPass * bitsPerPixel;
    for (int pass = 0; pass < xResPass; ++pass) {
        for (int bit = 0; bit < 8 * bitsPerPixel; ++bit) {
            const int column = bit / bitsPerPixel;
            const int place = column * columnBits + pass * bitsPerPixel + bit % bitsPerPixel;
            for (int value = 0; value < 16; ++value) {
                if ((value >> (3 - column % 4) & 1) != 0)
                    tables.nibble[pass][place / 8][column / 4][value] |=
                        static_cast<std::uint8_t>(0x80U >> place % 8);
            }
        }
    }
}

/// Output byte `byte` of each of 16 groups of 8 columns.
template <class TVector>
HWY_INLINE TVector Bytes16_Lookup(const SPackTables& tables, const TVector* high, const TVector* low,
                                  int xResPass, int byte, bool needsHigh, bool needsLow)
{
    const CBytes16 d;
    TVector sum = hn::Zero(d);
    for (int pass = 0; pass < xResPass; ++pass) {
        const auto& nibble = tables.nibble[pass][byte];
        if (needsHigh)
            sum = hn::Or(sum, hn::TableLookupBytes(hn::Load(d, nibble[Nibble_High]), high[pass]));
        if (needsLow)
            sum = hn::Or(sum, hn::TableLookupBytes(hn::Load(d, nibble[Nibble_Low]), low[pass]));
    }
    return sum;
}

/// Packs 16 bytes of each pass into 16 * columnBits bytes.
/// @tparam COLUMN_BITS  columnBits where whole vectors can be interleaved, else 0
template <int COLUMN_BITS>
HWY_INLINE void Bytes16_Pack(const SPackTables& tables, const std::uint8_t* const* rows, int at, int xResPass,
                             int columnBits, std::uint8_t* dest)
{
    const CBytes16 d;
    using TVector = hn::Vec<CBytes16>;
    TVector high[TABLE_PASSES_MAX];
    TVector low[TABLE_PASSES_MAX];
    for (int pass = 0; pass < xResPass; ++pass) {
        const TVector bits = hn::LoadU(d, rows[pass] + at);
        high[pass] = hn::ShiftRight<4>(bits);
        low[pass] = hn::And(bits, hn::Set(d, std::uint8_t{0x0F}));
    }
    // Output byte j has the places from 8 * j on; the columns of the low nibble start at this place.
    const int lowPlace = 4 * columnBits;
    const auto byte = [&](int j) HWY_ATTR {
        const bool needsHigh = 8 * j < lowPlace;
        const bool needsLow = 8 * j + 8 > lowPlace;
        return Bytes16_Lookup(tables, high, low, xResPass, j, needsHigh, needsLow);
    };
    if constexpr (COLUMN_BITS == 2) {
        hn::StoreInterleaved2(byte(0), byte(1), d, dest);
    } else if constexpr (COLUMN_BITS == 3) {
        hn::StoreInterleaved3(byte(0), byte(1), byte(2), d, dest);
    } else if constexpr (COLUMN_BITS == 4) {
        hn::StoreInterleaved4(byte(0), byte(1), byte(2), byte(3), d, dest);
    } else {
        for (int j = 0; j < columnBits; ++j) {
            alignas(16) std::uint8_t bytes[16];
            hn::Store(byte(j), d, bytes);
            for (int group = 0; group < 16; ++group)
                dest[group * columnBits + j] = bytes[group];
        }
    }
}

/// Packs the bit rows of all passes, `width` bits each, into one line. Writes the line's bytes only.
template <int COLUMN_BITS>
HWY_INLINE void Line_PackByTables(const SPackTables& tables, const std::uint8_t* const* rows, int xResPass,
                                  int columnBits, int width, std::uint8_t* line)
{
    const int lineBytes = BytesOfBits(width * columnBits);
    const int blockBytes = 16 * columnBits;
    int at = 0;
    int done = 0;
    for (; done + blockBytes <= lineBytes; done += blockBytes, at += 16)
        Bytes16_Pack<COLUMN_BITS>(tables, rows, at, xResPass, columnBits, line + done);
    if (done < lineBytes) {
        std::uint8_t rest[16 * GROUP_BYTES_MAX];
        Bytes16_Pack<COLUMN_BITS>(tables, rows, at, xResPass, columnBits, rest);
        std::memcpy(line + done, rest, static_cast<std::size_t>(lineBytes - done));
    }
}

void Line_Pack(const SPackTables& tables, const std::uint8_t* const* rows, int xResPass, int bitsPerPixel,
               int width, std::uint8_t* line)
{
    const int columnBits = xResPass * bitsPerPixel;
    if (columnBits == 1)
        std::memcpy(line, rows[0], static_cast<std::size_t>(BytesOfBits(width)));
    else if (xResPass > TABLE_PASSES_MAX)
        Line_PackByBits(rows, xResPass, bitsPerPixel, width, line);
    else if (columnBits == 2)
        Line_PackByTables<2>(tables, rows, xResPass, 2, width, line);
    else if (columnBits == 3)
        Line_PackByTables<3>(tables, rows, xResPass, 3, width, line);
    else if (columnBits == 4)
        Line_PackByTables<4>(tables, rows, xResPass, 4, width, line);
    else
        Line_PackByTables<0>(tables, rows, xResPass, columnBits, width, line);
}

} // namespace
} // namespace dotweave::HWY_NAMESPACE
// NOLINTEND(cert-dcl59-cpp,misc-definitions-in-headers)
HWY_AFTER_NAMESPACE();

#endif
