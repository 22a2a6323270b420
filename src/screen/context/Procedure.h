// Every procedure of the screen and of its forms traces its entry and catches its own failure. This is the
// one place that does both.
#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "base/Failure.h"
#include "screen/context/TraceLog.h"

namespace dravik::screen {

// The procedures of one object: they share the trace log and the way in which the object reports a failure.
class Procedures {
  public:
    // Shows a failure of the procedure named `source`.
    using Report = std::function<void(std::string_view source, const Failure& failure)>;

    Procedures(TraceLog& log, Report report) : log_(log), report_(std::move(report)) {}

    // Traces `entry` ("" for none) and runs the body. A failure ends the body where it is, is reported under
    // `source`, and makes the answer false; nothing that the body did is undone. No exception leaves a
    // procedure: a report that fails itself is given up.
    template <class Body>
    bool run(std::string_view entry, std::string_view source, Body&& body) const {
        try {
            if (!entry.empty()) log_.trace(entry);
            body();
            return true;
        } catch (...) {
            reportCurrent(source);
            return false;
        }
    }

    void trace(std::string_view entry) const { log_.trace(entry); }
    TraceLog& log() const noexcept { return log_; }

  private:
    void reportCurrent(std::string_view source) const noexcept {
        try {
            report_(source, currentFailure());
        } catch (...) {
        }
    }

    TraceLog& log_;
    Report report_;
};

}  // namespace dravik::screen
