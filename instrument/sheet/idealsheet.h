#pragma once

#include "sheet/bitimage.h"
#include "sheet/passlayout.h"

#include <dotweave/maskdata_base.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace dotweave {

/// Which part of the endless sheet, in lines and columns of the output.
struct SSheetWindow {
    std::int64_t firstLine = 0; ///< any; the sheet is endless
    int lineCount = 0;          ///< >= 1
    int columnCount = 0;        ///< >= 1, from column 0 on
};

/// The window that shows everything once: all positions, from the first line of the steady state on, and the
/// columns after which masks repeat.
/// @throws std::length_error when the sheet repeats after more than 2,147,483,647 lines only
SSheetWindow SheetWindow_Cycle(const CPassLayout& layout);

/// One print of a pixel.
struct SPixelPrint {
    SHeadPass pass;
    int row; ///< nozzle row
};

/// What a press without errors prints of one colour: how often each pixel, and by which pass and row.
///
/// Lines and columns of all members are those of the window, from 0 on.
/// Memory:        5 bytes a pixel.
/// Thread-safety: read-only after construction; any number of threads. The mask must outlive the sheet.
class CIdealSheet {
public:
    /// Prints a window of the sheet.
    /// @param mask      a created object
    /// @param color     0 to colorCount - 1
    /// @param window    @throws std::invalid_argument for a side below 1
    /// @param image     which pixels are wanted; its pixel (0, 0) is the window's. Null asks for all.
    /// @param deadRows  nozzle rows that print nothing; numbers that the head does not have are ignored
    CIdealSheet(const CMaskData_Base& mask, int color, const SSheetWindow& window,
                const CBitImage* image = nullptr, std::span<const int> deadRows = {});

    const CPassLayout& Layout() const { return m_layout; }
    const SSheetWindow& Window() const { return m_window; }
    int LineCount() const { return m_window.lineCount; }
    int ColumnCount() const { return m_window.columnCount; }
    /// All passes that meet the window, in the order of printing.
    std::span<const SHeadPass> Passes() const { return m_passes; }

    /// Prints of a pixel; 255 also stands for more.
    int Count(int line, int column) const { return m_counts[Cell(line, column)]; }
    /// Prints of all pixels, line by line.
    std::span<const std::uint8_t> Counts() const { return m_counts; }
    /// Which of Passes() prints a pixel first; -1 for a pixel that is never printed.
    int FirstPass(int line, int column) const { return m_firstPasses[Cell(line, column)]; }
    /// The same for all pixels, line by line.
    std::span<const std::int32_t> FirstPasses() const { return m_firstPasses; }
    /// The nozzle row that prints a pixel first; -1 for a pixel that is never printed.
    int FirstRow(int line, int column) const;
    /// The how-many-th pass over its line, from 0 on, prints a pixel first; -1 when none does. A pass counts
    /// when it has a nozzle row over the line, whether that row prints or not.
    int FirstTurn(int line, int column) const;
    /// All prints of a pixel, in order. Reads the mask again and so is for single pixels.
    std::vector<SPixelPrint> Prints(int line, int column) const;

private:
    std::size_t Cell(int line, int column) const
    {
        return static_cast<std::size_t>(line) * static_cast<std::size_t>(m_window.columnCount) +
               static_cast<std::size_t>(column);
    }
    std::int64_t SheetLine(int line) const { return m_window.firstLine + line; }
    bool IsDead(int row) const { return m_isDead[static_cast<std::size_t>(row)] != 0; }
    void Pass_Print(int passIndex, int line, int row, std::span<const std::uint8_t> wanted,
                    std::vector<std::uint8_t>& maskPixels);

    const CMaskData_Base& m_mask;
    int m_color;
    CPassLayout m_layout;
    SSheetWindow m_window;
    std::vector<std::uint8_t> m_isDead; ///< by nozzle row
    std::vector<SHeadPass> m_passes;
    std::vector<std::uint8_t> m_counts;
    std::vector<std::int32_t> m_firstPasses;
};

} // namespace dotweave
