#pragma once

/// @file
/// Defines DOTWEAVE_TEST_IS_SANITIZED where a sanitizer watches memory or threads.

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define DOTWEAVE_TEST_IS_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define DOTWEAVE_TEST_IS_SANITIZED 1
#endif
#endif
