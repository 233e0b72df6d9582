#include "sheet/uniformcheck.h"

#include "sheet/idealsheet.h"

#include <vector>

namespace dotweave {

namespace {

struct SCauseWords {
    const char* name;
    const char* text;
};

constexpr std::array<SCauseWords, UNEVEN_CAUSE_COUNT> WORDS = {{
    {"threshold-zero", "threshold 0 never prints"},
    {"feather-level", "thresholds above the feather level never print"},
    {"feather-zone", "feather zones of smooth-2 print once"},
    {"widened", "widened ranges of smooth-3 do not tile the scale"},
    {"sine-edge", "the sine edge moves dots"},
    {"not-as-built", "the bytes are not what the mode says"},
}};

/// What the passes over one line of the sheet do to its pixels.
struct SSheetLine {
    explicit SSheetLine(int width)
        : thresholds(static_cast<std::size_t>(width), -1), tableCounts(static_cast<std::size_t>(width)),
          counts(static_cast<std::size_t>(width)), isMoved(static_cast<std::size_t>(width))
    {}

    std::vector<int> thresholds;
    std::vector<int> tableCounts; ///< prints by the cut table alone
    std::vector<int> counts;      ///< prints by the whole law
    std::vector<std::uint8_t> isMoved;
};

SSheetLine Line_Collect(const CIdealSheet& sheet, const CMaskLaw& law, int color, std::int64_t sheetLine)
{
    SSheetLine line(sheet.ColumnCount());
    SMaskLawLine lawLine;
    for (const SHeadPass& pass : sheet.Passes()) {
        const int row = law.Layout().Row(pass, sheetLine);
        if (row < 0)
            continue;
        law.Line(color, pass.position, law.Layout().MaskLine(pass, row), lawLine);
        const auto step = static_cast<std::size_t>(law.Layout().XResPass());
        for (auto column = static_cast<std::size_t>(pass.xPass); column < line.counts.size();
             column += step) {
            line.thresholds[column] = lawLine.thresholds[column];
            line.tableCounts[column] += lawLine.tableDots[column];
            line.counts[column] += lawLine.dots[column];
            line.isMoved[column] |= lawLine.movedPixels[column];
        }
    }
    return line;
}

} // namespace

const char* UnevenCause_Name(EUnevenCause cause)
{
    return WORDS[static_cast<std::size_t>(cause)].name;
}

const char* UnevenCause_Text(EUnevenCause cause)
{
    return WORDS[static_cast<std::size_t>(cause)].text;
}

void SUniformCheck::Add(const SUniformCheck& other)
{
    const auto add = [](SSheetShare& sum, const SSheetShare& part) {
        sum.pixelCount += part.pixelCount;
        sum.lineCount += part.lineCount;
    };
    add(all, other.all);
    add(uneven, other.uneven);
    for (std::size_t i = 0; i < causes.size(); ++i)
        add(causes[i], other.causes[i]);
}

SUniformCheck Uniform_Check(const CMaskData_Base& mask, const CMaskLaw& law, int color,
                            std::int64_t firstLine, int lineCount)
{
    const int times = mask.MaskParam_Current().colorTimes;
    const bool isSmooth3 = mask.MaskParam_Current().featherMode == FeatherMode_Nozzle &&
                           mask.MaskParam_Current().featherNozzleType != FeatherNozzle_Smooth_2;
    const CIdealSheet sheet(mask, color, {firstLine, lineCount, law.Layout().MaskWidth()});
    const auto cause = [&](const SSheetLine& line, std::size_t column, int count) {
        if (count != line.counts[column])
            return EUnevenCause::NotAsBuilt;
        if (line.isMoved[column] != 0 && count != line.tableCounts[column])
            return EUnevenCause::SineEdge;
        if (line.thresholds[column] == 0)
            return EUnevenCause::ThresholdZero;
        if (line.thresholds[column] > law.Level_Max())
            return EUnevenCause::FeatherLevel;
        return isSmooth3 ? EUnevenCause::Widened : EUnevenCause::FeatherZone;
    };
    SUniformCheck check;
    check.all = {std::int64_t{lineCount} * sheet.ColumnCount(), lineCount};
    for (int line = 0; line < lineCount; ++line) {
        const SSheetLine expected = Line_Collect(sheet, law, color, firstLine + line);
        std::array<std::int64_t, UNEVEN_CAUSE_COUNT> pixels = {};
        for (int column = 0; column < sheet.ColumnCount(); ++column)
            if (const int count = sheet.Count(line, column); count != times)
                ++pixels[static_cast<std::size_t>(cause(expected, static_cast<std::size_t>(column), count))];
        std::int64_t uneven = 0;
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            uneven += pixels[i];
            check.causes[i].pixelCount += pixels[i];
            check.causes[i].lineCount += pixels[i] > 0 ? 1 : 0;
        }
        check.uneven.pixelCount += uneven;
        check.uneven.lineCount += uneven > 0 ? 1 : 0;
    }
    return check;
}

} // namespace dotweave
