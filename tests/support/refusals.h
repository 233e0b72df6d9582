#pragma once

#include "dotweave/maskdata_base.h"

#include "logcapture.h"
#include "logscopes.h"
#include "maskparams.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

/// @file
/// What the tests of refused records share: the records of a failing creation, and how to get them.

using Records = std::vector<SLogRecord>;

inline constexpr int MOST = std::numeric_limits<int>::max();
inline constexpr int LEAST = std::numeric_limits<int>::min();

/// The record of a set-up step that fails.
inline SLogRecord StepFailure(const std::string& step, unsigned int line = LINE_ANY)
{
    return Failure(UNIT_MASK, "bool __cdecl CMaskData_Base::" + step + "(void)", line);
}

inline SLogRecord CreateFailure(unsigned int line)
{
    return Failure(UNIT_MASK, SCOPE_MASK_CREATE, line);
}

/// What a creation that must fail logs.
inline Records RefusalOf(const SMaskParam& param)
{
    const CLogCapture log;
    CMaskData_Base mask;
    EXPECT_FALSE(mask.Create(param)) << param;
    return log.Records();
}
