#pragma once

#include <cstddef>
#include <cstdint>

/// @file
/// What all fuzzers share. A fuzzer states its laws as every test does, with the expectations of the test
/// framework and the helpers in tests/support; the first expectation that is not met is printed and ends the
/// process, so that the fuzzing engine keeps the input. See fuzzing.cpp.

extern "C" {
/// Called once by the engine: makes failed expectations end the process and keeps the library's log records
/// away.
int LLVMFuzzerInitialize(int* argc, char*** argv);
/// One run. @return 0
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
}

/// A number of the input, brought into a range. Numbers inside stay what they are, so that a seed says what
/// it means; all others are spread over the range.
int Fuzz_Number(std::int32_t value, int lowest, int highest);
