#pragma once

#include "stressmodes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <latch>
#include <random>
#include <thread>
#include <vector>

inline constexpr int HOST_THREAD_COUNT = 16;

/// Lets sixteen threads do the same at once, each with random numbers of its own, the same in every run.
template <typename TWork>
void HostThreads_Run(TWork work)
{
    std::latch start(HOST_THREAD_COUNT);
    std::vector<std::thread> threads;
    threads.reserve(HOST_THREAD_COUNT);
    for (unsigned int seed = 1; seed <= HOST_THREAD_COUNT; ++seed) {
        threads.emplace_back([&start, &work, seed] {
            std::minstd_rand random(seed);
            random.discard(100); // small seeds start alike
            start.arrive_and_wait();
            work(random);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

/// Whether a mask object has the bytes of the mode that it was made for.
inline bool HasBytesOfItsMode(const CMaskData_Base& mask, const std::vector<SStressMode>& modes)
{
    return std::any_of(modes.begin(), modes.end(), [&mask](const SStressMode& mode) {
        return MaskParam_Bytes(mode.param) == MaskParam_Bytes(mask.MaskParam_Input()) &&
               MaskBytes(mask) == mode.bytes;
    });
}
