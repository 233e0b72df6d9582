#include "dotweave/sinemask.h"

#include "constants.h"
#include "int32.h"
#include "log.h"
#include "maskgeometry.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>

using namespace dotweave;

namespace {

constexpr char UNIT[] = "sinemask";

/// Last marked row of a column, which may be one past the mask's last row: one period of a raised cosine over
/// the width, from 0 at the sides to the mask's height in the middle. The constants and the order of the
/// operations are agreed; a library value of pi would round differently at the boundaries.
int LastMarkedRow(int column, int width, int height)
{
    const double angle = column * 6.2831852 / width - 1.5707963;
    // NOLINTNEXTLINE(bugprone-incorrect-roundings): truncation after the half is the agreed rounding
    return static_cast<int>((std::sin(angle) + 1.0) * 0.5 * height + 0.5);
}

} // namespace

CSineMask::~CSineMask()
{
    delete[] m_maskBuffer_Down;
    m_maskBuffer_Down = nullptr;
    delete[] m_maskBuffer_Up;
    m_maskBuffer_Up = nullptr;
}

bool CSineMask::Create(int featherHeight, int maskWidth, int dotBits, ESinMaskType type)
{
    m_featherHeight = featherHeight;
    m_sinMaskType = type;
    m_dotBits = dotBits;
    m_maskWidth = maskWidth;
    m_maskHeight = SineMaskRows(featherHeight, maskWidth);
    if (!GenerateMaskData_Down())
        return Log_Failure(UNIT, "bool __cdecl CSineMask::Create(int,int,int,enum ESinMaskType)", __LINE__);
    return GenerateMaskData_Up_By_Down();
}

int CSineMask::FeatherMask_Size() const
{
    return Int32_Product(m_maskWidth, m_featherHeight);
}

int CSineMask::SineMask_Offset_InFeather() const
{
    return Int32_Product(m_featherHeight - m_maskHeight, m_maskWidth);
}

bool CSineMask::GenerateMaskData_Down()
{
    static constexpr char SCOPE[] = "bool __cdecl CSineMask::GenerateMaskData_Down(void)";
    if (m_sinMaskType == SinMaskType_Stored) {
        const std::size_t size = Int32_Size(m_maskWidth, m_maskHeight);
        m_maskBuffer_Down = new std::uint8_t[size];
        m_maskSize = static_cast<std::int32_t>(size);
        if (!GenerateMaskData_Byte_Down(m_maskBuffer_Down, m_maskSize))
            return Log_Failure(UNIT, SCOPE, __LINE__);
        return true;
    }
    if (m_sinMaskType == SinMaskType_Probe) {
        const std::size_t size = Int32_Size(m_maskWidth, m_maskHeight);
        const auto probe = std::make_unique<std::uint8_t[]>(size);
        if (!GenerateMaskData_Byte_Down(probe.get(), static_cast<int>(size)))
            return Log_Failure(UNIT, SCOPE, __LINE__);
        return true;
    }
    return false;
}

bool CSineMask::GenerateMaskData_Byte_Down(unsigned char* buffer, int size)
{
    std::fill_n(buffer, size, std::uint8_t{0});
    const std::uint8_t dot = DOT_VALUE[m_dotBits];
    for (int column = 0; column < m_maskWidth; ++column) {
        const int lastMarked = LastMarkedRow(column, m_maskWidth, m_maskHeight);
        // Deliberate: "up to and including", so that every column has at least row 0 marked.
        for (int row = 0; row < m_maskHeight && row <= lastMarked; ++row)
            buffer[static_cast<std::ptrdiff_t>(row) * m_maskWidth + column] = dot;
    }
    return true;
}

bool CSineMask::GenerateMaskData_Up_By_Down()
{
    m_maskBuffer_Up = new std::uint8_t[static_cast<std::size_t>(m_maskSize)];
    std::transform(m_maskBuffer_Down, m_maskBuffer_Down + m_maskSize, m_maskBuffer_Up,
                   [](std::uint8_t down) { return static_cast<std::uint8_t>(~down); });
    return true;
}
