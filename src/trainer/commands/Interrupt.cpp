#include "trainer/commands/Interrupt.h"

#include <atomic>
#include <csignal>

namespace dravik::trainer {
namespace {

std::atomic<bool> g_interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free);

extern "C" void noteInterrupt(int) {
    g_interrupted.store(true);
}

}  // namespace

InterruptWatch::InterruptWatch() {
    g_interrupted.store(false);
    before_ = std::signal(SIGINT, noteInterrupt);
}

InterruptWatch::~InterruptWatch() {
    if (before_ != SIG_ERR) std::signal(SIGINT, before_);
}

bool InterruptWatch::interrupted() const noexcept {
    return g_interrupted.load();
}

}  // namespace dravik::trainer
