/// @file
/// thresholdpack BASE_1 BASE_2 TABLE: derives the sixteen matrices of the threshold table from the two base
/// matrices while the library is built.
///
/// Slots 1 and 2 are the bases. Slots 0 and 3 are their complements; row r of slot 3 comes from row r + 188.
/// Slots 4 to 7 are slots 0 to 3 moved by half a matrix, and slots 8 to 15 repeat slots 4 to 7. So
/// consecutive colour planes get a matrix and its complement. Planes from the fifth on get the same matrices,
/// moved by half their height.
///
/// Files contain rows of unsigned 16-bit levels, least significant byte first. The table has the same order.

#include "constants.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <fstream>
#include <ios>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

using namespace dotweave;

namespace {

constexpr int SIDE = THRESHOLD_MATRIX_SIZE;
constexpr int COMPLEMENT_LEVEL_MAX = 65534; // the complement of level 0 would be 65535, which no base has
constexpr int SLOT_3_ROWS = 188;

using CMatrix = std::vector<std::uint16_t>;

CMatrix Matrix_Read(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error(path + ": cannot be opened");
    std::vector<char> bytes(static_cast<std::size_t>(THRESHOLD_MATRIX_CELLS) * 2);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file || file.peek() != std::ifstream::traits_type::eof())
        throw std::runtime_error(path + ": a base matrix has " + std::to_string(bytes.size()) + " bytes");
    CMatrix matrix(THRESHOLD_MATRIX_CELLS);
    for (std::size_t cell = 0; cell < matrix.size(); ++cell) {
        const unsigned int low = static_cast<unsigned char>(bytes[2 * cell]);
        const unsigned int high = static_cast<unsigned char>(bytes[2 * cell + 1]);
        matrix[cell] = static_cast<std::uint16_t>(low | high << 8U);
    }
    return matrix;
}

/// The matrix with the rows of `source` moved: row r comes from row (r + rows) modulo the height.
CMatrix Matrix_RowsFrom(const CMatrix& source, int rows)
{
    CMatrix moved(source);
    std::rotate(moved.begin(), moved.begin() + static_cast<std::ptrdiff_t>(rows % SIDE) * SIDE, moved.end());
    return moved;
}

CMatrix Matrix_Complement(const CMatrix& source)
{
    CMatrix complement(source.size());
    std::transform(source.begin(), source.end(), complement.begin(), [](std::uint16_t level) {
        return static_cast<std::uint16_t>(std::min(THRESHOLD_LEVEL_MAX - level, COMPLEMENT_LEVEL_MAX));
    });
    return complement;
}

void Table_Write(const std::string& path, const std::array<CMatrix, 8>& distinct)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    for (std::size_t slot = 0; slot < THRESHOLD_MATRIX_COUNT; ++slot) {
        const CMatrix& matrix = distinct[slot < distinct.size() ? slot : 4 + slot % 4];
        for (const std::uint16_t level : matrix) {
            file.put(static_cast<char>(level & 0xFFU));
            file.put(static_cast<char>(level >> 8U));
        }
    }
    file.close();
    if (!file) {
        std::remove(path.c_str()); // NOLINT(cert-err33-c): the failed write is reported
        throw std::runtime_error(path + ": cannot be written");
    }
}

void Table_Pack(const std::string& base1, const std::string& base2, const std::string& table)
{
    std::array<CMatrix, 8> distinct;
    distinct[1] = Matrix_Read(base1);
    distinct[2] = Matrix_Read(base2);
    distinct[0] = Matrix_Complement(distinct[1]);
    distinct[3] = Matrix_Complement(Matrix_RowsFrom(distinct[2], SLOT_3_ROWS));
    for (std::size_t slot = 0; slot < 4; ++slot)
        distinct[slot + 4] = Matrix_RowsFrom(distinct[slot], SIDE / 2);
    Table_Write(table, distinct);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "usage: thresholdpack BASE_1 BASE_2 TABLE\n";
        return 2;
    }
    try {
        Table_Pack(argv[1], argv[2], argv[3]);
    } catch (const std::exception& error) {
        std::cerr << "thresholdpack: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
