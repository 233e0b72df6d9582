#pragma once

#include <dotweave/maskparam.h>

#include <filesystem>
#include <string>
#include <vector>

namespace dotweave {

/// A print mode that comes with the command.
struct SPreset {
    std::string name;
    std::string description; ///< one line: what the mode is for
    SMaskParam param;
};

/// The folder of the presets: in share/, beside the folder of the running program.
std::filesystem::path Presets_Folder();

/// Reads all presets of a folder: one for every file "<name>.json", by name.
/// @throws CFileError when the folder cannot be read; CRecordError for a file that is no mode file
std::vector<SPreset> Presets_Read(const std::filesystem::path& folder = Presets_Folder());

/// @param where  what the message for an unknown name begins with, such as "--preset: "
/// @param what   what it calls such a name
/// @throws CUsageError for a name that no preset has, with a suggestion for a mistyped one; and what
///         Presets_Read throws
SPreset Preset_Find(const std::string& name, const std::string& where, const std::string& what);

} // namespace dotweave
