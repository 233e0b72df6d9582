#pragma once

#include "dotweave/maskparam.h"
#include "maskdatagenerate_param.h"

#include <functional>

/// @file
/// What one operation of the library hands to the next, seen on the way between them. The linker routes the
/// calls through this test program (see tests/faults/CMakeLists.txt), so they are seen under every compiler and
/// sanitizer.

/// While one lives, the calls of its own thread go past what it holds. One at a time on a thread.
class CHandovers {
public:
    CHandovers();
    CHandovers(const CHandovers&) = delete;
    CHandovers& operator=(const CHandovers&) = delete;
    ~CHandovers();

    /// The record that a mask object is to be made of.
    std::function<void(const SMaskParam&)> m_maskCreate;
    /// The record that a generator gets, before it does anything.
    std::function<void(const SMaskDataGenerate_Param&)> m_generatorCreate;
    /// A wait for a generator that has a limit in milliseconds. @return false: it has not ended in time
    std::function<bool(unsigned int)> m_generatorWait;
};
