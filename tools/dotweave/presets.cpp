#include "presets.h"

#include "fileerror.h"
#include "record/recordfields.h"
#include "recordfile.h"
#include "suggestion.h"
#include "usageerror.h"

#define BOOST_DLL_USE_STD_FS // paths of the standard library instead of Boost's
#include <boost/dll/runtime_symbol_info.hpp>

#include <algorithm>
#include <system_error>

namespace fs = std::filesystem;

namespace dotweave {

fs::path Presets_Folder()
{
    return boost::dll::program_location().parent_path() / DOTWEAVE_SHARE_FOLDER / "presets";
}

std::vector<SPreset> Presets_Read(const fs::path& folder)
{
    std::vector<SPreset> presets;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        if (entry.path().extension() != ".json")
            continue;
        SPreset preset = {entry.path().stem().string(), "", RECORD_DEFAULT};
        Record_ReadFile(entry.path().string(), preset.param, &preset.description);
        presets.push_back(preset);
    }
    if (error)
        throw CFileError(folder, error.message());
    std::sort(presets.begin(), presets.end(),
              [](const SPreset& a, const SPreset& b) { return a.name < b.name; });
    return presets;
}

SPreset Preset_Find(const std::string& name, const std::string& where, const std::string& what)
{
    const std::vector<SPreset> presets = Presets_Read();
    const auto found = std::find_if(presets.begin(), presets.end(),
                                    [&name](const SPreset& preset) { return preset.name == name; });
    if (found != presets.end())
        return *found;
    std::vector<std::string> names(presets.size());
    std::transform(presets.begin(), presets.end(), names.begin(),
                   [](const SPreset& preset) { return preset.name; });
    throw CUsageError(where + '"' + Text_Quote(name) + "\" is " + what + Suggestion_Text(name, names) +
                      "; dotweave presets lists them");
}

} // namespace dotweave
