#pragma once

/// @file
/// Sanitizers end the program at a request for memory that no allocator can serve, where it would throw
/// otherwise. A test that needs the exception skips itself then:
///     if (REFUSED_REQUEST_IS_FATAL)
///         GTEST_SKIP() << "the sanitizer does not let the allocation fail";

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define DOTWEAVE_TEST_HAS_SANITIZED_ALLOCATOR 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define DOTWEAVE_TEST_HAS_SANITIZED_ALLOCATOR 1
#endif
#endif

#if defined(DOTWEAVE_TEST_HAS_SANITIZED_ALLOCATOR)
inline constexpr bool REFUSED_REQUEST_IS_FATAL = true;
#else
inline constexpr bool REFUSED_REQUEST_IS_FATAL = false;
#endif
