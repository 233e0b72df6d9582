#include "dotweave/maskblock.h"

#include "int32.h"

#include <algorithm>
#include <cstddef>
#include <memory>

using namespace dotweave;

CMaskBlock::CMaskBlock(int width, int height)
{
    Initialize(width, height);
}

CMaskBlock::~CMaskBlock()
{
    delete[] m_maskData;
    m_maskData = nullptr;
}

void CMaskBlock::Initialize(int width, int height)
{
    m_width = width;
    m_height = height;
    delete[] m_maskData;
    m_maskData = nullptr;
    // A negative product widens to a size that no allocator has, and so fails as a lack of memory.
    m_maskData = new std::uint8_t[static_cast<std::size_t>(MaskDataBytesCount())]();
}

CMaskBlock* CMaskBlock::New_Unwritten(int width, int height)
{
    auto block = std::make_unique<CMaskBlock>();
    block->m_width = width;
    block->m_height = height;
    block->m_maskData = new std::uint8_t[static_cast<std::size_t>(block->MaskDataBytesCount())];
    return block.release();
}

void CMaskBlock::ClearMaskData()
{
    std::fill_n(m_maskData, MaskDataBytesCount(), std::uint8_t{0});
}

int CMaskBlock::MaskDataBytesCount() const
{
    return Int32_Product(m_width, m_height);
}
