#include "dotweave/maskdata_base.h"
#include "dotweave/maskparam_refusal.h"

#include "logcapture.h"
#include "logscopes.h"
#include "maskparams.h"
#include "peek.h"
#include "randomrecords.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

namespace {

/// What Create is going to do with a record.
struct SForecast {
    bool isBuilt = false;
    std::int64_t blockBytes = 0;  ///< of all colours
    std::int64_t workerBytes = 0; ///< of one worker's blocks
    std::int64_t planesBytes = 0; ///< of all threshold planes
};

bool Fits(std::int64_t size)
{
    return size <= MOST;
}

/// Steps until a matrix of `height` rows starts over, counted on the paper.
std::int64_t Steps_Until_Repeat(std::int64_t height, std::int64_t step)
{
    std::int64_t steps = 1;
    for (std::int64_t row = step % height; row != 0; row = (row + step) % height)
        ++steps;
    return steps;
}

struct SRepeat {
    std::int64_t matrixHeight = 0, positions = 0;
};

SRepeat Repeat_Forecast(std::int64_t step)
{
    SRepeat best;
    for (std::int64_t height = 544; height > 272; --height) {
        const std::int64_t positions = Steps_Until_Repeat(height, step);
        if (positions * step >= MOST)
            continue;
        if (positions <= 20)
            return {height, positions};
        if (best.positions == 0 || positions < best.positions)
            best = {height, positions};
    }
    return best;
}

/// Step and height of the mask in nozzle rows; 0 for a head that cannot be laid out.
struct SLayoutForecast {
    std::int64_t step = 0, height = 0;
};

SLayoutForecast Layout_Forecast(const SMaskParam& param, std::int64_t shares)
{
    const std::int64_t rows = param.nozzleCount;
    const std::int64_t passes = param.basePass;
    if (param.featherMode == FeatherMode_None) {
        const std::int64_t step = rows / passes / shares * shares;
        const std::int64_t rest = rows - passes * step;
        return step < 1 ? SLayoutForecast() : SLayoutForecast{step, passes * step + std::min(rest, step)};
    }
    const float part = param.featherPercent / 100.0F;
    const auto amount = static_cast<std::int64_t>(static_cast<float>(param.nozzleCount) * 0.75F * part);
    if (param.featherNozzleType != FeatherNozzle_Smooth_2) {
        const std::int64_t step = (rows - amount) / passes / shares * shares;
        return step < 1 ? SLayoutForecast() : SLayoutForecast{step, rows};
    }
    const std::int64_t step = (rows - amount / (passes + 1)) / passes / shares * shares;
    const std::int64_t feather = rows - passes * step; // none leaves no band, too much no pass zone
    return step < 1 || feather < 1 || feather > step ? SLayoutForecast() : SLayoutForecast{step, rows};
}

bool IsInRange(const SMaskParam& param)
{
    if (param.colorTimes < 1 || param.colorTimes > param.basePass || param.nozzleCount < 1 ||
        param.colorCount < 1 || param.bitsPerPixel < 1 || param.bitsPerPixel > 2)
        return false;
    if (param.featherMode == FeatherMode_None)
        return true;
    if (param.featherMode != FeatherMode_Nozzle || param.featherNozzleType < 1 || param.featherNozzleType > 3)
        return false;
    const bool isLevelRead = param.featherNozzleType != FeatherNozzle_Smooth_2;
    return param.featherPercent >= 0.0F && param.featherPercent <= 100.0F &&
           (!isLevelRead || (param.featherLevelPercent >= 0 && param.featherLevelPercent <= 100));
}

SForecast Forecast(const SMaskParam& param)
{
    const int split = param.resSplitType;
    const std::int64_t x = param.xResPass / (split == 1 || split == 5 ? 2 : 1);
    const std::int64_t y = param.yResPass / (split == 2 || split == 5 ? 2
                                             : split == 3             ? 3
                                             : split == 4             ? 4
                                                                      : 1);
    if (!IsInRange(param) || x < 1 || y < 1 || !Fits(544 * x * param.bitsPerPixel + 7))
        return {};
    const SLayoutForecast layout = Layout_Forecast(param, x * y);
    const std::int64_t lineBytes = 68 * x * param.bitsPerPixel;
    if (layout.step < 1 || !Fits(layout.height * y) || !Fits(layout.height * y * lineBytes))
        return {};
    const SRepeat repeat = Repeat_Forecast(layout.step);
    const std::int64_t colorBytes = layout.height * y * lineBytes * repeat.positions;
    const std::int64_t planesBytes = 544 * repeat.matrixHeight * 2 * param.colorCount;
    const std::int64_t workerBytes = 544 * layout.height * x;
    if (repeat.positions == 0 || !Fits(colorBytes) || !Fits(colorBytes * param.colorCount) ||
        !Fits(workerBytes))
        return {};
    return {true, colorBytes * param.colorCount, workerBytes, planesBytes};
}

/// Creates, holds the outcome against the forecast and reads what was built from end to end.
void ExpectForecast(const SMaskParam& param, const SForecast& forecast)
{
    EXPECT_EQ(MaskParam_Refusal(param).empty(), forecast.isBuilt);
    const CLogCapture log;
    CMaskData_Base mask;
    ASSERT_EQ(mask.Create(param), forecast.isBuilt);
    if (!forecast.isBuilt) {
        ASSERT_FALSE(log.Records().empty());
        EXPECT_EQ(log.Records().back().scope, SCOPE_MASK_CREATE);
        return;
    }
    EXPECT_TRUE(log.Records().empty());
    ASSERT_EQ(std::int64_t{mask.MaskBytes_OneColor()} * param.colorCount, forecast.blockBytes);
    unsigned int sum = 0;
    for (int color = 0; color < param.colorCount; ++color) {
        int position = -1;
        do {
            const std::uint8_t* const bytes = mask.MaskData_Get(color, position);
            for (int i = 0; i < mask.MaskBytes_OnePosition(); ++i)
                sum += bytes[i];
        } while (position + 1 < SMaskData_Base_Peek{mask}.PositionCount());
    }
    if (param.featherLevelPercent > 0 || param.featherMode == FeatherMode_None) {
        EXPECT_GT(sum, 0U);
    }
}

} // namespace

TEST(RefusalSweep, AnyRecordFollowsTheForecast)
{
    constexpr unsigned int SEED = 20240607;
    Random random(SEED); // NOLINT(cert-msc51-cpp): the same records on every run
    for (int round = 0; round < 6000; ++round) {
        Words words = {};
        for (std::int32_t& word : words)
            word = round % 2 == 0 ? static_cast<std::int32_t>(random()) : DamagedValue(random);
        const auto param = std::bit_cast<SMaskParam>(words);
        const SForecast forecast = Forecast(param);
        if (forecast.blockBytes > 1 << 20 || forecast.workerBytes > 1 << 20 || forecast.planesBytes > 1 << 28)
            continue; // would be built, but at length
        SCOPED_TRACE(testing::Message() << "seed " << SEED << ", round " << round << ", " << param);
        ASSERT_NO_FATAL_FAILURE(ExpectForecast(param, forecast));
    }
}

TEST(RefusalSweep, DamagedRecordsFollowTheForecast)
{
    constexpr unsigned int SEED = 19991231;
    Random random(SEED); // NOLINT(cert-msc51-cpp): the same records on every run
    int built = 0;
    int refused = 0;
    int skipped = 0;
    for (int round = 0; round < 3000; ++round) {
        const SMaskParam param = Damaged(ValidParam(random), random);
        const SForecast forecast = Forecast(param);
        if (forecast.blockBytes > 3 << 18 || forecast.workerBytes > 1 << 19 ||
            forecast.planesBytes > 1 << 28) {
            ++skipped; // would be built, but at length
            continue;
        }
        SCOPED_TRACE(testing::Message() << "seed " << SEED << ", round " << round << ", " << param);
        ASSERT_NO_FATAL_FAILURE(ExpectForecast(param, forecast));
        ++(forecast.isBuilt ? built : refused);
    }
    // The sweep is worth its name only while both sides are well filled.
    EXPECT_GT(built, 200);
    EXPECT_GT(refused, 1000);
    EXPECT_LT(skipped, 1500);
}
