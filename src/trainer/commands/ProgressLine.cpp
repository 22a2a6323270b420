#include "trainer/commands/ProgressLine.h"

#include <algorithm>
#include <cmath>
#include <ostream>

namespace dravik::trainer {
namespace {

constexpr int kBarLength = 30;

// Back to the line's start and wipe it.
constexpr char kWipe[] = "\r\x1b[K";

}  // namespace

void ProgressLine::show(double fraction, const std::string& words) {
    if (!shown_) return;
    const double part = std::clamp(fraction, 0.0, 1.0);
    const auto done = static_cast<std::size_t>(std::lround(part * kBarLength));
    stream_ << kWipe << '[' << std::string(done, '#') << std::string(kBarLength - done, '.') << "] "
            << std::lround(part * 100) << " %  " << words << std::flush;
    visible_ = true;
}

void ProgressLine::clear() {
    if (visible_) stream_ << kWipe << std::flush;
    visible_ = false;
}

}  // namespace dravik::trainer
