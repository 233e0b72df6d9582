#pragma once

#include "diskaccess.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace dotweave {

/// Files that come into a folder together or not at all.
///
/// They are written and synced in a hidden staging folder inside it. One rename decides: it calls the staging
/// folder ".dotweave-ready". Before it the old result counts, after it the new one. Then the files move to
/// their places, mask.json last. A run that is killed during the moves leaves the ready folder, and the next
/// run into the folder finishes them. The folder as a whole cannot be exchanged, because other files in it
/// may be the user's. Nothing is deleted before its replacement is in place.
///
/// Placing locks the folder, so that runs at once come one after the other. Whatever ends a run before the
/// decision, an error or an interrupt, leaves the folder as it was. The next run removes what a killed run
/// left before the decision.
class CStagedFiles {
public:
    /// Makes the folder if it is not there, finishes or removes what a killed run left in it, and makes the
    /// staging folder.
    /// @throws CFileError, std::filesystem::filesystem_error
    explicit CStagedFiles(std::filesystem::path directory);
    CStagedFiles(const CStagedFiles&) = delete;
    CStagedFiles& operator=(const CStagedFiles&) = delete;
    ~CStagedFiles();

    /// Announces a file of the new result.
    /// @param name  plain file name
    /// @return where to write it
    std::filesystem::path Add(const std::string& name);
    /// Announces that files of an older result go when the new one comes.
    /// @param isOurs  whether a file of that name belongs to a result. Asked while the folder is locked, so
    ///                that it sees files of a run at the same time too.
    void RetireOlder(bool (*isOurs)(const std::string& name)) { m_isOurs = isOurs; }
    /// Where a file will be.
    std::filesystem::path FinalPath(const std::string& name) const { return m_directory / name; }

    /// Checks that every file can take its place: only regular files are replaced or retired.
    /// @throws CFileError
    void Check() const;
    /// Checks, then moves all files to their places. A replaced file passes on its owner and mode.
    /// @throws CFileError, std::filesystem::filesystem_error; the message names the ready folder when the new
    ///         result is complete but not yet in its place
    void Place();

private:
    void Staging_Create();
    void Retired_Find();

    std::filesystem::path m_directory;
    std::filesystem::path m_staging;
    std::optional<CFolderLock> m_stagingLock;             // shows other runs that somebody is at work
    std::vector<std::filesystem::path> m_madeDirectories; // innermost first
    std::vector<std::string> m_added;
    std::vector<std::string> m_retired;
    bool (*m_isOurs)(const std::string& name) = nullptr;
    bool m_isPlaced = false;
};

} // namespace dotweave
