#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// Files that appear in a directory together or not at all.
/// They are written in a hidden staging directory inside it, moved to their places by Place and final with
/// Keep. Whatever ends the run before that - an error, an interrupt - leaves the directory as it was: the
/// destructor takes the new files away, puts older ones back and removes every directory that was made.
class CStagedFiles {
public:
    /// Makes the directory if it is not there, and the staging directory in it.
    /// @throws std::filesystem::filesystem_error
    explicit CStagedFiles(std::filesystem::path directory);
    CStagedFiles(const CStagedFiles&) = delete;
    CStagedFiles& operator=(const CStagedFiles&) = delete;
    ~CStagedFiles();

    /// Announces a file of the new result.
    /// @param name  plain file name
    /// @return where to write it
    std::filesystem::path Add(const std::string& name);
    /// Announces a file of an older result that goes when the new one comes. It need not be there.
    void Retire(const std::string& name);
    /// Where a file will stand.
    std::filesystem::path FinalPath(const std::string& name) const { return m_directory / name; }

    /// Moves all files to their places; older files of the same names and the retired ones go aside.
    /// @throws std::filesystem::filesystem_error
    void Place();
    /// Makes the moves final.
    void Keep() { m_isKept = true; }

private:
    void Staging_Create();
    void MoveAside(const std::vector<std::string>& names);
    void MoveBack();

    std::filesystem::path m_directory;
    std::filesystem::path m_staging;
    std::vector<std::filesystem::path> m_madeDirectories; // innermost first
    std::vector<std::string> m_added;
    std::vector<std::string> m_retired;
    std::vector<std::string> m_aside;  // old files in the staging directory
    std::vector<std::string> m_placed; // new files in their places
    bool m_isKept = false;
};
