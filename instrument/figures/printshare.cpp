#include "figures/printshare.h"

#include <stdexcept>

namespace dotweave {

static double Share(std::int64_t part, std::int64_t whole)
{
    return whole == 0 ? 0 : static_cast<double>(part) / static_cast<double>(whole);
}

double SPrintShare::WrongShare() const
{
    return Share(fewerCount + moreCount, pixelCount);
}

double SPrintShare::WrongLineShare() const
{
    return Share(wrongLineCount, lineCount);
}

SPrintShare PrintShare(const CIdealSheet& sheet, const CWantedPrints& wanted)
{
    SPrintShare share;
    share.lineCount = sheet.LineCount();
    share.pixelCount = share.lineCount * sheet.ColumnCount();
    for (int line = 0; line < sheet.LineCount(); ++line) {
        const std::int64_t wrongBefore = share.fewerCount + share.moreCount;
        for (int column = 0; column < sheet.ColumnCount(); ++column) {
            const int difference = sheet.Count(line, column) - wanted(line, column);
            share.fewerCount += difference < 0 ? 1 : 0;
            share.moreCount += difference > 0 ? 1 : 0;
        }
        share.wrongLineCount += share.fewerCount + share.moreCount > wrongBefore ? 1 : 0;
    }
    return share;
}

SPrintShare PrintShare_Uniform(const CIdealSheet& sheet, int times)
{
    return PrintShare(sheet, [times](int /*line*/, int /*column*/) { return times; });
}

SPrintShare PrintShare_Ideal(const CIdealSheet& sheet, const CIdealSheet& ideal)
{
    if (sheet.LineCount() != ideal.LineCount() || sheet.ColumnCount() != ideal.ColumnCount())
        throw std::invalid_argument("sheets of different sizes cannot be compared");
    return PrintShare(sheet, [&ideal](int line, int column) { return ideal.Count(line, column); });
}

} // namespace dotweave
