// A timer: while it is enabled, the backend fires tick every interval on the user-interface thread.
#pragma once

#include <string>

#include "ui/Signal.h"

namespace dravik::ui {

class Timer {
  public:
    Timer(std::string name, int milliseconds) : name_(std::move(name)), interval_(milliseconds) {}

    const std::string& name() const noexcept { return name_; }
    // Milliseconds.
    int interval() const noexcept { return interval_; }
    bool enabled() const noexcept { return enabled_; }
    void setEnabled(bool enabled) {
        if (std::exchange(enabled_, enabled) != enabled) changed();
    }

    Signal<> changed;
    Signal<> tick;

  private:
    const std::string name_;
    const int interval_;
    bool enabled_ = false;
};

}  // namespace dravik::ui
