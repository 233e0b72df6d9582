#pragma once

#include "sanitized.h"

/// @file
/// Sanitizers end the program at a request for memory that no allocator can serve, where it would throw
/// otherwise. A test that needs the exception skips itself then:
///     if (REFUSED_REQUEST_IS_FATAL)
///         GTEST_SKIP() << "the sanitizer does not let the allocation fail";

#if defined(DOTWEAVE_TEST_IS_SANITIZED)
inline constexpr bool REFUSED_REQUEST_IS_FATAL = true;
#else
inline constexpr bool REFUSED_REQUEST_IS_FATAL = false;
#endif
