#pragma once

namespace dotweave {

/// How a run of the command ends. Scripts rely on these numbers.
enum EExitStatus {
    ExitStatus_Good = 0,
    ExitStatus_CheckFailed = 1,  ///< everything was read, and a check of it failed
    ExitStatus_Usage = 2,        ///< a wrong option, value or mode file
    ExitStatus_ModeNotBuilt = 3, ///< the library refuses the mode, or memory or threads ran out
    ExitStatus_InputOutput = 4,  ///< something cannot be read or written
};

} // namespace dotweave
