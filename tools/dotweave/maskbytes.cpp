#include "maskbytes.h"

#include "fileerror.h"
#include "maskcreation.h"
#include "presets.h"
#include "record/recordfields.h"
#include "record/textquote.h"
#include "recordfile.h"
#include "resultfolder.h"
#include "view/maskview.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace dotweave {

namespace {

constexpr char BYTES_FILE[] = "mask.bin";

bool IsModeFile(const fs::path& path)
{
    return path.extension() == ".json" && path.filename() != "mask.json";
}

/// Bytes of a file, with the shape of the mask.json beside it.
SMaskBytes File_Bytes(const fs::path& path)
{
    SMaskBytes mask = {Bytes_ReadFile(path), std::nullopt};
    if (path.filename() != BYTES_FILE || !fs::exists(path.parent_path() / "mask.json"))
        return mask;
    mask.shape = ResultFolder_Read(path.parent_path()).shape;
    if (mask.shape->ByteCount() != static_cast<std::int64_t>(mask.bytes.size()))
        throw CFileError(path, "has " + std::to_string(mask.bytes.size()) +
                                   " bytes; the shape in mask.json has " +
                                   std::to_string(mask.shape->ByteCount()));
    return mask;
}

SMaskBytes Mode_Bytes(const SMaskParam& param, CConsole& console)
{
    const std::unique_ptr<CMaskData_Base> mask = Mask_Create(param, false, console);
    const CMaskView view(*mask);
    SMaskBytes result = {{}, MaskShape_Of(*mask)};
    result.bytes.reserve(static_cast<std::size_t>(view.ByteCount()));
    for (int color = 0; color < view.ColorCount(); ++color)
        for (int position = 0; position < view.PositionCount(); ++position) {
            const std::uint8_t* bytes = view.Lines(color, position).bytes;
            result.bytes.insert(result.bytes.end(), bytes, bytes + mask->MaskBytes_OnePosition());
        }
    return result;
}

} // namespace

SMaskParam Mode_ByWord(const std::string& word)
{
    SMaskParam param = RECORD_DEFAULT;
    const fs::path path = word;
    if (fs::is_directory(path))
        return ResultFolder_Read(path).param;
    if (path.filename() == "mask.json")
        return ResultFolder_Read(path.parent_path()).param;
    if (!IsModeFile(path) && !fs::exists(path))
        return Preset_Find(word, "", "neither a file nor a preset").param;
    Record_ReadFile(word, param);
    return param;
}

SMaskBytes MaskBytes_ByWord(const std::string& word, CConsole& console)
{
    const fs::path path = word;
    if (fs::is_directory(path))
        return File_Bytes(path / BYTES_FILE);
    if (fs::exists(path) && path.extension() != ".json")
        return File_Bytes(path);
    return Mode_Bytes(Mode_ByWord(word), console);
}

} // namespace dotweave
