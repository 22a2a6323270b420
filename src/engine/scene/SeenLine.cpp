#include "engine/scene/SeenLine.h"

#include "engine/recogniser/BaseReader.h"
#include "engine/scene/UprightLine.h"

namespace dravik::engine {

bool SeenLine::isClear() const {
    return part.found.glyphs.size() > 1 && odds > kClearLine;
}

SeenLine LineSight::look(const TextLine& line, float height) const {
    SeenLine seen{line, uprightLine(image_, line, height, lines_)};
    seen.part.found = segment(*seen.part.picture, takeWholeCharacters, stop_, print_);
    seen.odds = printOdds(seen.part.found);
    if (seen.isClear()) seen.line.dark = seen.part.found.look.dark;
    return seen;
}

}  // namespace dravik::engine
