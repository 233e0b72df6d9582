#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// A directory that lives as long as the test.
class CTemporaryDirectory {
public:
    CTemporaryDirectory();
    CTemporaryDirectory(const CTemporaryDirectory&) = delete;
    CTemporaryDirectory& operator=(const CTemporaryDirectory&) = delete;
    ~CTemporaryDirectory();

    const std::filesystem::path& Path() const { return m_path; }
    /// A path inside, as an option takes it.
    std::string Sub(const std::string& name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

/// The names of everything directly inside a directory, hidden files too, sorted.
std::vector<std::string> Directory_Names(const std::filesystem::path& directory);

std::string File_Read(const std::filesystem::path& path);
void File_Write(const std::filesystem::path& path, const std::string& text);
