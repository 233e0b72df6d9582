#include "figures/fourier.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <numbers>
#include <random>
#include <vector>

using namespace dotweave;

namespace {

std::vector<double> Noise(std::size_t count)
{
    std::mt19937 random(7);
    std::vector<double> values;
    for (std::size_t i = 0; i < count; ++i)
        values.push_back(static_cast<double>(random() % 1000) / 1000);
    return values;
}

} // namespace

TEST(Fourier, IsTheSumThatItsFormulaSays)
{
    for (const std::size_t count : {1U, 2U, 7U, 17U, 30U, 64U, 101U}) {
        const std::vector<double> values = Noise(count);
        const CFourierSums sums = Fourier(values);
        for (std::size_t j = 0; j < count; ++j) {
            std::complex<double> expected = 0;
            for (std::size_t i = 0; i < count; ++i)
                expected += std::polar(values[i], -2 * std::numbers::pi * double(i * j) / double(count));
            EXPECT_NEAR(std::abs(sums[j] - expected), 0, 1e-10) << j << " of " << count;
        }
    }
}

TEST(Fourier, UndoesItself)
{
    for (const std::size_t count : {1U, 12U, 31U, 544U}) {
        const std::vector<double> values = Noise(count);
        const std::vector<double> again = Fourier_Undo(Fourier(values));
        for (std::size_t i = 0; i < count; ++i)
            EXPECT_NEAR(again[i], values[i], 1e-12);
    }
}

TEST(Fourier, OfAnAreaIsTheSumOverBothDirections)
{
    constexpr int WIDTH = 6, HEIGHT = 5;
    const std::vector<double> values = Noise(WIDTH * HEIGHT);
    const CFourierSums sums = Fourier_Area(values, WIDTH, HEIGHT);
    for (int k = 0; k < HEIGHT; ++k) {
        for (int j = 0; j < WIDTH; ++j) {
            std::complex<double> expected = 0;
            for (int y = 0; y < HEIGHT; ++y) {
                for (int x = 0; x < WIDTH; ++x)
                    expected +=
                        std::polar(values[static_cast<std::size_t>(y * WIDTH + x)],
                                   -2 * std::numbers::pi * (double(x * j) / WIDTH + double(y * k) / HEIGHT));
            }
            EXPECT_NEAR(std::abs(sums[static_cast<std::size_t>(k * WIDTH + j)] - expected), 0, 1e-12);
        }
    }
}
