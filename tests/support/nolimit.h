#pragma once

/// A wait that lasts until what it waits for comes.
inline constexpr unsigned int NO_LIMIT_MS = 0xFFFFFFFFU;
