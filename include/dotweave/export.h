#pragma once

/// @file
/// Marks the classes that a host may use. Everything else stays hidden inside the library.

#if defined(_WIN32)
#if defined(DOTWEAVE_BUILDING)
#define DOTWEAVE_API __declspec(dllexport)
#else
#define DOTWEAVE_API __declspec(dllimport)
#endif
#else
#define DOTWEAVE_API __attribute__((visibility("default")))
#endif
