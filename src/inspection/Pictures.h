// The toolbar pictures, drawn on a field of 16 x 16 units.
#pragma once

#include "widgets/Picture.h"

namespace dravik::pictures {

Picture graphical();  // coloured cells
Picture numeric();    // a table
Picture histogram();  // bars on an axis
Picture array();      // a field of grey cells
Picture undo();       // an arrow turning back
Picture log();        // a written sheet
Picture deviation();  // a bell curve
Picture character();  // a single letter

}  // namespace dravik::pictures
