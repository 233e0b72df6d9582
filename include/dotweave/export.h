#pragma once

/// @file
/// Marks what a host may use. Everything else stays hidden inside the library. A static library hides
/// nothing, so the mark is then empty; the CMake target defines DOTWEAVE_STATIC.

#if defined(DOTWEAVE_STATIC)
#define DOTWEAVE_API
#elif defined(_WIN32)
#if defined(DOTWEAVE_BUILDING)
#define DOTWEAVE_API __declspec(dllexport)
#else
#define DOTWEAVE_API __declspec(dllimport)
#endif
#else
#define DOTWEAVE_API __attribute__((visibility("default")))
#endif
