#include "maskoutput.h"

#include "interruptguard.h"
#include "orderedtasks.h"
#include "outputfile.h"
#include "picture/maskpicture.h"
#include "progress.h"
#include "record/maskjson.h"
#include "stagedfiles.h"
#include "view/maskview.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>
#include <vector>

namespace fs = std::filesystem;

namespace dotweave {

namespace {

std::string Picture_Name(int color, int position)
{
    return "mask_c" + std::to_string(color) + "_p" + std::to_string(position) + ".png";
}

/// Closes a finished file and notes it for mask.json.
void File_Finish(COutputFile& file, const std::string& name, std::vector<SResultFile>& results)
{
    file.Close();
    results.push_back({name, file.ByteCount(), file.Checksum()});
}

void Bytes_Write(CStagedFiles& files, const CMaskView& view, std::vector<SResultFile>& results)
{
    const std::string name = "mask.bin";
    COutputFile file(files.Add(name), files.FinalPath(name));
    for (int color = 0; color < view.ColorCount(); ++color)
        for (int position = 0; position < view.PositionCount(); ++position) {
            const SMaskLines lines = view.Lines(color, position);
            file.Write(lines.bytes,
                       static_cast<std::size_t>(lines.lineBytes) * static_cast<std::size_t>(lines.height));
        }
    File_Finish(file, name, results);
}

void Pictures_Write(CStagedFiles& files, const CMaskView& view, int positionCount, CConsole& console,
                    std::vector<SResultFile>& results)
{
    const int count = view.ColorCount() * positionCount;
    CProgress progress(console, "pictures", count);
    int taken = 0;
    const auto make = [&](int i) {
        return MaskPicture_Png(view.Lines(i / positionCount, i % positionCount));
    };
    OrderedTasks_Run(count, make, [&](const std::vector<std::uint8_t>& png) {
        const std::string name = Picture_Name(taken / positionCount, taken % positionCount);
        COutputFile file(files.Add(name), files.FinalPath(name));
        file.Write(png.data(), png.size());
        File_Finish(file, name, results);
        ++taken;
        progress.Done_Add();
    });
}

/// Takes a number off the start of a text; -1 when there is none.
int Number_Take(std::string_view& text)
{
    int number = -1;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
    return number;
}

/// Whether this command gives a picture that name.
bool IsPictureName(const std::string& name)
{
    std::string_view text = name;
    text.remove_prefix(std::min(text.size(), std::string_view("mask_c").size()));
    const int color = Number_Take(text);
    text.remove_prefix(std::min(text.size(), std::string_view("_p").size()));
    const int position = Number_Take(text);
    return color >= 0 && position >= 0 && name == Picture_Name(color, position);
}

} // namespace

int MaskOutput_Write(const CMaskData_Base& mask, const fs::path& directory, EMaskPictures pictures,
                     CConsole& console)
{
    const CInterruptGuard interruptGuard;
    CStagedFiles files(directory);
    const CMaskView view(mask);
    std::vector<SResultFile> results;
    Bytes_Write(files, view, results);
    if (pictures != MaskPictures_None)
        Pictures_Write(files, view, pictures == MaskPictures_First ? 1 : view.PositionCount(), console,
                       results);
    const std::string text = Mask_Json(mask, results).dump(4) + '\n';
    COutputFile json(files.Add("mask.json"), files.FinalPath("mask.json"));
    json.Write(text.data(), text.size());
    json.Close();
    files.RetireOlder(&IsPictureName); // an old picture would show a mode that is no longer there
    CInterruptGuard::Check();
    files.Place();
    return static_cast<int>(results.size()) - 1;
}

} // namespace dotweave
