// The thread base of the faulty library: the real one's work, unless the panel says otherwise.

#include <kelcommon/customthreadbase.h>

#include "threadfaults.h"

#include "portable/threadrun.h"
#include "portable/waitlimit.h"

#include <atomic>
#include <memory>

struct CThreadFaults::SState {
    SThreadFaults faults;
    std::atomic<int> startsLeft;
    std::atomic<int> askedCount = 0;
};

namespace {

std::atomic<CThreadFaults::SState*> s_state = nullptr;

template <typename TOperation>
bool Guarded(TOperation operation) noexcept
{
    try {
        return operation();
    } catch (...) {
        return false;
    }
}

} // namespace

CThreadFaults::CThreadFaults(SThreadFaults faults) : m_state(new SState{faults, faults.startsLeft})
{
    s_state = m_state.get();
}

CThreadFaults::~CThreadFaults()
{
    s_state = nullptr;
}

int CThreadFaults::AskedCount() const
{
    return m_state->askedCount;
}

CustomThreadBase::CustomThreadBase() : m_run(std::make_unique<CThreadRun>()) {}

CustomThreadBase::~CustomThreadBase()
{
    m_run->Stop();
    m_run->Wait_Exit(WAIT_NO_LIMIT_MS);
}

bool CustomThreadBase::Start(const char* name)
{
    CThreadFaults::SState* state = s_state;
    if (state != nullptr) {
        ++state->askedCount;
        if (state->startsLeft == 0)
            return false;
        if (state->startsLeft != ALL_THREADS)
            --state->startsLeft;
        if (state->faults.starting)
            state->faults.starting(*this);
    }
    const bool isStarted = m_run->Start(name, [this] { Run(); });
    if (state != nullptr && state->faults.started)
        state->faults.started();
    return isStarted;
}

bool CustomThreadBase::Wait_PrepareComplete()
{
    return m_run->Wait_PrepareComplete();
}

bool CustomThreadBase::Wait_Paused()
{
    return m_run->Wait_Paused();
}

bool CustomThreadBase::Wait_Exit(unsigned int milliseconds)
{
    const CThreadFaults::SState* state = s_state;
    if (state != nullptr && state->faults.isWaitExpired && milliseconds != WAIT_NO_LIMIT_MS &&
        state->faults.isWaitExpired(*this, milliseconds))
        return false;
    return m_run->Wait_Exit(milliseconds);
}

void CustomThreadBase::Stop()
{
    m_run->Stop();
}

void CustomThreadBase::Pause()
{
    m_run->Pause();
}

void CustomThreadBase::Resume()
{
    m_run->Resume();
}

bool CustomThreadBase::Prepare()
{
    const CThreadFaults::SState* state = s_state;
    return state == nullptr || !state->faults.failsToPrepare || !state->faults.failsToPrepare(*this);
}

void CustomThreadBase::Finally() {}

void CustomThreadBase::Run() noexcept
{
    const bool isPrepared = Guarded([this] { return Prepare(); });
    m_run->PrepareComplete(isPrepared);
    if (isPrepared) {
        while (m_run->NextLoop_Wait() && Guarded([this] { return OneLoop(); })) {
        }
        Guarded([this] {
            Finally();
            return true;
        });
    }
    m_run->End();
}
