#include "picture/maskpicture.h"

#include "picturefile.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

using namespace dotweave;

namespace {

SPicture Draw(const std::vector<std::uint8_t>& bytes, int width, int lineBytes, int bitsPerPixel)
{
    const int height = static_cast<int>(bytes.size()) / lineBytes;
    const std::vector<std::uint8_t> file =
        MaskPicture_Png({bytes.data(), width, height, lineBytes, bitsPerPixel});
    return Picture_Read(std::string(file.begin(), file.end()));
}

/// The picture as text: '#' black, '.' white, '?' anything else.
std::vector<std::string> Rows(const SPicture& picture)
{
    std::vector<std::string> rows;
    for (int y = 0; y < picture.height; ++y) {
        std::string row;
        for (int x = 0; x < picture.width; ++x)
            row += picture.IsBlack(x, y) ? '#' : picture.IsWhite(x, y) ? '.' : '?';
        rows.push_back(row);
    }
    return rows;
}

} // namespace

TEST(MaskPicture, APixelOfTheMaskIsAPixel)
{
    const SPicture picture = Draw({0xA5, 0x40, 0x00, 0x00, 0xFF, 0x00}, 10, 2, 1);
    EXPECT_EQ(picture.bitDepth, 1);
    EXPECT_EQ(picture.colorType, 0); // grey
    EXPECT_EQ(Rows(picture), (std::vector<std::string>{"#.#..#.#.#", "..........", "########.."}));
    EXPECT_EQ(Rows(Draw({0xC3, 0xC0, 0x3C, 0x00}, 5, 2, 2)), (std::vector<std::string>{"#..##", ".##.."}));
    EXPECT_EQ(Rows(Draw({0x80}, 1, 1, 1)), std::vector<std::string>{"#"});
}

TEST(MaskPicture, IsDrawnWiderThanAMillionPixels)
{
    // Readers have a limit of their own at a million, so this test reads the file: 16 bytes, then the width.
    const std::vector<std::uint8_t> line(150000, 0x00);
    const std::vector<std::uint8_t> file = MaskPicture_Png({line.data(), 1200000, 1, 150000, 1});
    EXPECT_EQ(std::vector<std::uint8_t>(file.begin() + 16, file.begin() + 20),
              (std::vector<std::uint8_t>{0x00, 0x12, 0x4F, 0x80}));
    EXPECT_EQ(std::string(file.end() - 8, file.end() - 4), "IEND");
}

TEST(MaskPicture, IsRefusedWithoutPixels)
{
    const std::uint8_t none = 0;
    EXPECT_THROW(MaskPicture_Png({&none, 0, 1, 1, 1}), std::runtime_error);
}
