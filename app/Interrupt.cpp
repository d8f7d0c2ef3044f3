#include "app/Interrupt.h"

#include <csignal>

namespace scenariomatch
{

namespace
{

volatile std::sig_atomic_t interruptFlag = 0;

extern "C" void handleInterrupt(int /*signal*/)
{
    interruptFlag = 1;
}

} // namespace

void catchInterrupt()
{
    struct sigaction action = {};
    action.sa_handler = handleInterrupt;
    // The handler is used once, so that a second signal ends the program; waiting calls return
    // early.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

void ignoreWriteSignals()
{
    struct sigaction action = {};
    action.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &action, nullptr);
    sigaction(SIGXFSZ, &action, nullptr);
}

bool isInterrupted()
{
    return interruptFlag != 0;
}

} // namespace scenariomatch
