#include "workitem.h"

#include "maskregion.h"
#include "peek.h"
#include "readfloor.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

using namespace dotweave;

CWorkItem::CWorkItem(const SMaskParam& param)
{
    {
        // Gone before the item's own memory is taken, so that its large block leaves no hole in the heap.
        CMaskData_Base mask;
        if (!mask.Create(param))
            throw std::runtime_error("the mode cannot be built");
        SMaskData_Base_Peek peek{mask};
        m_rowCount = peek.MaskHeight_NoneRes();
        m_lineBytes = mask.MaskLineBytes_OneColor();
        m_cutTable.resize(static_cast<std::size_t>(m_rowCount));
        if (!mask.CreateCutTable(m_cutTable.data(), m_rowCount))
            throw std::runtime_error("the mode has no cut table");
        const int yResIndex = mask.YResPass() - 1;
        m_lines.resize(static_cast<std::size_t>(mask.MaskBytes_OnePosition()));
        m_pack.planeWidth = peek.BaseMaskWidth();
        m_pack.planeHeight = peek.BaseMaskHeight();
        m_pack.offsetY =
            MaskRegion_Row(peek.PositionCount() / 2, peek.StepHeight_NoneRes(), yResIndex, mask.YResPass());
        m_pack.width = m_pack.planeWidth;
        m_pack.xResPass = mask.XResPass();
        m_pack.bitsPerPixel = mask.BitsPerPixel();
        m_pack.firstLine = m_lines.data() + static_cast<std::ptrdiff_t>(yResIndex) * m_lineBytes;
        m_pack.lineDistance = static_cast<std::ptrdiff_t>(mask.YResPass()) * m_lineBytes;
    }
    m_plane.Create(m_pack.planeWidth, m_pack.planeHeight, 1);
    m_pack.plane = m_plane.MaskData(0);
    m_pack.cutTable = m_cutTable.data();
    m_blocks = std::vector<CMaskBlock>(static_cast<std::size_t>(m_pack.xResPass));
    for (CMaskBlock& block : m_blocks)
        block.Initialize(m_pack.width, m_rowCount);
    m_scratch.resize(dotweave::MaskKernel_ScratchBytes(m_pack.planeWidth, m_pack.width, m_pack.xResPass));
}

void CWorkItem::Reference_Run()
{
    Blocks_Clear();
    for (int k = 0; k < m_pack.xResPass; ++k)
        dotweave::MaskKernel_Cut_Reference(Cut_Param(k), Rows());
    Lines_Clear();
    dotweave::MaskKernel_Merge_Reference(m_blocks.data(), m_pack.xResPass, m_pack.bitsPerPixel, Rows(),
                                         m_pack.firstLine, m_pack.lineDistance);
}

void CWorkItem::Fused_Run()
{
    dotweave::MaskKernel_CutAndPack(m_pack, Rows(), m_scratch.data());
}

void CWorkItem::Blocks_Run()
{
    Blocks_Clear();
    for (int k = 0; k < m_pack.xResPass; ++k)
        dotweave::MaskKernel_Cut(Cut_Param(k), Rows());
    dotweave::MaskKernel_Merge(m_blocks.data(), m_pack.xResPass, m_pack.bitsPerPixel, Rows(),
                               m_pack.firstLine, m_pack.lineDistance, m_scratch.data());
}

std::uint16_t CWorkItem::Thresholds_Read() const
{
    unsigned int sum = 0;
    int planeRow = m_pack.offsetY % m_pack.planeHeight;
    for (int left = m_rowCount; left > 0;) {
        const int run = std::min(left, m_pack.planeHeight - planeRow);
        sum += ReadFloor_Sum(m_pack.plane + static_cast<std::ptrdiff_t>(planeRow) * m_pack.planeWidth,
                             static_cast<std::size_t>(run) * static_cast<std::size_t>(m_pack.planeWidth));
        left -= run;
        planeRow = 0;
    }
    return static_cast<std::uint16_t>(sum);
}

void CWorkItem::Bytes_Write()
{
    std::memset(m_lines.data(), 0xFF, OutputBytes());
}

void CWorkItem::Lines_Spoil()
{
    std::fill(m_lines.begin(), m_lines.end(), std::uint8_t{0xFF});
}

std::size_t CWorkItem::OutputBytes() const
{
    return static_cast<std::size_t>(m_rowCount) * static_cast<std::size_t>(m_lineBytes);
}

std::size_t CWorkItem::ThresholdBytes() const
{
    return static_cast<std::size_t>(m_rowCount) * static_cast<std::size_t>(m_pack.planeWidth) *
           sizeof(std::uint16_t);
}

dotweave::SRowRange CWorkItem::Rows() const
{
    return {0, m_rowCount};
}

SParam_GenerateMaskData CWorkItem::Cut_Param(int xResIndex)
{
    SParam_GenerateMaskData param = {};
    param.cutTable = m_cutTable.data();
    param.cutTableCount = m_rowCount;
    param.baseMaskData = m_pack.plane;
    param.offsetY = m_pack.offsetY;
    param.offsetX = m_pack.offsetX + MaskRegion_Column(xResIndex, m_pack.planeWidth, m_pack.xResPass);
    param.baseMaskHeight = m_pack.planeHeight;
    param.baseMaskWidth = m_pack.planeWidth;
    param.bitsPerPixel = m_pack.bitsPerPixel;
    param.maskBlock = &m_blocks[static_cast<std::size_t>(xResIndex)];
    return param;
}

void CWorkItem::Blocks_Clear()
{
    for (CMaskBlock& block : m_blocks)
        block.ClearMaskData();
}

void CWorkItem::Lines_Clear()
{
    std::uint8_t* line = m_pack.firstLine;
    for (int row = 0; row < m_rowCount; ++row, line += m_pack.lineDistance)
        std::memset(line, 0, static_cast<std::size_t>(m_lineBytes));
}
