// Compiled once per instruction set. Includes no containers or algorithms: their inline code could be built
// for a newer processor here and then serve callers on an older one.

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "kernels/maskkernels_simd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "kernels/maskkernels.h"

#include "constants.h"
#include "maskregion.h"

#include <cstring>

#ifndef DOTWEAVE_KERNELS_ONCE
#define DOTWEAVE_KERNELS_ONCE

namespace dotweave {

/// Rows that are cut before the first of them is packed: the pack loads 16 bytes at once, which must not wait
/// for the smaller stores of the cut.
inline constexpr int ROWS_AT_ONCE = 8;
/// What a load or store of a whole vector may touch behind the last byte of a bit row.
inline constexpr int BIT_ROW_SLACK = 32;
/// X resolution passes that the table-driven pack takes; more are packed bit by bit.
inline constexpr int TABLE_PASSES_MAX = 8;

} // namespace dotweave

#endif

HWY_BEFORE_NAMESPACE();
namespace dotweave::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

using CColumns = hn::ScalableTag<std::int16_t>;
using CBytes = hn::ScalableTag<std::uint8_t>;
using CBytes16 = hn::FixedTag<std::uint8_t, 16>;

constexpr int BytesOfBits(int bits)
{
    return (bits + 7) / 8;
}

// ---- the comparison

/// lower < t <= upper as one subtraction and one signed comparison: t - (lower + 1), taken without a sign, is
/// below upper - lower. Both sides carry a bias of 0x8000, since only signed lanes compare. Ranges whose
/// upper bound is not above the lower one print nothing and are left out before.
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

bool Range_Holds(SCutTable range, std::uint16_t threshold)
{
    return range.lowerLimit < threshold && threshold <= range.upperLimit;
}

// ---- rows of bits: the first column in the most significant bit of the first byte, zeros behind the last

/// Turns the 8 bytes of every group of columns round, so that a mask of them reads first column first.
template <class TVector>
HWY_INLINE TVector Columns8_Turn(CBytes d, TVector bytes)
{
    alignas(16) static constexpr std::uint8_t TURN[16] = {7,  6,  5,  4,  3,  2,  1, 0,
                                                          15, 14, 13, 12, 11, 10, 9, 8};
    return hn::TableLookupBytes(bytes, hn::LoadDup128(d, TURN));
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

/// Cuts `count` thresholds to bits.
HWY_INLINE void Row_CutBits(const std::uint16_t* thresholds, int count, SCutTable range, std::uint8_t* bits)
{
    if (Range_IsEmpty(range)) {
        std::memset(bits, 0, static_cast<std::size_t>(BytesOfBits(count)));
        return;
    }
    const CColumns d;
    const SRangeTest test = RangeTest(range);
    const auto base = hn::Set(d, test.base);
    const auto limit = hn::Set(d, test.limit);
    const auto* columns = reinterpret_cast<const std::int16_t*>(thresholds);
    const int lanes = static_cast<int>(hn::Lanes(d));
    std::uint8_t stored[8] = {};
    int i = 0;
#if HWY_TARGET <= HWY_AVX3
    // A mask is a register of its own: one comparison gives the bits of all lanes.
    for (; i + lanes <= count; i += lanes) {
        const auto turned = hn::Reverse8(d, hn::LoadU(d, columns + i));
        hn::StoreMaskBits(d, hn::Lt(hn::Sub(turned, base), limit), stored);
        std::memcpy(bits + i / 8, stored, static_cast<std::size_t>(lanes / 8));
    }
#else
    // A mask is a vector: the halves of two of them fill the bytes of one, which gives twice the bits per
    // move. The turn also sorts the bytes: within each block of 16, the 8 of the first vector, then those of
    // the second.
    const CBytes d8;
    const hn::RebindToUnsigned<CColumns> du;
    alignas(16) static constexpr std::uint8_t TURN[16] = {14, 12, 10, 8, 6, 4, 2, 0,
                                                          15, 13, 11, 9, 7, 5, 3, 1};
    const auto turn = hn::LoadDup128(d8, TURN);
    for (; i + 2 * lanes <= count; i += 2 * lanes) {
        const auto first = hn::VecFromMask(d, hn::Lt(hn::Sub(hn::LoadU(d, columns + i), base), limit));
        const auto second =
            hn::VecFromMask(d, hn::Lt(hn::Sub(hn::LoadU(d, columns + i + lanes), base), limit));
        const auto both =
            hn::Or(hn::ShiftRight<8>(hn::BitCast(du, first)), hn::ShiftLeft<8>(hn::BitCast(du, second)));
        auto sorted = hn::TableLookupBytes(hn::BitCast(d8, both), turn);
#if HWY_TARGET == HWY_AVX2
        const hn::Repartition<std::uint32_t, CBytes> d32;
        alignas(32) static constexpr std::uint32_t ORDER[8] = {0, 1, 4, 5, 2, 3, 6, 7};
        sorted =
            hn::BitCast(d8, hn::TableLookupLanes(hn::BitCast(d32, sorted), hn::SetTableIndices(d32, ORDER)));
#endif
        hn::StoreMaskBits(d8, hn::MaskFromVec(sorted), stored);
        std::memcpy(bits + i / 8, stored, static_cast<std::size_t>(lanes / 4));
    }
#endif
    for (; i < count; i += 8)
        bits[i / 8] = Bits8(count - i < 8 ? count - i : 8,
                            [&](int j) HWY_ATTR { return Range_Holds(range, thresholds[i + j]); });
}

/// The bits of `count` dot bytes: set where the byte is not 0.
HWY_INLINE void Row_PackBits(const std::uint8_t* dots, int count, std::uint8_t* bits)
{
    const CBytes d;
    const int lanes = static_cast<int>(hn::Lanes(d));
    std::uint8_t stored[8] = {};
    int i = 0;
    for (; i + lanes <= count; i += lanes) {
        const auto turned = Columns8_Turn(d, hn::LoadU(d, dots + i));
        hn::StoreMaskBits(d, hn::Ne(turned, hn::Zero(d)), stored);
        std::memcpy(bits + i / 8, stored, static_cast<std::size_t>(lanes / 8));
    }
    for (; i < count; i += 8)
        bits[i / 8] = Bits8(count - i < 8 ? count - i : 8, [&](int j) HWY_ATTR { return dots[i + j] != 0; });
}

/// Repeats a row of `period` bits until it is `length` bits long, as the plane repeats on the paper.
HWY_INLINE void Bits_Repeat(std::uint8_t* bits, int period, int length)
{
    if (period < 8) {
        // Fill two bytes, and go on with a period that has whole bytes to copy.
        unsigned int head = static_cast<unsigned int>(bits[0]) << 8;
        for (int filled = period; filled < 16; filled *= 2)
            head |= head >> filled;
        bits[0] = static_cast<std::uint8_t>(head >> 8);
        bits[1] = static_cast<std::uint8_t>(head);
        period *= (7 + period) / period;
    }
    const int shift = period % 8;
    const int end = BytesOfBits(length);
    if (shift == 0) {
        for (int done = period / 8; done < end;) {
            const int run = done < end - done ? done : end - done;
            std::memcpy(bits + done, bits, static_cast<std::size_t>(run));
            done += run;
        }
        return;
    }
    // The source runs into what has just been written; bytes are therefore taken one after the other.
    for (int from = 0, to = period / 8; to < end; ++from, ++to) {
        bits[to] = static_cast<std::uint8_t>(bits[to] | bits[from] >> shift);
        bits[to + 1] = static_cast<std::uint8_t>(bits[from] << (8 - shift));
    }
}

/// Copies `count` bits from bit `first` on to the start of another row, zeros behind them.
HWY_INLINE void Bits_Copy(const std::uint8_t* bits, int first, int count, std::uint8_t* dest)
{
    const int bytes = BytesOfBits(count);
    const int shift = first % 8;
    bits += first / 8;
    if (shift == 0) {
        std::memcpy(dest, bits, static_cast<std::size_t>(bytes));
    } else {
        for (int i = 0; i < bytes; ++i)
            dest[i] = static_cast<std::uint8_t>(bits[i] << shift | bits[i + 1] >> (8 - shift));
    }
    if (count % 8 != 0)
        dest[bytes - 1] = static_cast<std::uint8_t>(dest[bytes - 1] & 0xFF00U >> count % 8);
}

// ---- from the bit rows of the X resolution passes to a mask line

/// How 8 columns of all X resolution passes turn into output bytes: 8 columns of k passes with b bits are k *
/// b whole bytes. Each byte is a sum of table lookups by the nibbles of the passes' bits.
struct SPackTables {
    alignas(16) std::uint8_t nibble[TABLE_PASSES_MAX][2 * TABLE_PASSES_MAX][2][16]; // pass, byte, half, bits
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
        if (needsHigh)
            sum = hn::Or(sum, hn::TableLookupBytes(hn::Load(d, tables.nibble[pass][byte][0]), high[pass]));
        if (needsLow)
            sum = hn::Or(sum, hn::TableLookupBytes(hn::Load(d, tables.nibble[pass][byte][1]), low[pass]));
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
    // Output byte j holds the places from 8 * j on; the second nibble's columns start at place 4 *
    // columnBits.
    const auto byte = [&](int j) HWY_ATTR {
        return Bytes16_Lookup(tables, high, low, xResPass, j,
                              8 * j<4 * columnBits, 8 * j + 8> 4 * columnBits);
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
        std::uint8_t rest[16 * 2 * TABLE_PASSES_MAX];
        Bytes16_Pack<COLUMN_BITS>(tables, rows, at, xResPass, columnBits, rest);
        std::memcpy(line + done, rest, static_cast<std::size_t>(lineBytes - done));
    }
}

/// The same for any number of passes, pixel by pixel.
HWY_INLINE void Line_PackByBits(const std::uint8_t* const* rows, int xResPass, int bitsPerPixel, int width,
                                std::uint8_t* line)
{
    const int columnBits = xResPass * bitsPerPixel;
    std::memset(line, 0, static_cast<std::size_t>(BytesOfBits(width * columnBits)));
    const unsigned int dot = DOT_VALUE[bitsPerPixel];
    int place = 0;
    for (int x = 0; x < width; ++x) {
        for (int pass = 0; pass < xResPass; ++pass, place += bitsPerPixel) {
            if ((rows[pass][x / 8] >> (7 - x % 8) & 1) != 0)
                line[place / 8] =
                    static_cast<std::uint8_t>(line[place / 8] | dot << (8 - bitsPerPixel - place % 8));
        }
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

// ---- the three kernels

/// The plane row of one block row after the other, without a remainder per row.
class CPlaneRows {
public:
    CPlaneRows(const std::uint16_t* plane, int width, int height, int offsetY, int firstRow)
        : m_plane(plane), m_width(width), m_height(height), m_row((offsetY % height + firstRow) % height)
    {}
    HWY_INLINE const std::uint16_t* Next()
    {
        const std::uint16_t* row = m_plane + static_cast<std::ptrdiff_t>(m_row) * m_width;
        m_row = m_row + 1 == m_height ? 0 : m_row + 1;
        return row;
    }

private:
    const std::uint16_t* m_plane;
    int m_width;
    int m_height;
    int m_row;
};

void Cut(const SParam_GenerateMaskData& param, SRowRange rows)
{
    const std::uint8_t dot = DOT_VALUE[param.bitsPerPixel];
    const int width = param.maskBlock->Width();
    const int firstColumn = param.offsetX % param.baseMaskWidth;
    const CColumns d;
    const hn::Half<CBytes> half;
    const int lanes = static_cast<int>(hn::Lanes(d));
    const auto dots = hn::Set(half, dot);
    CPlaneRows planeRows(param.baseMaskData, param.baseMaskWidth, param.baseMaskHeight, param.offsetY,
                         rows.first);
    for (int row = rows.first; row < rows.end; ++row) {
        const SCutTable range = param.cutTable[row];
        const std::uint16_t* plane = planeRows.Next();
        if (Range_IsEmpty(range))
            continue;
        std::uint8_t* dest = param.maskBlock->MaskData() + static_cast<std::ptrdiff_t>(row) * width;
        const SRangeTest test = RangeTest(range);
        const auto base = hn::Set(d, test.base);
        const auto limit = hn::Set(d, test.limit);
        int planeColumn = firstColumn;
        for (int column = 0; column < width;) {
            const int left = width - column;
            const int run =
                param.baseMaskWidth - planeColumn < left ? param.baseMaskWidth - planeColumn : left;
            const std::uint16_t* thresholds = plane + planeColumn;
            const auto* columns = reinterpret_cast<const std::int16_t*>(thresholds);
            int i = 0;
            for (; i + lanes <= run; i += lanes) {
                const auto inside = hn::Lt(hn::Sub(hn::LoadU(d, columns + i), base), limit);
                const auto bytes = hn::TruncateTo(
                    half, hn::BitCast(hn::RebindToUnsigned<CColumns>(), hn::VecFromMask(d, inside)));
                std::uint8_t* at = dest + column + i;
                const auto old = hn::LoadU(half, at);
                hn::StoreU(hn::Or(hn::And(bytes, dots), hn::AndNot(bytes, old)), half, at);
            }
            for (; i < run; ++i) {
                if (Range_Holds(range, thresholds[i]))
                    dest[column + i] = dot;
            }
            column += run;
            planeColumn = 0;
        }
    }
}

void Merge(const CMaskBlock* blocks, int blockCount, int bitsPerPixel, SRowRange rows,
           std::uint8_t* firstLine, std::ptrdiff_t lineDistance, std::uint8_t* scratch)
{
    const int width = blocks[0].Width();
    const std::ptrdiff_t rowBytes = BytesOfBits(width) + BIT_ROW_SLACK;
    SPackTables tables;
    if (blockCount <= TABLE_PASSES_MAX)
        PackTables_Fill(tables, blockCount, bitsPerPixel);
    const auto** bitRows = reinterpret_cast<const std::uint8_t**>(scratch);
    auto* bits = reinterpret_cast<std::uint8_t*>(bitRows + blockCount);
    for (int k = 0; k < blockCount; ++k)
        bitRows[k] = bits + k * rowBytes;
    for (int row = rows.first; row < rows.end; ++row) {
        for (int k = 0; k < blockCount; ++k)
            Row_PackBits(blocks[k].MaskData_Const() + static_cast<std::ptrdiff_t>(row) * blocks[k].Width(),
                         width, bits + k * rowBytes);
        Line_Pack(tables, bitRows, blockCount, bitsPerPixel, width, firstLine + row * lineDistance);
    }
}

void CutAndPack(const SMaskPack& pack, SRowRange rows, std::uint8_t* scratch)
{
    const int planeWidth = pack.planeWidth;
    CPlaneRows planeRows(pack.plane, planeWidth, pack.planeHeight, pack.offsetY, rows.first);
    const int firstColumn = pack.offsetX % planeWidth;
    if (pack.xResPass * pack.bitsPerPixel == 1 && firstColumn == 0 && pack.width <= planeWidth) {
        // A line is the cut of a row as it stands.
        for (int row = rows.first; row < rows.end; ++row)
            Row_CutBits(planeRows.Next(), pack.width, pack.cutTable[row],
                        pack.firstLine + row * pack.lineDistance);
        return;
    }
    // The X resolution passes of a row are rotations of one cut: cut once, repeat the row as the plane
    // repeats on the paper, and read each pass from its own column on.
    const int repeated = planeWidth + pack.width;
    const std::ptrdiff_t cutBytes = BytesOfBits(repeated) + BIT_ROW_SLACK;
    const std::ptrdiff_t passBytes = BytesOfBits(pack.width) + BIT_ROW_SLACK;
    SPackTables tables;
    if (pack.xResPass <= TABLE_PASSES_MAX)
        PackTables_Fill(tables, pack.xResPass, pack.bitsPerPixel);
    const auto** bitRows = reinterpret_cast<const std::uint8_t**>(scratch);
    auto* firstColumns = reinterpret_cast<int*>(bitRows + pack.xResPass);
    for (int k = 0; k < pack.xResPass; ++k)
        firstColumns[k] = (firstColumn + MaskRegion_Column(k, planeWidth, pack.xResPass)) % planeWidth;
    auto* cuts = reinterpret_cast<std::uint8_t*>(firstColumns + pack.xResPass);
    std::uint8_t* passes = cuts + ROWS_AT_ONCE * cutBytes;
    for (int first = rows.first; first < rows.end; first += ROWS_AT_ONCE) {
        const int end = rows.end - first < ROWS_AT_ONCE ? rows.end : first + ROWS_AT_ONCE;
        for (int row = first; row < end; ++row)
            Row_CutBits(planeRows.Next(), planeWidth, pack.cutTable[row], cuts + (row - first) * cutBytes);
        for (int row = first; row < end; ++row) {
            std::uint8_t* cut = cuts + (row - first) * cutBytes;
            Bits_Repeat(cut, planeWidth, repeated);
            for (int k = 0; k < pack.xResPass; ++k) {
                const int column = firstColumns[k];
                if (column % 8 == 0 && pack.width % 8 == 0) {
                    bitRows[k] = cut + column / 8;
                } else {
                    Bits_Copy(cut, column, pack.width, passes + k * passBytes);
                    bitRows[k] = passes + k * passBytes;
                }
            }
            Line_Pack(tables, bitRows, pack.xResPass, pack.bitsPerPixel, pack.width,
                      pack.firstLine + row * pack.lineDistance);
        }
    }
}

} // namespace
} // namespace dotweave::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace dotweave {
namespace {

HWY_EXPORT(Cut);
HWY_EXPORT(Merge);
HWY_EXPORT(CutAndPack);

} // namespace

void MaskKernel_Cut(const SParam_GenerateMaskData& param, SRowRange rows)
{
    HWY_DYNAMIC_DISPATCH(Cut)(param, rows);
}

void MaskKernel_Merge(const CMaskBlock* blocks, int blockCount, int bitsPerPixel, SRowRange rows,
                      std::uint8_t* firstLine, std::ptrdiff_t lineDistance, std::uint8_t* scratch)
{
    if (blockCount >= 1)
        HWY_DYNAMIC_DISPATCH(Merge)(blocks, blockCount, bitsPerPixel, rows, firstLine, lineDistance, scratch);
}

void MaskKernel_CutAndPack(const SMaskPack& pack, SRowRange rows, std::uint8_t* scratch)
{
    HWY_DYNAMIC_DISPATCH(CutAndPack)(pack, rows, scratch);
}

std::size_t MaskKernel_ScratchBytes(int planeWidth, int width, int xResPass)
{
    const std::size_t cut = (static_cast<std::size_t>(planeWidth) + static_cast<std::size_t>(width) + 7) / 8;
    const std::size_t pass = (static_cast<std::size_t>(width) + 7) / 8;
    return ROWS_AT_ONCE * (cut + BIT_ROW_SLACK) +
           static_cast<std::size_t>(xResPass) * (sizeof(std::uint8_t*) + sizeof(int) + pass + BIT_ROW_SLACK);
}

} // namespace dotweave

#endif
