// Colours of the models in the current palette, and the light and dark palettes that the program can be told
// to use.
#pragma once

#include <QColor>
#include <QPalette>

#include "trainer/window/WindowSystem.h"
#include "ui/Color.h"

namespace dravik::qt {

// System colours come from the palette; the scroll bar colour is a grey that differs from the window and from
// white.
QColor qtColor(ui::Color color, const QPalette& palette);

// Black or white, whichever is easier to read on the colour.
QColor readableOn(const QColor& background);
// The fore colour to write with: the colour itself when it is explicit, or the palette's unless the
// background is explicit, which then decides.
QColor textColorOn(ui::Color background, ui::Color foreground, const QPalette& palette);
// 1 (the same) to 21 (black on white).
double contrast(const QColor& a, const QColor& b);
// From `a` at share 0 to `b` at share 1.
QColor blend(const QColor& a, const QColor& b, double share);

// Text and marks that warn, readable on the palette's window colour.
QColor warningColor(const QPalette& palette);

// The colours of all windows from now on; those of the desktop go on following it.
void useTheme(trainer::Theme theme);

}  // namespace dravik::qt
