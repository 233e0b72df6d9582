#include "stagedfiles.h"

#include "fileerror.h"
#include "outputfile.h"
#include "readyfolder.h"

#include <algorithm>
#include <random>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace dotweave {

namespace {

/// The folders that making a folder would make, innermost first.
std::vector<fs::path> MissingDirectories(const fs::path& directory)
{
    std::vector<fs::path> missing;
    for (fs::path path = directory; !path.empty() && !fs::exists(fs::symlink_status(path));
         path = path.parent_path())
        missing.push_back(path);
    return missing;
}

void Remove_All(const std::vector<fs::path>& paths)
{
    std::error_code ignored;
    for (const fs::path& path : paths)
        fs::remove(path, ignored); // takes only an empty folder
}

} // namespace

CStagedFiles::CStagedFiles(fs::path directory)
    : m_directory(std::move(directory)), m_madeDirectories(MissingDirectories(m_directory))
{
    try { // the destructor of an object whose constructor throws is not run
        fs::create_directories(m_directory);
        const CFolderLock lock(m_directory, CFolderLock::Wait_Forever);
        ReadyFolder_Finish(m_directory, ReadyFolder_OfEarlierRun);
        Staging_RemoveAbandoned(m_directory);
        Staging_Create();
    } catch (...) {
        Remove_All(m_madeDirectories);
        throw;
    }
}

CStagedFiles::~CStagedFiles()
{
    if (m_isPlaced)
        return;
    std::vector<fs::path> files; // by name: listing a folder would need a file handle, and there may be none
    for (const std::string& name : m_added)
        files.push_back(m_staging / STAGING_NEW / name);
    for (const std::string& name : m_retired)
        files.push_back(m_staging / STAGING_RETIRED / name);
    Remove_All(files);
    Remove_All({m_staging / STAGING_NEW, m_staging / STAGING_RETIRED, m_staging});
    Remove_All(m_madeDirectories);
}

/// Under the folder's lock, so that nobody takes the new staging folder for an abandoned one.
void CStagedFiles::Staging_Create()
{
    std::random_device random;
    do
        m_staging = m_directory / (STAGING_PREFIX + std::to_string(random()));
    while (!fs::create_directory(m_staging));
    try {
        fs::create_directory(m_staging / STAGING_NEW);
        fs::create_directory(m_staging / STAGING_RETIRED);
        m_stagingLock.emplace(m_staging, CFolderLock::Wait_Never);
    } catch (...) {
        Remove_All({m_staging / STAGING_NEW, m_staging / STAGING_RETIRED, m_staging});
        throw;
    }
}

fs::path CStagedFiles::Add(const std::string& name)
{
    m_added.push_back(name);
    return m_staging / STAGING_NEW / name;
}

void CStagedFiles::Retired_Find()
{
    if (m_isOurs == nullptr)
        return;
    for (const fs::directory_entry& entry : fs::directory_iterator(m_directory)) {
        const std::string name = entry.path().filename().string();
        if (m_isOurs(name) && std::find(m_added.begin(), m_added.end(), name) == m_added.end())
            m_retired.push_back(name);
    }
}

void CStagedFiles::Check() const
{
    for (const std::vector<std::string>* names : {&m_added, &m_retired})
        for (const std::string& name : *names) {
            const fs::file_status status = fs::symlink_status(FinalPath(name));
            if (fs::exists(status) && !fs::is_regular_file(status))
                throw CFileError(FinalPath(name), std::string("is no regular file and is not replaced"));
        }
}

void CStagedFiles::Place()
{
    const CFolderLock lock(m_directory, CFolderLock::Wait_Forever);
    ReadyFolder_Finish(m_directory, ReadyFolder_OfEarlierRun);
    Retired_Find();
    Check();
    for (const std::string& name : m_retired)
        COutputFile(m_staging / STAGING_RETIRED / name, FinalPath(name)).Close();
    for (const std::string& name : m_added) {
        if (!fs::exists(m_staging / STAGING_NEW / name))
            throw CFileError(FinalPath(name), std::string("was announced but never written"));
        Owner_Copy(FinalPath(name), m_staging / STAGING_NEW / name);
    }
    Folder_Sync(m_staging / STAGING_NEW);
    Folder_Sync(m_staging / STAGING_RETIRED);
    Folder_Sync(m_staging);
    for (const fs::path& made : m_madeDirectories)
        Folder_Sync(made.has_parent_path() ? made.parent_path() : fs::path("."));
    fs::rename(m_staging, m_directory / STAGING_READY); // the decision
    m_isPlaced = true;
    m_stagingLock.reset(); // so that there is a file handle for the moves
    ReadyFolder_Finish(m_directory, ReadyFolder_OfThisRun);
}

} // namespace dotweave
