// Asks for the name of a font that is renamed or duplicated.
#pragma once

#include "screen/fonts/FontNameForm.h"

namespace dravik::screen {

class dlgFontName : public FontNameForm {
  public:
    dlgFontName(TraceLog& log, ui::Platform& platform)
        : FontNameForm("dlgFontName", "Font Name", "Label1", log, platform) {
        form_.setLayout(ui::column({nameRow(), buttonRow()}));
    }
};

}  // namespace dravik::screen
