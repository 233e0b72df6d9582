#pragma once

#include <atomic>
#include <functional>
#include <utility>

#include <kelcommon/customthreadbase.h>

#include "nolimit.h"

/// A thread whose three steps are given by the test. Set the hooks before Start; they run on the own thread.
class CHookedThread : public CustomThreadBase {
public:
    CHookedThread() = default;
    explicit CHookedThread(std::function<bool()> oneLoop) : m_oneLoop(std::move(oneLoop)) {}
    CHookedThread(const CHookedThread&) = delete;
    CHookedThread& operator=(const CHookedThread&) = delete;
    ~CHookedThread() override { StopAndWait(); }

    void StopAndWait()
    {
        CustomThreadBase::Stop();
        CustomThreadBase::Wait_Exit(NO_LIMIT_MS);
    }

    std::function<bool()> m_prepare = [] { return true; };
    std::function<bool()> m_oneLoop = [] { return true; };
    std::function<void()> m_finally = [] {};

    std::atomic<int> m_prepareCount = 0;
    std::atomic<int> m_loopCount = 0;
    std::atomic<int> m_finallyCount = 0;

protected:
    bool Prepare() override
    {
        ++m_prepareCount;
        return CustomThreadBase::Prepare() && m_prepare();
    }
    bool OneLoop() override
    {
        ++m_loopCount;
        return m_oneLoop();
    }
    void Finally() override
    {
        ++m_finallyCount;
        m_finally();
        CustomThreadBase::Finally();
    }
};
