#include "view/duty.h"

#include "view/maskview.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace dotweave {

namespace {

using CLine = std::vector<std::uint8_t>;

/// Longest run of dots in every xResPass-th pixel from pixel k on, which repeat to the right.
int Run_Longest(const CLine& line, std::size_t k, std::size_t xResPass)
{
    int run = 0, longest = 0, columns = 0;
    for (int round = 0; round < 2; ++round) // the second round closes runs over the edge
        for (std::size_t x = k; x < line.size(); x += xResPass) {
            run = line[x] != 0 ? run + 1 : 0;
            longest = std::max(longest, run);
            columns += round == 0 ? 1 : 0;
        }
    return std::min(longest, columns);
}

void Line_Count(const CLine& line, const CLine* next, std::size_t xResPass, SRowDuty& row)
{
    for (std::size_t x = 0; x < line.size(); ++x) {
        row.dotCount += line[x] != 0 ? 1 : 0;
        row.togetherCount += next != nullptr && line[x] != 0 && (*next)[x] != 0 ? 1 : 0;
    }
    for (std::size_t k = 0; k < xResPass; ++k)
        row.longestRun = std::max(row.longestRun, Run_Longest(line, k, xResPass));
}

} // namespace

double SColorDuty::Share(const SRowDuty& row) const
{
    return chanceCount == 0 ? 0.0 : static_cast<double>(row.dotCount) / static_cast<double>(chanceCount);
}

double SColorDuty::MeanShare() const
{
    const auto add = [this](double sum, const SRowDuty& row) { return sum + Share(row); };
    return rows.empty()
               ? 0.0
               : std::accumulate(rows.begin(), rows.end(), 0.0, add) / static_cast<double>(rows.size());
}

double SColorDuty::Evenness() const
{
    double most = 0.0;
    for (const SRowDuty& row : rows)
        most = std::max(most, Share(row));
    return most == 0.0 ? 0.0 : MeanShare() / most;
}

int SColorDuty::IdleCount() const
{
    const auto isIdle = [](const SRowDuty& row) { return row.dotCount == 0; };
    return static_cast<int>(std::count_if(rows.begin(), rows.end(), isIdle));
}

int SColorDuty::LongestRun() const
{
    int longest = 0;
    for (const SRowDuty& row : rows)
        longest = std::max(longest, row.longestRun);
    return longest;
}

double SColorDuty::TogetherShare() const
{
    std::int64_t together = 0, dots = 0;
    for (std::size_t y = 0; y + 1 < rows.size(); ++y) {
        together += rows[y].togetherCount;
        dots += rows[y].dotCount;
    }
    return dots == 0 ? 0.0 : static_cast<double>(together) / static_cast<double>(dots);
}

SColorDuty Duty_Count(const CMaskData_Base& mask, int color)
{
    const CMaskView view(mask);
    const int yResPass = mask.YResPass();
    const int rowCount = mask.MaskHeight_IncludeRes() / yResPass;
    SColorDuty duty;
    duty.rows.resize(static_cast<std::size_t>(rowCount));
    duty.chanceCount = std::int64_t{mask.MaskWidth()} * yResPass * view.PositionCount();
    CLine line(static_cast<std::size_t>(mask.MaskWidth())), next(line);
    for (int position = 0; position < view.PositionCount(); ++position) {
        const SMaskLines lines = view.Lines(color, position);
        for (int r = 0; r < yResPass; ++r) { // rows of one pass fire together
            lines.Line_Unpack(r, next.data());
            for (int y = 0; y < rowCount; ++y) {
                line.swap(next);
                const bool hasNext = y + 1 < rowCount;
                if (hasNext)
                    lines.Line_Unpack((y + 1) * yResPass + r, next.data());
                Line_Count(line, hasNext ? &next : nullptr, static_cast<std::size_t>(mask.XResPass()),
                           duty.rows[static_cast<std::size_t>(y)]);
            }
        }
    }
    return duty;
}

} // namespace dotweave
