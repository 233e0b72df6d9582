#pragma once

/// Marks what the library offers to its users. Defined by hand: a host that brings its own library brings
/// its own macro too, and nothing generated has to be in place before the headers can be read.
#if defined(_WIN32)
#if defined(KELCOMMON_BUILDING)
#define KELCOMMON_API __declspec(dllexport)
#else
#define KELCOMMON_API __declspec(dllimport)
#endif
#else
#define KELCOMMON_API __attribute__((visibility("default")))
#endif
