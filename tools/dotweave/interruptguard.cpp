#include "interruptguard.h"

#include <csignal>
#include <cstddef>
#include <iterator>

namespace dotweave {

namespace {

#if defined(SIGHUP)
constexpr int SIGNALS[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGALRM, SIGXFSZ};
#else
constexpr int SIGNALS[] = {SIGINT, SIGTERM};
#endif
constexpr std::size_t SIGNAL_COUNT = std::size(SIGNALS);

using CHandler = void (*)(int);

volatile std::sig_atomic_t g_signal = 0;
CHandler g_previous[SIGNAL_COUNT] = {};

extern "C" void Signal_Keep(int signal)
{
    g_signal = signal;
}

} // namespace

CInterruptGuard::CInterruptGuard()
{
    g_signal = 0;
    for (std::size_t i = 0; i < SIGNAL_COUNT; ++i) {
        g_previous[i] = std::signal(SIGNALS[i], &Signal_Keep);
        if (g_previous[i] == SIG_IGN)
            static_cast<void>(std::signal(SIGNALS[i], SIG_IGN));
    }
}

CInterruptGuard::~CInterruptGuard()
{
    for (std::size_t i = 0; i < SIGNAL_COUNT; ++i)
        if (g_previous[i] != SIG_ERR)
            static_cast<void>(std::signal(SIGNALS[i], g_previous[i]));
}

void CInterruptGuard::Check()
{
    if (g_signal != 0)
        throw CInterrupted(g_signal);
}

} // namespace dotweave
