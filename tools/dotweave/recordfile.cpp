#include "recordfile.h"

#include "record/recordjson.h"
#include "record/textquote.h"
#include "textfile.h"

namespace dotweave {

void Record_ReadFile(const std::string& path, SMaskParam& param, std::string* description)
{
    std::ifstream stream = TextFile_Open(path);
    Record_ReadJson(stream, Text_Quote(path), param, description);
}

} // namespace dotweave
