#include "handovers.h"

#include "dotweave/maskdata_base.h"
#include "maskdatagenerator.h"
#include "nolimit.h"

namespace {

thread_local CHandovers* s_handovers = nullptr;

} // namespace

CHandovers::CHandovers()
{
    s_handovers = this;
}

CHandovers::~CHandovers()
{
    s_handovers = nullptr;
}

// The names that the linker's option --wrap gives to what is called and to what there was.
bool Mask_Create(CMaskData_Base* mask,
                 const SMaskParam& param) __asm__("__wrap__ZN14CMaskData_Base6CreateERK10SMaskParam");
bool Mask_CreateGenuine(CMaskData_Base* mask,
                        const SMaskParam& param) __asm__("__real__ZN14CMaskData_Base6CreateERK10SMaskParam");
bool Generator_Create(CMaskDataGenerator* generator, const SMaskDataGenerate_Param& param,
                      int workerCount) __asm__("__wrap__ZN18CMaskDataGenerator6CreateERK23SMaskDataGenerate_"
                                               "Parami");
bool Generator_CreateGenuine(
    CMaskDataGenerator* generator, const SMaskDataGenerate_Param& param,
    int workerCount) __asm__("__real__ZN18CMaskDataGenerator6CreateERK23SMaskDataGenerate_Parami");
bool Thread_WaitExit(CustomThreadBase* thread,
                     unsigned int milliseconds) __asm__("__wrap__ZN16CustomThreadBase9Wait_ExitEj");
bool Thread_WaitExitGenuine(CustomThreadBase* thread,
                            unsigned int milliseconds) __asm__("__real__ZN16CustomThreadBase9Wait_ExitEj");

bool Mask_Create(CMaskData_Base* mask, const SMaskParam& param)
{
    if (s_handovers != nullptr && s_handovers->m_maskCreate)
        s_handovers->m_maskCreate(param);
    return Mask_CreateGenuine(mask, param);
}

bool Generator_Create(CMaskDataGenerator* generator, const SMaskDataGenerate_Param& param, int workerCount)
{
    if (s_handovers != nullptr && s_handovers->m_generatorCreate)
        s_handovers->m_generatorCreate(param);
    return Generator_CreateGenuine(generator, param, workerCount);
}

bool Thread_WaitExit(CustomThreadBase* thread, unsigned int milliseconds)
{
    const bool isSeen = s_handovers != nullptr && s_handovers->m_generatorWait &&
                        milliseconds != NO_LIMIT_MS && dynamic_cast<CMaskDataGenerator*>(thread) != nullptr;
    if (isSeen && !s_handovers->m_generatorWait(milliseconds))
        return false;
    return Thread_WaitExitGenuine(thread, milliseconds);
}
