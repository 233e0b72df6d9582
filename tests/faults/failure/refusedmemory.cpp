#include "refusedmemory.h"

#include "livethreads.h"
#include "refusedrequest.h"

#include <gtest/gtest.h>
#include <kelcommon/customthreadbase.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

#if defined(__GLIBC__) && !defined(DOTWEAVE_TEST_IS_SANITIZED)
#define CAN_REFUSE_C_LIBRARY 1
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming): given
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* memory, std::size_t size);
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)
#endif

namespace {

/// More requests than any operation makes.
constexpr long REQUEST_COUNT_MAX = 5000;

std::atomic<bool> s_isArmed = false;
std::atomic<long> s_requestCount = 0;
std::atomic<long> s_liveCount = 0;
std::atomic<bool> s_hasRefused = false;
SRefusalPlan s_plan; // written while nobody is armed
thread_local bool t_isCaller = false;
thread_local int t_sparedDepth = 0;

/// Counts a request. @return whether it must fail
bool Request_IsRefused(ERequestKind kind)
{
    if (!s_isArmed || t_sparedDepth > 0 || kind != s_plan.kind)
        return false;
    if (s_plan.requester != ERequester::All && (s_plan.requester == ERequester::Caller) != t_isCaller)
        return false;
    const long number = s_requestCount++;
    if (number != s_plan.number && (s_plan.refusal == ERefusal::Once || number < s_plan.number))
        return false;
    s_hasRefused = true;
    return true;
}

void* Memory_Take(std::size_t size, std::size_t alignment) noexcept
{
    if (Request_IsRefused(ERequestKind::New))
        return nullptr;
    void* memory = nullptr;
    if (alignment > 0)
        memory = std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
    else
#if defined(CAN_REFUSE_C_LIBRARY)
        memory = __libc_malloc(size > 0 ? size : 1);
#else
        memory = std::malloc(size > 0 ? size : 1);
#endif
    if (memory != nullptr)
        ++s_liveCount;
    return memory;
}

void* Memory_TakeOrThrow(std::size_t size, std::size_t alignment)
{
    void* memory = Memory_Take(size, alignment);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void Memory_Return(void* memory) noexcept
{
    if (memory == nullptr)
        return;
    --s_liveCount;
    std::free(memory);
}

} // namespace

// ---- operator new and delete in all their forms

void* operator new(std::size_t size)
{
    return Memory_TakeOrThrow(size, 0);
}
void* operator new[](std::size_t size)
{
    return Memory_TakeOrThrow(size, 0);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return Memory_Take(size, 0);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return Memory_Take(size, 0);
}
void* operator new(std::size_t size, std::align_val_t alignment)
{
    return Memory_TakeOrThrow(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment)
{
    return Memory_TakeOrThrow(size, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept
{
    return Memory_Take(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept
{
    return Memory_Take(size, static_cast<std::size_t>(alignment));
}

void operator delete(void* memory) noexcept
{
    Memory_Return(memory);
}
void operator delete[](void* memory) noexcept
{
    Memory_Return(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    Memory_Return(memory);
}
void operator delete[](void* memory, std::size_t) noexcept
{
    Memory_Return(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    Memory_Return(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept
{
    Memory_Return(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept
{
    Memory_Return(memory);
}
void operator delete[](void* memory, std::align_val_t) noexcept
{
    Memory_Return(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept
{
    Memory_Return(memory);
}
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept
{
    Memory_Return(memory);
}
void operator delete(void* memory, std::align_val_t, const std::nothrow_t&) noexcept
{
    Memory_Return(memory);
}
void operator delete[](void* memory, std::align_val_t, const std::nothrow_t&) noexcept
{
    Memory_Return(memory);
}

// ---- the C library's own requests; free stays the C library's

#if defined(CAN_REFUSE_C_LIBRARY)

#define EXPORTED extern "C" __attribute__((visibility("default")))

/// What the C library expects with a null.
static void* OutOfMemory() noexcept
{
    errno = ENOMEM;
    return nullptr;
}

EXPORTED void* malloc(std::size_t size) noexcept
{
    return Request_IsRefused(ERequestKind::CLibrary) ? OutOfMemory() : __libc_malloc(size);
}

EXPORTED void* calloc(std::size_t count, std::size_t size) noexcept
{
    return Request_IsRefused(ERequestKind::CLibrary) ? OutOfMemory() : __libc_calloc(count, size);
}

EXPORTED void* realloc(void* memory, std::size_t size) noexcept
{
    return Request_IsRefused(ERequestKind::CLibrary) ? OutOfMemory() : __libc_realloc(memory, size);
}

bool CLibraryMemory_CanBeRefused()
{
    const char* settings = std::getenv("GLIBC_TUNABLES"); // NOLINT(concurrency-mt-unsafe): before threads
    return settings != nullptr && std::strstr(settings, "stack_cache_size=0") != nullptr;
}

#else

bool CLibraryMemory_CanBeRefused()
{
    return false;
}

#endif

// ---- plans

CRefusedMemory::CRefusedMemory(const SRefusalPlan& plan)
{
    s_plan = plan;
    s_requestCount = 0;
    s_hasRefused = false;
    t_isCaller = true;
    s_isArmed = true;
}

CRefusedMemory::~CRefusedMemory()
{
    s_isArmed = false;
    t_isCaller = false;
}

bool CRefusedMemory::HasRefused() const
{
    return s_hasRefused;
}

CSparedRequests::CSparedRequests()
{
    ++t_sparedDepth;
}

CSparedRequests::~CSparedRequests()
{
    --t_sparedDepth;
}

namespace {

class CThreadWithoutWork : public CustomThreadBase {
private:
    bool OneLoop() override { return false; }
};

} // namespace

long LiveAllocations_Count()
{
    // The state of ended threads is freed when the next one starts; ours always leaves the same state.
    EXPECT_TRUE(LiveThreads_AreGone());
    {
        CThreadWithoutWork thread;
        EXPECT_TRUE(thread.Start(nullptr));
        thread.Wait_Exit(0xFFFFFFFFU);
    }
    EXPECT_TRUE(LiveThreads_AreGone());
    return s_liveCount;
}

int Refuse_EachInTurn(SRefusalPlan plan, const std::function<SAttempt(const SRefusalPlan&)>& attempt)
{
    for (plan.number = 0; plan.number < REQUEST_COUNT_MAX; ++plan.number) {
        SCOPED_TRACE(testing::Message() << "request " << plan.number);
        const long liveCount = LiveAllocations_Count(); // with the trace, which takes memory too
        const SAttempt made = attempt(plan);
        if (testing::Test::HasFailure()) // what failed keeps its report in memory
            return static_cast<int>(plan.number);
        EXPECT_EQ(LiveAllocations_Count(), liveCount + made.leftBehind); // and no thread either
        if (!made.wasRefused)
            return static_cast<int>(plan.number);
    }
    ADD_FAILURE() << "no end of requests";
    return static_cast<int>(REQUEST_COUNT_MAX);
}
