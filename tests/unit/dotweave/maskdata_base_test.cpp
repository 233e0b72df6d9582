#include "dotweave/maskdata_base.h"

#include "maskbytes.h"
#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

/// 544 rows in 4 passes of 2 x 2 resolution passes, 3 colours, 2 bits: step 136, 4 positions.
SMaskParam MaskParam_FourPositions()
{
    SMaskParam param = MaskParam_Plain();
    param.basePass = 4;
    param.xResPass = param.yResPass = 2;
    param.colorCount = 3;
    param.bitsPerPixel = 2;
    return param;
}

/// 128 rows in 1 pass repeat after 17 positions.
SMaskParam MaskParam_SeventeenPositions()
{
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 128;
    return param;
}

/// The members as bytes, without the pointer to the virtual table.
std::vector<unsigned char> MemberBytes(const CMaskData_Base& mask)
{
    std::vector<unsigned char> bytes(sizeof mask - sizeof(void*));
    std::memcpy(bytes.data(), reinterpret_cast<const unsigned char*>(&mask) + sizeof(void*), bytes.size());
    return bytes;
}

} // namespace

static_assert(std::has_virtual_destructor_v<CMaskData_Base>); // destroyed through it: StorageRelease

TEST(MaskData, IsAllZeroOnDirtyMemory)
{
    alignas(CMaskData_Base) std::array<unsigned char, sizeof(CMaskData_Base)> storage = {};
    storage.fill(0xA5);
    auto* mask = new (storage.data()) CMaskData_Base;
    EXPECT_EQ(MemberBytes(*mask), std::vector<unsigned char>(sizeof(CMaskData_Base) - sizeof(void*), 0));
    EXPECT_EQ(mask->SplitCount_XRes_Get(), 1);
    EXPECT_EQ(mask->SplitCount_YRes_Get(), 1);
    mask->~CMaskData_Base();
}

TEST(MaskData, MembersAreInTheAgreedOrderWithoutGaps)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    struct SMember {
        const void* address;
        std::size_t size;
    };
    const std::vector<SMember> members = {
        {&mask.MaskParam_Input(), 48},        {&mask.MaskParam_Current(), 48},
        {&peek.MaskLineBytes(), 4},           {&peek.LeadBlankHeight(), 4},
        {&peek.LeadBlankHeight_NoneRes(), 4}, {&peek.PositionCount(), 4},
        {&peek.XResStep(), sizeof(int*)},     {&peek.YResStep(), sizeof(int*)},
        {&peek.MaskBlock(), sizeof(int*)},    {&peek.MaskHeight(), 4},
        {&peek.MaskHeight_NoneRes(), 4},      {&peek.MaskWidth(), 4},
        {&peek.StepHeight_NoneRes(), 4},      {&peek.StepHeight(), 4},
        {&peek.RealStepHeight(), 4},          {&peek.BaseMaskHeight(), 4},
        {&peek.BaseMaskWidth(), 4},           {&peek.Smooth2PassHeight(), 4},
        {&peek.Smooth2PassHeightTotal(), 4},  {&peek.Smooth2FeatherHeightTotal(), 4},
        {&peek.Smooth2FeatherHeight(), 4}};
    std::size_t offset = sizeof(void*); // no base class: only the virtual table comes first
    for (std::size_t i = 0; i < members.size(); ++i) {
        EXPECT_EQ(static_cast<const char*>(members[i].address) - reinterpret_cast<const char*>(&mask),
                  static_cast<std::ptrdiff_t>(offset))
            << "member " << i;
        offset += members[i].size;
    }
    EXPECT_EQ(offset, sizeof mask);
}

TEST(MaskData, AccessorsOfAModeAsWorkedByHand)
{
    const SMaskParam param = MaskParam_FourPositions();
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(param));
    EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Input()), MaskParam_Bytes(param));
    EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Current()), MaskParam_Bytes(param));
    EXPECT_EQ(mask.BasePass(), 4);
    EXPECT_EQ(mask.XResPass(), 2);
    EXPECT_EQ(mask.YResPass(), 2);
    EXPECT_EQ(mask.BitsPerPixel(), 2);
    EXPECT_EQ(mask.MaskWidth(), 1088);
    EXPECT_EQ(mask.MaskHeight_IncludeRes(), 1088);
    EXPECT_EQ(mask.StepHeight_IncludeRes(), 272);
    EXPECT_EQ(mask.RealStepHeight_IncludeRes(), 68);
    EXPECT_EQ(mask.LeadBlankHeight_IncludeRes(), 1020);
    EXPECT_EQ(mask.XResStep()[0], 0);
    EXPECT_EQ(mask.XResStep()[1], 68);
    EXPECT_EQ(mask.YResStep()[0], 0);
    EXPECT_EQ(mask.YResStep()[1], 136);
    EXPECT_EQ(mask.MaskLineBytes_OneColor(), 272);    // 544 * 2 * 2 bits
    EXPECT_EQ(mask.MaskBytes_OnePosition(), 295936);  // 1088 lines
    EXPECT_EQ(mask.MaskBytes_OneColor(), 4 * 295936); // 4 positions
    EXPECT_EQ(mask.SplitCount_XRes_Get(), 1);
    EXPECT_EQ(mask.SplitCount_YRes_Get(), 1);
    CMaskBlock& block = *SMaskData_Base_Peek{mask}.MaskBlock();
    EXPECT_EQ(block.MaskDataBytesCount(), 3 * 4 * 295936);
}

TEST(MaskData, BlockHoldsOneColorsBytesForEveryColor)
{
    for (int colors = 1; colors <= 5; ++colors) {
        for (int bits = 1; bits <= 2; ++bits) {
            SMaskParam param = MaskParam_Feathered(FeatherNozzle_Smooth_3, 60, 2, 30.0F);
            param.colorCount = colors;
            param.bitsPerPixel = bits;
            param.xResPass = 3;
            param.yResPass = 2;
            CMaskData_Base mask;
            ASSERT_TRUE(mask.Create(param)) << param;
            EXPECT_EQ(mask.MaskBytes_OneColor() * colors,
                      SMaskData_Base_Peek{mask}.MaskBlock()->MaskDataBytesCount());
            EXPECT_EQ(mask.MaskBytes_OnePosition(),
                      mask.MaskHeight_IncludeRes() * mask.MaskLineBytes_OneColor());
            EXPECT_EQ(mask.MaskLineBytes_OneColor(), 204 * bits);
        }
    }
}

TEST(MaskData, EveryCallAdvancesToTheNextPosition)
{
    constexpr int MOST = std::numeric_limits<int>::max();
    constexpr int LEAST = std::numeric_limits<int>::min();
    struct SMode {
        SMaskParam param;
        int positionCount, positionBytes;
    };
    for (const SMode& mode :
         {SMode{MaskParam_Plain(), 1, 544 * 68}, SMode{MaskParam_FourPositions(), 4, 295936},
          SMode{MaskParam_SeventeenPositions(), 17, 128 * 68}}) {
        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(mode.param));
        const std::uint8_t* const first = SMaskData_Base_Peek{mask}.MaskBlock()->MaskData_Const();
        for (int color = 0; color < mode.param.colorCount; ++color)
            for (const std::int64_t before :
                 {-1, 0, 1, 2, 3, 4, 15, 16, 17, 100, -5, LEAST, MOST, MOST - 1}) {
                const auto after = before < 0 ? 0 : (before + 1) % mode.positionCount;
                int position = static_cast<int>(before);
                const std::uint8_t* const bytes = mask.MaskData_Get(color, position);
                EXPECT_EQ(position, after) << "after " << before;
                EXPECT_EQ(bytes - first, (color * mode.positionCount + after) * mode.positionBytes) << before;
            }
    }
}

TEST(MaskData, OnlyColorsBeyondTheLastGiveNothing)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(MaskParam_FourPositions()));
    for (const int color : {3, 4, std::numeric_limits<int>::max()})
        for (const int before : {-5, 0, 3, std::numeric_limits<int>::max()}) {
            int position = before;
            EXPECT_EQ(mask.MaskData_Get(color, position), nullptr);
            EXPECT_EQ(position, before);
        }
    // A negative color is not checked.
    int position = 1;
    const auto bytes = reinterpret_cast<std::uintptr_t>(mask.MaskData_Get(-1, position));
    EXPECT_EQ(position, 2);
    const auto first =
        reinterpret_cast<std::uintptr_t>(SMaskData_Base_Peek{mask}.MaskBlock()->MaskData_Const());
    EXPECT_EQ(first - bytes, 4U * 295936U - 2U * 295936U);
}

TEST(MaskData, ManyThreadsReadItAtOnce)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(MaskParam_FourPositions()));
    const std::vector<std::uint8_t> expected = MaskBytes(mask);
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&wrong, &expected, &shared = std::as_const(mask)] {
            int position = 0; // two more lead to 2 of 4
            const std::uint8_t* const second = shared.MaskData_Get(2, position);
            const std::uint8_t* const third = shared.MaskData_Get(2, position);
            const bool isSame = position == 2 && third - second == shared.MaskBytes_OnePosition() &&
                                MaskBytes(shared) == expected && shared.XResStep()[1] == 68 &&
                                shared.YResStep()[1] == 136 && shared.MaskParam_Input().basePass == 4 &&
                                shared.SplitCount_XRes_Get() == 1 && shared.MaskWidth() == 1088;
            wrong += isSame ? 0 : 1;
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

namespace {

/// Creates the first mask object and copies it into the second, which is never destroyed: the two share all
/// buffers.
class MaskDataCopy : public testing::Test {
protected:
    MaskDataCopy() { EXPECT_TRUE(m_source.Create(MaskParam_SeventeenPositions())); }

    void ExpectShared(const CMaskData_Base& copy) const
    {
        EXPECT_EQ(MemberBytes(copy), MemberBytes(m_source));
        EXPECT_EQ(copy.XResStep(), m_source.XResStep());
        EXPECT_EQ(copy.YResStep(), m_source.YResStep());
        int position = 7;
        int samePosition = 7;
        EXPECT_EQ(copy.MaskData_Get(0, position), m_source.MaskData_Get(0, samePosition));
    }

    CMaskData_Base m_source;
    alignas(CMaskData_Base) std::array<unsigned char, sizeof(CMaskData_Base)> m_bytes = {};
};

TEST_F(MaskDataCopy, SharesEverythingWithItsSource)
{
    ExpectShared(*new (m_bytes.data()) CMaskData_Base(m_source));
    auto* assigned = new (m_bytes.data()) CMaskData_Base;
    EXPECT_EQ(&(*assigned = m_source), assigned);
    ExpectShared(*assigned);
}

TEST_F(MaskDataCopy, MayBeTheOneThatIsDestroyed)
{
    auto* source = new (m_bytes.data()) CMaskData_Base;
    ASSERT_TRUE(source->Create(MaskParam_Small(1)));
    const CMaskData_Base copy(*source); // frees the shared buffers; a leak check would report them otherwise
    EXPECT_EQ(copy.XResStep(), source->XResStep());
}

} // namespace
