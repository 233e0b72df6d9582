#include "diskfaults.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <string_view>

namespace {

SDiskPlan s_plan;
bool s_isInForce = false;
int s_callCount = 0;
const char* s_faultyFunction = nullptr;

/// The function that this program has replaced.
template <typename TFunction>
TFunction Real(TFunction, const char* name)
{
    return reinterpret_cast<TFunction>(dlsym(RTLD_NEXT, name));
}

bool IsDue(std::string_view function)
{
    const int number = s_callCount++;
    if (number == s_plan.number)
        return true;
    if (number < s_plan.number || s_faultyFunction == nullptr)
        return false;
    return s_plan.fault == EDiskFault::AllForGood ||
           (s_plan.fault == EDiskFault::SameForGood && function == s_faultyFunction);
}

/// One call of a function, made or failed as planned.
/// @param call    makes it
/// @param failed  what it returns when it fails
template <typename TCall, typename TResult>
TResult Call(const char* function, TCall call, TResult failed)
{
    const std::string_view only = s_plan.function;
    if (!s_isInForce || (!only.empty() && only != function) || !IsDue(function))
        return call();
    if (s_faultyFunction == nullptr)
        s_faultyFunction = function;
    switch (s_plan.fault) {
    case EDiskFault::None:
        return call();
    case EDiskFault::SignalBefore:
        static_cast<void>(raise(s_plan.signal));
        return call();
    case EDiskFault::SignalAfter: {
        const TResult result = call();
        static_cast<void>(raise(s_plan.signal));
        return result;
    }
    default:
        errno = s_plan.error;
        return failed;
    }
}

} // namespace

CDiskFaults::CDiskFaults(const SDiskPlan& plan)
{
    s_plan = plan;
    s_callCount = 0;
    s_faultyFunction = nullptr;
    s_isInForce = true;
}

CDiskFaults::~CDiskFaults()
{
    s_isInForce = false;
}

int CDiskFaults::CallCount()
{
    return s_callCount;
}

std::string CDiskFaults::FaultyFunction()
{
    return s_faultyFunction != nullptr ? s_faultyFunction : "";
}

// NOLINTBEGIN(readability-identifier-naming,readability-inconsistent-declaration-parameter-name): given names
#pragma GCC visibility push(default) // the C++ library is to find these too
extern "C" {

int open(const char* path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const int mode = (flags & O_CREAT) != 0 ? va_arg(more, int) : 0;
    va_end(more);
    return Call(
        "open", [=] { return Real(&open, "open")(path, flags, mode); }, -1);
}

int openat(int folder, const char* path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const int mode = (flags & O_CREAT) != 0 ? va_arg(more, int) : 0;
    va_end(more);
    return Call(
        "openat", [=] { return Real(&openat, "openat")(folder, path, flags, mode); }, -1);
}

/// The number is free afterwards even when closing fails, as on Linux.
int close(int file)
{
    const int result = Real(&close, "close")(file);
    return Call(
        "close", [=] { return result; }, -1);
}

int fsync(int /*file*/)
{
    return Call(
        "fsync", [] { return 0; }, -1);
}

int flock(int file, int operation) noexcept
{
    return Call(
        "flock", [=] { return Real(&flock, "flock")(file, operation); }, -1);
}

int stat(const char* path, struct stat* status) noexcept
{
    return Call(
        "stat",
        [=] { return Real(static_cast<int (*)(const char*, struct stat*)>(&stat), "stat")(path, status); },
        -1);
}

int lstat(const char* path, struct stat* status) noexcept
{
    return Call(
        "lstat", [=] { return Real(&lstat, "lstat")(path, status); }, -1);
}

int chown(const char* path, uid_t owner, gid_t group) noexcept
{
    return Call(
        "chown", [=] { return Real(&chown, "chown")(path, owner, group); }, -1);
}

int chmod(const char* path, mode_t mode) noexcept
{
    return Call(
        "chmod", [=] { return Real(&chmod, "chmod")(path, mode); }, -1);
}

int mkdir(const char* path, mode_t mode) noexcept
{
    return Call(
        "mkdir", [=] { return Real(&mkdir, "mkdir")(path, mode); }, -1);
}

int rename(const char* from, const char* to) noexcept
{
    return Call(
        "rename", [=] { return Real(&rename, "rename")(from, to); }, -1);
}

int remove(const char* path) noexcept
{
    return Call(
        "remove", [=] { return Real(&remove, "remove")(path); }, -1);
}

int unlinkat(int folder, const char* path, int flags) noexcept
{
    return Call(
        "unlinkat", [=] { return Real(&unlinkat, "unlinkat")(folder, path, flags); }, -1);
}

DIR* fdopendir(int folder)
{
    return Call(
        "fdopendir", [=] { return Real(&fdopendir, "fdopendir")(folder); }, static_cast<DIR*>(nullptr));
}

struct dirent* readdir(DIR* folder)
{
    return Call(
        "readdir", [=] { return Real(&readdir, "readdir")(folder); }, static_cast<struct dirent*>(nullptr));
}

FILE* fopen(const char* path, const char* mode)
{
    return Call(
        "fopen", [=] { return Real(&fopen, "fopen")(path, mode); }, static_cast<FILE*>(nullptr));
}

/// One that fails has written a part.
size_t fwrite(const void* data, size_t size, size_t count, FILE* file)
{
    const auto real = Real(&fwrite, "fwrite");
    const auto half = [=]() -> size_t { return real(data, size, count / 2, file); };
    constexpr size_t FAILED = static_cast<size_t>(-1);
    const size_t written = Call(
        "fwrite", [=] { return real(data, size, count, file); }, FAILED);
    if (written != FAILED)
        return written;
    const size_t part = half();
    errno = s_plan.error;
    return part;
}

int fflush(FILE* file)
{
    return Call(
        "fflush", [=] { return Real(&fflush, "fflush")(file); }, EOF);
}

/// The file is closed even when that fails.
int fclose(FILE* file)
{
    const int result = Real(&fclose, "fclose")(file);
    return Call(
        "fclose", [=] { return result; }, EOF);
}

} // extern "C"
#pragma GCC visibility pop
// NOLINTEND(readability-identifier-naming,readability-inconsistent-declaration-parameter-name)
