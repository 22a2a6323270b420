// Lets a timer of the screen tick where no window system does.
#pragma once

#include <functional>

#include "ui/Timer.h"

namespace dravik::trainer {

// Fires the timer's ticks, each when it is due, until the timer is switched off; `afterTick` is called after
// each. Ticks that were missed because one took too long are left out.
void runTimer(ui::Timer& timer, const std::function<void()>& afterTick);

}  // namespace dravik::trainer
