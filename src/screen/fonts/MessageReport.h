// How the two name dialogs report a failure: in a message box, since they have no status bar.
#pragma once

#include <string>
#include <string_view>

#include "screen/context/Procedure.h"
#include "ui/Platform.h"

namespace dravik::screen {

inline Procedures::Report messageReport(ui::Platform& platform) {
    return [&platform](std::string_view source, const Failure& failure) {
        platform.messageBox({"Error " + std::to_string(failure.number()) + "\r" + failure.description(),
                             "Error in " + std::string(source), ui::MessageBox::Buttons::Ok,
                             ui::MessageBox::Icon::Critical});
    };
}

}  // namespace dravik::screen
