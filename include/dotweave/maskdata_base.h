#pragma once

#include "dotweave/cuttable.h"
#include "dotweave/export.h"
#include "dotweave/generatemaskdataparam.h"
#include "dotweave/maskblock.h"
#include "dotweave/maskparam.h"

#include <cstdint>
#include <string>

namespace dotweave {
enum class ECreationStep : int;
struct SMaskGeometry;
} // namespace dotweave

/// The mask object of one print mode: every mask byte of every colour and band position, built once.
///
/// Layout of the bytes, from outermost to innermost: colour plane; band position; mask line, where line
/// y * YResPass() + r holds nozzle row y of Y resolution pass r; byte of the line, where pixel
/// x * XResPass() + k comes from threshold column x in X resolution pass k. Pixels are packed from the most
/// significant bit down; a set pixel has all its bits set. docs/mask-bytes.md draws an example.
///
/// Lifetime:      call Create once on a fresh object. A failed object can only be asked for its parameters
///                and destroyed.
/// Copies:        shallow. Both objects then share the step arrays and the mask bytes, and at most one of
///                them may be destroyed.
/// Thread-safety: Create runs on one thread and returns when all its helper threads have ended. A created
///                object is immutable; any number of threads may call its const operations.
class DOTWEAVE_API CMaskData_Base {
public:
    CMaskData_Base() = default;
    CMaskData_Base(const CMaskData_Base&) = default;
    CMaskData_Base& operator=(const CMaskData_Base&) = default;

    // ---- life, creation, access: maskdata_base.cpp
    virtual ~CMaskData_Base();

protected:
    // ---- nozzle rows before resolution: maskdata_base_geometry_feather.cpp
    /// Hard band edges. When the head's rows do not divide into the passes, the object silently becomes a
    /// smooth-2 feathered one: the current featherMode and featherNozzleType are switched (deliberate).
    /// Sets: the step, the mask height and the lead blank in nozzle rows; the smooth-2 zones when it
    /// switches.
    /// @return false, with one log record, when the step comes out as zero or less
    virtual bool InitNoneRes_FeatherNone();
    /// Smooth-3: the whole feather amount is taken off the head before it is divided into steps.
    /// Sets: the step, the mask height and the lead blank in nozzle rows.
    /// @return false, with one log record, when the step comes out as zero or less
    virtual bool InitNoneRes_FeatherNozzle_Smooth_3();

    // ---- resolution: maskdata_base_geometry.cpp
    /// Turns nozzle rows into mask rows.
    /// Reads: current xResPass, yResPass, featherMode; m_baseMaskWidth and the _NoneRes heights.
    /// Sets:  m_xResStep, m_yResStep, m_maskWidth, m_maskHeight, the step heights, m_leadBlankHeight.
    /// @return false, with one log record, when the lead blank takes the whole mask
    virtual bool InitResParam();

public:
    /// Builds all mask bytes of a print mode.
    /// @param param  the print mode; copied, the caller keeps it
    /// @return true on success; false after one or more log records, innermost first, for a mode that cannot
    ///         be built. Nothing is undone then; the destructor frees what was allocated.
    /// @throws std::bad_alloc when memory runs out; boost's lock and queue classes may throw too
    bool Create(const SMaskParam& param);

    /// The mask bytes of the next band position of one colour.
    /// @param color     colour plane, 0 to colorCount - 1. A plane of colorCount or more gives null and does
    ///                  not change the position; negative planes are not checked.
    /// @param position  the caller's counter, advanced and wrapped by the call: callers start at -1 and so
    ///                  get 0 first; any negative value gives 0
    /// @return MaskBytes_OnePosition() bytes, valid as long as this object; null, and the position unchanged,
    ///         without mask bytes of the present geometry, as after a second Create that failed
    const std::uint8_t* MaskData_Get(int color, int& position) const;

    /// The record as the caller gave it to Create.
    const SMaskParam& MaskParam_Input() const { return m_maskParam_Input; }
    /// The record that the geometry was computed from: resolution passes after the split, and the feather
    /// fields that feather-none may have switched.
    const SMaskParam& MaskParam_Current() const { return m_maskParam_Current; }
    int BasePass() const { return m_maskParam_Current.basePass; }
    /// X resolution passes after the split.
    int XResPass() const { return m_maskParam_Current.xResPass; }
    /// Y resolution passes after the split.
    int YResPass() const { return m_maskParam_Current.yResPass; }
    int BitsPerPixel() const { return m_maskParam_Current.bitsPerPixel; }
    /// Pixels of one mask line.
    int MaskWidth() const { return m_maskWidth; }
    /// Mask lines of one position, including Y resolution.
    int MaskHeight_IncludeRes() const { return m_maskHeight; }
    /// Mask lines that the paper advances per pass, including Y resolution.
    int StepHeight_IncludeRes() const { return m_stepHeight; }
    /// StepHeight_IncludeRes() shared out among the X and Y resolution passes.
    int RealStepHeight_IncludeRes() const { return m_realStepHeight; }
    /// Mask lines of the lead blank: the mask height less the real step height.
    int LeadBlankHeight_IncludeRes() const { return m_leadBlankHeight; }
    /// XResPass() offsets of the X resolution passes, owned by this object.
    const int* XResStep() const { return m_xResStep; }
    /// YResPass() row offsets of the Y resolution passes, owned by this object.
    const int* YResStep() const { return m_yResStep; }
    /// Bytes of one mask line of one colour.
    int MaskLineBytes_OneColor() const { return m_maskLineBytes; }
    /// Bytes of one band position of one colour.
    int MaskBytes_OnePosition() const;
    /// Bytes of all band positions of one colour.
    int MaskBytes_OneColor() const;
    /// How many parts the X resolution passes are split into by the current resSplitType: 1 or 2.
    int SplitCount_XRes_Get() const;
    /// How many parts the Y resolution passes are split into by the current resSplitType: 1 to 4.
    int SplitCount_YRes_Get() const;

    /// The step, in nozzle rows, of a head that gives a share of its rows to feathering.
    /// For hosts; uses the arithmetic of the smooth-3 set-up.
    /// @param nozzleCount    nozzle rows of the head
    /// @param basePass       passes, not 0
    /// @param featherPercent share of the head in percent, 0 to 100, scaled by 0.75
    static int StepHeadNozzle_Get(int nozzleCount, int basePass, float featherPercent);

    // ---- cut tables, choice of the builder: maskdata_base_cuttable.cpp
    /// Fills a cut table as the current parameters ask for it.
    /// @param table  entries of the caller, at least as many as the layout of this object has mask rows
    ///               before resolution
    /// @param count  number of entries; read by the smooth-3 builders alone
    /// @return false with a log record for parameters that no builder serves; without one for
    ///         FeatherNozzle_Reserved. The content is unspecified then.
    bool CreateCutTable(SCutTable* table, int count);

    // ---- cut tables without feathering: maskdata_base_cuttable_none.cpp
    /// The feather-none table for the current colorTimes. @see CreateCutTable
    bool CreateCutTable_FeatherNone(SCutTable* table, int count);
    /// The feather-none table that splits the scale among all passes once.
    bool CreateCutTable_FeatherNone_ColorOneTimes(SCutTable* table, int count);
    /// As above for any layout: passCount zones of rowsPerPass entries; zone i prints the i-th share.
    /// @param count  not read
    /// @return true, also for a passCount below 1, which writes nothing
    static bool CreateCutTable_FeatherNone_ColorOneTimes(SCutTable* table, int count, int rowsPerPass,
                                                         int passCount);
    /// The feather-none table whose passes form colorTimes groups that split the scale each on their own.
    /// @param count  not read
    /// @return false, with one log record, when the current colorTimes is 1 or less
    bool CreateCutTable_FeatherNone_ColorMultipleTimes(SCutTable* table, int count);

    // ---- cut tables with ramps between the passes: maskdata_base_cuttable_smooth2.cpp
    /// The smooth-2 table: feather zones and pass zones in turn.
    /// @param table  (basePass + 1) feather zones and basePass pass zones of the current layout
    /// @param count  not read
    bool CreateCutTable_Smooth_2(SCutTable* table, int count);
    /// The pass zones alone, one after the other, for the current colorTimes.
    /// @param count  not read
    bool CreateCutTable_Smooth_2_Pass(SCutTable* table, int count);
    /// Pass zones that split the scale among all passes once. @return true
    bool CreateCutTable_Smooth_2_Pass_ColorOneTimes(SCutTable* passTable);
    /// Pass zones in colorTimes groups that split the scale each on their own. @return true
    /// Deliberately without the check of the feather-none builder: colorTimes must not be 0.
    bool CreateCutTable_Smooth_2_Pass_ColorMultipleTimes(SCutTable* passTable);
    /// The feather zones alone, one after the other: one ramp over all of them. @return true
    /// @param n  entries of the table
    bool CreateCutTable_Smooth_2_Feather(SCutTable* featherTable, int n);

    // ---- cut tables with one ramp over the whole head: maskdata_base_cuttable_smooth3.cpp
    /// The smooth-3 table for the current colorTimes.
    /// @param n  entries of the table
    bool CreateCutTable_Smooth_3(SCutTable* table, int n);
    /// The smooth-3 ramp for a colour printed once. @return true
    bool CreateCutTable_Smooth_3_ColorOneTimes(SCutTable* table, int n);
    /// As above for any layout: ranges slide down from the feather level to 0, and rows one step apart tile
    /// everything in between. Formula and a worked table: docs/cut-tables.md.
    /// @param n                    entries of the table, at least stepRows
    /// @param stepRows             rows one step apart
    /// @param featherLevelPercent  top of the ramp in percent of the threshold scale, 0 to 100
    /// @return true
    static bool CreateCutTable_Smooth_3_ColorOneTimes_Style_1(SCutTable* table, int n, int stepRows,
                                                              int featherLevelPercent);
    /// Zones of one step each that split the scale; the rows left over share their image rows with the first
    /// rows of every zone, by the same rule on a smaller table.
    /// @param n         entries of the table
    /// @param stepRows  rows of one zone, >= 1
    static bool CreateCutTable_Smooth_3_ColorOneTimes_Style_2(SCutTable* table, int n, int stepRows);
    /// Groups of hard zones for all but the last printing, a ramp of its own for the last.
    /// @param n  entries of the table
    bool CreateCutTable_Smooth_3_ColorMultipleTimes_Style_1(SCutTable* table, int n);
    /// The ramp, every range widened around its centre by the current colorTimes.
    /// @param n  entries of the table
    bool CreateCutTable_Smooth_3_ColorMultipleTimes_Style_2(SCutTable* table, int n);

    // ---- dump of a cut table: maskdata_base_cuttable_dump.cpp
    /// Writes a cut table as text, one line "lower, upper" per entry, each right-aligned in five columns. For
    /// plots and comparisons; mask creation never calls it.
    /// @param table  count entries
    /// @param count  below 1 gives an empty file
    /// @param path   replaced when it exists
    /// @return false, with one log record, when the file cannot be opened; write errors are ignored
    static bool OutputCutTable(const SCutTable* table, int count, std::string path);

    // ---- samples: maskdata_base_usage.cpp
    /// Creates one mask object from a sample record. @return whether that succeeded; false with a log record
    static bool Usage();
    /// Dumps a hand-made cut table and what a smooth-3 builder makes of it to fixed files on drive I:.
    /// @return true, also when neither file can be written
    static bool Usage_Test();

private:
    // The order of these two blocks follows the life of a creation.
    bool InitNoneRes();
    bool InitNoneRes_FeatherNozzle();
    bool InitNoneRes_FeatherNozzle_Smooth_2();
    bool InitMaskSize();
    void Log_Data();

    bool IsRefusedAt(dotweave::ECreationStep step) const;
    bool IsBlockOfGeometry() const;
    dotweave::SMaskGeometry Geometry_Get() const;
    void Geometry_Set(const dotweave::SMaskGeometry& geometry);

public:
    // ---- mask bytes: maskdata_base_assembly.cpp
    /// The cut: sets every pixel of the block whose threshold lies inside the range of its row. Cut table
    /// entry y holds the range of block row y; all other pixels stay as they are.
    /// @return false, with one log record, for a plane without cells, a depth without a dot value or a block
    ///         without a byte for every pixel
    static bool GenerateMaskData(SParam_GenerateMaskData& param);

private:
    /// The longest wait of CreateMaskData for the generator.
    static constexpr unsigned int GENERATOR_WAIT_MS = 60000;

    bool CreateMaskData();
    bool CreateMaskData_Within(unsigned int milliseconds);
    bool MergeMaskData(const CMaskBlock* blocks, int blockCount, unsigned char* dest, int yResIndex);
    // ---- the same on the calling thread alone: maskdata_base_assembly_legacy.cpp
    bool CreateMaskData_Old();

protected:
    // A derived mask object that replaces a set-up step sets what that step sets.
    SMaskParam m_maskParam_Input{};
    SMaskParam m_maskParam_Current{};
    std::int32_t m_maskLineBytes = 0;
    std::int32_t m_leadBlankHeight = 0;
    std::int32_t m_leadBlankHeight_NoneRes = 0;
    std::int32_t m_positionCount = 0;
    std::int32_t* m_xResStep = nullptr;
    std::int32_t* m_yResStep = nullptr;
    CMaskBlock* m_maskBlock = nullptr;
    std::int32_t m_maskHeight = 0;
    std::int32_t m_maskHeight_NoneRes = 0;
    std::int32_t m_maskWidth = 0;
    std::int32_t m_stepHeight_NoneRes = 0;
    std::int32_t m_stepHeight = 0;
    std::int32_t m_realStepHeight = 0;
    std::int32_t m_baseMaskHeight = 0;
    std::int32_t m_baseMaskWidth = 0;
    std::int32_t m_smooth2PassHeight = 0;
    std::int32_t m_smooth2PassHeightTotal = 0;
    std::int32_t m_smooth2FeatherHeightTotal = 0;
    std::int32_t m_smooth2FeatherHeight = 0;

private:
    friend struct SMaskData_Base_Peek; // the tests' only key to private members; defined in tests/support
};
