#include "placingfolder.h"

#include <cerrno>
#include <csignal>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

class PlacingsAtRandom : public PlacingFolder {
protected:
    int Draw(int count) { return static_cast<int>(m_random() % static_cast<unsigned int>(count)); }

    /// A third of the plans has no fault.
    SDiskPlan Plan_Draw()
    {
        constexpr EDiskFault FAULTS[] = {
            EDiskFault::None,        EDiskFault::None,         EDiskFault::None,
            EDiskFault::None,        EDiskFault::Once,         EDiskFault::Once,
            EDiskFault::SameForGood, EDiskFault::AllForGood,   EDiskFault::SignalBefore,
            EDiskFault::SignalAfter, EDiskFault::SignalBefore, EDiskFault::SignalAfter};
        constexpr int ERRORS[] = {ENOSPC, EIO, EMFILE, EACCES, ENOLCK, EROFS};
        constexpr int SIGNALS[] = {SIGKILL, SIGKILL, SIGKILL, SIGHUP,  SIGINT,
                                   SIGTERM, SIGQUIT, SIGPIPE, SIGALRM, SIGXFSZ};
        const EDiskFault fault = FAULTS[Draw(std::size(FAULTS))];
        const int error = ERRORS[Draw(std::size(ERRORS))];
        const int signal = SIGNALS[Draw(std::size(SIGNALS))];
        return Draw(2) == 0 ? SDiskPlan{fault, Draw(140), "", error, signal}
                            : SDiskPlan{fault, Draw(12), "rename", error, signal};
    }

    std::mt19937 m_random{20240811}; // NOLINT(cert-msc32-c,cert-msc51-cpp): the same plans in every run
};

/// One to three runs at once, each with a fault or a signal of its own or none. When all have ended and the
/// next run has cleared up, the folder holds one whole result: one of theirs, or the older one if none of them
/// said that it was good. A run without a fault is good whatever the others do. Other files are never touched.
TEST_F(PlacingsAtRandom, AThousandLoseAndMixNothing)
{
    int older = 0;
    int goodCount = 0;
    int finishedCount = 0;
    Older_Put(older);
    for (int placed = 0; placed < 1000 && !HasFailure();) {
        SCOPED_TRACE(placed);
        std::vector<std::unique_ptr<CPlacingRun>> runs;
        std::vector<int> masks;
        std::vector<bool> hasFault;
        for (int i = Draw(3); i >= 0; --i, ++placed) {
            masks.push_back(Draw(MASK_COUNT));
            const SDiskPlan plan = Plan_Draw();
            hasFault.push_back(plan.fault != EDiskFault::None);
            runs.push_back(std::make_unique<CPlacingRun>(*Mask(masks.back()), folder, plan));
        }
        std::vector<bool> canBe(MASK_COUNT, false);
        bool isOneGood = false;
        for (std::size_t i = 0; i < runs.size(); ++i) {
            const SRunEnd end = runs[i]->Wait();
            EXPECT_TRUE(end.isGood || hasFault[i]) << end.message;
            isOneGood |= end.isGood;
            goodCount += end.isGood ? 1 : 0;
            if (end.isGood || end.signal == SIGKILL ||
                end.message.find("the new result is") != std::string::npos)
                canBe[static_cast<std::size_t>(masks[i])] = true;
        }
        if (!isOneGood)
            canBe[static_cast<std::size_t>(older)] = true;
        finishedCount += SFolder::Read(folder).hasReady ? 1 : 0;
        NextRun_Begin(folder);
        const SFolder cleared = SFolder::Read(folder);
        EXPECT_EQ(cleared.hiddenCount, 0);
        int held = -1;
        for (int i = 0; i < MASK_COUNT; ++i)
            held = canBe[static_cast<std::size_t>(i)] && cleared.files == Result(i) ? i : held;
        ASSERT_NE(held, -1) << "lost or mixed";
        older = held;
    }
    EXPECT_GE(goodCount, 300);
    EXPECT_GE(finishedCount, 50) << "kills between the moves";
}

} // namespace
