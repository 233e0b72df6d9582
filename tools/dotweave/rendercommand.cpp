#include "rendercommand.h"

#include "outputtexts.h"
#include "picture/contactsheet.h"
#include "picture/maskdrawing.h"
#include "picture/picturepng.h"
#include "progress.h"
#include "usageerror.h"

#include <limits>
#include <ostream>

namespace dotweave {

namespace {

constexpr int INT_HIGHEST = std::numeric_limits<int>::max(); // the mode has its own limit
constexpr int SCALE_MOST = 64;
constexpr int SHEET_WIDTH = 2400; // pixels that a contact sheet takes across without --reduction
constexpr std::int64_t PIXELS_MAX = std::int64_t{1} << 28;

void Size_Check(std::int64_t pixels, const std::string& remedy)
{
    if (pixels > PIXELS_MAX)
        throw CUsageError("the picture would have " + std::to_string(pixels) + " pixels; allowed: up to " +
                          std::to_string(PIXELS_MAX) + "; " + remedy);
}

} // namespace

CRenderCommand::CRenderCommand(CLI::App& app)
    : CCommand(app, "render", "Draw masks as a PNG to look at: one mask magnified, or all side by side",
               "dotweave render --preset speed --lines 40 --columns 60 --magnify 12 --out dots.png\n"
               "dotweave render --preset quality --sheet --out all.png"),
      m_creation(Options()), m_choice(Options(), "0 without this option"),
      m_firstLine(Options(), "--line", "first mask line", 0, INT_HIGHEST, 0),
      m_lineCount(Options(), "--lines", "mask lines; to the last without this option", 1, INT_HIGHEST),
      m_firstColumn(Options(), "--column", "first pixel column", 0, INT_HIGHEST, 0),
      m_columnCount(Options(), "--columns", "pixel columns; to the last without this option", 1, INT_HIGHEST),
      m_magnification(Options(), "--magnify", "pixels of the picture across one pixel of the mask", 1,
                      SCALE_MOST, 1),
      m_reduction(Options(), "--reduce",
                  "with --sheet: pixels of a mask across one grey pixel; without this option as many as make "
                  "the sheet 2400 pixels wide at most",
                  1, SCALE_MOST)
{
    Options().add_flag("--sheet", m_isSheet,
                       "a contact sheet: colours downwards, band positions to the right");
    Options().add_flag("--plain", m_isPlain, "no title and no numbers of lines and columns");
    Options().add_option("--out", m_file, "PNG file; - is standard output")->type_name("FILE")->required();
}

SPixelPicture CRenderCommand::Mask_Draw(const CMaskView& view) const
{
    const auto [color, position] = m_choice.First(view);
    const SMaskLines lines = view.Lines(color, position);
    SMaskWindow window = {};
    window.firstLine = m_firstLine.Value(lines.height - 1);
    window.lineCount = m_lineCount.Value(lines.height - window.firstLine);
    window.firstColumn = m_firstColumn.Value(lines.width - 1);
    window.columnCount = m_columnCount.Value(lines.width - window.firstColumn);
    window.magnification = m_magnification.Value();
    const std::string title =
        m_isPlain ? "" : "colour " + std::to_string(color) + ", position " + std::to_string(position);
    Size_Check(MaskDrawing_Pixels(window, title, !m_isPlain),
               "--lines, --columns and --magnify make it smaller");
    return MaskDrawing_Make(lines, window, title, !m_isPlain);
}

SPixelPicture CRenderCommand::Sheet_Draw(const CMaskView& view) const
{
    const int reduction =
        m_reduction.IsGiven() ? m_reduction.Value() : ContactSheet_Reduction(view, SHEET_WIDTH);
    Size_Check(ContactSheet_Pixels(view, reduction), "--reduce makes it smaller");
    return ContactSheet_Make(view, reduction);
}

void CRenderCommand::Options_Check() const
{
    const bool isPart = m_choice.IsColorGiven() || m_choice.IsPositionGiven() || m_firstLine.IsGiven() ||
                        m_lineCount.IsGiven() || m_firstColumn.IsGiven() || m_columnCount.IsGiven() ||
                        m_magnification.IsGiven() || m_isPlain;
    if (m_isSheet && isPart)
        throw CUsageError("--sheet shows all masks; allowed with it: --reduce");
    if (!m_isSheet && m_reduction.IsGiven())
        throw CUsageError("--reduce is for --sheet; allowed without: --magnify");
}

EExitStatus CRenderCommand::Run(CConsole& console) const
{
    Options_Check();
    OutputNames_Check({{"--out", m_file}});
    const std::unique_ptr<CMaskData_Base> mask = m_creation.Create(console);
    const CMaskView view(*mask);
    SPixelPicture picture;
    std::vector<std::uint8_t> png;
    {
        const CProgress progress(console, "drawing");
        picture = m_isSheet ? Sheet_Draw(view) : Mask_Draw(view);
        png = Picture_Png(picture);
    }
    OutputTexts_Write(std::vector<SOutputText>{{m_file, std::string(png.begin(), png.end())}});
    if (m_file != "-")
        console.Summary() << m_file << ": " << picture.width << " x " << picture.height << " pixels\n";
    return ExitStatus_Good;
}

} // namespace dotweave
