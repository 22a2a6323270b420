// Draws the conditions under which one image is made: clean, typical or hard.
#pragma once

#include "generate/Camera.h"
#include "generate/Typeface.h"

namespace dravik {

enum class Tier { Clean, Typical, Hard };

struct Conditions {
    Tier tier = Tier::Clean;
    int lines = 1;
    PrintStyle style;
    View view;
    float spread = 0;  // of the ink on each side, in parts of the height of capitals
    int breaks = 0;    // scrapes across the print
    const char* tierName() const {
        return tier == Tier::Clean ? "clean" : tier == Tier::Typical ? "typical" : "hard";
    }
};

// For images to find and read lines in, of one or two lines as they come from a part under a camera that
// was set up with care: print of 20 to 45 pixels that mostly keeps its distance, turned to 3 degrees at most.
Conditions usualConditions(Random& random, bool dots);
// The same of what comes from a camera that nobody looked after: any size, faint, framed, torn and soiled.
Conditions extremeConditions(Random& random, bool dots);
// For images that a font is learnt from: clean or typical, without damage.
Conditions learningConditions(Random& random, bool dots);

// The print's strokes spread and scraped as the conditions say.
void damage(Print& print, const Conditions& conditions, Random& random);

}  // namespace dravik
