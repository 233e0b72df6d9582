#include "view/maskexport.h"

#include <cstddef>
#include <cstdint>

namespace dotweave {

namespace {

constexpr int BYTE_BITS = 8;
constexpr char NPY_MAGIC[] = "\x93NUMPY\x01"; // the zero that ends it is the minor version
constexpr std::size_t NPY_ALIGNMENT = 64;     // the head's size is a multiple of it

/// One line, a byte a pixel: 1 where a dot is set.
const std::vector<std::uint8_t>& Dots(const SMaskLines& lines, int y, std::vector<std::uint8_t>& dots)
{
    dots.resize(static_cast<std::size_t>(lines.width));
    lines.Line_Unpack(y, dots.data());
    for (std::uint8_t& dot : dots)
        dot = dot != 0 ? 1 : 0;
    return dots;
}

} // namespace

void MaskPbm_Append(const SMaskLines& lines, std::string& file)
{
    file += "P4\n" + std::to_string(lines.width) + ' ' + std::to_string(lines.height) + '\n';
    std::vector<std::uint8_t> dots;
    for (int y = 0; y < lines.height; ++y) {
        unsigned int byte = 0;
        int bits = 0;
        for (const std::uint8_t dot : Dots(lines, y, dots)) {
            byte = byte << 1U | dot;
            if (++bits % BYTE_BITS == 0)
                file += static_cast<char>(byte & 0xFFU);
        }
        if (bits % BYTE_BITS != 0)
            file +=
                static_cast<char>(byte << static_cast<unsigned int>(BYTE_BITS - bits % BYTE_BITS) & 0xFFU);
    }
}

std::string Npy_Head(const std::vector<int>& shape)
{
    std::string text = "{'descr': '|u1', 'fortran_order': False, 'shape': (";
    for (const int size : shape)
        text += std::to_string(size) + ", ";
    text += "), }";
    const std::string magic(NPY_MAGIC, sizeof NPY_MAGIC);
    constexpr std::size_t LENGTH_BYTES = 2;
    const std::size_t used = magic.size() + LENGTH_BYTES + text.size() + 1; // 1: the line end
    text.append((NPY_ALIGNMENT - used % NPY_ALIGNMENT) % NPY_ALIGNMENT, ' ');
    text += '\n';
    return magic + static_cast<char>(text.size() & 0xFFU) + static_cast<char>(text.size() >> 8U) + text;
}

void MaskValues_Append(const SMaskLines& lines, std::string& file)
{
    std::vector<std::uint8_t> dots;
    for (int y = 0; y < lines.height; ++y) {
        Dots(lines, y, dots);
        file.append(dots.begin(), dots.end());
    }
}

std::string MaskCsv_Head(int width)
{
    std::string head = "color,position,line";
    for (int x = 0; x < width; ++x)
        head += ',' + std::to_string(x);
    return head + '\n';
}

void MaskCsv_Append(const SMaskLines& lines, int color, int position, std::string& file)
{
    std::vector<std::uint8_t> dots;
    for (int y = 0; y < lines.height; ++y) {
        file += std::to_string(color) + ',' + std::to_string(position) + ',' + std::to_string(y);
        for (const std::uint8_t dot : Dots(lines, y, dots))
            file += dot != 0 ? ",1" : ",0";
        file += '\n';
    }
}

} // namespace dotweave
