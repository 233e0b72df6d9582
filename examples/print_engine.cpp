// A print engine in small: prints a 1-bit image in several modes and writes what the head gets in every pass.
// usage: print_engine IMAGE.pbm FOLDER
// Writes FOLDER/<mode>/band<b>_r<r>_k<k>_color<c>.pbm: one line per nozzle row, as wide as the image.

#include <dotweave/dotweave.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

/// A 1-bit image, packed as masks are: eight pixels a byte, the leftmost in the most significant bit, 1 is
/// ink.
class CImage {
public:
    CImage(int width, int height) : m_width(width), m_height(height)
    {
        m_bytes.resize(static_cast<std::size_t>(LineBytes()) * static_cast<std::size_t>(height));
    }
    [[nodiscard]] int Width() const { return m_width; }
    [[nodiscard]] int Height() const { return m_height; }
    [[nodiscard]] int LineBytes() const { return (m_width + 7) / 8; }
    std::uint8_t* Line(int y) { return m_bytes.data() + static_cast<std::ptrdiff_t>(y) * LineBytes(); }
    [[nodiscard]] const std::uint8_t* Line(int y) const
    {
        return m_bytes.data() + static_cast<std::ptrdiff_t>(y) * LineBytes();
    }

    /// Reads a binary PBM file without comments.
    static CImage Read(const std::filesystem::path& path)
    {
        std::ifstream file(path, std::ios::binary);
        std::string magic;
        int width = 0;
        int height = 0;
        if (!(file >> magic >> width >> height) || magic != "P4" || width < 1 || height < 1)
            throw std::runtime_error(path.string() + " is not a binary PBM image");
        file.get(); // one blank between the header and the pixels
        CImage image(width, height);
        if (!file.read(reinterpret_cast<char*>(image.m_bytes.data()),
                       static_cast<std::streamsize>(image.m_bytes.size())))
            throw std::runtime_error(path.string() + " is too short");
        return image;
    }

    void Write(const std::filesystem::path& path) const
    {
        std::ofstream file(path, std::ios::binary);
        file << "P4\n" << m_width << ' ' << m_height << '\n';
        file.write(reinterpret_cast<const char*>(m_bytes.data()),
                   static_cast<std::streamsize>(m_bytes.size()));
        if (!file.flush())
            throw std::runtime_error("cannot write " + path.string());
    }

private:
    int m_width;
    int m_height;
    std::vector<std::uint8_t> m_bytes;
};

struct SJob {
    const char* name;
    SMaskParam mode;
};

constexpr SMaskParam FOUR_PASSES = {.nozzleCount = 32,
                                    .basePass = 4,
                                    .xResPass = 1,
                                    .yResPass = 1,
                                    .colorCount = 2,
                                    .bitsPerPixel = 1,
                                    .featherMode = FeatherMode_None,
                                    .colorTimes = 1};
constexpr SMaskParam DOUBLE_RESOLUTION = {.nozzleCount = 32,
                                          .basePass = 2,
                                          .xResPass = 2,
                                          .yResPass = 2,
                                          .colorCount = 2,
                                          .bitsPerPixel = 1,
                                          .featherMode = FeatherMode_None,
                                          .colorTimes = 1};

/// What this press prints one after the other. The mask of the last job is still in the storage.
constexpr SJob JOBS[] = {{"1_four_passes", FOUR_PASSES},
                         {"2_double_resolution", DOUBLE_RESOLUTION},
                         {"3_four_passes_again", FOUR_PASSES}};

/// One bit per pixel of a line, set in every xResPass-th column from column k on: the columns that the head
/// fires in X resolution pass k.
std::vector<std::uint8_t> Columns_Make(const CImage& image, int xResPass, int k)
{
    std::vector<std::uint8_t> columns(static_cast<std::size_t>(image.LineBytes()));
    for (int x = k; x < image.Width(); x += xResPass)
        columns[static_cast<std::size_t>(x / 8)] |= static_cast<std::uint8_t>(0x80 >> x % 8);
    return columns;
}

/// What the head gets in Y resolution pass r and X resolution pass k of one band.
/// @param positionBytes  what MaskData_Get gave for this band
/// @param firstLine      the image line that nozzle row 0 prints; negative where the head has not reached the
///                       image
CImage Pass_Make(const CImage& image, const CMaskData_Base& mask, const std::uint8_t* positionBytes,
                 int firstLine, int r, int k)
{
    const int maskLineBytes = mask.MaskLineBytes_OneColor();
    const std::vector<std::uint8_t> columns = Columns_Make(image, mask.XResPass(), k);
    CImage head(image.Width(), mask.MaskHeight_IncludeRes() / mask.YResPass());
    for (int y = 0; y < head.Height(); ++y) {
        const int line = firstLine + y * mask.YResPass();
        if (line < 0 || line >= image.Height())
            continue;
        const int maskLine = y * mask.YResPass() + r;
        const std::uint8_t* maskBytes = positionBytes + static_cast<std::ptrdiff_t>(maskLine) * maskLineBytes;
        for (int i = 0; i < image.LineBytes(); ++i) // the mask is repeated from left to right
            head.Line(y)[i] = static_cast<std::uint8_t>(image.Line(line)[i] & maskBytes[i % maskLineBytes] &
                                                        columns[static_cast<std::size_t>(i)]);
    }
    return head;
}

void Image_Print(const CImage& image, const CMaskData_Base& mask, const std::filesystem::path& folder)
{
    std::filesystem::create_directories(folder);
    const int colorCount = mask.MaskParam_Current().colorCount;
    std::vector<int> positions(static_cast<std::size_t>(colorCount), -1); // one counter per colour
    // The lead blank is paper above the image, so that its first lines meet every nozzle row too.
    for (int top = -mask.LeadBlankHeight_IncludeRes(), band = 0; top < image.Height();
         top += mask.StepHeight_IncludeRes(), ++band) {
        for (int color = 0; color < colorCount; ++color) {
            const std::uint8_t* bytes = mask.MaskData_Get(color, positions[static_cast<std::size_t>(color)]);
            for (int r = 0; r < mask.YResPass(); ++r) {
                for (int k = 0; k < mask.XResPass(); ++k) {
                    const int firstLine = top + mask.YResStep()[r] + mask.XResStep()[k] + r;
                    const std::string name = "band" + std::to_string(band) + "_r" + std::to_string(r) + "_k" +
                                             std::to_string(k) + "_color" + std::to_string(color) + ".pbm";
                    Pass_Make(image, mask, bytes, firstLine, r, k).Write(folder / name);
                }
            }
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: print_engine IMAGE.pbm FOLDER\n";
        return 2;
    }
    try {
        const CImage image = CImage::Read(argv[1]);
        CMaskDataStorage storage; // keeps the masks of the last five modes
        for (const SJob& job : JOBS) {
            if (!storage.MaskData_Current_Init(job.mode)) {
                std::cerr << job.name << ": " << MaskParam_Refusal(job.mode) << '\n';
                return 1;
            }
            Image_Print(image, *storage.MaskData_Current_Get(), std::filesystem::path(argv[2]) / job.name);
        }
    } catch (const std::exception& error) {
        std::cerr << "print_engine: " << error.what() << '\n';
        return 1;
    }
}
