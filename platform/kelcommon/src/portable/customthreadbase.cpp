#include <kelcommon/customthreadbase.h>

#include "portable/threadrun.h"
#include "portable/waitlimit.h"

CustomThreadBase::CustomThreadBase() : m_run(std::make_shared<CThreadRun>()) {}

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

bool CustomThreadBase::Failed() const
{
    return m_run->Failed();
}

bool CustomThreadBase::Prepare()
{
    return true;
}

void CustomThreadBase::Finally() {}

void CustomThreadBase::Run() noexcept
{
    const bool isPrepared = m_run->Guarded([this] { return Prepare(); });
    m_run->PrepareComplete(isPrepared);
    if (isPrepared) {
        while (m_run->NextLoop_Wait() && m_run->Guarded([this] { return OneLoop(); })) {
        }
        m_run->Guarded([this] {
            Finally();
            return true;
        });
    }
    m_run->End();
}
