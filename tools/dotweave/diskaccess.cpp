#include "diskaccess.h"

#include "fileerror.h"

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

CFolderLock::CFolderLock(const std::filesystem::path&, EWait) : m_isHeld(true) {}

CFolderLock::~CFolderLock() = default;

} // namespace dotweave

#else

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace dotweave {

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
    int result = 0;
    do
        result = flock(m_descriptor, LOCK_EX | (wait == Wait_Never ? LOCK_NB : 0));
    while (result != 0 && errno == EINTR);
    m_isHeld = result == 0;
    // A file system without locks never gives one; runs at the same time are then not kept apart.
    const bool isUsual =
        m_isHeld || errno == EWOULDBLOCK || errno == EOPNOTSUPP || errno == ENOSYS || errno == EINVAL;
    if (!isUsual) {
        const int error = errno;
        static_cast<void>(close(m_descriptor));
        throw CFileError(folder, error);
    }
}

CFolderLock::~CFolderLock()
{
    static_cast<void>(close(m_descriptor));
}

} // namespace dotweave

#endif
