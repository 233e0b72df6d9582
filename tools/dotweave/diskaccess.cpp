#include "diskaccess.h"

#include "fileerror.h"
#include "interruptguard.h"

#include <cerrno>

#if defined(_WIN32)

namespace dotweave {

bool File_Sync(std::FILE*)
{
    return true;
}

void Folder_Sync(const std::filesystem::path&) {}

bool Folder_IsOwn(const std::filesystem::path& path, const std::filesystem::path&)
{
    return std::filesystem::is_directory(std::filesystem::symlink_status(path));
}

void Owner_Copy(const std::filesystem::path&, const std::filesystem::path&) {}

void StandardStreams_Occupy() {}

// Without locks no other run's folder may look abandoned.
CFolderLock::CFolderLock(const std::filesystem::path&, EWait wait) : m_isHeld(wait == Wait_Forever) {}

CFolderLock::~CFolderLock() = default;

} // namespace dotweave

#else

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <thread>

namespace dotweave {

using std::chrono::milliseconds;

static constexpr milliseconds POLL_FIRST{1}; // most runs hold a folder for a moment only
static constexpr milliseconds POLL_LONGEST{64};
static constexpr milliseconds SILENT_WAIT{1000};

bool File_Sync(std::FILE* file)
{
    return fsync(fileno(file)) == 0 || errno == EINVAL; // EINVAL: a file system that knows no syncing
}

void Folder_Sync(const std::filesystem::path& folder)
{
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0 && errno == EACCES) // a parent folder in which we may write but not read
        return;
    if (descriptor < 0)
        throw CFileError(folder, errno);
    const bool isSynced = fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
    const int error = errno;
    static_cast<void>(close(descriptor));
    if (!isSynced)
        throw CFileError(folder, error);
}

bool Folder_IsOwn(const std::filesystem::path& path, const std::filesystem::path& also)
{
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0)
        throw CFileError(path, errno);
    if (!S_ISDIR(status.st_mode))
        return false;
    if (status.st_uid == geteuid())
        return true;
    if (also.empty())
        return false;
    struct stat alsoStatus = {};
    if (stat(also.c_str(), &alsoStatus) != 0)
        throw CFileError(also, errno);
    return status.st_uid == alsoStatus.st_uid;
}

void Owner_Copy(const std::filesystem::path& from, const std::filesystem::path& to)
{
    struct stat status = {};
    if (stat(from.c_str(), &status) != 0) {
        if (errno == ENOENT)
            return;
        throw CFileError(from, errno);
    }
    mode_t mode = status.st_mode & 07777U;
    if (chown(to.c_str(), status.st_uid, status.st_gid) != 0) { // of other users: root alone may
        mode &= 00777U;                                         // set-user-id and the like go with the owner
        if (chown(to.c_str(), static_cast<uid_t>(-1), status.st_gid) != 0)
            mode &= ~00070U | (mode & 00007U) << 3U; // in another group
    }
    struct stat toStatus = {}; // after chown, which clears bits
    if (stat(to.c_str(), &toStatus) != 0)
        throw CFileError(to, errno);
    if ((toStatus.st_mode & 07777U) != mode && chmod(to.c_str(), mode) != 0)
        throw CFileError(from, errno);
}

void StandardStreams_Occupy()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) < 0) // open takes the lowest free number, which is this one
            static_cast<void>(open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY));
}

CFolderLock::CFolderLock(const std::filesystem::path& folder, EWait wait)
    : m_descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (m_descriptor < 0)
        throw CFileError(folder, errno);
    try {
        milliseconds pause = POLL_FIRST;
        milliseconds waited{0};
        bool isTold = false;
        while (!(m_isHeld = TryLock()) && errno == EWOULDBLOCK && wait == Wait_Forever) {
            CInterruptGuard::Check(); // a lock that the system waits for could not be interrupted
            std::this_thread::sleep_for(pause);
            waited += pause;
            pause = std::min(2 * pause, POLL_LONGEST);
            if (waited >= SILENT_WAIT && !isTold) {
                std::cerr << "dotweave: waiting for another run in " << Text_Quote(folder.string())
                          << std::endl;
                isTold = true;
            }
        }
        // A file system without locks never gives one; runs at the same time are then not kept apart.
        if (!m_isHeld && errno != EWOULDBLOCK && errno != EOPNOTSUPP && errno != ENOSYS && errno != EINVAL)
            throw CFileError(folder, errno);
    } catch (...) {
        static_cast<void>(close(m_descriptor));
        throw;
    }
}

/// @return false with errno set
bool CFolderLock::TryLock() const
{
    int result = 0;
    do
        result = flock(m_descriptor, LOCK_EX | LOCK_NB);
    while (result != 0 && errno == EINTR);
    return result == 0;
}

CFolderLock::~CFolderLock()
{
    static_cast<void>(close(m_descriptor));
}

} // namespace dotweave

#endif
