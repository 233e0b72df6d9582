#pragma once

/// @file
/// Marks the classes that a host may use. Everything else stays hidden inside the library. Linked statically, the
/// library has no border to cross and the mark is empty; the CMake target defines DOTWEAVE_STATIC then.

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
