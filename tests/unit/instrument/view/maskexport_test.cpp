#include "view/maskexport.h"

#include <gtest/gtest.h>

#include <string>

using namespace dotweave;

namespace {

constexpr std::uint8_t ONE_BIT[] = {0b10100000, 0b01000000, 0b11111111, 0b11000000}; // 10 pixels, 2 lines
constexpr SMaskLines LINES = {ONE_BIT, 10, 2, 2, 1};
constexpr std::uint8_t TWO_BITS[] = {0b11000011, 0b00110000}; // #..# and .#
constexpr SMaskLines WIDE = {TWO_BITS, 6, 1, 2, 2};

} // namespace

TEST(MaskExport, APortableBitmapHasABitAPixel)
{
    std::string file;
    MaskPbm_Append(LINES, file);
    EXPECT_EQ(file, std::string("P4\n10 2\n\xA0\x40\xFF\xC0", 12));
    file.clear();
    MaskPbm_Append(WIDE, file);
    EXPECT_EQ(file, "P4\n6 1\n\x94"); // 100101, then two bits of padding
}

TEST(MaskExport, ValuesAreZeroAndOne)
{
    std::string file;
    MaskValues_Append(WIDE, file);
    EXPECT_EQ(file, std::string("\1\0\0\1\0\1", 6));
}

TEST(MaskExport, ANumpyHeadIsAMultipleOf64Bytes)
{
    for (const std::vector<int>& shape :
         {std::vector<int>{1}, {4, 4, 544, 544}, {1000, 1000, 100000, 100000}}) {
        const std::string head = Npy_Head(shape);
        EXPECT_EQ(head.size() % 64, 0U);
        EXPECT_EQ(head.substr(0, 8), std::string("\x93NUMPY\1\0", 8));
        EXPECT_EQ(static_cast<unsigned char>(head[8]) + 256U * static_cast<unsigned char>(head[9]) + 10U,
                  head.size());
        EXPECT_EQ(head.back(), '\n');
    }
    EXPECT_NE(Npy_Head({2, 3}).find("{'descr': '|u1', 'fortran_order': False, 'shape': (2, 3, ), }"),
              std::string::npos);
}

TEST(MaskExport, ATableHasALineForEachLine)
{
    std::string file = MaskCsv_Head(6);
    MaskCsv_Append(WIDE, 3, 2, file);
    EXPECT_EQ(file, "color,position,line,0,1,2,3,4,5\n3,2,0,1,0,0,1,0,1\n");
}
