#pragma once

/// @file
/// Precompiled for every test program: headers of libraries that most tests include. Each test file still includes
/// what it uses, so nothing of this tree is listed here.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>
