#pragma once

#include "listedmodes.h"
#include "maskparams.h"

#include <algorithm>
#include <list>
#include <optional>

/// @file
/// The storage as a plain list of mode numbers, for tests that make calls at random.

/// Modes 0 to 6 advance the paper by one step height, modes 7 to 9 by another; mode 10 is rejected.
inline constexpr int MODE_REJECTED = 10;

inline bool IsOtherStep(int mode)
{
    return mode >= 7;
}

inline SMaskParam Mode_OfModel(int mode)
{
    if (mode == MODE_REJECTED)
        return Mode_Rejected();
    return IsOtherStep(mode) ? Mode_OtherStep(mode) : MaskParam_Small(mode);
}

/// What the storage promises, as a plain list of mode numbers.
struct SStorageModel {
    std::list<int> listed;
    std::optional<int> current;

    void Append(int mode)
    {
        listed.push_back(mode);
        if (listed.size() > 5)
            listed.pop_front();
    }

    bool Init(int mode)
    {
        listed.remove(mode);
        if (mode == MODE_REJECTED) {
            current.reset();
            return false;
        }
        current = mode;
        Append(mode);
        return true;
    }

    [[nodiscard]] bool IsListed(int mode) const
    {
        return std::find(listed.begin(), listed.end(), mode) != listed.end();
    }

    /// Apply reads the current object after the new one may have evicted it, and takes no rejected mode.
    [[nodiscard]] bool IsApplyDefined(int mode) const
    {
        if (!current.has_value() || mode == MODE_REJECTED || !IsListed(*current))
            return false;
        return IsListed(mode) || listed.size() < 5 || listed.front() != *current;
    }

    bool Apply(int mode)
    {
        if (!IsListed(mode))
            Append(mode);
        return IsOtherStep(mode) == IsOtherStep(*current);
    }
};
