#pragma once

#include <boost/crc.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>

namespace dotweave {

/// A file being written. Every failure is a CFileError with the system's reason.
class COutputFile {
public:
    /// Creates a file.
    /// @param path       where it is written; must not exist yet
    /// @param finalPath  where it will be in the end, which is what messages name
    COutputFile(const std::filesystem::path& path, std::filesystem::path finalPath);
    /// Opens a device or a pipe, which is written through.
    /// @param path  its name; "-" is standard output
    explicit COutputFile(const std::filesystem::path& path);

    /// Appends bytes.
    /// @throws CInterrupted between two chunks when the user ends the run
    void Write(const void* data, std::size_t bytes);
    /// Ends the file. A file on disk is on the disk when this returns.
    void Close();

    std::int64_t ByteCount() const { return m_byteCount; }
    /// CRC-32 of all bytes so far, as zip, gzip and PNG use it.
    std::uint32_t Checksum() const { return m_checksum.checksum(); }

private:
    [[noreturn]] void Fail(int error) const;

    struct SCloser {
        void operator()(std::FILE* file) const;
    };
    std::filesystem::path m_finalPath;
    std::unique_ptr<std::FILE, SCloser> m_file;
    bool m_isOnDisk;
    std::int64_t m_byteCount = 0;
    boost::crc_32_type m_checksum;
};

} // namespace dotweave
