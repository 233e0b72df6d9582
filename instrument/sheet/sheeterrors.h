#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace dotweave {

/// A nozzle row that lays too little or too much ink.
struct SWeakRow {
    int row;       ///< 0 to the head's rows - 1
    double volume; ///< share of the wanted drop volume, 0 to 2
};

/// What is wrong with a press. Nothing is, by default.
///
/// Unit: the nozzle row pitch, across the paper too; it is XResPass columns wide and YResPass lines high.
/// Advance: the paper's move from one pass of the head to the next. Its errors add up from pass to pass, as
///          on a press that measures each move and not the place; pass number 0 is where it should be.
///          Move n, from pass n - 1 to pass n, is off by
///          advanceConstant + advanceSigma * N(n) + advancePeriodic * sin(2 pi (n / periodMoves + phase)).
/// Chance: every random number is a pure function of the seed and of what it is drawn for: a move, a row, a
///         dot. So it depends on no order, no thread and no compiler's library (sheet/chance.h).
struct SSheetErrors {
    double advanceConstant = 0; ///< added to every move; row pitches, -1 to 1
    double advanceSigma = 0;    ///< standard deviation of a move; row pitches, 0 to 1
    double advancePeriodic = 0; ///< amplitude of a move's periodic error, as of an eccentric roller; row
                                ///< pitches, 0 to 1
    double periodMoves = 8;     ///< period of that error in moves, 2 to 10000
    double periodPhase = 0;     ///< its phase in periods, 0 to 1
    double rowSigmaX = 0;       ///< standard deviation of each row's own offset along the row; 0 to 2
    double rowSigmaY = 0;       ///< the same along the paper; 0 to 2
    double tilt = 0;            ///< shift along the row from one nozzle row to the next; the head turns about
                                ///< its middle; -0.1 to 0.1
    double bidirectional = 0;   ///< shift along the row of the passes with odd numbers; -4 to 4
    double volumeSigma = 0;     ///< standard deviation of a dot's volume as a share of it, 0 to 0.5
    std::vector<int> deadRows;  ///< nozzle rows that print nothing; any order
    std::vector<SWeakRow> weakRows; ///< of several entries for a row the last one counts
    std::uint64_t seed = 1;         ///< of everything random

    /// Whether nothing is wrong: the sheet is then the ideal one.
    bool IsNone() const;
};

/// One number of SSheetErrors as options, files and messages know it. One table serves all of them.
struct SErrorField {
    const char* name; ///< as in SSheetErrors
    const char* help; ///< meaning and unit, one line
    double SSheetErrors::*member;
    double lowest;
    double highest;
};

/// All numbers of SSheetErrors but the seed, in the order of their declaration.
std::span<const SErrorField> ErrorFields();

/// Why a record of errors does not suit a head.
/// @param rowCount  nozzle rows of the head
/// @return one line that names the field, its value and the range; empty when the record is good
std::string SheetErrors_Refusal(const SSheetErrors& errors, int rowCount);

} // namespace dotweave
