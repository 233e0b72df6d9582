#include <kelcommon/customthreadbase.h>

#include "portable/threadrun.h"
#include "portable/waitlimit.h"

/// Calls one overridable operation. An exception of any type counts as false: one lost mask must not take the
/// press down.
template <typename TOperation>
static bool Guarded(TOperation operation) noexcept
{
    try {
        return operation();
    } catch (...) {
        return false;
    }
}

CustomThreadBase::CustomThreadBase() : m_run(std::make_unique<CThreadRun>()) {}

CustomThreadBase::~CustomThreadBase()
{
    m_run->Stop();
    m_run->Wait_Exit(WAIT_NO_LIMIT_MS);
}

bool CustomThreadBase::Start(const char* name)
{
    return m_run->Start(name, [this] { Run(); });
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
    return true;
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
