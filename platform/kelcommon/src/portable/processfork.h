#pragma once

/// Has operations called around every fork of this process from here on: before it, and after it in the parent and
/// in the child. Where processes do not fork nothing happens.
void ProcessFork_Watch(void (*begin)(), void (*endInParent)(), void (*endInChild)()) noexcept;
