#include "outputfile.h"

#include "diskaccess.h"
#include "fileerror.h"
#include "interruptguard.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace dotweave {

static constexpr std::size_t CHUNK_BYTES = std::size_t{1} << 20; // so that an interrupt is noticed soon

void COutputFile::SCloser::operator()(std::FILE* file) const
{
    if (file != stdout)
        static_cast<void>(std::fclose(file)); // an abandoned file; Close checks the result
}

COutputFile::COutputFile(const std::filesystem::path& path, std::filesystem::path finalPath)
    : m_finalPath(std::move(finalPath)), m_file(std::fopen(path.string().c_str(), "wbx")), m_isOnDisk(true)
{
    if (!m_file)
        Fail(errno);
}

COutputFile::COutputFile(const std::filesystem::path& path)
    : m_finalPath(path == "-" ? "standard output" : path),
      m_file(path == "-" ? stdout : std::fopen(path.string().c_str(), "wb")), m_isOnDisk(false)
{
    if (!m_file)
        Fail(errno);
}

void COutputFile::Write(const void* data, std::size_t bytes)
{
    const auto* next = static_cast<const unsigned char*>(data);
    m_checksum.process_bytes(next, bytes);
    m_byteCount += static_cast<std::int64_t>(bytes);
    while (bytes > 0) {
        CInterruptGuard::Check();
        const std::size_t chunk = std::min(bytes, CHUNK_BYTES);
        if (std::fwrite(next, 1, chunk, m_file.get()) != chunk)
            Fail(errno);
        next += chunk;
        bytes -= chunk;
    }
}

void COutputFile::Close()
{
    if (std::fflush(m_file.get()) != 0 || (m_isOnDisk && !File_Sync(m_file.get())))
        Fail(errno);
    if (m_file.get() != stdout && std::fclose(m_file.release()) != 0)
        Fail(errno);
}

void COutputFile::Fail(int error) const
{
    CInterruptGuard::Check(); // a signal such as SIGPIPE explains the error better
    throw CFileError(m_finalPath, error);
}

} // namespace dotweave
