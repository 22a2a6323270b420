// Keys that were on their way to a text when the program gave the focus to a button do not press it: until
// the typing pauses they are for nobody.
#pragma once

#include <chrono>

namespace dravik::ui {

class TypedAhead {
  public:
    static constexpr std::chrono::milliseconds kPause{700};

    // The program has moved the focus from a text to the button.
    void begin() { last_ = Clock::now(); }
    // A key has come to the button: whether it is to be dropped.
    bool drops() {
        if (last_ == Clock::time_point()) return false;
        const Clock::time_point now = Clock::now();
        const bool goesOn = now - last_ < kPause;
        last_ = goesOn ? now : Clock::time_point();
        return goesOn;
    }

  private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point last_{};
};

}  // namespace dravik::ui
