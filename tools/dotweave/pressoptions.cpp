#include "pressoptions.h"

#include "record/recordfields.h"
#include "rowlist.h"
#include "sheet/dotplacement.h"
#include "sheet/tint.h"
#include "usageerror.h"

#include <cstddef>
#include <stdexcept>

namespace dotweave {

namespace {

constexpr char GROUP_ERRORS[] = "Errors of the press";
constexpr char GROUP_PAPER[] = "Ink, paper and eye";
constexpr int SEED_MAX = 1000000000;

} // namespace

CPressOptions::CPressOptions(CLI::App& command)
    : m_seed(command, "--seed", "of everything random", 0, SEED_MAX, 1),
      m_tint(command, "--tint",
             "share of the pixels that get ink, in percent, screened by a threshold matrix", 0.0, 100.0,
             100.0),
      m_dotDiameter(command, "--dot-diameter", "of a dot on paper, in nozzle row pitches", 0.1, 8.0,
                    SPatchOptions().dotDiameter),
      m_supersample(command, "--supersample", "cells of a pixel, across and down", 1, 16,
                    SPatchOptions().supersample),
      m_overlap(command, "--overlap", "overlapping dots: one film of ink, or densities that add",
                {"union", "density"}),
      m_paper(command, "--paper", "reflectance of unprinted paper", 0.01, 1.0, PAPER_REFLECTANCE),
      m_ink(command, "--ink", "reflectance of one full layer of ink, at most that of the paper", 0.001, 1.0,
            INK_REFLECTANCE),
      m_rowsPerInch(command, "--rows-per-inch", "nozzle rows of the head per inch", 10.0, 10000.0,
                    SViewing().rowsPerInch),
      m_distance(command, "--distance", "of the eye from the paper, in mm", 50.0, 10000.0,
                 SViewing().distanceMm)
{
    for (const SErrorField& field : ErrorFields()) {
        m_errors.emplace_back(command, OptionName(field.name), field.help, field.lowest, field.highest,
                              SSheetErrors().*field.member);
        command.get_option(OptionName(field.name))->group(GROUP_ERRORS);
    }
    command.add_option("--dead", m_deadRows, "nozzle rows that print nothing, such as 17,200-204")
        ->type_name("ROWS");
    command
        .add_option("--weak", m_weakRows,
                    "nozzle rows with another drop volume, as a share from 0 to 2 of the wanted one, such as "
                    "17:0.5,200-204:0.8")
        ->type_name("ROWS");
    for (const char* name : {"--dead", "--weak", "--seed"})
        command.get_option(name)->group(GROUP_ERRORS);
    for (const char* name : {"--tint", "--dot-diameter", "--supersample", "--overlap", "--paper", "--ink",
                             "--rows-per-inch", "--distance"})
        command.get_option(name)->group(GROUP_PAPER);
}

SSheetErrors CPressOptions::Errors() const
{
    SSheetErrors errors;
    std::size_t option = 0;
    for (const SErrorField& field : ErrorFields())
        errors.*field.member = m_errors[option++].Value();
    errors.seed = static_cast<std::uint64_t>(m_seed.Value());
    return errors;
}

SSheetErrors CPressOptions::Errors(const CPassLayout& layout) const
{
    SSheetErrors errors = Errors();
    for (const SWeakRow& dead : RowList_Parse("--dead", m_deadRows, false, layout.RowCount()))
        errors.deadRows.push_back(dead.row);
    errors.weakRows = RowList_Parse("--weak", m_weakRows, true, layout.RowCount());
    Errors_Check(layout, errors);
    return errors;
}

SPatchOptions CPressOptions::Patch(const SSheetWindow& window) const
{
    SPatchOptions options;
    options.window = window;
    options.dotDiameter = m_dotDiameter.Value();
    options.supersample = m_supersample.Value();
    options.overlap = m_overlap.Value() == 0 ? EOverlap::Union : EOverlap::Density;
    options.paperReflectance = m_paper.Value();
    options.inkReflectance = m_ink.Value(options.paperReflectance);
    return options;
}

SViewing CPressOptions::Viewing() const
{
    return {m_rowsPerInch.Value(), m_distance.Value()};
}

std::optional<CBitImage> TintImage(double share, int color)
{
    if (share >= 1)
        return std::nullopt;
    return Tint_Make(share, Tint_Matrix(color));
}

void Errors_Check(const CPassLayout& layout, const SSheetErrors& errors)
{
    try {
        const CDotPlacement placement(layout, errors);
    } catch (const std::invalid_argument& error) {
        throw CUsageError(error.what());
    }
}

} // namespace dotweave
