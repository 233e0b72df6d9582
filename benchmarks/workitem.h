#pragma once

#include "dotweave/basemaskdata.h"
#include "dotweave/cuttable.h"
#include "dotweave/maskblock.h"
#include "dotweave/maskparam.h"
#include "kernels/maskkernels.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// One work item of a print mode with everything that a worker of the generator would have at hand:
/// thresholds of one colour, the mode's cut table, working memory and the lines that it fills. The item is
/// that of the middle band position and the last Y resolution pass, so that its rows run over the end of the
/// plane where the mode has more than one position.
class CWorkItem {
public:
    /// @throws std::runtime_error when the mode cannot be built
    explicit CWorkItem(const SMaskParam& param);
    CWorkItem(const CWorkItem&) = delete;
    CWorkItem& operator=(const CWorkItem&) = delete;
    ~CWorkItem() = default;

    /// The plain loops: blocks and lines are cleared, every X resolution pass is cut, and the passes are
    /// merged.
    void Reference_Run();
    /// The cut and the pack in one, on the instruction set in use.
    void Fused_Run();
    /// Cut and merge apart, with blocks of one byte per pixel between them, on the instruction set in use.
    void Blocks_Run();
    /// Reads every threshold of the item's rows once. @return their sum modulo 65536
    [[nodiscard]] std::uint16_t Thresholds_Read() const;
    /// Writes as many bytes as the item's lines have.
    void Bytes_Write();

    /// Sets every bit of all lines, so that one left unwritten shows.
    void Lines_Spoil();
    /// All lines of the position, those of the other Y resolution passes as they were.
    [[nodiscard]] const std::vector<std::uint8_t>& Lines() const { return m_lines; }
    /// Bytes that the item writes.
    [[nodiscard]] std::size_t OutputBytes() const;
    /// Bytes of the thresholds that the item reads.
    [[nodiscard]] std::size_t ThresholdBytes() const;

private:
    [[nodiscard]] dotweave::SRowRange Rows() const;
    SParam_GenerateMaskData Cut_Param(int xResIndex);
    void Blocks_Clear();
    void Lines_Clear();

    dotweave::SMaskPack m_pack{};
    int m_rowCount = 0;
    int m_lineBytes = 0;
    CBaseMaskData m_plane;
    std::vector<SCutTable> m_cutTable;
    std::vector<CMaskBlock> m_blocks;
    std::vector<std::uint8_t> m_lines;
    std::vector<std::uint8_t> m_scratch;
};
