// Includes every opened image that has a label and is not in the font yet, one after the other through the
// screen, while the window goes on: images are decoded and searched beside it. What is refused is listed with
// its reason.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "trainer/Trainer.h"
#include "ui/Signal.h"
#include "ui/Timer.h"

namespace dravik::trainer {

class BatchInclude {
  public:
    // The trainer outlives it.
    explicit BatchInclude(Trainer& trainer);

    // How many images there are to include.
    std::size_t count() const { return toInclude().size(); }
    void start();
    // What was included stays.
    void stop();
    bool goesOn() const noexcept { return timer_.enabled(); }
    // Ticks while it goes on.
    ui::Timer& timer() noexcept { return timer_; }

    struct Refused {
        std::string path;
        std::string reason;
    };
    // Of the last run.
    const std::vector<Refused>& refused() const noexcept { return refused_; }

    ui::Signal<> started;
    ui::Signal<> ended;

  private:
    std::vector<std::string> toInclude() const;
    void step();
    void end();

    Trainer& trainer_;
    std::deque<std::string> waiting_;
    std::vector<Refused> refused_;
    std::size_t all_ = 0;
    bool isUp_ = false;  // the first of them is the current image
    ui::Timer timer_{"tmrBatch", 5};
    ui::Connection ticked_;
};

}  // namespace dravik::trainer
