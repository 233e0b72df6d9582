#include "figures/fourier.h"

#include <kissfft/kissfft.hh>

#include <cstddef>

namespace dotweave {

CFourierSums Fourier(std::span<const double> values)
{
    const CFourierSums input(values.begin(), values.end());
    CFourierSums sums(values.size());
    kissfft<double>(values.size(), false).transform(input.data(), sums.data());
    return sums;
}

std::vector<double> Fourier_Undo(const CFourierSums& sums)
{
    CFourierSums output(sums.size());
    kissfft<double>(sums.size(), true).transform(sums.data(), output.data());
    std::vector<double> values;
    values.reserve(output.size());
    for (const std::complex<double>& value : output)
        values.push_back(value.real() / static_cast<double>(sums.size()));
    return values;
}

CFourierSums Fourier_Area(std::span<const double> values, int width, int height)
{
    const auto columnCount = static_cast<std::size_t>(width);
    const auto rowCount = static_cast<std::size_t>(height);
    CFourierSums sums(values.size());
    CFourierSums line(columnCount);
    const kissfft<double> rows(columnCount, false);
    for (std::size_t y = 0; y < rowCount; ++y) {
        const std::span<const double> row = values.subspan(y * columnCount, columnCount);
        line.assign(row.begin(), row.end());
        rows.transform(line.data(), sums.data() + y * columnCount);
    }
    CFourierSums column(rowCount);
    const kissfft<double> columns(rowCount, false);
    for (std::size_t x = 0; x < columnCount; ++x) {
        columns.transform(sums.data() + x, column.data(), 0, 1,
                          columnCount); // reads every columnCount-th value
        for (std::size_t y = 0; y < rowCount; ++y)
            sums[y * columnCount + x] = column[y];
    }
    return sums;
}

} // namespace dotweave
