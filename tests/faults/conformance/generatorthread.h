#pragma once

#include "maskdatagenerator.h"
#include "threadfaults.h"

#include <functional>
#include <utility>

/// @file
/// Faults of the threads of a generator, told apart by their class.

inline bool IsProducer(const CustomThreadBase& thread)
{
    return dynamic_cast<const CMaskDataGenerator*>(&thread) != nullptr;
}

inline bool IsWorker(const CustomThreadBase& thread)
{
    return dynamic_cast<const CMaskDataGenerator_Sub*>(&thread) != nullptr;
}

/// The base's Prepare fails on some threads.
inline SThreadFaults Faults_Prepare(bool (*isFailing)(const CustomThreadBase&))
{
    SThreadFaults faults;
    faults.failsToPrepare = isFailing;
    return faults;
}

/// Looks at every wait of the caller for a generator. @param isExpired  gets the limit in milliseconds
inline SThreadFaults Faults_GeneratorWait(std::function<bool(unsigned int)> isExpired)
{
    SThreadFaults faults;
    faults.isWaitExpired = [isExpired = std::move(isExpired)](const CustomThreadBase& thread,
                                                              unsigned int milliseconds) {
        return IsProducer(thread) && isExpired(milliseconds);
    };
    return faults;
}
