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
    SeenLine result{line, uprightLine(image_, line, height, lines_)};
    result.part.found = segment(*result.part.picture, takeWholeCharacters, stop_, print_);
    return result;
}

}  // namespace dravik::engine
