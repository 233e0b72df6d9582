// Exceptions that a host catches by their type although they come out of a library that hides its own. Linked
// like a host: the shared library and nothing of its inside.

#include "dotweave/dotweave.h"

#include "maskparams.h"
#include "refusedrequest.h"
#include "throwingsink.h"

#include <boost/exception/exception.hpp>
#include <boost/thread/exceptions.hpp>
#include <gtest/gtest.h>

#include <cerrno>
#include <new>
#include <stdexcept>

#include <dlfcn.h>
#include <pthread.h>

#if !defined(DOTWEAVE_TEST_IS_SANITIZED)
namespace {

bool s_isMutexRefused = false;

} // namespace

// The platform's operation, which the library finds here before it finds the genuine one. Sanitizers stand in
// this place themselves.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the platform's are reserved names
extern "C" __attribute__((visibility("default"))) int
pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes) noexcept
{
    if (s_isMutexRefused)
        return EAGAIN;
    using CInit = decltype(&pthread_mutex_init);
    static const auto init = reinterpret_cast<CInit>(dlsym(RTLD_NEXT, "pthread_mutex_init"));
    return init(mutex, attributes);
}

TEST(HostException, RefusedMutexIsBoostsError)
{
    s_isMutexRefused = true;
    EXPECT_THROW(const CMaskDataStorage storage, boost::thread_resource_error);
    EXPECT_THROW(const CMaskDataStorage storage, boost::exception);
    EXPECT_THROW(const CMaskDataStorage storage, boost::system::system_error);
    EXPECT_THROW(const CMaskDataStorage storage, std::runtime_error);
    s_isMutexRefused = false;
    EXPECT_NO_THROW(const CMaskDataStorage storage);
}
#endif

TEST(HostException, RefusedMemoryIsTheStandardError)
{
    if (REFUSED_REQUEST_IS_FATAL)
        GTEST_SKIP() << "the sanitizer does not let the allocation fail";
    CMaskBlock block;
    EXPECT_THROW(block.Initialize(-1, 1), std::bad_alloc);
    CBaseMaskData planes;
    EXPECT_THROW(planes.Create(544, 544, -1), std::bad_alloc);
}

TEST(HostException, TheErrorOfAHostsSinkComesBack)
{
    SMaskParam param = MaskParam_Plain();
    param.colorTimes = 0;
    const CThrowingSink sink;
    CMaskData_Base mask;
    EXPECT_THROW(mask.Create(param), CSinkError);
    EXPECT_THROW(CMaskDataFactory::MaskData_Create(param), CSinkError);
    CMaskDataStorage storage;
    EXPECT_THROW(storage.MaskData_Current_Init(param), CSinkError);
}
