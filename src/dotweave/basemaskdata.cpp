#include "dotweave/basemaskdata.h"

#include "constants.h"
#include "int32.h"
#include "rawmaskdata_table.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <functional>
#include <iterator>

using namespace dotweave;

namespace {

/// Fills one plane row from one matrix row.
void Row_Fill(std::uint16_t* dest, int width, const std::uint16_t* source)
{
    if (width <= THRESHOLD_MATRIX_SIZE) {
        std::copy_n(source, width, dest);
        return;
    }
    // Deliberate: a run copies n bytes, not n cells; half of a wide row stays unwritten
    // (docs/deliberate-behaviour.md).
    for (int column = 0, run = 0; column < width; column += run) {
        run = std::min(width - column, THRESHOLD_MATRIX_SIZE);
        std::memcpy(dest + column, source, static_cast<std::size_t>(run));
    }
}

/// Fills a plane from the table; the matrices follow one another, so rows after the first matrix exist too.
void Plane_Fill(std::uint16_t* dest, int width, int height, const std::uint16_t* source)
{
    if (width == THRESHOLD_MATRIX_SIZE) {
        std::copy_n(source, static_cast<std::ptrdiff_t>(width) * height, dest);
        return;
    }
    for (int row = 0; row < height; ++row) {
        Row_Fill(dest, width, source);
        source += THRESHOLD_MATRIX_SIZE;
        dest += width;
    }
}

/// Whether a plane is the table's own, which nobody frees. Standard ordering, since planes from elsewhere may
/// have any address.
bool IsInTable(const std::uint16_t* plane)
{
    const std::less<> isBefore;
    return !isBefore(plane, std::begin(s_rawMaskData)) && isBefore(plane, std::end(s_rawMaskData));
}

} // namespace

CBaseMaskData::~CBaseMaskData()
{
    Release();
}

bool CBaseMaskData::Create(int width, int height, int count)
{
    m_width = width;
    m_height = height;
    m_count = count;
    m_maskData = nullptr;
    // A second Create loses the planes of the first. The entries start as null, so that Release frees what
    // was built when a plane finds no memory.
    m_maskData = new std::uint16_t* [Int32_Size(count)] {};
    for (int plane = 0; plane < count; ++plane) {
        auto* dest = new std::uint16_t[Int32_Size(width, height)];
        m_maskData[plane] = dest;
        Plane_Fill(dest, width, height, Matrix_OfPlane(plane));
    }
    return true;
}

bool CBaseMaskData::Create_OnTable(int width, int height, int count)
{
    if (width != THRESHOLD_MATRIX_SIZE || height < 0 || height > THRESHOLD_MATRIX_SIZE)
        return Create(width, height, count);
    m_width = width;
    m_height = height;
    m_count = count;
    m_maskData = nullptr;
    m_maskData = new std::uint16_t* [Int32_Size(count)] {};
    for (int plane = 0; plane < count; ++plane)
        m_maskData[plane] =
            const_cast<std::uint16_t*>(Matrix_OfPlane(plane)); // read-only memory, never written
    return true;
}

void CBaseMaskData::Release()
{
    if (m_maskData == nullptr)
        return;
    for (int plane = 0; plane < m_count; ++plane) {
        if (!IsInTable(m_maskData[plane]))
            delete[] m_maskData[plane];
        m_maskData[plane] = nullptr;
    }
    delete[] m_maskData;
    m_maskData = nullptr;
}
