#include "dotweave/maskdata_base.h"

#include "dotweave/basemaskdata.h"
#include "int32.h"
#include "log.h"
#include "maskdata_base_unit.h"
#include "maskregion.h"

#include <cstddef>
#include <vector>

using namespace dotweave;

/// The mask bytes of CreateMaskData without the sine step, made on the calling thread with the plain loops:
/// the reference that the generator is compared with.
bool CMaskData_Base::CreateMaskData_Old()
{
    static constexpr char SCOPE[] = "bool __cdecl CMaskData_Base::CreateMaskData_Old(void)";
    CBaseMaskData baseMaskData;
    if (!baseMaskData.Create_OnTable(m_baseMaskWidth, m_baseMaskHeight, m_maskParam_Current.colorCount))
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, __LINE__);
    std::vector<SCutTable> cutTable(Int32_Size(m_maskHeight_NoneRes));
    if (!CreateCutTable(cutTable.data(), m_maskHeight_NoneRes))
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, __LINE__);
    m_maskBlock = new CMaskBlock(MaskBytes_OneColor(), m_maskParam_Current.colorCount);
    std::vector<CMaskBlock> blocks(Int32_Size(XResPass()));
    for (CMaskBlock& block : blocks)
        block.Initialize(m_baseMaskWidth, m_maskHeight_NoneRes);

    SParam_GenerateMaskData cut = {};
    cut.cutTable = cutTable.data();
    cut.cutTableCount = m_maskHeight_NoneRes;
    cut.baseMaskHeight = m_baseMaskHeight;
    cut.baseMaskWidth = m_baseMaskWidth;
    cut.bitsPerPixel = BitsPerPixel();
    unsigned char* dest = m_maskBlock->MaskData();
    for (int color = 0; color < m_maskParam_Current.colorCount; ++color) {
        cut.baseMaskData = baseMaskData.MaskData(color);
        for (int position = 0; position < m_positionCount; ++position, dest += MaskBytes_OnePosition()) {
            for (int r = 0; r < YResPass(); ++r) {
                cut.offsetY = MaskRegion_Row(position, m_stepHeight_NoneRes, r, YResPass());
                for (int k = 0; k < XResPass(); ++k) {
                    cut.offsetX = MaskRegion_Column(k, m_baseMaskWidth, XResPass());
                    cut.maskBlock = &blocks[static_cast<std::size_t>(k)];
                    cut.maskBlock->ClearMaskData();
                    if (!GenerateMaskData(cut))
                        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE, __LINE__);
                }
                MergeMaskData(blocks.data(), XResPass(), dest, r);
            }
        }
    }
    return true;
}
