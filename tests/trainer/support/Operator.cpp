#include "trainer/support/Operator.h"

#include <chrono>
#include <thread>

namespace dravik::test {

void runTimer(Timer& timer) {
    while (timer.enabled()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(timer.interval()));
        timer.tick();
    }
}

}  // namespace dravik::test
