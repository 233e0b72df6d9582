#include "failingkernels.h"

#include "kernels/maskkernels.h"

#include <atomic>
#include <cstdint>
#include <stdexcept>

using namespace dotweave;

namespace {

std::atomic<int> s_callCount = 0;
EWorkerStep s_step = EWorkerStep::Cut; // the plan is written while no mask is being built
int s_first = 0;
int s_count = 0;

void Fail_IfPlanned(EWorkerStep step, SRowRange rows)
{
    if (step != s_step || RowCount(rows) == 0)
        return;
    const int call = s_callCount++;
    if (call >= s_first && call - s_first < s_count)
        throw std::runtime_error("planned");
}

void Cut(const SParam_GenerateMaskData& param, SRowRange rows)
{
    Fail_IfPlanned(EWorkerStep::Cut, rows);
    MaskKernel_Cut(param, rows);
}

void CutAndPack(const SMaskPack& pack, SRowRange rows, std::uint8_t* scratch)
{
    Fail_IfPlanned(EWorkerStep::Pack, rows);
    MaskKernel_CutAndPack(pack, rows, scratch);
}

constexpr SMaskKernels FAILING = {&Cut, &MaskKernel_Merge, &CutAndPack};

} // namespace

CFailingKernels::CFailingKernels(EWorkerStep step, int first, int count)
{
    s_step = step;
    s_first = first;
    s_count = count;
    s_callCount = 0;
    MaskKernels_Set(&FAILING);
}

CFailingKernels::~CFailingKernels()
{
    MaskKernels_Set(nullptr);
}

int CFailingKernels::CallCount() const
{
    return s_callCount;
}
