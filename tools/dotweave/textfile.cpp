#include "textfile.h"

#include "fileerror.h"

#include <cerrno>

namespace dotweave {

std::ifstream TextFile_Open(const std::filesystem::path& path)
{
    errno = 0;
    std::ifstream stream(path, std::ios::binary);
    stream.peek(); // a folder can be opened, but not read
    if (!stream && !(stream.eof() && errno == 0))
        throw CFileError(path, errno);
    stream.clear();
    return stream;
}

} // namespace dotweave
