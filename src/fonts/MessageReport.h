// How the two name dialogs report a failure: in a message box, since they have no status bar.
#pragma once

#include <string>
#include <string_view>

#include "support/Procedure.h"
#include "widgets/Platform.h"

namespace dravik {

inline Procedures::Report messageReport(Platform& platform) {
    return [&platform](std::string_view source, const Failure& failure) {
        platform.messageBox({"Error " + std::to_string(failure.number()) + "\r" + failure.description(),
                             "Error in " + std::string(source), MessageBox::Buttons::Ok,
                             MessageBox::Icon::Critical});
    };
}

}  // namespace dravik
