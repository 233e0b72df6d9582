#pragma once

/// @file
/// The benchmarks of each file.

/// One work item of every mode: the plain loops, the kernels per instruction set, and what memory permits.
void Kernels_Register();
/// Whole mask objects, and what they do besides the kernels.
void Create_Register();
