#include "figures/contrastsensitivity.h"

#include <gtest/gtest.h>

using namespace dotweave;

/// Worked by hand: 2.2 (0.192 + 0.114 f) exp(-(0.114 f)^1.1).
/// f = 10: 2.2 * 1.332 * exp(-1.14^1.1) = 2.9304 * exp(-1.15503) = 0.9232
/// f = 20: 2.2 * 2.472 * exp(-2.28^1.1) = 5.4384 * exp(-2.47585) = 0.4573
/// f = 40: 2.2 * 4.752 * exp(-4.56^1.1) = 10.4544 * exp(-5.30708) = 0.05181
TEST(ContrastSensitivity, FallsAsPublished)
{
    EXPECT_NEAR(ContrastSensitivity(10), 0.9232, 0.0001);
    EXPECT_NEAR(ContrastSensitivity(20), 0.4573, 0.0001);
    EXPECT_NEAR(ContrastSensitivity(40), 0.05181, 0.00001);
}

TEST(ContrastSensitivity, CountsWideBandsInFull)
{
    for (const double frequency : {0.0, 0.1, 1.0, 3.0, 6.5})
        EXPECT_EQ(ContrastSensitivity(frequency), 1) << frequency;
    // No jump where the flat part ends, and never more than all.
    double last = 1;
    for (double frequency = 6.5; frequency < 60; frequency += 0.01) {
        EXPECT_LE(ContrastSensitivity(frequency), last + 1e-9) << frequency;
        EXPECT_NEAR(ContrastSensitivity(frequency), last, 1e-3) << frequency;
        last = ContrastSensitivity(frequency);
    }
}

/// A degree at 350 mm is 2 * 350 * tan(0.5 degrees) = 6.1088 mm wide.
TEST(ContrastSensitivity, CountsCyclesPerDegreeOfTheEye)
{
    EXPECT_NEAR(CyclesPerDegree(1, 350), 6.1088, 0.0001);
    EXPECT_NEAR(CyclesPerDegree(0.5, 700), 6.1088, 0.0001);
    EXPECT_DOUBLE_EQ(RowPitchMm({600, 350}), 25.4 / 600);
}
