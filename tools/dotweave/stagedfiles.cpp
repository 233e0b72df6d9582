#include "stagedfiles.h"

#include <random>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr char NEW_FILES[] = "new";
constexpr char OLD_FILES[] = "old";
constexpr int STAGING_TRIES = 16;

bool IsThere(const fs::path& path)
{
    return fs::exists(fs::symlink_status(path));
}

/// The directories that making a directory would make, innermost first.
std::vector<fs::path> MissingDirectories(const fs::path& directory)
{
    std::vector<fs::path> missing;
    for (fs::path path = directory; !path.empty() && !IsThere(path); path = path.parent_path())
        missing.push_back(path);
    return missing;
}

} // namespace

CStagedFiles::CStagedFiles(fs::path directory) : m_directory(std::move(directory))
{
    // The destructor of an object whose constructor throws is not run.
    m_madeDirectories = MissingDirectories(m_directory);
    try {
        fs::create_directories(m_directory);
        Staging_Create();
    } catch (...) {
        std::error_code ignored;
        for (const fs::path& made : m_madeDirectories)
            fs::remove(made, ignored); // takes only an empty one
        throw;
    }
}

CStagedFiles::~CStagedFiles()
{
    std::error_code ignored;
    if (!m_isKept)
        MoveBack();
    fs::remove_all(m_staging, ignored);
    if (!m_isKept)
        for (const fs::path& made : m_madeDirectories)
            fs::remove(made, ignored);
}

/// Making a directory is the step that only one of several runs can win, so no run sees another's files.
void CStagedFiles::Staging_Create()
{
    std::random_device random;
    for (int i = 0; i < STAGING_TRIES; ++i) {
        m_staging = m_directory / (".dotweave-" + std::to_string(random()));
        if (fs::create_directory(m_staging)) {
            fs::create_directory(m_staging / NEW_FILES);
            fs::create_directory(m_staging / OLD_FILES);
            return;
        }
    }
    throw fs::filesystem_error("cannot make", m_staging, std::make_error_code(std::errc::file_exists));
}

fs::path CStagedFiles::Add(const std::string& name)
{
    m_added.push_back(name);
    return m_staging / NEW_FILES / name;
}

void CStagedFiles::Retire(const std::string& name)
{
    m_retired.push_back(name);
}

void CStagedFiles::Place()
{
    MoveAside(m_added);
    MoveAside(m_retired);
    m_placed.reserve(m_added.size()); // from here on a move that is made is also noted
    for (const std::string& name : m_added) {
        fs::rename(m_staging / NEW_FILES / name, FinalPath(name));
        m_placed.push_back(name);
    }
}

void CStagedFiles::MoveAside(const std::vector<std::string>& names)
{
    m_aside.reserve(m_aside.size() + names.size());
    for (const std::string& name : names) {
        const fs::path path = FinalPath(name);
        if (!IsThere(path))
            continue;
        if (fs::is_directory(fs::symlink_status(path))) // no result of ours, and not ours to move
            throw fs::filesystem_error("cannot replace", path,
                                       std::make_error_code(std::errc::is_a_directory));
        fs::rename(path, m_staging / OLD_FILES / name);
        m_aside.push_back(name);
    }
}

void CStagedFiles::MoveBack()
{
    std::error_code ignored;
    for (const std::string& name : m_placed)
        fs::remove(FinalPath(name), ignored);
    for (const std::string& name : m_aside)
        fs::rename(m_staging / OLD_FILES / name, FinalPath(name), ignored);
}
