#pragma once

#include "dotweave/export.h"
#include "dotweave/maskparam.h"

#include <cstdint>
#include <string>
#include <vector>

/// @file
/// What a host can ask about a print mode before it builds it. Nothing here builds masks, starts threads or
/// writes to the log. Any number of threads may ask at once. Each call takes some microseconds; a reason that
/// names the nearest value that builds may take a millisecond.

/// Why the library refuses a print mode.
/// The conditions are those that CMaskData_Base::Create checks, from the same table and in the same order;
/// the reason belongs to the first one that applies.
/// @param param  any 48 bytes
/// @return one line of ASCII text without a line end, such as
///         "colorTimes 5 is more than basePass 4; nearest that builds: colorTimes 4".
///         It names the field or the combination in the record's own words, the value and the limit, and
///         where it is cheap to find the nearest value that builds. Empty when the mode can be built: Create
///         then fails only when memory or threads run out.
/// @throws std::bad_alloc when memory runs out
DOTWEAVE_API std::string MaskParam_Refusal(const SMaskParam& param);

/// Memory that a print mode takes, in bytes.
struct SMaskSize {
    /// The mask bytes of all colours and positions, which the mask object keeps as long as it lives.
    std::int64_t maskBytes;
    /// The most that a creation has allocated at any moment, the mask bytes included: threshold planes, cut
    /// table, the workers' blocks and scratch memory, the sine mask. Not counted are the stacks of the seven
    /// threads and the few kilobytes of queues and bookkeeping.
    std::int64_t peakBytes;
};

/// The memory that a print mode takes, so that a host can say no before it is asked for.
/// @return {0, 0} for a mode that MaskParam_Refusal gives a reason for
DOTWEAVE_API SMaskSize MaskParam_Size(const SMaskParam& param);

/// What a print mode does that its author may not expect. The mode can be built all the same.
/// @return one line of ASCII text per warning, without line ends; none for most modes and none for a mode
///         that MaskParam_Refusal gives a reason for. There are warnings about
///         - hard edges that silently become smooth-2 feathering;
///         - colour planes that are cut from the same thresholds, so that their dots coincide;
///         - a feather level of 0, which builds a blank mask;
///         - smooth-2 feather zones, which print once, in a mode that prints all other rows several times;
///         - the sine edge, where pixels lose a print or print once too often.
/// @throws std::bad_alloc when memory runs out
DOTWEAVE_API std::vector<std::string> MaskParam_Warnings(const SMaskParam& param);
