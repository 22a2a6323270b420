// How the training screen speaks to the operator: messages and error reports, both in the status-bar panel
// "Message".
#pragma once

#include <string>
#include <string_view>

#include "base/Failure.h"
#include "screen/context/TraceLog.h"
#include "ui/Bars.h"
#include "ui/Signal.h"

namespace dravik::screen {

class modErrors {
  public:
    modErrors(TraceLog& log, ui::StatusBar& sbr) : log_(log), sbr_(sbr) {}

    // Shows a message; with tracing on it is also traced. Never raises a dialog.
    void UserMsg(const std::string& text);

    // Shows source, number and description of a failure; with tracing on they are also traced.
    void ReportError(std::string_view source, const Failure& failure);

    // What was reported, for who keeps it in view longer than the next message.
    ui::Signal<const std::string&> reported;

  private:
    TraceLog& log_;
    ui::StatusBar& sbr_;
};

}  // namespace dravik::screen
