#pragma once

#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

/// Every step of a creation but the last, which builds the bytes.
inline void Geometry_Create(SMaskData_Base_Peek peek, const SMaskParam& param)
{
    peek.Current() = param;
    peek.BaseMaskHeight() = 544;
    peek.BaseMaskWidth() = 544;
    ASSERT_TRUE(peek.InitNoneRes());
    ASSERT_TRUE(peek.InitResParam());
    ASSERT_TRUE(peek.InitMaskSize());
}
