#pragma once

#include "cuttables.h"
#include "dotweave/maskdata_base.h"
#include "peek.h"
#include "plainmask.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

/// @file
/// The law of every mask: lay the bands on a sheet as the press does, each one step further down than the one
/// before, and count how often every pixel is printed.

/// Prints of a pixel by its threshold and by its row within the step.
using CLaw = std::function<int(int threshold, int rowInStep)>;

/// Each pixel `times` times, but for threshold 0, which is never printed.
inline CLaw Law_Times(int times)
{
    return [times](int threshold, int /*rowInStep*/) { return threshold > 0 ? times : 0; };
}

/// Each pixel up to a level of the threshold scale once.
inline CLaw Law_Level(int levelPercent)
{
    return [levelPercent](int threshold, int /*rowInStep*/) {
        return threshold > 0 && threshold <= levelPercent * 65535 / 100 ? 1 : 0;
    };
}

/// Pixels under a feather zone, with which a step begins, once; under a pass zone `times` times.
inline CLaw Law_Zones(int featherRows, int times)
{
    return [featherRows, times](int threshold, int rowInStep) {
        if (threshold == 0)
            return 0;
        return rowInStep < featherRows ? 1 : times;
    };
}

/// Each pixel as often as the ranges of the rows that pass over it hold its threshold.
inline CLaw Law_Table(CRanges table, int step)
{
    return [table = std::move(table), step](int threshold, int rowInStep) {
        int count = 0;
        for (auto row = static_cast<std::size_t>(rowInStep); row < table.size();
             row += static_cast<std::size_t>(step))
            count += table[row].lower < threshold && threshold <= table[row].upper ? 1 : 0;
        return count;
    };
}

/// The sheet as one Y and one X resolution pass print it. Sheet rows count from the first row of the first
/// band.
class CSheet {
public:
    CSheet(CMaskData_Base& mask, int color, int r, int k)
        : m_mask(mask), m_color(color), m_r(r), m_k(k),
          m_height(SMaskData_Base_Peek{mask}.MaskHeight_NoneRes()),
          m_step(SMaskData_Base_Peek{mask}.StepHeight_NoneRes()),
          m_matrixRows(SMaskData_Base_Peek{mask}.BaseMaskHeight()),
          m_positionCount(SMaskData_Base_Peek{mask}.PositionCount())
    {}

    /// Prints whole cycles of positions, so that the thresholds and the positions have both come round once.
    /// The first rows of the sheet lack bands above them; FirstRow is covered by all.
    void Print() { Print(0, WIDTH); }

    /// As above, but looks at some of the columns only.
    void Print(int firstColumn, int columnCount)
    {
        m_firstColumn = firstColumn;
        m_columnCount = columnCount;
        m_rowCount = m_positionCount * m_step;
        m_prints.assign(static_cast<std::size_t>(m_rowCount) * static_cast<std::size_t>(columnCount), 0);
        int position = -1;
        for (int band = 0; band * m_step < FirstRow() + m_rowCount; ++band) {
            const std::uint8_t* bytes = m_mask.MaskData_Get(m_color, position);
            for (int y = 0; y < m_height; ++y) {
                const int row = band * m_step + y - FirstRow();
                if (row < 0 || row >= m_rowCount)
                    continue;
                const std::uint8_t* line = bytes + static_cast<std::ptrdiff_t>(y * m_mask.YResPass() + m_r) *
                                                       m_mask.MaskLineBytes_OneColor();
                int* prints = m_prints.data() + static_cast<std::ptrdiff_t>(row) * columnCount;
                for (int x = 0; x < columnCount; ++x) {
                    const unsigned int pixel =
                        Plain_Pixel(line, m_mask.BitsPerPixel(), (firstColumn + x) * m_mask.XResPass() + m_k);
                    prints[x] += pixel != 0 ? 1 : 0;
                }
            }
        }
    }

    [[nodiscard]] int FirstRow() const { return m_height; }

    /// The threshold that decides a pixel; the resolution passes look at the matrix from elsewhere.
    [[nodiscard]] int Threshold(int row, int x) const
    {
        const int matrixRow = (row + m_r * m_step / m_mask.YResPass()) % m_matrixRows;
        const int matrixColumn = (x + WIDTH * m_k / m_mask.XResPass()) % WIDTH;
        return CRawMaskData::RawData(m_color)[matrixRow * WIDTH + matrixColumn];
    }

    /// Pixels that are not printed as often as the law says.
    [[nodiscard]] int WrongPixels(const CLaw& law) const
    {
        int wrong = 0;
        const int* prints = m_prints.data();
        for (int row = FirstRow(); row < FirstRow() + m_rowCount; ++row) {
            for (int x = m_firstColumn; x < m_firstColumn + m_columnCount; ++x)
                wrong += *prints++ == law(Threshold(row, x), row % m_step) ? 0 : 1;
        }
        return wrong;
    }

    static constexpr int WIDTH = 544;

private:
    CMaskData_Base& m_mask;
    int m_color;
    int m_r;
    int m_k;
    int m_height;
    int m_step;
    int m_matrixRows;
    int m_positionCount;
    int m_firstColumn = 0;
    int m_columnCount = 0;
    int m_rowCount = 0;
    std::vector<int> m_prints;
};
