// A progress bar on a terminal: one line, written over and over and wiped away at the end.
#pragma once

#include <iosfwd>
#include <string>

namespace dravik::trainer {

class ProgressLine {
  public:
    // Shows nothing unless `shown`.
    ProgressLine(std::ostream& stream, bool shown) : stream_(stream), shown_(shown) {}
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    ~ProgressLine() { clear(); }

    // `fraction` is cut to 0..1.
    void show(double fraction, const std::string& words);
    void clear();

  private:
    std::ostream& stream_;
    const bool shown_;
    bool visible_ = false;
};

}  // namespace dravik::trainer
