#pragma once

#include "cuttables.h"
#include "dotweave/maskdata_base.h"
#include "peek.h"
#include "plainmask.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <utility>
#include <vector>

/// @file
/// The law of every mask. The bands are laid on a sheet as the press lays them, each one step further down
/// than the one before, and the prints of every pixel are counted.

/// Prints of a pixel by its threshold and by its row within the step.
using CLaw = std::function<int(int threshold, int rowInStep)>;
/// Prints of a pixel by its place on the sheet.
using CPixelLaw = std::function<int(int row, int column)>;

/// Pixels of a sheet that miss prints, and pixels that are printed too often.
struct SWrongPixels {
    int fewer = 0;
    int more = 0;
};

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

/// Each pixel once for every row that passes over it and has its threshold in its range.
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

    /// Prints one whole cycle of positions and counts the prints of every pixel.
    /// Bands overlap, so the first rows of the sheet miss some prints. Counting starts at FirstRow, which all
    /// bands cover.
    void Print() { Print(0, WIDTH); }

    /// As above, for some of the columns only.
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

    /// The threshold that decides a pixel. Each resolution pass reads the matrix at an offset of its own.
    [[nodiscard]] int Threshold(int row, int x) const
    {
        const int matrixRow = (row + m_r * m_step / m_mask.YResPass()) % m_matrixRows;
        const int matrixColumn = (x + WIDTH * m_k / m_mask.XResPass()) % WIDTH;
        return CRawMaskData::RawData(m_color)[matrixRow * WIDTH + matrixColumn];
    }

    /// Counts the pixels that are not printed as often as the law says.
    [[nodiscard]] SWrongPixels Compare(const CPixelLaw& law) const
    {
        SWrongPixels wrong;
        const int* prints = m_prints.data();
        for (int row = FirstRow(); row < FirstRow() + m_rowCount; ++row) {
            for (int x = m_firstColumn; x < m_firstColumn + m_columnCount; ++x, ++prints) {
                const int expected = law(row, x);
                wrong.fewer += *prints < expected ? 1 : 0;
                wrong.more += *prints > expected ? 1 : 0;
            }
        }
        return wrong;
    }

    /// The same for a law of thresholds; fewer and more prints together.
    [[nodiscard]] int WrongPixels(const CLaw& law) const
    {
        const SWrongPixels wrong =
            Compare([this, &law](int row, int x) { return law(Threshold(row, x), row % m_step); });
        return wrong.fewer + wrong.more;
    }

    /// How many rows of one step print all their pixels once, twice, ..., by the number of prints.
    /// Pixels of threshold 0 never print and do not count. A row whose pixels differ counts under -1.
    [[nodiscard]] std::map<int, int> RowsOfAStepByPrints() const
    {
        std::map<int, int> rows;
        const int* prints = m_prints.data();
        for (int row = FirstRow(); row < FirstRow() + m_rowCount; ++row) {
            int first = 0;
            bool isEven = true;
            for (int x = m_firstColumn; x < m_firstColumn + m_columnCount; ++x, ++prints) {
                if (Threshold(row, x) == 0)
                    continue;
                first = first == 0 ? *prints : first;
                isEven = isEven && *prints == first;
            }
            ++rows[isEven ? first : -1];
        }
        for (auto& entry : rows)
            entry.second /= m_positionCount;
        return rows;
    }

    [[nodiscard]] int PixelCount() const { return static_cast<int>(m_prints.size()); }

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
