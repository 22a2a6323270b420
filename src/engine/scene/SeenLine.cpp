#include "engine/scene/SeenLine.h"

#include "engine/recogniser/BaseReader.h"
#include "engine/scene/UprightLine.h"

namespace dravik::engine {
namespace {

// Log odds of a clear line.
constexpr double kClearLine = 1.5;

}  // namespace

bool SeenLine::isClear() const {
    return part.found.glyphs.size() > 1 && part.found.likeness > kClearLine;
}

SeenLine LineSight::look(const TextLine& line, float height) const {
    SeenLine seen{line, uprightLine(image_, line, height, lines_)};
    seen.part.found = segment(*seen.part.picture, takeWholeCharacters, stop_, print_);
    if (seen.isClear()) seen.line.dark = seen.part.found.look.dark;
    return seen;
}

}  // namespace dravik::engine
