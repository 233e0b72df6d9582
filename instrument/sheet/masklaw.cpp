#include "sheet/masklaw.h"

#include <dotweave/rawmaskdata.h>

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace dotweave {

namespace {

/// Matrix rows and columns in use are for derived mask objects, so this asks as one of them.
struct SMatrixSize : CMaskData_Base {
    static int Rows(const CMaskData_Base& mask) { return mask.*(&SMatrixSize::m_baseMaskHeight); }
    static int Columns(const CMaskData_Base& mask) { return mask.*(&SMatrixSize::m_baseMaskWidth); }
};

} // namespace

CMaskLaw::CMaskLaw(CMaskData_Base& mask)
    : m_layout(mask), m_shape(MaskShape_Of(mask)), m_table(CutTable_View(mask)),
      m_matrixRows(SMatrixSize::Rows(mask)), m_matrixColumns(SMatrixSize::Columns(mask))
{
    for (const SCutTable& range : m_table.rows)
        if (CutRange_Size(range) > 0)
            m_levelMax = std::max(m_levelMax, int{range.upperLimit});
    if (mask.MaskParam_Current().featherNozzleType != FeatherNozzle_Smooth_3_Sine)
        return;
    const int rest = m_layout.RowCount() % m_table.stepRows;
    m_featherRows = rest != 0 ? rest : m_table.stepRows;
    CSineMask sine;
    if (!sine.Create(m_featherRows, m_matrixColumns, 1, SinMaskType_Stored))
        return;
    m_sineRows = sine.MaskHeight_Get();
    m_isUnderCurve.assign(sine.MaskBuffer_Down_Get(), sine.MaskBuffer_Down_Get() + sine.MaskSize_Get());
}

std::int64_t CMaskLaw::RepeatBands() const
{
    return m_matrixRows / std::gcd(m_matrixRows, m_table.stepRows);
}

int CMaskLaw::Threshold(const std::uint16_t* matrix, std::int64_t row, int x, int k) const
{
    const int column = (x + m_matrixColumns * k / m_layout.XResPass()) % m_matrixColumns;
    return matrix[row % m_matrixRows * CRawMaskData::Width() + column];
}

bool CMaskLaw::IsTableDot(int row, int threshold) const
{
    const SCutTable& range = m_table.rows[static_cast<std::size_t>(row)];
    return range.lowerLimit < threshold && threshold <= range.upperLimit;
}

bool CMaskLaw::IsHandedOver(int sineRow, int x) const
{
    return sineRow >= 0 && sineRow < m_sineRows &&
           m_isUnderCurve[static_cast<std::size_t>(sineRow) * static_cast<std::size_t>(m_matrixColumns) +
                          static_cast<std::size_t>(x)] == 0;
}

void CMaskLaw::Line(int color, std::int64_t band, int maskLine, SMaskLawLine& law) const
{
    const auto width = static_cast<std::size_t>(m_shape.width);
    law.thresholds.resize(width);
    law.tableDots.resize(width);
    law.dots.resize(width);
    law.movedPixels.assign(width, 0);

    const std::uint16_t* const matrix = CRawMaskData::RawData(color);
    const int row = maskLine / m_layout.YResPass();
    const std::int64_t r = maskLine % m_layout.YResPass();
    const std::int64_t matrixRow = band * m_table.stepRows + row + r * m_table.stepRows / m_layout.YResPass();
    const int distance = m_layout.RowCount() - m_featherRows; // from first feather rows to last ones
    const int bottomRow = row - (m_layout.RowCount() - m_sineRows);
    const int topRow = row - (m_featherRows - m_sineRows);
    for (std::size_t pixel = 0; pixel < width; ++pixel) {
        const int x = static_cast<int>(pixel) / m_layout.XResPass();
        const int k = static_cast<int>(pixel) % m_layout.XResPass();
        const int threshold = Threshold(matrix, matrixRow, x, k);
        const bool isTableDot = IsTableDot(row, threshold);
        bool isDot = isTableDot;
        if (IsHandedOver(bottomRow, x)) {
            isDot = false;
            law.movedPixels[pixel] = 1;
        } else if (IsHandedOver(topRow, x)) {
            isDot = isDot || IsTableDot(row + distance, Threshold(matrix, matrixRow + distance, x, k));
            law.movedPixels[pixel] = 1;
        }
        law.thresholds[pixel] = threshold;
        law.tableDots[pixel] = isTableDot ? 1 : 0;
        law.dots[pixel] = isDot ? 1 : 0;
    }
}

} // namespace dotweave
