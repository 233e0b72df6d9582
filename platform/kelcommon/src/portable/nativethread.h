#pragma once

#include <cstddef>
#include <string_view>

#include <boost/thread/thread.hpp>

/// @file
/// What only the platform can do for a thread: one source for POSIX, one for Windows.

/// Names the calling thread for debuggers, profilers and process monitors. Does nothing where the platform
/// knows no thread names or refuses this one.
/// @param name  ASCII; Linux shows the first 15 characters, Windows 63
void ThreadName_Set(std::string_view name) noexcept;

/// @return bytes that the platform itself takes out of the stack of a thread made with these attributes
std::size_t ThreadStack_PlatformBytes(boost::thread::attributes& attributes) noexcept;
