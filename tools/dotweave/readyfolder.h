#pragma once

#include <filesystem>

namespace dotweave {

/// @file
/// Hidden folders of a result folder, as CStagedFiles makes them. Each has a folder of new files and a folder
/// whose files carry the names of old ones that go.

/// A random number follows while files are written.
inline constexpr char STAGING_PREFIX[] = ".dotweave-";
inline constexpr char STAGING_READY[] = ".dotweave-ready";
inline constexpr char STAGING_NEW[] = "new";
inline constexpr char STAGING_RETIRED[] = "retired";

enum EReadyFolder {
    ReadyFolder_OfEarlierRun, // if there is one; a folder of somebody else is refused
    ReadyFolder_OfThisRun,
};

/// Moves the files of a ready folder to their places, mask.json last, and removes the folder. The caller has
/// locked the directory. Can be repeated after a failure or a kill at any step.
/// @throws CFileError that names the ready folder when it cannot be trusted or a file cannot be moved: only
///         regular files are moved, and only to where there is nothing or a regular file
/// @throws std::filesystem::filesystem_error when the system does not say whether there is one
void ReadyFolder_Finish(const std::filesystem::path& directory, EReadyFolder whose);

/// Removes staging folders whose run has ended without removing them: folders of our own, named as
/// CStagedFiles names them, with nothing in them but what it writes. One that cannot be removed stays. The
/// caller has locked the directory.
void Staging_RemoveAbandoned(const std::filesystem::path& directory);

} // namespace dotweave
