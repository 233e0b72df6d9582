#include "platformfaults.h"

#include "maskdatagenerator.h"
#include "maskdatagenerator_sub.h"

#include <atomic>

namespace {

std::atomic<int> s_startsLeft = -1;
std::atomic<EFailingPrepare> s_failingPrepare = EFailingPrepare::None;

} // namespace

CPlatformFaults::CPlatformFaults(int startsLeft, EFailingPrepare failingPrepare)
{
    s_startsLeft = startsLeft;
    s_failingPrepare = failingPrepare;
}

CPlatformFaults::~CPlatformFaults()
{
    s_startsLeft = NO_LIMIT;
    s_failingPrepare = EFailingPrepare::None;
}

// The names that the linker's option --wrap gives to what is called and to what there was.
bool Thread_Start(CustomThreadBase* thread,
                  const char* name) __asm__("__wrap__ZN16CustomThreadBase5StartEPKc");
bool Thread_StartGenuine(CustomThreadBase* thread,
                         const char* name) __asm__("__real__ZN16CustomThreadBase5StartEPKc");
bool Thread_Prepare(CustomThreadBase* thread) __asm__("__wrap__ZN16CustomThreadBase7PrepareEv");
bool Thread_PrepareGenuine(CustomThreadBase* thread) __asm__("__real__ZN16CustomThreadBase7PrepareEv");

bool Thread_Start(CustomThreadBase* thread, const char* name)
{
    if (s_startsLeft == 0)
        return false;
    if (s_startsLeft > 0)
        --s_startsLeft;
    return Thread_StartGenuine(thread, name);
}

bool Thread_Prepare(CustomThreadBase* thread)
{
    const EFailingPrepare failing = s_failingPrepare;
    if (failing == EFailingPrepare::Producer && dynamic_cast<CMaskDataGenerator*>(thread) != nullptr)
        return false;
    if (failing == EFailingPrepare::Worker && dynamic_cast<CMaskDataGenerator_Sub*>(thread) != nullptr)
        return false;
    return Thread_PrepareGenuine(thread);
}
