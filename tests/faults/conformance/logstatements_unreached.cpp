#include "logcase.h"
#include "logscopes.h"

/// The library has these statements because every level of a chain logs its own record; what they wait for
/// does not happen.
std::vector<SUnreachedLog> LogStatements_Unreached()
{
    const std::string always = "it returns true or throws";
    return {
        {SCOPE_SMOOTH_2, "the zones do not add up to the head's rows",
         "the feather zone is what the passes leave of the rows, so the sum is always the head"},
        {SCOPE_TABLE_SMOOTH_2, "a builder of pass or feather zones fails", always},
        {SCOPE_TABLE_SMOOTH_3_TIMES_1, "the feather-none builder of one group fails", always},
        {SCOPE_TABLE_SMOOTH_3_TIMES_2, "the ramp builder fails", always},
        {SCOPE_TABLE_SMOOTH_3_ONCE_2, "the table of the rows left over fails", always},
        {SCOPE_MASK_DATA, "the threshold planes cannot be made", always},
        {SCOPE_MASK_DATA_OLD, "the threshold planes cannot be made", always},
        {SCOPE_SINE_DOWN, "the stored profile cannot be drawn", "it always returns true"},
        {SCOPE_SINE_DOWN, "the probe's profile cannot be drawn", "it always returns true"},
        {SCOPE_GENERATOR_SINE, "the sine mask cannot be made",
         "that fails only for an unknown type, and the generator asks for the stored one"},
        {SCOPE_GENERATOR_WORKERS, "the queue buffer cannot be made", always},
        {SCOPE_WORKER_GENERATE, "the cut of a block fails", "it always returns true"},
        {SCOPE_STORAGE_INIT, "the eviction fails", "it always returns true"},
        {SCOPE_STORAGE_APPLY, "the eviction fails", "it always returns true"},
        {SCOPE_STORAGE_RELEASE, "the list cannot be emptied", "it always returns true"},
    };
}
