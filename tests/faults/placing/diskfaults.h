#pragma once

#include <string>

/// @file
/// A disk that fails at will. The test program replaces the C library's calls to the disk: while a plan is in
/// force, each is counted, and some fail or come with a signal. Nothing is synced: no test cuts the power.

enum class EDiskFault {
    None,
    Once,         // that call alone fails
    SameForGood,  // it fails, and so do all later calls of the same function
    AllForGood,   // it fails, and so do all later calls
    SignalBefore, // a signal comes before that call
    SignalAfter,  // and after it
};

struct SDiskPlan {
    EDiskFault fault = EDiskFault::None;
    int number = 0;            ///< of the call, counted from 0
    const char* function = ""; ///< counts calls of this function alone; empty counts all
    int error = 0;             ///< for the calls that fail
    int signal = 0;
};

/// Puts a plan into force while it lives. One at a time; for a process with one thread.
class CDiskFaults {
public:
    explicit CDiskFaults(const SDiskPlan& plan);
    CDiskFaults(const CDiskFaults&) = delete;
    CDiskFaults& operator=(const CDiskFaults&) = delete;
    ~CDiskFaults();

    /// Calls so far.
    static int CallCount();
    /// The function of the planned call; empty when it has not come.
    static std::string FaultyFunction();
};
