#include "trainer/commands/RunLoop.h"

#include <chrono>
#include <thread>

namespace dravik::trainer {

void runTimer(ui::Timer& timer, const std::function<void()>& afterTick) {
    using Clock = std::chrono::steady_clock;
    const auto interval = std::chrono::milliseconds(timer.interval());
    for (auto due = Clock::now() + interval; timer.enabled(); due += interval) {
        if (const auto now = Clock::now(); due < now) due = now;
        std::this_thread::sleep_until(due);
        timer.tick();
        afterTick();
    }
}

}  // namespace dravik::trainer
