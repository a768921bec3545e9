#include "unpack/Cancellation.h"

#include <csignal>

namespace {

volatile std::sig_atomic_t cancelled = 0;

} // namespace

void Cancellation::watch()
{
    struct sigaction action = {};
    action.sa_handler = [](int) { cancelled = 1; };
    sigaction(SIGTERM, &action, nullptr);
}

bool Cancellation::asked()
{
    return cancelled != 0;
}
