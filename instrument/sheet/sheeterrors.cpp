#include "sheet/sheeterrors.h"

#include <array>
#include <cstdio>

namespace dotweave {

namespace {

using Errors = SSheetErrors;

constexpr SErrorField FIELDS[] = {
    {"advanceConstant", "error of every move of the paper, in nozzle row pitches", &Errors::advanceConstant,
     -1, 1},
    {"advanceSigma", "standard deviation of a move of the paper, in nozzle row pitches",
     &Errors::advanceSigma, 0, 1},
    {"advancePeriodic", "amplitude of a periodic error of the moves, in nozzle row pitches",
     &Errors::advancePeriodic, 0, 1},
    {"periodMoves", "period of the periodic error, in moves of the paper", &Errors::periodMoves, 2, 10000},
    {"periodPhase", "phase of the periodic error, in periods", &Errors::periodPhase, 0, 1},
    {"rowSigmaX", "standard deviation of each nozzle row's place along the row, in row pitches",
     &Errors::rowSigmaX, 0, 2},
    {"rowSigmaY", "standard deviation of each nozzle row's place along the paper, in row pitches",
     &Errors::rowSigmaY, 0, 2},
    {"tilt", "shift along the row from one nozzle row to the next, in row pitches", &Errors::tilt, -0.1, 0.1},
    {"bidirectional", "shift along the row of passes with odd numbers, in row pitches",
     &Errors::bidirectional, -4, 4},
    {"volumeSigma", "standard deviation of a dot's volume, as a share of it", &Errors::volumeSigma, 0, 0.5},
};

constexpr double VOLUME_MAX = 2;

std::string RangeText(const char* name, double value, double lowest, double highest)
{
    std::array<char, 160> text = {};
    static_cast<void>(
        std::snprintf(text.data(), text.size(), "%s %g is not from %g to %g", name, value, lowest, highest));
    return text.data();
}

} // namespace

std::span<const SErrorField> ErrorFields()
{
    return FIELDS;
}

bool SSheetErrors::IsNone() const
{
    return advanceConstant == 0 && advanceSigma == 0 && advancePeriodic == 0 && rowSigmaX == 0 &&
           rowSigmaY == 0 && tilt == 0 && bidirectional == 0 && volumeSigma == 0 && deadRows.empty() &&
           weakRows.empty();
}

std::string SheetErrors_Refusal(const SSheetErrors& errors, int rowCount)
{
    for (const SErrorField& field : FIELDS) {
        const double value = errors.*field.member;
        if (!(value >= field.lowest && value <= field.highest)) // a NaN, too
            return RangeText(field.name, value, field.lowest, field.highest);
    }
    for (const int row : errors.deadRows) {
        if (row < 0 || row >= rowCount)
            return RangeText("deadRows: nozzle row", row, 0, rowCount - 1);
    }
    for (const SWeakRow& weak : errors.weakRows) {
        if (weak.row < 0 || weak.row >= rowCount)
            return RangeText("weakRows: nozzle row", weak.row, 0, rowCount - 1);
        if (!(weak.volume >= 0 && weak.volume <= VOLUME_MAX))
            return RangeText("weakRows: volume", weak.volume, 0, VOLUME_MAX);
    }
    return {};
}

} // namespace dotweave
