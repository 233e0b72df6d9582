#include "simulatecommand.h"

#include "figures/patchfigures.h"
#include "figuretexts.h"
#include "fileerror.h"
#include "outputtexts.h"
#include "picture/paperpicture.h"
#include "picture/pictureread.h"
#include "picture/profileplot.h"
#include "progress.h"
#include "record/recordjson.h"
#include "sheet/inkcolours.h"
#include "sheet/inkplanes.h"
#include "sheet/sheetmaps.h"
#include "sheet/tint.h"
#include "textfile.h"
#include "usageerror.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>
#include <optional>
#include <ostream>

namespace dotweave {

namespace {

constexpr int SIDE_MAX = 20000;
constexpr int LINES_DEFAULT = 1088; // as many whole steps as fit, so that a regular print repeats in them

std::string Png_Text(const std::vector<std::uint8_t>& bytes)
{
    return {bytes.begin(), bytes.end()};
}

std::vector<SLegendEntry> Coverage_Legend(int times)
{
    return {{MAP_RIGHT, "printed as often as wanted: " + std::to_string(times)},
            {MAP_MISSING, "never printed"},
            {MAP_FEWER, "printed too seldom"},
            {MAP_MORE, "printed too often"}};
}

std::vector<SLegendEntry> Passes_Legend(int turnCount)
{
    std::vector<SLegendEntry> legend;
    legend.reserve(MAP_TURN_COUNT);
    for (int turn = 0; turn < std::min(turnCount, MAP_TURN_COUNT); ++turn)
        legend.push_back({MapColor_Turn(turn), "pass " + std::to_string(turn + 1) + " over the line"});
    return legend;
}

} // namespace

/// What is printed, and what comes of it.
struct CSimulateCommand::SPrinting {
    std::unique_ptr<CMaskData_Base> mask;
    SSheetErrors errors;
    SPatchOptions options;
    SViewing viewing;
    int color = 0;                                ///< whose figures and maps are wanted
    std::vector<int> colors;                      ///< planes that print
    std::vector<std::optional<CBitImage>> images; ///< of each of them; none is a full tone
    std::vector<SPatch> patches;
    SPatchFigures figures;

    const CBitImage* Image() const
    {
        const auto place = std::find(colors.begin(), colors.end(), color) - colors.begin();
        const std::optional<CBitImage>& image = images[static_cast<std::size_t>(place)];
        return image ? &*image : nullptr;
    }

    void Print(CConsole& console)
    {
        CProgress progress(console, "printing", options.window.lineCount * static_cast<int>(colors.size()));
        for (std::size_t i = 0; i < colors.size(); ++i) {
            CFigureCollector collector(CPassLayout(*mask), options.window, viewing);
            SPatch patch = {options.window.columnCount, options.window.lineCount, {}};
            const CBitImage* const image = images[i] ? &*images[i] : nullptr;
            Patch_Print(*mask, colors[i], image, errors, options, [&](const SPatchLines& lines) {
                collector(lines);
                patch.reflectance.insert(
                    patch.reflectance.end(), lines.reflectance,
                    std::next(lines.reflectance, std::ptrdiff_t{lines.lineCount} * lines.width));
                progress.Done_Add(lines.lineCount);
            });
            patches.push_back(std::move(patch));
            if (colors[i] == color)
                figures = collector.Figures();
        }
        figures.printShare =
            PrintShare_Ideal(CIdealSheet(*mask, color, options.window, Image(), errors.deadRows),
                             CIdealSheet(*mask, color, options.window, Image()));
    }
};

CSimulateCommand::CSimulateCommand(CLI::App& app)
    : CCommand(app, "simulate", "Print a mode with the errors of a press, look at it and judge it",
               "dotweave simulate --preset production --advance-constant 0.25 --patch patch.png\n"
               "dotweave simulate --preset speed --dead 17,200-204 --coverage dead.png --json"),
      m_creation(Options()), m_press(Options()),
      m_color(Options(), "--color", "colour plane that is judged, from 0; with --image all planes print", 0,
              1000000, 0),
      m_lines(Options(), "--lines", "lines of the patch; without this option whole steps, up to 1088 lines",
              1, SIDE_MAX),
      m_columns(Options(), "--columns", "columns of the patch", 1, SIDE_MAX, 544)
{
    Options()
        .add_option("--image", m_imageFile,
                    "PNG file that is printed instead of a tint, a pixel for each pixel of the output; grey "
                    "prints with the plane of --color, colour is split into planes 0 to 3 as black, cyan, "
                    "magenta, yellow")
        ->type_name("FILE");
    const auto add = [this](const char* name, std::string& file, const char* help) {
        Options().add_option(name, file, help)->type_name("FILE")->group("Output");
    };
    add("--patch", m_patchFile, "PNG: the print, with a scale bar and the resolution of the press");
    add("--coverage", m_coverageFile, "PNG: pixels that are printed too seldom or too often");
    add("--passes", m_passesFile, "PNG: which pass over its line prints each pixel first");
    add("--profile", m_profileFile, "SVG: lightness of each line");
    Json_Add("an object with mode, errors, patch and figures");
}

SSheetWindow CSimulateCommand::Window(const CPassLayout& layout) const
{
    const int steps = std::max(1, LINES_DEFAULT / layout.StepLines());
    const int whole = std::min(steps * layout.StepLines(), SIDE_MAX);
    return {layout.SteadyLine_First(), m_lines.IsGiven() ? m_lines.Value() : whole, m_columns.Value()};
}

void CSimulateCommand::Image_Read(SPrinting& printing) const
{
    std::ifstream stream = TextFile_Open(m_imageFile);
    const std::vector<char> bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    SPixelPicture picture;
    try {
        picture = Picture_Read({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    } catch (const std::runtime_error& error) {
        throw CFileError(m_imageFile, error.what());
    }
    if (picture.width > SIDE_MAX || picture.height > SIDE_MAX)
        throw CFileError(m_imageFile, "has " + std::to_string(picture.width) + " x " +
                                          std::to_string(picture.height) + " pixels; allowed: up to " +
                                          std::to_string(SIDE_MAX) + " each way");
    printing.options.window.lineCount = picture.height;
    printing.options.window.columnCount = picture.width;
    const bool isGrey = picture.channelCount == 1;
    const std::vector<SInkPlane> planes =
        isGrey ? std::vector<SInkPlane>{InkPlane_Grey(picture)} : InkPlanes_Colour(picture);
    const int colorCount = printing.mask->MaskParam_Current().colorCount;
    for (std::size_t i = 0; i < planes.size(); ++i) {
        const int color = isGrey ? printing.color : static_cast<int>(i);
        if (color >= colorCount)
            continue; // a press without this ink
        printing.colors.push_back(color);
        printing.images.emplace_back(InkPlane_Screen(planes[i], Tint_Matrix(color)));
    }
    if (std::find(printing.colors.begin(), printing.colors.end(), printing.color) == printing.colors.end())
        throw CUsageError("--color: " + std::to_string(printing.color) +
                          " has no plane in this picture; allowed: a number from 0 to 3");
}

void CSimulateCommand::Outputs_Make(const SPrinting& printing, std::vector<SOutputText>& outputs) const
{
    const CPassLayout layout(*printing.mask);
    const SPaperScale scale = {printing.viewing.rowsPerInch, layout.XResPass(), layout.YResPass()};
    if (!m_patchFile.empty())
        outputs.push_back(
            {m_patchFile, Png_Text(PaperPicture_Png(
                              InkPicture(printing.patches, printing.colors, printing.options), scale))});
    if (!m_coverageFile.empty() || !m_passesFile.empty()) {
        const CIdealSheet sheet(*printing.mask, printing.color, printing.options.window, printing.Image(),
                                printing.errors.deadRows);
        const int times = printing.mask->MaskParam_Current().colorTimes;
        if (!m_coverageFile.empty())
            outputs.push_back(
                {m_coverageFile, Png_Text(PaperPicture_Png(CoverageMap_Make(sheet, printing.Image(), times),
                                                           scale, Coverage_Legend(times)))});
        if (!m_passesFile.empty())
            outputs.push_back(
                {m_passesFile, Png_Text(PaperPicture_Png(PassMap_Make(sheet), scale,
                                                         Passes_Legend(PassMap_TurnCount(sheet))))});
    }
    const double pitchMm = RowPitchMm(printing.viewing) / layout.YResPass();
    if (!m_profileFile.empty())
        outputs.push_back(
            {m_profileFile, ProfilePlot_Svg(printing.figures.lines, pitchMm, pitchMm * layout.StepLines())});
}

EExitStatus CSimulateCommand::Run(CConsole& console) const
{
    const std::vector<SOutputName> names = {{"--patch", m_patchFile},
                                            {"--coverage", m_coverageFile},
                                            {"--passes", m_passesFile},
                                            {"--profile", m_profileFile}};
    OutputNames_Check(names);
    const bool isOutTaken =
        std::any_of(names.begin(), names.end(), [](const SOutputName& one) { return one.file == "-"; });
    if (IsJson() && isOutTaken)
        throw CUsageError("--json: standard output takes one thing at a time; allowed with it: files");
    if (!m_imageFile.empty() && (m_press.IsTintGiven() || m_lines.IsGiven() || m_columns.IsGiven()))
        throw CUsageError(
            "--image: the picture has a tint and a size; allowed without --tint, --lines, --columns");
    SPrinting printing;
    static_cast<void>(m_press.Errors()); // wrong values are refused before anything is built
    printing.options = m_press.Patch({0, 1, m_columns.Value()});
    printing.viewing = m_press.Viewing();
    const double tint = m_press.Tint();
    printing.mask = m_creation.Create(console);
    const CPassLayout layout(*printing.mask);
    printing.errors = m_press.Errors(layout);
    printing.color = m_color.Value(printing.mask->MaskParam_Current().colorCount - 1);
    printing.options.window = Window(layout);
    if (m_imageFile.empty()) {
        printing.colors = {printing.color};
        printing.images.push_back(TintImage(tint, printing.color));
    } else {
        Image_Read(printing);
    }
    printing.Print(console);
    std::vector<SOutputText> outputs;
    {
        const CProgress progress(console, "drawing");
        Outputs_Make(printing, outputs);
    }
    OutputTexts_Write(outputs);
    if (isOutTaken)
        return ExitStatus_Good;
    if (!IsJson()) {
        Figures_Print(printing.figures, console.Out());
        return ExitStatus_Good;
    }
    const SSheetWindow& window = printing.options.window;
    const nlohmann::ordered_json object = {{"mode", Record_Json(printing.mask->MaskParam_Input())},
                                           {"errors", Errors_Json(printing.errors)},
                                           {"patch",
                                            {{"color", printing.color},
                                             {"firstLine", window.firstLine},
                                             {"lines", window.lineCount},
                                             {"columns", window.columnCount},
                                             {"stepLines", layout.StepLines()},
                                             {"tint", tint}}},
                                           {"figures", Figures_Json(printing.figures)}};
    console.Out() << object.dump(4) << '\n';
    return ExitStatus_Good;
}

} // namespace dotweave
