#include <kelcommon/customconditionvariable.h>

#include "portable/autoevent.h"
#include "portable/manualevent.h"

CustomConditionVariable::CustomConditionVariable() : m_event(std::make_unique<CAutoEvent>()) {}

CustomConditionVariable::~CustomConditionVariable() = default;

void CustomConditionVariable::Set()
{
    m_event->Set();
}

void CustomConditionVariable::Reset()
{
    m_event->Reset();
}

bool CustomConditionVariable::WaitOne(unsigned int milliseconds)
{
    return m_event->WaitOne(milliseconds);
}

CustomConditionVariable_Manual::CustomConditionVariable_Manual() : m_event(std::make_unique<CManualEvent>())
{}

CustomConditionVariable_Manual::~CustomConditionVariable_Manual() = default;

void CustomConditionVariable_Manual::Set()
{
    m_event->Set();
}

void CustomConditionVariable_Manual::Reset()
{
    m_event->Reset();
}

bool CustomConditionVariable_Manual::WaitOne(unsigned int milliseconds)
{
    return m_event->WaitOne(milliseconds);
}
