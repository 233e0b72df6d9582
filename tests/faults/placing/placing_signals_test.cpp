#include "placingfolder.h"

#include <csignal>
#include <cstring>
#include <filesystem>
#include <string>

namespace {

class PlacingSignals : public PlacingFolder {
protected:
    /// Writes two colours over one; a signal comes at a call. A run that it ends has left the folder as it was,
    /// unless it was killed: then the next run clears up, after which the folder holds one result.
    void Run_Check(const SDiskPlan& plan)
    {
        Older_Put(0);
        const SRunEnd run = Run(1, plan);
        SCOPED_TRACE(std::string("SIG") + sigabbrev_np(plan.signal) + " at " + plan.function + " call " +
                     std::to_string(plan.number) + (plan.fault == EDiskFault::SignalAfter ? ", after" : ""));
        EXPECT_EQ(run.message, "");
        const SFolder after = SFolder::Read(folder);
        if (plan.signal != SIGKILL) {
            EXPECT_EQ(after.hiddenCount, 0);
            EXPECT_TRUE(after.files == Result(run.isGood ? 1 : 0));
            EXPECT_EQ(run.signal, run.isGood ? 0 : plan.signal);
        } else {
            EXPECT_EQ(run.signal, SIGKILL);
        }
        if (!after.hasReady) {
            EXPECT_TRUE(after.files == Result(0) || after.files == Result(1));
        }
        NextRun_Begin(folder);
        const SFolder cleared = SFolder::Read(folder);
        EXPECT_EQ(cleared.hiddenCount, 0);
        EXPECT_TRUE(cleared.files == (after.hasReady ? Result(1) : after.files));
    }
};

TEST_F(PlacingSignals, AtAnyRenameLoseNothing)
{
    const int renameCount =
        1 + static_cast<int>(Result(1).size()) - 1; // the decision, each file but the user's
    for (const int signal : {SIGHUP, SIGINT, SIGTERM, SIGQUIT, SIGPIPE, SIGALRM, SIGXFSZ, SIGKILL})
        for (int number = 0; number < renameCount; ++number)
            for (const EDiskFault when : {EDiskFault::SignalBefore, EDiskFault::SignalAfter})
                Run_Check({when, number, "rename", 0, signal});
}

TEST_F(PlacingSignals, KillAtAnyCallLosesNothing)
{
    Older_Put(0);
    const int callCount = Run(1, {}).callCount;
    for (int number = 0; number < callCount; ++number)
        Run_Check({EDiskFault::SignalBefore, number, "", 0, SIGKILL});
}

TEST_F(PlacingSignals, InterruptAtAnyCallLosesNothing)
{
    Older_Put(0);
    const int callCount = Run(1, {}).callCount;
    for (int number = 0; number < callCount; ++number)
        Run_Check({EDiskFault::SignalBefore, number, "", 0, SIGTERM});
}

} // namespace
