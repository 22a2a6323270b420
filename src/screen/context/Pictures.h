// The toolbar pictures, drawn on a field of 16 x 16 units.
#pragma once

#include "ui/Picture.h"

namespace dravik::pictures {

ui::Picture graphical();  // coloured cells
ui::Picture numeric();    // a table
ui::Picture histogram();  // bars on an axis
ui::Picture array();      // a field of grey cells
ui::Picture undo();       // an arrow turning back
ui::Picture log();        // a written sheet
ui::Picture deviation();  // a bell curve
ui::Picture character();  // a single letter

}  // namespace dravik::pictures
