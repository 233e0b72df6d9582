// Runs examples/print_engine on an image larger than the masks in both directions, and lays what its head got
// in every pass back onto the sheet.

#include "temporarydirectory.h"

#include <dotweave/rawmaskdata.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <ostream>
#include <string>
#include <vector>

namespace {

constexpr int WIDTH = 1205; // more than the 1088 pixels of a line with two X resolution passes
constexpr int HEIGHT = 700; // more than the 280 and 640 lines after which the positions repeat
constexpr int LINE_BYTES = (WIDTH + 7) / 8;
constexpr int MATRIX_SIZE = 544;

/// One job of the example, worked out by hand: 32 nozzle rows and hard edges.
struct SJob {
    const char* folder;
    int resPass;       ///< X and Y resolution passes
    int realStepLines; ///< the step in lines over all resolution passes: 8 rows * 1 / 1; 16 rows * 2 / 4
    int matrixRows; ///< the height with the fewest positions: 35 steps of 8 rows; the first with 20 steps of 16
    int bandCount; ///< steps until nozzle row 0 is below the image

    friend std::ostream& operator<<(std::ostream& stream, const SJob& job) { return stream << job.folder; }
};

constexpr SJob JOBS[] = {
    {"1_four_passes", 1, 8, 280, 91},       // from line -24 to 696 in steps of 8
    {"2_double_resolution", 2, 8, 320, 24}, // from line -56 to 680 in steps of 32
    {"3_four_passes_again", 1, 8, 280, 91},
};

std::string Picture(int width, int height, const std::string& pixels)
{
    return "P4\n" + std::to_string(width) + ' ' + std::to_string(height) + '\n' + pixels;
}

/// A picture without regularity: bits of a small multiplicative generator.
std::string Pixels_Make()
{
    std::string pixels(static_cast<std::size_t>(LINE_BYTES) * HEIGHT, '\0');
    std::uint32_t state = 12345;
    for (char& byte : pixels) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<char>(state >> 24U);
    }
    return pixels;
}

bool Pixel(const std::string& pixels, int x, int y)
{
    const auto byte = static_cast<unsigned char>(
        pixels[static_cast<std::size_t>(y) * LINE_BYTES + static_cast<std::size_t>(x / 8)]);
    return (byte >> (7 - x % 8) & 1) != 0;
}

class PrintEngine : public testing::TestWithParam<SJob> {
protected:
    static void SetUpTestSuite()
    {
        s_folder = new CTemporaryDirectory;
        s_pixels = Pixels_Make();
        File_Write(s_folder->Sub("image.pbm"), Picture(WIDTH, HEIGHT, s_pixels));
        const std::string command =
            std::string(PRINT_ENGINE) + ' ' + s_folder->Sub("image.pbm") + ' ' + s_folder->Sub("out");
        ASSERT_EQ(std::system(command.c_str()), 0); // NOLINT(concurrency-mt-unsafe): the only thread
    }
    static void TearDownTestSuite() { delete s_folder; }

    /// Adds one pass of the head to the counts, and checks that it only fires in the columns of X pass k.
    void Lay(int band, int r, int k, int color)
    {
        const SJob& job = GetParam();
        const std::string name = std::string(job.folder) + "/band" + std::to_string(band) + "_r" +
                                 std::to_string(r) + "_k" + std::to_string(k) + "_color" +
                                 std::to_string(color) + ".pbm";
        const std::string file = File_Read(s_folder->Path() / "out" / name);
        const std::string header = Picture(WIDTH, NOZZLES, "");
        ASSERT_EQ(file.size(), header.size() + static_cast<std::size_t>(LINE_BYTES) * NOZZLES) << name;
        ASSERT_EQ(file.substr(0, header.size()), header) << name;
        const std::string pass = file.substr(header.size());
        // The head moves by one real step per resolution pass, r in the outer and k in the inner turn.
        const int lead = NOZZLES * job.resPass - job.realStepLines;
        const int moves = (band * job.resPass + r) * job.resPass + k;
        for (int y = 0; y < NOZZLES; ++y) {
            const int line = moves * job.realStepLines - lead + y * job.resPass + r;
            for (int x = 0; x < WIDTH; ++x) {
                if (!Pixel(pass, x, y))
                    continue;
                ASSERT_TRUE(line >= 0 && line < HEIGHT) << name << " prints beside the image";
                ASSERT_EQ(x % job.resPass, k) << name;
                ++m_prints[static_cast<std::size_t>(line) * WIDTH + static_cast<std::size_t>(x)];
            }
        }
    }

    /// The threshold under a pixel of the sheet. The matrix lies still on the paper, its first row under the
    /// first row of band 0. X resolution pass k moves it along by k real steps, and by its share of the
    /// columns.
    [[nodiscard]] int Threshold(int x, int line, int color) const
    {
        const SJob& job = GetParam();
        const int k = x % job.resPass;
        const int lead = NOZZLES * job.resPass - job.realStepLines;
        const int row = (line + lead - k * job.realStepLines) / job.resPass;
        const int column = (x / job.resPass + MATRIX_SIZE * k / job.resPass) % MATRIX_SIZE;
        return CRawMaskData::RawData(color)[row % job.matrixRows * MATRIX_SIZE + column];
    }

    static constexpr int NOZZLES = 32;
    static constexpr int COLORS = 2;
    static CTemporaryDirectory* s_folder;
    static std::string s_pixels;
    std::vector<int> m_prints;
};

CTemporaryDirectory* PrintEngine::s_folder = nullptr;
std::string PrintEngine::s_pixels;

} // namespace

TEST_P(PrintEngine, PassesTogetherAreTheImage)
{
    const SJob& job = GetParam();
    const auto files = static_cast<std::size_t>(job.bandCount * job.resPass * job.resPass * COLORS);
    EXPECT_EQ(Directory_Names(s_folder->Path() / "out" / job.folder).size(), files);
    for (int color = 0; color < COLORS; ++color) {
        m_prints.assign(static_cast<std::size_t>(WIDTH) * HEIGHT, 0);
        for (int band = 0; band < job.bandCount; ++band) {
            for (int r = 0; r < job.resPass; ++r) {
                for (int k = 0; k < job.resPass; ++k)
                    ASSERT_NO_FATAL_FAILURE(Lay(band, r, k, color));
            }
        }
        int wrong = 0;
        int neverPrinted = 0;
        const int* prints = m_prints.data();
        for (int line = 0; line < HEIGHT; ++line) {
            for (int x = 0; x < WIDTH; ++x) {
                const bool isPrintable = Threshold(x, line, color) != 0;
                wrong += *prints++ == (isPrintable && Pixel(s_pixels, x, line) ? 1 : 0) ? 0 : 1;
                neverPrinted += isPrintable ? 0 : 1;
            }
        }
        EXPECT_EQ(wrong, 0) << "colour " << color;
        EXPECT_LT(neverPrinted, 100) << "a matrix has five cells of level 0, which never prints";
    }
}

INSTANTIATE_TEST_SUITE_P(Jobs, PrintEngine, testing::ValuesIn(JOBS), testing::PrintToStringParamName());
