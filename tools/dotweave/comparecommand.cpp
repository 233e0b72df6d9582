#include "comparecommand.h"

#include "comparison.h"
#include "maskbytes.h"
#include "maskcreation.h"
#include "orderedtasks.h"
#include "outputtexts.h"
#include "picture/picturepng.h"
#include "progress.h"
#include "record/textquote.h"
#include "usageerror.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <memory>
#include <ostream>
#include <sstream>
#include <utility>

namespace dotweave {

namespace {

using CMasks = std::vector<std::unique_ptr<CMaskData_Base>>;

constexpr int ROWS_MAX = 20000;

void Mode_Add(const std::string& name, std::unique_ptr<CMaskData_Base> mask, SComparison& comparison,
              CMasks& masks)
{
    SComparedMode mode;
    mode.name = name;
    mode.param = mask->MaskParam_Input();
    mode.stepRows = StepRows(CPassLayout(*mask));
    mode.rowsPerPass = RowsPerPass(CPassLayout(*mask));
    comparison.modes.push_back(mode);
    masks.push_back(std::move(mask));
}

/// The mode with hard edges beside a feathered one; nothing when the library refuses it.
void HardEdges_Add(SComparison& comparison, CMasks& masks)
{
    const SMaskParam param = HardEdges_Of(*masks.back());
    const bool isHard = masks.back()->MaskParam_Current().featherMode == FeatherMode_None &&
                        masks.back()->MaskParam_Current().featherNozzleType != FeatherNozzle_Smooth_3_Sine;
    auto mask = std::make_unique<CMaskData_Base>();
    if (isHard || !mask->Create(param))
        return;
    const std::string name = comparison.modes.back().name + ", hard";
    comparison.modes.back().hardEdges = static_cast<int>(comparison.modes.size());
    Mode_Add(name, std::move(mask), comparison, masks);
}

/// What one task prints.
struct SPrint {
    SPatchFigures figures;
    SPatch patch;
};

void Modes_Print(const CMasks& masks, SSheetErrors errors, const SJudgeOptions& options, bool wantsPatches,
                 CConsole& console, SComparison& comparison)
{
    const auto errorCount = static_cast<int>(comparison.advances.size());
    const int count = static_cast<int>(masks.size()) * errorCount;
    for (const auto& mask : masks)
        for (const double advance : comparison.advances) {
            errors.advanceConstant = advance;
            Errors_Check(CPassLayout(*mask), errors);
        }
    CProgress progress(console, "prints", count);
    int done = 0;
    OrderedTasks_Run(
        count,
        [&](int task) {
            SSheetErrors own = errors;
            own.advanceConstant = comparison.advances[static_cast<std::size_t>(task % errorCount)];
            SPrint print;
            print.figures = Mode_Judge(*masks[static_cast<std::size_t>(task / errorCount)], own, options,
                                       wantsPatches ? &print.patch : nullptr);
            return print;
        },
        [&](SPrint print) {
            SComparedMode& mode = comparison.modes[static_cast<std::size_t>(done++ / errorCount)];
            mode.figures.push_back(std::move(print.figures));
            mode.patches.push_back(std::move(print.patch));
            progress.Done_Add();
        });
}

} // namespace

CCompareCommand::CCompareCommand(CLI::App& app)
    : CCommand(app, "compare", "Compare print modes under the same errors of the press",
               "dotweave compare production production-smooth-3 --height 272\n"
               "dotweave compare speed speed-smooth-3 --height 272 --sheet speed.png"),
      m_press(Options()),
      m_height(Options(), "--height", "of the patches in nozzle rows; whole steps that fit, at least one", 1,
               ROWS_MAX, SJudgeOptions().heightRows),
      m_width(Options(), "--width", "of the patches in nozzle row pitches", 1, ROWS_MAX,
              SJudgeOptions().widthRows)
{
    Options()
        .add_option("MODE", m_words,
                    "presets, mode files or result folders; the first one's area per hour is 1")
        ->type_name("")
        ->required();
    Options()
        .add_option("--advances", m_advances,
                    "errors of every move of the paper, in nozzle row pitches, from -1 to 1; default "
                    "0,0.25,0.5,1; all other errors are the same for all prints")
        ->type_name("LIST");
    Options().add_flag(
        "--no-hard-edges", m_isWithoutHardEdges,
        "leave out the mode with hard edges and the same step that stands beside each feathered "
        "one for fairness");
    Options().add_option("--sheet", m_sheetFile, "PNG: all prints side by side")->type_name("FILE");
    Json_Add("an object with modes and their prints");
}

std::vector<double> CCompareCommand::Advances() const
{
    std::vector<double> advances;
    std::istringstream list(m_advances);
    for (std::string one; std::getline(list, one, ',');) {
        double advance = 0;
        const auto [end, error] = std::from_chars(one.data(), one.data() + one.size(), advance);
        if (error != std::errc() || end != one.data() + one.size() || !(advance >= -1 && advance <= 1))
            throw CUsageError("--advances: \"" + Text_Quote(one) +
                              "\" is not allowed; allowed: numbers from -1 to 1, such as 0,0.25,0.5,1");
        advances.push_back(advance);
    }
    if (advances.empty())
        throw CUsageError(
            "--advances: \"\" is not allowed; allowed: numbers from -1 to 1, such as 0,0.25,0.5,1");
    return advances;
}

EExitStatus CCompareCommand::Run(CConsole& console) const
{
    OutputNames_Check({{"--sheet", m_sheetFile}});
    if (IsJson() && m_sheetFile == "-")
        throw CUsageError("--json: standard output takes one thing at a time; allowed with it: files");
    SComparison comparison;
    comparison.advances = Advances();
    SJudgeOptions options;
    options.patch = m_press.Patch({0, 1, 1});
    options.viewing = m_press.Viewing();
    options.tint = m_press.Tint();
    options.heightRows = m_height.Value();
    options.widthRows = m_width.Value();
    static_cast<void>(m_press.Errors());
    CMasks masks;
    for (const std::string& word : m_words) {
        Mode_Add(word, Mask_Create(Mode_ByWord(word), false, console), comparison, masks);
        if (!m_isWithoutHardEdges)
            HardEdges_Add(comparison, masks);
    }
    Modes_Print(masks, m_press.Errors(CPassLayout(*masks.front())), options, !m_sheetFile.empty(), console,
                comparison);
    if (!m_sheetFile.empty()) {
        const std::vector<std::uint8_t> png = Picture_Png(Comparison_Sheet(comparison, options.patch));
        OutputTexts_Write(std::vector<SOutputText>{{m_sheetFile, std::string(png.begin(), png.end())}});
    }
    if (IsJson())
        console.Out() << Comparison_Json(comparison).dump(4) << '\n';
    else if (m_sheetFile != "-")
        Comparison_Print(comparison, console.Out());
    return ExitStatus_Good;
}

} // namespace dotweave
