#include "peer.h"

#include "dotweave/maskdata_base.h"
#include "dotweave/rawmaskdata.h"
#include "peek.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>

// The loop of a line once per instruction set, as the library's own kernels have it.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__)
#define DOTWEAVE_PEER_SETS __attribute__((target_clones("default", "avx2", "arch=skylake-avx512")))
#else
#define DOTWEAVE_PEER_SETS
#endif

namespace {

constexpr int SIDE = 544;
constexpr int XRES_MAX = 8;

/// Eight dots of one byte each, 0 or 1, to one byte, the first dot in the most significant bit.
std::uint8_t Dots_Pack(const std::uint8_t* dots)
{
    std::uint64_t eight = 0;
    std::memcpy(&eight, dots, sizeof eight);
    return static_cast<std::uint8_t>((eight * 0x8040201008040201U) >> 56U);
}

/// One dot per threshold: whether lower < threshold <= upper.
DOTWEAVE_PEER_SETS void Dots_Cut(const std::uint16_t* thresholds, int count, int lower, int upper,
                                 std::uint8_t* dots)
{
    for (int i = 0; i < count; ++i)
        dots[i] = static_cast<std::uint8_t>(static_cast<int>(thresholds[i] > lower) &
                                            static_cast<int>(thresholds[i] <= upper));
}

DOTWEAVE_PEER_SETS void Line_Pack(const std::uint8_t* dots, int byteCount, std::uint8_t* line)
{
    for (int i = 0; i < byteCount; ++i)
        line[i] = Dots_Pack(dots + std::ptrdiff_t{8} * i);
}

/// As above for pixels of two bits.
DOTWEAVE_PEER_SETS void Line_PackTwoBits(const std::uint8_t* dots, int byteCount, std::uint8_t* line)
{
    for (int i = 0; i < byteCount; ++i, dots += 4)
        line[i] = static_cast<std::uint8_t>(3 * (dots[0] << 6 | dots[1] << 4 | dots[2] << 2 | dots[3]));
}

} // namespace

CPeer::CPeer(const SMaskParam& param)
{
    CMaskData_Base mask;
    if (!mask.Create(param))
        throw std::runtime_error("the mode cannot be built");
    SMaskData_Base_Peek peek{mask};
    m_table.resize(static_cast<std::size_t>(peek.MaskHeight_NoneRes()));
    if (!mask.CreateCutTable(m_table.data(), peek.MaskHeight_NoneRes()))
        throw std::runtime_error("the mode has no cut table");
    m_colorCount = param.colorCount;
    m_positionCount = peek.PositionCount();
    m_step = peek.StepHeight_NoneRes();
    m_matrixRows = peek.BaseMaskHeight();
    m_xRes = mask.XResPass();
    m_yRes = mask.YResPass();
    m_bits = mask.BitsPerPixel();
    m_lineBytes = mask.MaskLineBytes_OneColor();
    if (m_xRes > XRES_MAX)
        throw std::runtime_error("the plain loop has room for eight X resolution passes");
    int position = -1;
    const std::unique_ptr<std::uint8_t[]> bytes = Build();
    if (!std::equal(bytes.get(), bytes.get() + ByteCount(), mask.MaskData_Get(0, position)))
        throw std::runtime_error("the bytes of the plain loop differ from the library's");
}

std::size_t CPeer::ByteCount() const
{
    return static_cast<std::size_t>(m_colorCount) * static_cast<std::size_t>(m_positionCount) *
           m_table.size() * static_cast<std::size_t>(m_yRes) * static_cast<std::size_t>(m_lineBytes);
}

std::unique_ptr<std::uint8_t[]> CPeer::Build() const
{
    std::unique_ptr<std::uint8_t[]> bytes(new std::uint8_t[ByteCount()]); // not cleared
    const int rows = static_cast<int>(m_table.size());
    const std::ptrdiff_t rowBytes = std::ptrdiff_t{m_yRes} * m_lineBytes;
    const int count = m_colorCount * m_positionCount * rows;
#pragma omp parallel for schedule(static)
    for (int i = 0; i < count; ++i)
        Row_Build(i / rows / m_positionCount, i / rows % m_positionCount, i % rows,
                  bytes.get() + i * rowBytes);
    return bytes;
}

/// All lines of one nozzle row in one position.
void CPeer::Row_Build(int color, int position, int row, std::uint8_t* lines) const
{
    const SCutTable range = m_table[static_cast<std::size_t>(row)];
    std::array<std::uint8_t, std::size_t{2} * SIDE>
        dots; // the row twice, so that every pass reads 544 in a row
    std::array<std::uint8_t, std::size_t{XRES_MAX} * SIDE> pixels;
    for (int r = 0; r < m_yRes; ++r) {
        const int matrixRow = (position * m_step + r * m_step / m_yRes + row) % m_matrixRows;
        Dots_Cut(CRawMaskData::RawData(color) + std::ptrdiff_t{matrixRow} * SIDE, SIDE, range.lowerLimit,
                 range.upperLimit, dots.data());
        const std::uint8_t* line = dots.data();
        if (m_xRes > 1) {
            std::copy_n(dots.data(), SIDE, dots.data() + SIDE);
            for (int k = 0; k < m_xRes; ++k) {
                const std::uint8_t* from = dots.data() + SIDE * k / m_xRes;
                for (int x = 0; x < SIDE; ++x)
                    pixels[static_cast<std::size_t>(x) * static_cast<std::size_t>(m_xRes) +
                           static_cast<std::size_t>(k)] = from[x];
            }
            line = pixels.data();
        }
        (m_bits == 1 ? Line_Pack : Line_PackTwoBits)(line, m_lineBytes,
                                                     lines + std::ptrdiff_t{r} * m_lineBytes);
    }
}
