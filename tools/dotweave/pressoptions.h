#pragma once

#include "figures/contrastsensitivity.h"
#include "sheet/bitimage.h"
#include "sheet/printedpatch.h"
#include "sheet/sheeterrors.h"
#include "valueoption.h"

#include <CLI/App.hpp>

#include <deque>
#include <optional>
#include <string>

namespace dotweave {

/// The options of a press: its errors, its ink, and how the print is looked at. All commands that print
/// patches share them.
/// Lifetime: the command keeps pointers into this object, which therefore stays where it is.
class CPressOptions {
public:
    explicit CPressOptions(CLI::App& command);
    CPressOptions(const CPressOptions&) = delete;
    CPressOptions& operator=(const CPressOptions&) = delete;
    ~CPressOptions() = default;

    /// All errors but those of single rows. @throws CUsageError
    SSheetErrors Errors() const;
    /// All errors for one head.
    /// @throws CUsageError, also for rows that it does not have and for errors that its paper cannot make
    SSheetErrors Errors(const CPassLayout& layout) const;
    /// How dots become ink on a window of the sheet. @throws CUsageError
    SPatchOptions Patch(const SSheetWindow& window) const;
    /// @throws CUsageError
    SViewing Viewing() const;
    /// Share of the pixels that are wanted, 0 to 1. @throws CUsageError
    double Tint() const { return m_tint.Value() / 100; }
    bool IsTintGiven() const { return m_tint.IsGiven(); }

private:
    std::deque<CNumberOption<double>> m_errors; // in the order of ErrorFields()
    std::string m_deadRows;
    std::string m_weakRows;
    CNumberOption<int> m_seed;
    CNumberOption<double> m_tint;
    CNumberOption<double> m_dotDiameter;
    CNumberOption<int> m_supersample;
    CChoiceOption m_overlap;
    CNumberOption<double> m_paper;
    CNumberOption<double> m_ink;
    CNumberOption<double> m_rowsPerInch;
    CNumberOption<double> m_distance;
};

/// The wanted pixels of a tint; none for a full tone, which needs no image.
std::optional<CBitImage> TintImage(double share, int color);

/// @throws CUsageError for errors that take back the whole move of the paper
void Errors_Check(const CPassLayout& layout, const SSheetErrors& errors);

} // namespace dotweave
