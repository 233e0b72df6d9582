#include "outputtexts.h"

#include "fileerror.h"
#include "interruptguard.h"
#include "outputfile.h"
#include "record/textquote.h"
#include "stagedfiles.h"
#include "usageerror.h"

#include <filesystem>
#include <map>

namespace fs = std::filesystem;

namespace dotweave {

namespace {

bool IsWrittenThrough(const std::string& file)
{
    if (file == "-")
        return true;
    const fs::file_status status = fs::status(file);
    return fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
}

/// The file that a name means once all links are followed.
fs::path Target(const std::string& file)
{
    if (fs::is_symlink(fs::symlink_status(file)) && !fs::exists(file))
        throw CFileError(file, std::string("is a link to nothing"));
    return fs::weakly_canonical(fs::absolute(file));
}

void Text_Write(COutputFile file, const std::string& text)
{
    file.Write(text.data(), text.size());
    file.Close();
}

} // namespace

void OutputNames_Check(const std::vector<SOutputName>& names)
{
    std::map<fs::path, std::string> options;
    for (const auto& [option, file] : names) {
        if (file.empty())
            continue;
        if (fs::path(file).filename().empty())
            throw CUsageError(option + ": \"" + Text_Quote(file) + "\" is not the name of a file");
        const fs::path place = file == "-" ? fs::path(file) : fs::weakly_canonical(fs::absolute(file));
        const auto [other, isNew] = options.try_emplace(place, option);
        if (!isNew)
            throw CUsageError(option + ": \"" + Text_Quote(file) + "\" is also the file of " + other->second +
                              "; allowed: another one");
    }
}

void OutputTexts_Write(std::span<const SOutputText> outputs)
{
    const CInterruptGuard interruptGuard;
    std::map<fs::path, CStagedFiles> folders;
    for (const SOutputText& output : outputs) {
        if (IsWrittenThrough(output.file))
            continue;
        const fs::path target = Target(output.file);
        CStagedFiles& files = folders.try_emplace(target.parent_path(), target.parent_path()).first->second;
        Text_Write(COutputFile(files.Add(target.filename().string()), output.file), output.text);
    }
    for (const auto& [folder, files] : folders)
        files.Check();
    for (const SOutputText& output : outputs)
        if (IsWrittenThrough(output.file))
            Text_Write(COutputFile(output.file), output.text);
    CInterruptGuard::Check();
    for (auto& [folder, files] : folders)
        files.Place();
}

} // namespace dotweave
