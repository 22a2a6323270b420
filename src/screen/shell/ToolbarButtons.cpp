#include "screen/shell/ToolbarButtons.h"

#include <string>

#include "screen/context/modGlobals.h"

namespace dravik::screen {

void ToolbarButtons::tlbChars_ButtonClick(ui::ToolButton& button) {
    context_.procedures.run("", "tlbChars_ButtonClick", [&] {
        const auto is = [&](const char* key) {
            if (button.key != key) return false;
            context_.procedures.trace("DravikDlg.tlbChars_ButtonClick('" + std::string(key) + "')");
            return true;
        };
        if (is("Graphical")) {
            overview_.SetGraphicalView(true);
        } else if (is("Numeric")) {
            overview_.SetGraphicalView(false);
        } else if (is("Hist")) {
            // The button's own key is "Histogram": the font histogram is opened from the pop-up menus.
            overview_.SetFontArray();
            forms_.DisplayCharHistogram(overview_.firstOfFontArray(), kFontHistogram);
        } else if (is("Array")) {
            overview_.SetFontArray();
            forms_.DisplayCharArray(overview_.firstOfFontArray(), false);
        } else if (is("Undo")) {
            deletion_.DeleteLast();
        } else if (button.key == "Log") {
            g_bTrace = button.pressed();
        }
    });
}

}  // namespace dravik::screen
