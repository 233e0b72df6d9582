#include "dotweave/maskdatafactory.h"

#include "logcapture.h"
#include "logscopes.h"
#include "maskparams.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

TEST(MaskDataFactory, BuildsAnObjectThatTheCallerOwns)
{
    const SMaskParam param = MaskParam_Plain();
    const std::unique_ptr<CMaskData_Base> mask(CMaskDataFactory::MaskData_Create(param));
    ASSERT_NE(mask, nullptr);
    EXPECT_EQ(mask->MaskHeight_IncludeRes(), 544);
    int position = -1;
    EXPECT_NE(mask->MaskData_Get(0, position), nullptr);
}

TEST(MaskDataFactory, EqualRecordsGiveTwoObjects)
{
    const SMaskParam param = MaskParam_Plain();
    const std::unique_ptr<CMaskData_Base> first(CMaskDataFactory::MaskData_Create(param));
    const std::unique_ptr<CMaskData_Base> second(CMaskDataFactory::MaskData_Create(param));
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
}

TEST(MaskDataFactory, RejectedRecordGivesNullAndOneRecordBehindThoseOfCreate)
{
    SMaskParam param = MaskParam_Plain();
    param.colorTimes = 0;
    const CLogCapture log;
    // The rejected object is deliberately not destroyed; tests/support/lsan.supp knows it.
    EXPECT_EQ(CMaskDataFactory::MaskData_Create(param), nullptr);
    const std::vector<SLogRecord> expected = {Failure(UNIT_MASK, SCOPE_MASK_CREATE, 85),
                                              Failure(UNIT_FACTORY, SCOPE_FACTORY)};
    EXPECT_EQ(log.Records(), expected);
}

} // namespace
