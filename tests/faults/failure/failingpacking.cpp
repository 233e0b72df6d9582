#include "failingpacking.h"

#include "kernels/maskkernels.h"

#include <atomic>
#include <cstdint>
#include <stdexcept>

// The names that the linker gives to what it was told to wrap; see CMakeLists.txt.
#define WRAPPED(symbol) __asm__("__wrap_" symbol)
#define REAL(symbol) __asm__("__real_" symbol)
#define CUT_SYMBOL "_ZN8dotweave14MaskKernel_CutERK23SParam_GenerateMaskDataNS_9SRowRangeE"
#define PACK_SYMBOL "_ZN8dotweave21MaskKernel_CutAndPackERKNS_9SMaskPackENS_9SRowRangeEPh"

void Cut_Wrapped(const SParam_GenerateMaskData& param, dotweave::SRowRange rows) WRAPPED(CUT_SYMBOL);
void Cut_Real(const SParam_GenerateMaskData& param, dotweave::SRowRange rows) REAL(CUT_SYMBOL);
void Pack_Wrapped(const dotweave::SMaskPack& pack, dotweave::SRowRange rows, std::uint8_t* scratch)
    WRAPPED(PACK_SYMBOL);
void Pack_Real(const dotweave::SMaskPack& pack, dotweave::SRowRange rows, std::uint8_t* scratch)
    REAL(PACK_SYMBOL);

namespace {

std::atomic<bool> s_isPlanned = false;
std::atomic<int> s_callCount = 0;
EWorkerStep s_step = EWorkerStep::Cut; // written while nothing is planned
int s_first = 0;
int s_count = 0;

void Fail_IfPlanned(EWorkerStep step)
{
    if (!s_isPlanned || step != s_step)
        return;
    const int call = s_callCount++;
    if (call >= s_first && call - s_first < s_count)
        throw std::runtime_error("planned");
}

} // namespace

void Cut_Wrapped(const SParam_GenerateMaskData& param, dotweave::SRowRange rows)
{
    Fail_IfPlanned(EWorkerStep::Cut);
    Cut_Real(param, rows);
}

void Pack_Wrapped(const dotweave::SMaskPack& pack, dotweave::SRowRange rows, std::uint8_t* scratch)
{
    Fail_IfPlanned(EWorkerStep::Pack);
    Pack_Real(pack, rows, scratch);
}

CFailingSteps::CFailingSteps(EWorkerStep step, int first, int count)
{
    s_step = step;
    s_first = first;
    s_count = count;
    s_callCount = 0;
    s_isPlanned = true;
}

CFailingSteps::~CFailingSteps()
{
    s_isPlanned = false;
}

int CFailingSteps::CallCount() const
{
    return s_callCount;
}
