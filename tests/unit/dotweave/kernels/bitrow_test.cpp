/// @file
/// Rows of bits against a model that moves one bit at a time. Domains are small and swept whole.

#include "kernels/bitrow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace {

using namespace dotweave;

constexpr std::uint8_t UNTOUCHED = 0xA5;

bool Bit_Get(const std::uint8_t* bits, int column)
{
    return (bits[column / 8] & 0x80U >> column % 8) != 0;
}

std::vector<bool> Bits_Random(std::minstd_rand& random, int count)
{
    std::vector<bool> bits;
    for (int i = 0; i < count; ++i)
        bits.push_back((random() >> 8 & 1U) != 0);
    return bits;
}

/// The bits as a row: whole bytes, zeros after the last bit.
std::vector<std::uint8_t> Bytes_Of(const std::vector<bool>& bits)
{
    std::vector<std::uint8_t> bytes((bits.size() + 7) / 8, 0);
    for (std::size_t i = 0; i < bits.size(); ++i) {
        if (bits[i])
            bytes[i / 8] = static_cast<std::uint8_t>(bytes[i / 8] | 0x80U >> i % 8);
    }
    return bytes;
}

TEST(BitRow, BytesAreRoundedUp)
{
    for (int bits = 0; bits < 100; ++bits)
        EXPECT_EQ(BytesOfBits(bits), bits / 8 + (bits % 8 > 0 ? 1 : 0)) << bits;
}

TEST(BitRowRepeat, EveryPeriodFillsEveryLength)
{
    std::minstd_rand random(1);
    for (int period = 1; period <= 70; ++period) {
        const std::vector<bool> cut = Bits_Random(random, period);
        for (int length = period; length <= 3 * period + 20; ++length) {
            std::vector<std::uint8_t> row = Bytes_Of(cut);
            row.resize(static_cast<std::size_t>(BytesOfBits(length)) + 4, UNTOUCHED);
            Bits_Repeat(row.data(), period, length);
            for (int x = 0; x < length; ++x)
                ASSERT_EQ(Bit_Get(row.data(), x), cut[static_cast<std::size_t>(x % period)])
                    << "period " << period << ", length " << length << ", column " << x;
            EXPECT_EQ(std::count(row.end() - 3, row.end(), UNTOUCHED), 3) << period << ", " << length;
        }
    }
}

TEST(BitRowCopy, EveryPieceIsFollowedByZeros)
{
    std::minstd_rand random(2);
    const std::vector<bool> source = Bits_Random(random, 100);
    const std::vector<std::uint8_t> bytes = Bytes_Of(source);
    for (int first = 0; first <= 30; ++first) {
        for (int count = 0; first + count <= 90; ++count) {
            std::vector<std::uint8_t> dest(16, UNTOUCHED);
            Bits_Copy(bytes.data(), first, count, dest.data());
            std::vector<std::uint8_t> expected =
                Bytes_Of({source.begin() + first, source.begin() + first + count});
            expected.resize(dest.size(), UNTOUCHED);
            ASSERT_EQ(dest, expected) << count << " bits from " << first;
        }
    }
}

TEST(BitRowPack, PixelsOfThePassesAlternate)
{
    std::minstd_rand random(3);
    for (int bitsPerPixel = 1; bitsPerPixel <= 2; ++bitsPerPixel) {
        for (std::size_t passes = 1; passes <= 12; ++passes) {
            for (int width = 0; width <= 20; ++width) {
                std::vector<std::vector<std::uint8_t>> rows;
                std::vector<const std::uint8_t*> pointers;
                std::vector<std::vector<bool>> dots;
                for (std::size_t pass = 0; pass < passes; ++pass) {
                    dots.push_back(Bits_Random(random, width));
                    rows.push_back(Bytes_Of(dots.back()));
                }
                for (const std::vector<std::uint8_t>& row : rows)
                    pointers.push_back(row.data());
                std::vector<bool> pixels;
                for (std::size_t x = 0; x < static_cast<std::size_t>(width); ++x) {
                    for (std::size_t pass = 0; pass < passes; ++pass)
                        pixels.insert(pixels.end(), static_cast<std::size_t>(bitsPerPixel), dots[pass][x]);
                }
                std::vector<std::uint8_t> expected = Bytes_Of(pixels);
                std::vector<std::uint8_t> line(expected.size() + 2, UNTOUCHED);
                expected.resize(line.size(), UNTOUCHED);
                Line_PackByBits(pointers.data(), static_cast<int>(passes), bitsPerPixel, width, line.data());
                ASSERT_EQ(line, expected) << bitsPerPixel << " bits, " << passes << " passes, " << width;
            }
        }
    }
}

TEST(BitRowPlane, RowsFollowEachOtherRoundThePlane)
{
    const std::vector<std::uint16_t> plane(std::size_t{5} * 7);
    for (int height = 1; height <= 5; ++height) {
        for (int offset = 0; offset <= 12; ++offset) {
            for (int first = 0; first <= 6; ++first) {
                CPlaneRows rows(plane.data(), 7, height, offset, first);
                for (int row = first; row < first + 12; ++row)
                    ASSERT_EQ(rows.Next() - plane.data(), std::ptrdiff_t{7} * ((offset + row) % height))
                        << height << " rows, offset " << offset << ", block row " << row;
            }
        }
    }
}

} // namespace
