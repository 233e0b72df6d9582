#pragma once

#include "sheet/dotplacement.h"
#include "sheet/dotstamps.h"
#include "sheet/printedpatch.h"

#include <cstdint>
#include <vector>

namespace dotweave {

/// A nozzle row in one pass, where it prints on a patch. Places are in eighths of a cell.
struct SRowPrint {
    SHeadPass pass;
    int row;
    std::int64_t line;    ///< sheet line that it should print
    std::int64_t centreY; ///< of its dots, from the top of the patch
    std::int64_t shiftX;  ///< of its dots, added to the middle of their column
    int volume;           ///< of its dots before they scatter, in 1 / VOLUME_UNIT
};

/// The columns that a row print fires, and room to find them in.
struct SFiredColumns {
    std::vector<int> columns;
    std::vector<std::uint8_t> maskPixels;
    std::vector<std::uint8_t> wanted;
};

/// The row prints that lie on a patch and the columns that each of them fires.
/// Thread-safety: read-only after construction; any number of threads.
class CPatchRows {
public:
    /// What Patch_Print gets. mask and image must outlive this object.
    CPatchRows(const CMaskData_Base& mask, int color, const CBitImage* image, const SSheetErrors& errors,
               const SPatchOptions& options);

    const SDotShape& Shape() const { return m_shape; }
    const CDotPlacement& Placement() const { return m_placement; }
    /// Row prints whose dots may reach into some lines of the patch; dead rows are left out.
    std::vector<SRowPrint> Rows(int firstLine, int lineCount) const;
    /// Cells around a centre's cell that no dot reaches beyond.
    int ReachX() const { return m_shape.ReachX(m_volumeMax); }
    int ReachY() const { return m_shape.ReachY(m_volumeMax); }
    /// Room for Fire, which then allocates nothing.
    SFiredColumns Fired_Make() const;
    /// Finds the columns that a row print fires and whose dots may reach into the patch. Columns left of the
    /// patch are below 0.
    void Fire(const SRowPrint& print, SFiredColumns& fired) const;
    /// Where the dot of a column is, in eighths of a cell from the left side of the patch.
    std::int64_t CentreX(const SRowPrint& print, int column) const
    {
        return (std::int64_t{column} * CELL_EIGHTHS + CELL_EIGHTHS / 2) * m_supersample + print.shiftX;
    }
    /// The volume of one dot, in 1 / VOLUME_UNIT.
    int Volume(const SRowPrint& print, int column) const;
    /// The least and the largest volume that dots of a row print may have.
    SVolumeRange Volumes(const SRowPrint& print) const;

private:
    /// Columns beside the patch whose dots may reach into it when nothing shifts them.
    int ReachColumns() const;
    int Volume_Scattered(const SRowPrint& print, std::size_t level) const;

    const CMaskData_Base& m_mask;
    int m_color;
    const CBitImage* m_image;
    SSheetWindow m_window;
    int m_supersample;
    CDotPlacement m_placement;
    SDotShape m_shape;
    std::vector<double> m_scatter; ///< equally likely factors of the volume; empty without scatter
    int m_volumeMax;               ///< of all dots, in 1 / VOLUME_UNIT
};

} // namespace dotweave
