#pragma once

#include "dotweave/export.h"

/// @file
/// The version, once for the compiler and once at run time. CMake reads the three numbers here.

#define DOTWEAVE_VERSION_MAJOR 0
#define DOTWEAVE_VERSION_MINOR 1
#define DOTWEAVE_VERSION_PATCH 0

#define DOTWEAVE_VERSION_TEXT_OF(number) #number
#define DOTWEAVE_VERSION_TEXT(major, minor, patch)                                                           \
    DOTWEAVE_VERSION_TEXT_OF(major) "." DOTWEAVE_VERSION_TEXT_OF(minor) "." DOTWEAVE_VERSION_TEXT_OF(patch)
/// The version of the headers, for example "1.2.3".
#define DOTWEAVE_VERSION_STRING                                                                              \
    DOTWEAVE_VERSION_TEXT(DOTWEAVE_VERSION_MAJOR, DOTWEAVE_VERSION_MINOR, DOTWEAVE_VERSION_PATCH)

/// The version of the library that is loaded, in the form of DOTWEAVE_VERSION_STRING. A host compares the two
/// to find out that it runs with another library than it was built with. Has a C name, so that a host can
/// look it up before it calls anything else.
/// Thread-safety: any thread at any time.
extern "C" DOTWEAVE_API const char* dotweave_version() noexcept;
