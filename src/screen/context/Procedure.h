// Every procedure of the screen and of its forms traces its entry and catches its own failure. This is the
// one place that does both.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "base/Failure.h"
#include "screen/context/TraceLog.h"
#include "ui/Platform.h"

namespace dravik::screen {

// The procedures of one object: they share the trace log and the way in which the object reports a failure.
class Procedures {
  public:
    // Shows a failure of the procedure named `source`.
    using Report = std::function<void(std::string_view source, const Failure& failure)>;

    Procedures(TraceLog& log, Report report) : log_(log), report_(std::move(report)) {}

    // Traces `entry` ("" for none) and runs the body. A failure ends the body where it is and is reported
    // under `source`; nothing that the body did is undone. No exception leaves a procedure: a report that
    // fails itself is given up.
    template <class Body>
    requires std::is_void_v<std::invoke_result_t<Body&>>
    void run(std::string_view entry, std::string_view source, Body&& body) const {
        try {
            if (!entry.empty()) log_.trace(entry);
            body();
        } catch (...) {
            reportCurrent(source);
        }
    }

    // The same for a body with a result, which is `failed` after a failure.
    template <class Body, class Result = std::invoke_result_t<Body&>>
    requires(!std::is_void_v<Result>) Result
        run(std::string_view entry, std::string_view source, Body&& body, Result failed = {})
    const {
        run(entry, source, [&] { failed = body(); });
        return failed;
    }

    void trace(std::string_view entry) const { log_.trace(entry); }

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

// The report of an object that has no status bar: a message box.
inline Procedures::Report messageReport(ui::Platform& platform) {
    return [&platform](std::string_view source, const Failure& failure) {
        platform.messageBox({"Error " + std::to_string(failure.number()) + "\r" + failure.description(),
                             "Error in " + std::string(source), ui::MessageBox::Buttons::Ok,
                             ui::MessageBox::Icon::Critical});
    };
}

}  // namespace dravik::screen
