#include "resultfolder.h"

#include "fileerror.h"
#include "record/textquote.h"
#include "textfile.h"

#include <boost/crc.hpp>

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>

namespace fs = std::filesystem;

namespace dotweave {

namespace {

/// Reads a file piece by piece.
template <typename TTake>
void File_Read(const fs::path& path, const TTake& take)
{
    const auto close = [](std::FILE* file) { static_cast<void>(std::fclose(file)); };
    errno = 0;
    const std::unique_ptr<std::FILE, decltype(close)> file(std::fopen(path.string().c_str(), "rb"), close);
    if (!file)
        throw CFileError(path, errno);
    std::vector<std::uint8_t> piece(std::size_t{1} << 20U);
    while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), file.get()))
        take(piece.data(), count);
    if (std::ferror(file.get()) != 0)
        throw CFileError(path, errno);
}

std::string Checksum_Text(std::uint32_t checksum)
{
    std::array<char, sizeof "0123abcd"> text = {};
    static_cast<void>(std::snprintf(text.data(), text.size(), "%08x", checksum));
    return text.data();
}

} // namespace

SResultRecord ResultFolder_Read(const fs::path& folder)
{
    const fs::path path = folder / "mask.json";
    std::ifstream stream = TextFile_Open(path);
    return MaskJson_Read(stream, Text_Quote(path.string()));
}

std::string ResultFile_Fault(const fs::path& folder, const SResultFile& file)
{
    boost::crc_32_type checksum;
    std::int64_t bytes = 0;
    try {
        File_Read(folder / file.name, [&](const std::uint8_t* data, std::size_t count) {
            checksum.process_bytes(data, count);
            bytes += static_cast<std::int64_t>(count);
        });
    } catch (const CFileError& error) {
        return error.Reason();
    }
    if (bytes != file.bytes)
        return "has " + std::to_string(bytes) + " bytes; mask.json says " + std::to_string(file.bytes);
    if (checksum.checksum() != file.checksum)
        return "has the CRC-32 " + Checksum_Text(checksum.checksum()) + "; mask.json says " +
               Checksum_Text(file.checksum);
    return "";
}

std::vector<std::uint8_t> Bytes_ReadFile(const fs::path& path)
{
    std::vector<std::uint8_t> bytes;
    File_Read(path, [&bytes](const std::uint8_t* data, std::size_t count) {
        bytes.insert(bytes.end(), data, data + count);
    });
    return bytes;
}

} // namespace dotweave
