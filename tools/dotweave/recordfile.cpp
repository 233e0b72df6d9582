#include "recordfile.h"

#include "fileerror.h"
#include "record/recordjson.h"

#include <cerrno>
#include <fstream>

namespace dotweave {

void Record_ReadFile(const std::string& path, SMaskParam& param, std::string* description)
{
    errno = 0;
    std::ifstream stream(path, std::ios::binary);
    stream.peek(); // a folder can be opened, but not read
    if (!stream && !(stream.eof() && errno == 0))
        throw CFileError(path, errno);
    stream.clear();
    Record_ReadJson(stream, Text_Quote(path), param, description);
}

} // namespace dotweave
