#pragma once

#include "dotweave/cuttable.h"
#include "dotweave/maskparam.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// @file
/// What a careful engineer would write who needs the bytes of one mode and nothing else: one OpenMP loop over
/// all mask lines that reads the threshold table directly. No queues, no refusals, no log, no other modes.
/// Its loop over a line is one that compilers turn into vector instructions, for each instruction set.

/// The mask bytes of one mode by that loop. Knows no sine edge and up to eight X resolution passes.
class CPeer {
public:
    /// Takes geometry and cut table from a mask object of the library, and compares the bytes with its own.
    /// @throws std::runtime_error for a mode that cannot be built, and when the bytes differ
    explicit CPeer(const SMaskParam& param);

    /// Allocates the bytes once, on the calling thread, and fills them on all cores.
    std::unique_ptr<std::uint8_t[]> Build() const;
    std::size_t ByteCount() const;

private:
    void Row_Build(int color, int position, int row, std::uint8_t* lines) const;

    std::vector<SCutTable> m_table;
    int m_colorCount = 0;
    int m_positionCount = 0;
    int m_step = 0;
    int m_matrixRows = 0;
    int m_xRes = 0;
    int m_yRes = 0;
    int m_bits = 0;
    int m_lineBytes = 0;
};
