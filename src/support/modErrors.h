// How the training screen speaks to the operator: messages and error reports, both in the status-bar panel
// "Message".
#pragma once

#include <string>
#include <string_view>

#include "base/Failure.h"
#include "support/Procedure.h"
#include "support/TraceLog.h"
#include "widgets/Bars.h"

namespace dravik {

class modErrors {
  public:
    modErrors(TraceLog& log, StatusBar& sbr);

    // Shows a message; with tracing on it is also traced. Never raises a dialog.
    void UserMsg(const std::string& text);

    // Shows source, number and description of a failure; with tracing on they are also traced.
    void ReportError(std::string_view source, const Failure& failure);

    // For the procedures of the control.
    const Procedures& procedures() const noexcept { return procedures_; }

    StatusBar& sbr() const noexcept { return sbr_; }

  private:
    TraceLog& log_;
    StatusBar& sbr_;
    Procedures procedures_;
};

}  // namespace dravik
