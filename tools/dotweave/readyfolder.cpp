#include "readyfolder.h"

#include "diskaccess.h"
#include "fileerror.h"

#include <string>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace dotweave {

namespace {

constexpr char LAST_FILE[] = "mask.json"; // describes the others

void Folder_Trust(const fs::path& folder, const fs::path& directory)
{
    if (!Folder_IsOwn(folder, directory))
        throw CFileError(folder, "is not a folder that you or the owner of " +
                                     Text_Quote(directory.string()) + " made; remove it");
}

/// Refuses a ready folder that no run of ours has left: its files would replace those of a result.
void ReadyFolder_Trust(const fs::path& ready, const fs::path& directory)
{
    Folder_Trust(ready, directory);
    if (fs::exists(fs::symlink_status(ready / STAGING_NEW)))
        Folder_Trust(ready / STAGING_NEW, directory);
    else if (!fs::is_empty(ready)) // a run that is killed at the very end leaves it empty
        throw CFileError(ready, std::string("has no folder \"") + STAGING_NEW + "\"; remove it");
    if (fs::exists(fs::symlink_status(ready / STAGING_RETIRED)))
        Folder_Trust(ready / STAGING_RETIRED, directory);
}

/// Neither follows a link nor replaces one.
void Regular_Expect(const fs::path& path)
{
    const fs::file_status status = fs::symlink_status(path);
    if (fs::exists(status) && !fs::is_regular_file(status))
        throw CFileError(path, std::string("is no regular file"));
}

void File_Move(const fs::path& from, const fs::path& to)
{
    Regular_Expect(from);
    Regular_Expect(to);
    fs::rename(from, to);
}

/// File names in a folder; none when there is no such folder.
std::vector<std::string> FileNames(const fs::path& folder)
{
    std::vector<std::string> names;
    if (fs::exists(folder))
        for (const fs::directory_entry& entry : fs::directory_iterator(folder))
            names.push_back(entry.path().filename().string());
    return names;
}

void Files_Move(const fs::path& ready, const fs::path& directory)
{
    for (const std::string& name : FileNames(ready / STAGING_NEW))
        if (name != LAST_FILE)
            File_Move(ready / STAGING_NEW / name, directory / name);
    for (const std::string& name : FileNames(ready / STAGING_RETIRED)) {
        Regular_Expect(directory / name);
        fs::remove(directory / name);
        fs::remove(ready / STAGING_RETIRED / name);
    }
    if (fs::exists(ready / STAGING_NEW / LAST_FILE))
        File_Move(ready / STAGING_NEW / LAST_FILE, directory / LAST_FILE);
}

bool IsStagingName(const std::string& name)
{
    const std::string prefix = STAGING_PREFIX;
    return name.size() > prefix.size() && name.compare(0, prefix.size(), prefix) == 0 &&
           name.find_first_not_of("0123456789", prefix.size()) == std::string::npos;
}

/// Removes a staging folder with its files. One that has anything else in it is not ours and stays whole.
void Staging_Remove(const fs::path& staging)
{
    std::vector<fs::path> files;
    std::vector<fs::path> folders;
    for (const fs::directory_entry& folder : fs::directory_iterator(staging)) {
        const fs::path name = folder.path().filename();
        if ((name != STAGING_NEW && name != STAGING_RETIRED) || !Folder_IsOwn(folder.path()))
            return;
        folders.push_back(folder.path());
        for (const fs::directory_entry& file : fs::directory_iterator(folder.path())) {
            if (!fs::is_regular_file(file.symlink_status()))
                return;
            files.push_back(file.path());
        }
    }
    folders.push_back(staging);
    for (const std::vector<fs::path>* paths : {&files, &folders})
        for (const fs::path& path : *paths)
            fs::remove(path); // takes only an empty folder
}

} // namespace

void ReadyFolder_Finish(const fs::path& directory, EReadyFolder whose)
{
    const fs::path ready = directory / STAGING_READY;
    std::string result = "the new result is ";
    if (whose == ReadyFolder_OfEarlierRun) {
        if (!fs::exists(fs::symlink_status(ready)))
            return;
        ReadyFolder_Trust(ready, directory);
        result = "an earlier run's result is ";
    }
    std::string state = "complete here, but not all its files are in place: ";
    std::string nextRun = "moves them";
    std::string reason;
    try {
        Folder_Sync(directory); // the decision comes to the disk before the moves
        Files_Move(ready, directory);
        state = "in place, but this folder is not removed: ";
        nextRun = "removes it";
        Folder_Sync(directory);
        fs::remove(ready / STAGING_RETIRED);
        fs::remove(ready / STAGING_NEW);
        fs::remove(ready);
        return;
    } catch (const fs::filesystem_error& error) {
        reason = error.code().message();
    } catch (const CFileError& error) {
        reason = error.what();
    }
    throw CFileError(ready, result + state + reason + "; the next run into this folder " + nextRun);
}

void Staging_RemoveAbandoned(const fs::path& directory)
{
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory, ignored)) {
        if (!IsStagingName(entry.path().filename().string()))
            continue;
        try {
            if (Folder_IsOwn(entry.path()) &&
                CFolderLock(entry.path(), CFolderLock::Wait_Never).IsHeld()) // nobody is at work in it
                Staging_Remove(entry.path());
        } catch (const CFileError&) { // perhaps its run has just removed it
            continue;
        } catch (const fs::filesystem_error&) {
            continue;
        }
    }
}

} // namespace dotweave
