#include "tools/Interrupt.h"

#include <csignal>

namespace zw::cli {
namespace {

// A signal handler may only touch a lock-free flag of static storage.
volatile std::sig_atomic_t g_interrupted = 0;
struct sigaction g_previous{};

extern "C" void onInterrupt(int) { g_interrupted = 1; }

} // namespace

InterruptWatch::InterruptWatch()
{
    g_interrupted = 0;
    struct sigaction action{};
    action.sa_handler = &onInterrupt;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESETHAND; // the second Ctrl-C is the default one
    sigaction(SIGINT, &action, &g_previous);
}

InterruptWatch::~InterruptWatch() { sigaction(SIGINT, &g_previous, nullptr); }

bool InterruptWatch::requested() const { return g_interrupted != 0; }

} // namespace zw::cli
