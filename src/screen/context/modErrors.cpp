#include "screen/context/modErrors.h"

namespace dravik::screen {

void modErrors::UserMsg(const std::string& text) {
    sbr_.panel("Message").setText(text);
    log_.trace("Dravikdlg.UserMsg = " + text);
}

void modErrors::ReportError(std::string_view source, const Failure& failure) {
    const std::string message =
        std::string(source) + " Err " + std::to_string(failure.number()) + " " + failure.description();
    sbr_.panel("Message").setText(message);
    log_.trace("# Dravikdlg error: " + message);
    reported(message);
}

}  // namespace dravik::screen
