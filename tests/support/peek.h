#pragma once

#include "dotweave/basemaskdata.h"
#include "dotweave/maskdata_base.h"
#include "dotweave/maskdatastorage.h"
#include "maskdata_base_refusal.h"
#include "maskdatagenerator.h"
#include "maskdatagenerator_sub.h"

#include <cstdint>
#include <list>

/// @file
/// The tests' key to private members. Each class names its key as a friend.

struct SBaseMaskData_Peek {
    static bool Create_OnTable(CBaseMaskData& data, int width, int height, int count)
    {
        return data.Create_OnTable(width, height, count);
    }
    static void Release(CBaseMaskData& data) { data.Release(); }
    static std::int32_t Count(const CBaseMaskData& data) { return data.m_count; }
    static std::uint16_t** Planes(const CBaseMaskData& data) { return data.m_maskData; }
};

struct SMaskData_Base_Peek {
    CMaskData_Base& mask;

    SMaskParam& Current() { return mask.m_maskParam_Current; }
    int& StepHeight_NoneRes() { return mask.m_stepHeight_NoneRes; }
    int& MaskHeight_NoneRes() { return mask.m_maskHeight_NoneRes; }
    int& LeadBlankHeight_NoneRes() { return mask.m_leadBlankHeight_NoneRes; }
    int& PositionCount() { return mask.m_positionCount; }
    int& BaseMaskHeight() { return mask.m_baseMaskHeight; }
    int& BaseMaskWidth() { return mask.m_baseMaskWidth; }
    int& MaskLineBytes() { return mask.m_maskLineBytes; }
    int& Smooth2PassHeight() { return mask.m_smooth2PassHeight; }
    int& Smooth2PassHeightTotal() { return mask.m_smooth2PassHeightTotal; }
    int& Smooth2FeatherHeight() { return mask.m_smooth2FeatherHeight; }
    int& Smooth2FeatherHeightTotal() { return mask.m_smooth2FeatherHeightTotal; }
    CMaskBlock*& MaskBlock() { return mask.m_maskBlock; }
    int& MaskHeight() { return mask.m_maskHeight; }
    int& MaskWidth() { return mask.m_maskWidth; }
    int& StepHeight() { return mask.m_stepHeight; }
    int& RealStepHeight() { return mask.m_realStepHeight; }
    int& LeadBlankHeight() { return mask.m_leadBlankHeight; }
    int*& XResStep() { return mask.m_xResStep; }
    int*& YResStep() { return mask.m_yResStep; }

    bool InitNoneRes() { return mask.InitNoneRes(); }
    bool InitResParam() { return mask.InitResParam(); }
    bool InitMaskSize() { return mask.InitMaskSize(); }
    bool MaskSize_CanBeBuilt() { return !mask.IsRefusedAt(dotweave::ECreationStep::MaskSize); }
    bool CreateMaskData() { return mask.CreateMaskData(); }
    bool CreateMaskData_Within(unsigned int milliseconds) { return mask.CreateMaskData_Within(milliseconds); }
    bool CreateMaskData_Old() { return mask.CreateMaskData_Old(); }
    bool MergeMaskData(const CMaskBlock* blocks, int blockCount, unsigned char* dest, int yResIndex)
    {
        return mask.MergeMaskData(blocks, blockCount, dest, yResIndex);
    }
};

struct SMaskDataStorage_Peek {
    CMaskDataStorage& storage;

    boost::recursive_mutex* Mutex() { return storage.m_pMutex; }
    std::list<CMaskData_Base*>*& ListPointer() { return storage.m_pListMaskData; }
    std::list<CMaskData_Base*>& List() { return *storage.m_pListMaskData; }
    CMaskData_Base*& Current() { return storage.m_pMaskData_Current; }
    CMaskData_Base* MaskData_Find(const SMaskParam& param) { return storage.MaskData_Find(param); }
    bool Release_One_FromFront_If_OutOfRange() { return storage.Release_One_FromFront_If_OutOfRange(); }
    bool Release_ListMaskData() { return storage.Release_ListMaskData(); }
    bool Release_ListMaskData_Content() { return storage.Release_ListMaskData_Content(); }
};

struct SMaskDataGenerator_Peek {
    CMaskDataGenerator& generator;

    SMaskDataGenerate_Param& Param() { return generator.m_param; }
    int& ProcessState() { return generator.m_processState; }
    int& SubThreadCount() { return generator.m_subThreadCount; }
    auto& SubThreads() { return generator.m_subThreads; }
    auto& QueueBuffer() { return generator.m_queueBuffer; }
    auto& SineMask() { return generator.m_sineMask; }

    bool Init_Param() { return generator.Init_Param(); }
    bool Init_SinMask() { return generator.Init_SinMask(); }
    bool AddSourceData() { return generator.AddSourceData(); }
    bool OneLoop() { return generator.OneLoop(); }
};

struct SMaskDataGenerator_Sub_Peek {
    CMaskDataGenerator_Sub& worker;

    int& ProcessState() { return worker.m_processState; }
    SMaskDataGenerate_SubParam*& SourceData() { return worker.m_pSourceData; }
    CMaskBlock* Blocks() { return worker.m_blocks.get(); }
    auto& End() { return worker.m_end; }
    /// Gives the worker its inputs without starting its thread.
    void Inputs(const SMaskDataGenerate_Param* param,
                CKelPtrQueueBuffer<SMaskDataGenerate_SubParam>* queueBuffer, const CSineMask* sineMask)
    {
        worker.m_pParam = param;
        worker.m_pQueueBuffer = queueBuffer;
        worker.m_pSineMask = sineMask;
    }
    bool OneLoop() { return worker.OneLoop(); }
    void Finally() { worker.Finally(); }
};
