// Notices Ctrl+C for as long as it lives, so that a long command can end cleanly; afterwards Ctrl+C does what
// it did.
#pragma once

namespace dravik::trainer {

class InterruptWatch {
  public:
    InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;
    ~InterruptWatch();

    // True once Ctrl+C was pressed in the watch's time.
    bool interrupted() const noexcept;

  private:
    using Handler = void (*)(int);
    Handler before_;
};

}  // namespace dravik::trainer
