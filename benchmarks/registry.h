#pragma once

/// @file
/// What each file of benchmarks adds to the program.

/// One work item of every mode: the plain loops, the kernels per instruction set, and what memory allows.
void Kernels_Register();
/// Whole mask objects, and what surrounds the kernels in them.
void Create_Register();
