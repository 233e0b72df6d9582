#include "record/recordfields.h"
#include "temporarydirectory.h"
#include "toolprocess.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using nlohmann::json;

namespace {

class InfoFolder : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(Tool_Run("build --color-count 2 --out " + Path()).exitStatus, 0); }
    std::string Path() const { return m_directory.Sub("masks"); }
    std::string Path(const std::string& name) const { return Path() + '/' + name; }
    /// Changes one bit of a file.
    void Bit_Flip(const std::string& name, std::size_t bit) const
    {
        std::string bytes = File_Read(Path(name));
        bytes.at(bit / 8) = static_cast<char>(bytes[bit / 8] ^ 1 << bit % 8);
        File_Write(Path(name), bytes);
    }
    /// What info says about a file of the folder.
    json File(const std::string& name) const
    {
        const json files = json::parse(Tool_Run("info --json " + Path()).out)["files"];
        for (const json& file : files)
            if (file["name"] == name)
                return file;
        return {};
    }

private:
    CTemporaryDirectory m_directory;
};

} // namespace

TEST(InfoCommand, ShowsEveryFieldAndTheGeometry)
{
    const SToolResult result = Tool_Run("info --base-pass 2 --x-res-pass 3 --feather-mode nozzle");
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    for (const dotweave::SRecordField& field : dotweave::RecordFields())
        EXPECT_NE(result.out.find(std::string("\n  ") + field.name + ' '), std::string::npos) << field.name;
    for (const char* line :
         {"\n  basePass                    2\n", "\n  featherMode                 nozzle\n",
          "\n  MaskWidth                   1632\n"}) // 544 threshold columns, 3 passes
        EXPECT_NE(result.out.find(line), std::string::npos) << line << result.out;
}

/// 4 positions of 544 lines of 68 bytes in 4 colours, as worked out for the common mode.
TEST(InfoCommand, JsonHasTheSize)
{
    const json object = json::parse(Tool_Run("info --json").out);
    EXPECT_EQ(object["size"]["maskBytes"], 4 * 4 * 544 * 68);
    EXPECT_GT(object["size"]["peakBytes"], object["size"]["maskBytes"]);
    EXPECT_EQ(object["geometry"]["StepHeight_IncludeRes"], 136);
    EXPECT_EQ(object["mode"].size(), 12U);
    EXPECT_EQ(object["warnings"], json::array());
}

TEST(InfoCommand, WarningsAreData)
{
    const SToolResult result = Tool_Run("info --base-pass 3 --color-count 17");
    EXPECT_EQ(result.err, "");
    EXPECT_NE(result.out.find("\nwarnings\n"), std::string::npos);
    EXPECT_EQ(json::parse(Tool_Run("info --json --base-pass 3 --color-count 17").out)["warnings"].size(), 2U);
}

TEST_F(InfoFolder, AResultThatIsNotYetInPlaceIsAnnounced)
{
    fs::create_directories(Path(".dotweave-ready/new"));
    const SToolResult result = Tool_Run("info " + Path());
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "dotweave: warning: " + Path(".dotweave-ready") +
                              " holds a complete result; the next run into " + Path() + " moves it\n");
}

TEST_F(InfoFolder, AWholeResultIsGood)
{
    const SToolResult result = Tool_Run("info " + Path());
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    // 4 positions of 544 lines of 68 bytes, as worked out for the common mode
    EXPECT_NE(result.out.find("\n  mask.bin                    " + std::to_string(2 * 4 * 544 * 68) +
                              " bytes, good\n"),
              std::string::npos)
        << result.out;
    EXPECT_EQ(json::parse(Tool_Run("info --json " + Path()).out)["mode"]["colorCount"], 2);
}

TEST_F(InfoFolder, EveryFlippedBitIsFound)
{
    const std::size_t bits = fs::file_size(Path("mask.bin")) * 8;
    for (std::size_t i = 0; i < 10; ++i) {
        const std::size_t bit = i * (bits - 1) / 9; // the first, the last and eight between
        Bit_Flip("mask.bin", bit);
        const SToolResult result = Tool_Run("info " + Path());
        EXPECT_EQ(result.exitStatus, 1) << bit;
        EXPECT_EQ(result.err.rfind("dotweave: " + Path("mask.bin") + ": has the CRC-32 ", 0), 0U)
            << result.err;
        Bit_Flip("mask.bin", bit);
    }
    EXPECT_EQ(Tool_Run("info " + Path()).exitStatus, 0);
}

TEST_F(InfoFolder, EachWrongFileIsNamed)
{
    Bit_Flip("mask_c0_p0.png", 77);
    fs::remove(Path("mask_c1_p0.png"));
    fs::resize_file(Path("mask.bin"), 5);
    const SToolResult result = Tool_Run("info " + Path());
    EXPECT_EQ(result.exitStatus, 1);
    const std::string bytes = std::to_string(2 * 4 * 544 * 68);
    EXPECT_EQ(result.err.rfind(
                  "dotweave: " + Path("mask.bin") + ": has 5 bytes; mask.json says " + bytes + '\n', 0),
              0U)
        << result.err;
    EXPECT_NE(result.err.find("dotweave: " + Path("mask_c0_p0.png") + ": has the CRC-32 "),
              std::string::npos);
    EXPECT_NE(result.err.find("dotweave: " + Path("mask_c1_p0.png") + ": No such file or directory\n"),
              std::string::npos);
    EXPECT_EQ(File("mask.bin")["good"], false);
    EXPECT_EQ(File("mask.bin")["fault"], "has 5 bytes; mask.json says " + bytes);
}

TEST_F(InfoFolder, AStrangeMaskJsonIsRefused)
{
    json object = json::parse(File_Read(Path("mask.json")));
    object["files"][0]["name"] = "../../etc/passwd";
    File_Write(Path("mask.json"), object.dump());
    const SToolResult result = Tool_Run("info " + Path());
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "dotweave: " + Path("mask.json") +
                  ": not the mask.json of a result: \"../../etc/passwd\" is not the name of a file in "
                  "its folder\n");
    fs::remove(Path("mask.json"));
    EXPECT_EQ(Tool_Run("info " + Path()).exitStatus, 4);
}
