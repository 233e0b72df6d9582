#include "dotweave/maskdata_base.h"
#include "dotweave/maskparam_refusal.h"

#include "logcapture.h"
#include "logscopes.h"
#include "maskparams.h"
#include "modeforecast.h"
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

/// Creates, compares the outcome with the forecast and reads what was built from end to end.
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
