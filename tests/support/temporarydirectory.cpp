#include "temporarydirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <random>
#include <sstream>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

CTemporaryDirectory::CTemporaryDirectory()
{
    std::random_device random;
    do
        m_path = fs::path(testing::TempDir()) / ("dotweave_tool_test_" + std::to_string(random()));
    while (!fs::create_directory(m_path));
}

CTemporaryDirectory::~CTemporaryDirectory()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

std::vector<std::string> Directory_Names(const fs::path& directory)
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string File_Read(const fs::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    EXPECT_TRUE(stream) << path;
    std::ostringstream content;
    content << stream.rdbuf(); // in blocks; tests read many large files
    return std::move(content).str();
}

void File_Write(const fs::path& path, const std::string& text)
{
    std::ofstream stream(path, std::ios::binary);
    stream << text;
    ASSERT_TRUE(stream.flush()) << path;
}
