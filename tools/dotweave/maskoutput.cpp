#include "maskoutput.h"

#include "interruptguard.h"
#include "record/maskjson.h"
#include "picture/maskpicture.h"
#include "outputfile.h"
#include "stagedfiles.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <string_view>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

void File_Write(CStagedFiles& files, const std::string& name, const void* data, std::size_t bytes)
{
    COutputFile file(files.Add(name), files.FinalPath(name));
    file.Write(data, bytes);
    file.Close();
}

void Bytes_Write(CStagedFiles& files, const CMaskData_Base& mask)
{
    const std::string name = "mask.bin";
    COutputFile file(files.Add(name), files.FinalPath(name));
    for (int color = 0; color < mask.MaskParam_Current().colorCount; ++color) {
        int position = -1;
        for (int i = 0; i < Mask_PositionCount(mask); ++i)
            file.Write(mask.MaskData_Get(color, position),
                       static_cast<std::size_t>(mask.MaskBytes_OnePosition()));
    }
    file.Close();
}

std::vector<std::string> Pictures_Write(CStagedFiles& files, const CMaskData_Base& mask, int positionCount)
{
    std::vector<std::string> names;
    for (int color = 0; color < mask.MaskParam_Current().colorCount; ++color) {
        int position = -1;
        for (int i = 0; i < positionCount; ++i) {
            const std::uint8_t* bytes = mask.MaskData_Get(color, position);
            const std::vector<std::uint8_t> png =
                MaskPicture_Png({bytes, mask.MaskWidth(), mask.MaskHeight_IncludeRes(),
                                 mask.MaskLineBytes_OneColor(), mask.BitsPerPixel()});
            names.push_back(MaskPicture_FileName(color, position));
            File_Write(files, names.back(), png.data(), png.size());
        }
    }
    return names;
}

/// A number at the start of a text, which is cut off; -1 when there is none.
int Number_Take(std::string_view& text)
{
    int number = -1;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
    return number;
}

/// Whether a run of this command gives a picture that name: it is the one for the numbers in it.
bool IsPictureName(const std::string& name)
{
    std::string_view text = name;
    text.remove_prefix(std::min(text.size(), std::string_view("mask_c").size()));
    const int color = Number_Take(text);
    text.remove_prefix(std::min(text.size(), std::string_view("_p").size()));
    const int position = Number_Take(text);
    return color >= 0 && position >= 0 && name == MaskPicture_FileName(color, position);
}

/// A picture that the new result does not have would show a mode that is no longer there.
void OldPictures_Retire(CStagedFiles& files, const fs::path& directory, const std::vector<std::string>& names)
{
    for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
        const std::string name = entry.path().filename().string();
        if (IsPictureName(name) && std::find(names.begin(), names.end(), name) == names.end())
            files.Retire(name);
    }
}

} // namespace

std::string MaskPicture_FileName(int color, int position)
{
    return "mask_c" + std::to_string(color) + "_p" + std::to_string(position) + ".png";
}

int MaskOutput_Write(const CMaskData_Base& mask, const fs::path& directory, EMaskPictures pictures)
{
    const CInterruptGuard interruptGuard;
    CStagedFiles files(directory);
    Bytes_Write(files, mask);
    std::vector<std::string> names;
    if (pictures != MaskPictures_None)
        names = Pictures_Write(files, mask, pictures == MaskPictures_First ? 1 : Mask_PositionCount(mask));
    const std::string text = Mask_Json(mask, names).dump(4) + '\n';
    File_Write(files, "mask.json", text.data(), text.size());
    OldPictures_Retire(files, directory, names);
    CInterruptGuard::Check();
    files.Place();
    files.Keep();
    return static_cast<int>(names.size());
}
