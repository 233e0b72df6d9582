#include "dotweave/maskdatafactory.h"

#include "logcapture.h"
#include "logscopes.h"
#include "maskparams.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

TEST(MaskDataFactory, EqualRecordsGiveTwoObjects)
{
    const std::unique_ptr<CMaskData_Base> first(CMaskDataFactory::MaskData_Create(MaskParam_Plain()));
    const std::unique_ptr<CMaskData_Base> second(CMaskDataFactory::MaskData_Create(MaskParam_Plain()));
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    int position = -1;
    EXPECT_NE(first->MaskData_Get(0, position), second->MaskData_Get(0, position));
    EXPECT_EQ(first->MaskHeight_IncludeRes(), 544);
}

TEST(MaskDataFactory, ARejectedRecordGivesNull)
{
    SMaskParam param = MaskParam_Plain();
    param.colorTimes = 0;
    const CLogCapture log;
    // The rejected object is deliberately not destroyed; tests/support/lsan.supp lists it.
    EXPECT_EQ(CMaskDataFactory::MaskData_Create(param), nullptr);
    const std::vector<SLogRecord> expected = {MaskCreateFailure(85), Failure(UNIT_FACTORY, SCOPE_FACTORY)};
    EXPECT_EQ(log.Records(), expected);
}

} // namespace
