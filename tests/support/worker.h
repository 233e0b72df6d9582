#pragma once

#include "generatorjob.h"
#include "maskdatagenerator_sub.h"
#include "peek.h"
#include "plainmask.h"

#include <cstddef>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

using CItemBuffer = CKelPtrQueueBuffer<SMaskDataGenerate_SubParam>;

/// A worker without its thread: the test calls its steps.
class CWorker {
public:
    explicit CWorker(const SPlainMask& mask, int poolSize = 12) : job(mask)
    {
        std::vector<SMaskDataGenerate_SubParam*> items;
        items.reserve(static_cast<std::size_t>(poolSize));
        for (int i = 0; i < poolSize; ++i)
            items.push_back(new SMaskDataGenerate_SubParam{}); // the queues' from here on
        buffer.Create(items, "pool");
        if (mask.isSine) {
            sine = std::make_unique<CSineMask>();
            sine->Create(Plain_FeatherRows(mask.height, mask.step), mask.matrixColumns, mask.bits,
                         SinMaskType_Stored);
        }
        peek.Inputs(&job.param, &buffer, sine.get());
        peek.ProcessState() = 1;
    }

    void Work_Push(int color, int position, int splitIndex_YRes)
    {
        SMaskDataGenerate_SubParam* item = nullptr;
        ASSERT_TRUE(buffer.m_queue_Free->TryPop(item));
        *item = {color, position, splitIndex_YRes};
        ASSERT_TRUE(buffer.m_queue_Work->TryPush(item));
    }

    /// Runs whole steps until the worker is in this state.
    void RunTo(int state)
    {
        for (int loop = 0; peek.ProcessState() != state && loop < 10; ++loop)
            ASSERT_TRUE(peek.OneLoop());
        ASSERT_EQ(peek.ProcessState(), state);
    }

    /// The dots of a block as 0 and 1. @return nothing when a byte is neither clear nor a full dot
    CPlainDots Dots(int blockIndex)
    {
        const CMaskBlock& block = peek.Blocks()[blockIndex];
        CPlainDots dots;
        for (int i = 0; i < block.MaskDataBytesCount(); ++i) {
            const int byte = block.MaskData_Const()[i];
            if (byte != 0 && byte != (1 << job.mask.bits) - 1)
                return {};
            dots.push_back(byte == 0 ? 0 : 1);
        }
        return dots;
    }

    SGeneratorJob job;
    CItemBuffer buffer;
    std::unique_ptr<CSineMask> sine;
    CMaskDataGenerator_Sub worker;
    SMaskDataGenerator_Sub_Peek peek{worker};
};

/// Three colours of four positions.
inline SPlainMask PlainMask_Resolved(SPlainMask mask, int xRes, int yRes, int bits)
{
    mask.colorCount = 3;
    mask.positionCount = 4;
    mask.xRes = xRes;
    mask.yRes = yRes;
    mask.bits = bits;
    return mask;
}

/// Small odd numbers: everything wraps and nothing is aligned.
inline SPlainMask PlainMask_Small(int xRes, int yRes, int bits)
{
    SPlainMask mask = PlainMask_Sliding(7, 3);
    mask.matrixColumns = 13;
    mask.matrixRows = 5;
    return PlainMask_Resolved(mask, xRes, yRes, bits);
}
