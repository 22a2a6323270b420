// Work on a thread of its own of which only the newest counts: what was started before is asked to stop, and
// its result is dropped. Nobody waits for it, so that a window goes on however long an image takes.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <stop_token>

namespace dravik::trainer {

class NewestWork {
  public:
    // What is to be done with a result, on the thread that owns this object.
    using Delivery = std::function<void()>;
    using Work = std::function<Delivery(const std::stop_token&)>;

    NewestWork();
    NewestWork(const NewestWork&) = delete;
    NewestWork& operator=(const NewestWork&) = delete;
    // Stops what goes on and waits for its end.
    ~NewestWork();

    void start(Work work);
    void cancel();
    // Something was started and neither cancelled nor delivered.
    bool busy() const;
    // Delivers what has ended, or will within this time; false when nothing has. Raises what the work or the
    // delivery raises.
    bool deliver(std::chrono::milliseconds patience);

  private:
    struct Shared;
    std::unique_ptr<Shared> shared_;
};

}  // namespace dravik::trainer
