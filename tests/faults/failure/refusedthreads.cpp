#include "refusedthreads.h"

#include "refusedmemory.h"

#include <kelcommon/customthreadbase.h>

#include <atomic>
#include <optional>

namespace {

std::atomic<int> s_startsLeft = ALL_THREADS;
std::atomic<int> s_askedCount = 0;
std::atomic<bool> s_areStartsSpared = false;

} // namespace

#if defined(__linux__)

#include <dlfcn.h>

bool CustomThreadBase::Start(const char* name)
{
    using CStart = bool (*)(CustomThreadBase*, const char*);
    static const auto start = reinterpret_cast<CStart>(dlsym(RTLD_NEXT, "_ZN16CustomThreadBase5StartEPKc"));
    ++s_askedCount;
    if (s_startsLeft == 0)
        return false;
    if (s_startsLeft != ALL_THREADS)
        --s_startsLeft;
    std::optional<CSparedRequests> spared;
    if (s_areStartsSpared)
        spared.emplace();
    return start(this, name);
}

#endif

CRefusedThreads::CRefusedThreads(int startCount)
{
    s_askedCount = 0;
    s_startsLeft = startCount;
}

CRefusedThreads::~CRefusedThreads()
{
    s_startsLeft = ALL_THREADS;
}

int CRefusedThreads::AskedCount() const
{
    return s_askedCount;
}

CSparedThreadStarts::CSparedThreadStarts()
{
    s_areStartsSpared = true;
}

CSparedThreadStarts::~CSparedThreadStarts()
{
    s_areStartsSpared = false;
}
