#include "allocator.h"
#include "registry.h"
#include "targets.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

/// The instruction sets that are timed, best first, for the reader of the figures.
std::string TargetNames()
{
    std::string names;
    for (const std::int64_t target : Targets_Get()) {
        if (!names.empty())
            names += ' ';
        names += Target_Name(target);
    }
    return names;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        benchmark::Initialize(&argc, argv);
        if (benchmark::ReportUnrecognizedArguments(argc, argv))
            return EXIT_FAILURE;
        if (!Allocator_Settle())
            throw std::runtime_error("the C library refuses an allocator option");
        benchmark::AddCustomContext("targets", TargetNames());
        Kernels_Register();
        Create_Register();
        benchmark::RunSpecifiedBenchmarks();
        benchmark::Shutdown();
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::cerr << "dotweave_bench: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
