#include "kernels/bitrow.h"

#include "constants.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace dotweave {
namespace {

/// Repeats a period below 8 over the first two bytes.
/// @return the multiple of the period that fills at least a byte
int ShortPeriod_Fill(std::uint8_t* bits, int period)
{
    unsigned int head = static_cast<unsigned int>(bits[0]) << 8;
    for (int filled = period; filled < 16; filled *= 2)
        head |= head >> filled;
    bits[0] = static_cast<std::uint8_t>(head >> 8);
    bits[1] = static_cast<std::uint8_t>(head);
    return period * ((7 + period) / period);
}

} // namespace

void Bits_Repeat(std::uint8_t* bits, int period, int length)
{
    if (period < 8)
        period = ShortPeriod_Fill(bits, period);
    const int shift = period % 8;
    const int end = BytesOfBits(length);
    if (shift == 0) {
        for (int done = period / 8; done < end;) {
            const int run = std::min(done, end - done);
            std::memcpy(bits + done, bits, static_cast<std::size_t>(run));
            done += run;
        }
        return;
    }
    // The source overlaps what has just been written, so bytes are taken one after the other.
    for (int from = 0, to = period / 8; to < end; ++from, ++to) {
        bits[to] = static_cast<std::uint8_t>(bits[to] | bits[from] >> shift);
        bits[to + 1] = static_cast<std::uint8_t>(bits[from] << (8 - shift));
    }
}

void Bits_Copy(const std::uint8_t* bits, int first, int count, std::uint8_t* dest)
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

void Line_PackByBits(const std::uint8_t* const* rows, int xResPass, int bitsPerPixel, int width,
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

} // namespace dotweave
