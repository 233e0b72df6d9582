#pragma once

namespace dotweave {

/// Whether standard error is a terminal that can rewrite its last line.
bool Terminal_IsWatched();

} // namespace dotweave
