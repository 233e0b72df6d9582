#include "levelfile.h"

#include <cerrno>
#include <fstream>
#include <string>
#include <system_error>

namespace matrixgen {

void LevelFile_Write(const std::filesystem::path& path, const std::vector<std::uint16_t>& levels)
{
    std::string bytes;
    bytes.reserve(2 * levels.size());
    for (const std::uint16_t level : levels) {
        bytes.push_back(static_cast<char>(level & 0xFFU));
        bytes.push_back(static_cast<char>(level >> 8U));
    }

    std::filesystem::path part = path;
    part += ".part";
    errno = 0;
    std::ofstream file(part, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    std::error_code error;
    if (!file)
        error = std::error_code(errno != 0 ? errno : EIO, std::generic_category());
    else
        std::filesystem::rename(part, path, error);
    if (!error)
        return;
    std::error_code ignored;
    std::filesystem::remove(part, ignored);
    throw std::system_error(error, path.string());
}

} // namespace matrixgen
