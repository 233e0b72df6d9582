#include "outputfile.h"

#include "interruptguard.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

static constexpr std::size_t CHUNK_BYTES = std::size_t{1} << 20; // so that an interrupt is heard soon

void COutputFile::SCloser::operator()(std::FILE* file) const
{
    static_cast<void>(std::fclose(file)); // a file that is given up; Close looks at the result
}

COutputFile::COutputFile(const std::filesystem::path& path, std::filesystem::path finalPath)
    : m_finalPath(std::move(finalPath)), m_file(std::fopen(path.string().c_str(), "wbx"))
{
    if (!m_file)
        Fail(errno);
}

void COutputFile::Write(const void* data, std::size_t bytes)
{
    const auto* next = static_cast<const unsigned char*>(data);
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
    if (std::fclose(m_file.release()) != 0)
        Fail(errno);
}

void COutputFile::Fail(int error) const
{
    throw std::filesystem::filesystem_error("cannot write", m_finalPath,
                                            std::error_code(error, std::generic_category()));
}
