#pragma once

#include <dotweave/maskdata_base.h>

#include <cstdint>
#include <vector>

namespace dotweave {

/// One pass of the head over the paper.
struct SHeadPass {
    std::int64_t number;    ///< place in the order of printing: (band * YResPass + yPass) * XResPass + xPass
    std::int64_t band;      ///< bands count without wrapping; there is a band before 0, too
    int position;           ///< the band position whose mask prints it
    int yPass;              ///< Y resolution pass, 0 to YResPass - 1
    int xPass;              ///< X resolution pass, 0 to XResPass - 1
    std::int64_t firstLine; ///< the sheet line that nozzle row 0 prints
};

/// How consecutive passes of the head lie on the paper: docs/host.md, "How masks lie on paper".
///
/// Lines:   sheet lines, in the resolution of the output. Line 0 is the first line under nozzle row 0 of
///          pass 0. One nozzle row pitch is YResPass() lines and XResPass() columns.
/// Sheet:   endless, downwards and upwards: band -1 is one step above band 0, and so on. So every line meets
///          all nozzle rows that it meets in the middle of a page. A page that starts with band 0 is in this
///          state from SteadyLine_First() on.
/// Source:  the accessors of the mask object alone. Holds numbers only and may outlive the mask.
/// Thread-safety: read-only after construction; any number of threads.
class CPassLayout {
public:
    /// @param mask  a created object
    explicit CPassLayout(const CMaskData_Base& mask);

    int RowCount() const { return m_rowCount; }           ///< nozzle rows of the head
    int StepLines() const { return m_stepLines; }         ///< lines from one band to the next
    int AdvanceLines() const { return m_advanceLines; }   ///< lines from one pass to the next: the real step
    int PositionCount() const { return m_positionCount; } ///< bands after which the masks repeat
    int XResPass() const { return m_xResPass; }
    int YResPass() const { return m_yResPass; }
    int MaskWidth() const { return m_maskWidth; } ///< columns after which a mask line repeats
    /// Lines after which the whole sheet repeats: one step for each position.
    std::int64_t CycleLines() const { return std::int64_t{m_stepLines} * m_positionCount; }
    /// The first line that band -1 and the bands above it no longer reach.
    std::int64_t SteadyLine_First() const;

    /// @param number  any, also below 0
    SHeadPass Pass(std::int64_t number) const;
    /// All passes that print on at least one of some lines, in the order of printing.
    /// @param lineCount  nothing is returned for 0 and less
    std::vector<SHeadPass> Passes(std::int64_t firstLine, std::int64_t lineCount) const;
    /// The nozzle row that prints a line in a pass; -1 when none does.
    int Row(const SHeadPass& pass, std::int64_t line) const;
    /// The sheet line that a nozzle row prints in a pass.
    std::int64_t Line(const SHeadPass& pass, int row) const
    {
        return pass.firstLine + std::int64_t{row} * m_yResPass;
    }
    /// The mask line, within its position, that holds the bits of a nozzle row in a pass.
    int MaskLine(const SHeadPass& pass, int row) const { return row * m_yResPass + pass.yPass; }

private:
    int m_rowCount;
    int m_stepLines;
    int m_advanceLines;
    int m_positionCount;
    int m_xResPass;
    int m_yResPass;
    int m_maskWidth;
    std::vector<std::int64_t> m_offsets; ///< first line of each pass of band 0, in the order of printing
};

} // namespace dotweave
