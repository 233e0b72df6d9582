#include "temporarydirectory.h"
#include "toolprocess.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <string>

using nlohmann::json;

TEST(DiffCommand, AResultEqualsItsMode)
{
    const CTemporaryDirectory directory;
    const std::string masks = directory.Sub("masks");
    ASSERT_EQ(Tool_Run("build --preset speed --png none --out " + masks).exitStatus, 0);
    // 2 positions of 544 lines of 68 bytes in 4 colours
    for (const std::string& words :
         {masks + " speed", "speed " + masks, masks + "/mask.bin speed", masks + "/mask.json " + masks}) {
        const SToolResult result = Tool_Run("diff " + words);
        EXPECT_EQ(result.exitStatus, 0) << words;
        EXPECT_EQ(result.out, "equal: 295936 bytes\n") << words;
        EXPECT_EQ(result.err, "");
    }
}

TEST(DiffCommand, NamesTheFirstPlaceOfTwoFlippedBits)
{
    const CTemporaryDirectory directory;
    ASSERT_EQ(Tool_Run("build --preset speed --png none --out " + directory.Sub("masks")).exitStatus, 0);
    std::string bytes = File_Read(directory.Sub("masks/mask.bin"));
    // Colour 1 begins at byte 2 x 36992, its position 1 at 36992 more; then line 7 and byte 3: pixels 24 to 31.
    const std::size_t first = 3 * 36992 + 7 * 68 + 3;
    bytes[first] = static_cast<char>(bytes[first] ^ 0x10);
    bytes[200000] = static_cast<char>(bytes[200000] ^ 0x81);
    File_Write(directory.Sub("masks/mask.bin"), bytes);
    const SToolResult result = Tool_Run("diff speed " + directory.Sub("masks"));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "different bytes   2 of 295936\n"
                          "different pixels  3\n"
                          "different lines   2\n"
                          "first             byte 111455: colour 1, position 1, line 7, column 27\n");
    const json object = json::parse(Tool_Run("diff --json speed " + directory.Sub("masks")).out);
    EXPECT_EQ(object["equal"], false);
    EXPECT_EQ(object["differentPixels"], 3);
    EXPECT_EQ(object["first"], json::parse(R"({"byte": 111455, "color": 1, "position": 1, "line": 7,
                                               "column": 27})"));
}

TEST(DiffCommand, BytesWithoutAShapeAreBytes)
{
    const CTemporaryDirectory directory;
    File_Write(directory.Sub("a"), "one");
    File_Write(directory.Sub("b"), "two");
    File_Write(directory.Sub("c"), "three");
    const SToolResult result = Tool_Run("diff " + directory.Sub("a") + ' ' + directory.Sub("b"));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "different bytes   3 of 3\nfirst             byte 0\n");
    const SToolResult sizes = Tool_Run("diff " + directory.Sub("a") + ' ' + directory.Sub("c"));
    EXPECT_EQ(sizes.exitStatus, 1);
    EXPECT_EQ(sizes.out, "different sizes\n  3 bytes\n  5 bytes\n");
}

TEST(DiffCommand, ModesOfOtherSizesShowTheirShapes)
{
    const SToolResult result = Tool_Run("diff production speed");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "different sizes\n"
                          "  591872 bytes: 4 colours of 4 positions of 544 lines of 544 pixels of 1 bit\n"
                          "  295936 bytes: 4 colours of 2 positions of 544 lines of 544 pixels of 1 bit\n");
    const json object = json::parse(Tool_Run("diff --json production speed").out);
    EXPECT_EQ(object["shapes"][1]["positionCount"], 2);
}

TEST(DiffCommand, ModeFilesAreModes)
{
    const CTemporaryDirectory directory;
    File_Write(directory.Sub("mode.json"), R"({"basePass": 2})");
    EXPECT_EQ(Tool_Run("diff speed " + directory.Sub("mode.json")).exitStatus, 0);
    EXPECT_EQ(Tool_Run("diff speed " + directory.Sub("none.json")).exitStatus, 4);
    File_Write(directory.Sub("refused.json"), R"({"basePass": 600})");
    EXPECT_EQ(Tool_Run("diff speed " + directory.Sub("refused.json")).exitStatus, 3);
}

TEST(DiffCommand, AMaskThatIsCutOffIsAnError)
{
    const CTemporaryDirectory directory;
    ASSERT_EQ(Tool_Run("build --preset speed --png none --out " + directory.Sub("masks")).exitStatus, 0);
    File_Write(directory.Sub("masks/mask.bin"), "short");
    const SToolResult result = Tool_Run("diff speed " + directory.Sub("masks"));
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_EQ(result.err, "dotweave: " + directory.Sub("masks/mask.bin") +
                              ": has 5 bytes; the shape in mask.json has 295936\n");
}
