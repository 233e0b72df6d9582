// The ideal sheet against the slow model of printed sheets, which tests the library itself.

#include "sheet/idealsheet.h"

#include "maskparams.h"
#include "printlaw.h"

#include <gtest/gtest.h>

using namespace dotweave;

namespace {

/// The slow model prints one resolution pass at a time and counts in nozzle rows from that pass's first one.
void ExpectSameCounts(const SMaskParam& param)
{
    SCOPED_TRACE(param);
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(param));
    const CPassLayout layout(mask);
    SSheetWindow window = SheetWindow_Cycle(layout);
    // From the first row that the slow model counts in pass (0, 0) to the last one in the last pass.
    window.firstLine = std::int64_t{layout.RowCount()} * layout.YResPass();
    window.lineCount += layout.StepLines() + layout.YResPass();
    for (int color = 0; color < param.colorCount; ++color) {
        const CIdealSheet ideal(mask, color, window);
        for (int r = 0; r < mask.YResPass(); ++r) {
            for (int k = 0; k < mask.XResPass(); ++k) {
                CSheet sheet(mask, color, r, k);
                sheet.Print();
                const int top = mask.YResStep()[r] + mask.XResStep()[k] + r;
                const SWrongPixels wrong = sheet.Compare([&](int row, int x) {
                    const auto line = static_cast<int>(top + row * mask.YResPass() - window.firstLine);
                    return ideal.Count(line, x * mask.XResPass() + k);
                });
                EXPECT_EQ(wrong.fewer + wrong.more, 0) << "colour " << color << ", r " << r << ", k " << k;
            }
        }
    }
}

} // namespace

TEST(IdealSheetReference, HardEdgesCountTheSame)
{
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 48;
    param.basePass = 4;
    param.colorCount = 2;
    ExpectSameCounts(param);
    param.colorTimes = 3;
    ExpectSameCounts(param);
    param.bitsPerPixel = 2;
    param.xResPass = 2;
    param.yResPass = 3;
    ExpectSameCounts(param);
}

TEST(IdealSheetReference, FeatheredEdgesCountTheSame)
{
    for (int profile = FeatherNozzle_Smooth_2; profile <= FeatherNozzle_Smooth_3_Sine; ++profile) {
        SMaskParam param = MaskParam_Feathered(profile, 72, 3, 45.0F);
        ExpectSameCounts(param);
        param.xResPass = 3;
        param.yResPass = 2;
        ExpectSameCounts(param);
    }
}
