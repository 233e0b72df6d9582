#pragma once

#include "dotweave/basemaskdata.h"
#include "dotweave/cuttable.h"
#include "dotweave/maskblock.h"
#include "dotweave/maskparam.h"
#include "maskdatagenerate_param.h"

#include <chrono>
#include <vector>

/// The end of a creation: how long the caller still waits after the last work item has been handed out. Runs
/// the generator as the mask object does.
class CFinishTail {
public:
    /// @throws std::runtime_error when the mode cannot be built
    explicit CFinishTail(const SMaskParam& param);
    CFinishTail(const CFinishTail&) = delete;
    CFinishTail& operator=(const CFinishTail&) = delete;
    ~CFinishTail() = default;

    /// Runs the generator once.
    /// @return time from the producer's flag that no item follows until the wait for the end returns
    /// @throws std::runtime_error when the generator fails
    std::chrono::duration<double> Measure();

private:
    SMaskDataGenerate_Param m_param{};
    CBaseMaskData m_planes;
    std::vector<SCutTable> m_cutTable;
    CMaskBlock m_block;
};
