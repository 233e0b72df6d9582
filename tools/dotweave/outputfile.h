#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <memory>

/// A new file being written. Every failure is a std::filesystem::filesystem_error with the system's reason.
class COutputFile {
public:
    /// Creates the file.
    /// @param path       where it is written; must not be there yet
    /// @param finalPath  where it will stand, which is what messages name
    COutputFile(const std::filesystem::path& path, std::filesystem::path finalPath);

    /// Appends bytes.
    /// @throws CInterrupted between two chunks when the user ends the run
    void Write(const void* data, std::size_t bytes);
    /// Ends the file; only now are all bytes known to be on their way to the disk.
    void Close();

private:
    [[noreturn]] void Fail(int error) const;

    struct SCloser {
        void operator()(std::FILE* file) const;
    };
    std::filesystem::path m_finalPath;
    std::unique_ptr<std::FILE, SCloser> m_file;
};
