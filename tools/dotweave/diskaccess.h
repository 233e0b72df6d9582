#pragma once

#include <cstdio>
#include <filesystem>

namespace dotweave {

/// @file
/// What the standard library cannot ask of the system.
/// Without POSIX, folders are not locked and nothing is synced.

/// Waits until what was written to a file is on the disk.
/// @return false with errno set when it may not be
bool File_Sync(std::FILE* file);

/// Waits until the names in a folder are on the disk, where the file system can sync folders and we may read
/// this one.
/// @throws CFileError when they may not be
void Folder_Sync(const std::filesystem::path& folder);

/// Whether a path is a folder, no link to one, of the user that this process acts for.
/// @param also  a folder whose owner may own it too; empty for none
/// @throws CFileError when the system does not say
bool Folder_IsOwn(const std::filesystem::path& path, const std::filesystem::path& also = {});

/// Gives a new file the mode of an older one, if there is one, and its owner and group where the system lets
/// us. Where it keeps another group, that group may do no more than everybody.
/// @throws CFileError when the mode cannot be kept: others could then read what they could not before
void Owner_Copy(const std::filesystem::path& from, const std::filesystem::path& to);

/// Opens whatever of standard input, output and error the caller has closed, in the direction in which it
/// fails. A file that the command opens can then not take the place of one of them.
void StandardStreams_Occupy();

/// The lock of a folder, held until this object or its process ends.
class CFolderLock {
public:
    enum EWait { Wait_Never, Wait_Forever };

    /// Says on standard error, once, when it waits for longer than a second.
    /// @throws CFileError when the folder cannot be opened or the system fails to lock it
    /// @throws CInterrupted when the user ends the run while it waits
    CFolderLock(const std::filesystem::path& folder, EWait wait);
    CFolderLock(const CFolderLock&) = delete;
    CFolderLock& operator=(const CFolderLock&) = delete;
    ~CFolderLock();

    /// False when another run has the lock and we did not wait, or when the file system has no locks.
    bool IsHeld() const { return m_isHeld; }

private:
    bool TryLock() const;

    int m_descriptor = -1;
    bool m_isHeld = false;
};

} // namespace dotweave
