#include "kernels/maskkernels.h"

namespace dotweave {
namespace {

constexpr SMaskKernels FAST = {&MaskKernel_Cut, &MaskKernel_Merge, &MaskKernel_CutAndPack};

const SMaskKernels* s_kernels = &FAST;

} // namespace

const SMaskKernels& MaskKernels_Get()
{
    return *s_kernels;
}

void MaskKernels_Set(const SMaskKernels* kernels)
{
    s_kernels = kernels != nullptr ? kernels : &FAST;
}

} // namespace dotweave
