#include "dotweave/maskdata_base.h"

#include "constants.h"
#include "dotweave/basemaskdata.h"
#include "int32.h"
#include "kernels/maskkernels.h"
#include "log.h"
#include "maskdata_base_unit.h"
#include "maskdatagenerator.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <vector>

using namespace dotweave;

namespace {

bool IsEmpty(const CMaskBlock& block)
{
    return block.Width() < 1 || block.Height() < 1;
}

/// Whether the plane has cells, the depth a dot value and the block a byte for every pixel. The product of a
/// block's sides wraps at 32 bits.
bool CanBeCut(const SParam_GenerateMaskData& param)
{
    const CMaskBlock& block = *param.maskBlock;
    return param.baseMaskWidth >= 1 && param.baseMaskHeight >= 1 && param.bitsPerPixel >= 0 &&
           param.bitsPerPixel < static_cast<int>(std::size(DOT_VALUE)) && block.MaskData_Const() != nullptr &&
           block.MaskDataBytesCount() == std::int64_t{block.Width()} * block.Height();
}

/// The block while the workers write its lines. Unless all of them are written, the block is cleared after
/// the threads have ended, so that nobody sees bytes that no worker wrote.
class CUnbuiltBlock {
public:
    explicit CUnbuiltBlock(CMaskBlock& block) : m_block(&block) {}
    CUnbuiltBlock(const CUnbuiltBlock&) = delete;
    CUnbuiltBlock& operator=(const CUnbuiltBlock&) = delete;
    ~CUnbuiltBlock()
    {
        if (m_block != nullptr)
            m_block->ClearMaskData();
    }
    void SetBuilt() { m_block = nullptr; }

private:
    CMaskBlock* m_block;
};

} // namespace

bool CMaskData_Base::GenerateMaskData(SParam_GenerateMaskData& param)
{
    static constexpr char SCOPE[] =
        "bool __cdecl CMaskData_Base::GenerateMaskData(struct SParam_GenerateMaskData &)";
    if (IsEmpty(*param.maskBlock))
        return true;
    if (!CanBeCut(param))
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, __LINE__);
    MaskKernel_Cut_Reference(param, {0, param.maskBlock->Height()});
    return true;
}

bool CMaskData_Base::MergeMaskData(const CMaskBlock* blocks, int blockCount, unsigned char* dest,
                                   int yResIndex)
{
    const std::ptrdiff_t line = m_maskLineBytes;
    if (blockCount >= 1)
        dotweave::MaskKernel_Merge_Reference(blocks, blockCount, BitsPerPixel(), {0, blocks[0].Height()},
                                             dest + yResIndex * line, YResPass() * line);
    return true;
}

bool CMaskData_Base::CreateMaskData()
{
    return CreateMaskData_Within(GENERATOR_WAIT_MS);
}

/// Builds the mask bytes on the generator's threads and waits for them.
/// The block stays attached when that fails or takes too long; the destructor frees it.
bool CMaskData_Base::CreateMaskData_Within(unsigned int milliseconds)
{
    static constexpr char SCOPE[] = "bool __cdecl CMaskData_Base::CreateMaskData(void)";
    CBaseMaskData baseMaskData;
    if (!baseMaskData.Create_OnTable(m_baseMaskWidth, m_baseMaskHeight, m_maskParam_Current.colorCount))
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, __LINE__);
    std::vector<SCutTable> cutTable(Int32_Size(m_maskHeight_NoneRes));
    if (!CreateCutTable(cutTable.data(), m_maskHeight_NoneRes))
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, __LINE__);
    m_maskBlock = CMaskBlock::New_Unwritten(MaskBytes_OneColor(), m_maskParam_Current.colorCount);
    CUnbuiltBlock unbuilt(*m_maskBlock);

    SMaskDataGenerate_Param param = {};
    param.pMaskBlock = m_maskBlock;
    param.maskBytes_OneColor = MaskBytes_OneColor();
    param.maskBytes_OnePosition = MaskBytes_OnePosition();
    param.maskLineBytes = m_maskLineBytes;
    param.pBaseMaskData = &baseMaskData;
    param.thresholdHeight = m_baseMaskHeight;
    param.thresholdWidth = m_baseMaskWidth;
    param.colorCount = m_maskParam_Current.colorCount;
    param.positionCount = m_positionCount;
    param.pCutTable = cutTable.data();
    param.cutTableCount = m_maskHeight_NoneRes;
    param.blockHeight = m_maskHeight_NoneRes;
    param.rowStep = m_stepHeight_NoneRes;
    param.splitCount_XRes = XResPass();
    param.splitCount_YRes = YResPass();
    param.dotBits = BitsPerPixel();
    param.featherNozzleType = m_maskParam_Current.featherNozzleType;

    // Declared after everything that its threads use, so that it is destroyed before any of that.
    CMaskDataGenerator generator;
    if (!generator.Create(param, 0))
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, __LINE__);
    if (!generator.Wait_Exit(milliseconds) || !generator.IsOutputComplete())
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, __LINE__);
    unbuilt.SetBuilt();
    return true;
}
