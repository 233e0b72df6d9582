#pragma once

#include "sheet/passlayout.h"
#include "sheet/sheeterrors.h"

#include <cstdint>
#include <vector>

namespace dotweave {

/// A pass and how far its errors have taken it down the paper.
struct SPlacedPass {
    SHeadPass pass;
    double shift; ///< all moves' errors up to this pass, row pitches; positive is further down
};

/// Where a nozzle row prints, relative to where it should, and how much.
struct SRowPlace {
    double shiftX; ///< along the row, row pitches; positive is to the right
    double shiftY; ///< along the paper, row pitches; positive is further down
    double volume; ///< share of the wanted drop volume; 0 for a dead row
};

/// The errors of a press, applied: where each pass, row and dot goes.
/// Thread-safety: read-only after construction; any number of threads.
class CDotPlacement {
public:
    /// @throws std::invalid_argument for errors that SheetErrors_Refusal refuses, and for a constant error
    ///         that takes back the whole move of the paper
    CDotPlacement(const CPassLayout& layout, const SSheetErrors& errors);

    const CPassLayout& Layout() const { return m_layout; }
    /// How much the paper's move to a pass is off, from the pass before; row pitches.
    double MoveError(std::int64_t number) const;
    /// The passes that may print on some lines of the paper, in the order of printing. Each row is taken to be
    /// where its pass is, so the lines should reach as far as rows may be off it.
    std::vector<SPlacedPass> Passes(std::int64_t firstLine, std::int64_t lineCount) const;
    /// The place of a row in a pass.
    SRowPlace Row(const SPlacedPass& pass, int row) const;
    /// The most that a row is off its pass along the paper, in row pitches.
    double RowShiftY_Max() const { return m_rowShiftYMax; }
    /// The standard deviation of the dots' volumes; 0 when all dots of a row are the same.
    double VolumeSigma() const { return m_errors.volumeSigma; }
    /// Random bits for a dot's volume. @param column  of the sheet
    std::uint64_t VolumeBits(const SHeadPass& pass, int row, std::int64_t column) const;

private:
    CPassLayout m_layout;
    SSheetErrors m_errors;
    std::vector<SRowPlace> m_rows; ///< without the errors of the pass
    double m_rowShiftYMax = 0;
};

} // namespace dotweave
