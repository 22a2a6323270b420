// What a font reads in one image, beside the text that should be there: what `read` prints and the window's
// Read All lists.
#pragma once

#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "engine/font/FontReader.h"
#include "engine/image/ImageDecoder.h"

namespace dravik::trainer {

struct ImageReading {
    std::string image;
    std::vector<engine::ReadCharacter> characters;
    std::optional<std::string> expected;  // the text that is on the part, without blanks and line breaks
    std::string problem;                  // why it could not be read; "" when it could

    // The best guesses; nothing is refused.
    bool isRight() const;
    // A character is hardly more than a guess, none was found, or the image could not be read.
    bool isRefused() const;
    // The characters of every line, "?" for those below the limit; between lines a backslash and an n, unless
    // another break is given.
    std::string text(double rejectLimit = engine::kRejectLimit, std::string_view lineBreak = "\\n") const;
    // Of the least sure character, 0 when there is none.
    double confidence() const;
};

// `image` is its name, `path` where it is. Raises nothing: what goes wrong is the reading's problem. Any
// thread may call it; ends soon, with anything read, once a stop is requested. The image is looked at by the
// font's settings unless others are given.
ImageReading readImage(const std::string& image, const std::string& path, std::optional<std::string> expected,
                       const engine::FontReader& reader, const engine::ImageDecoder& decoder,
                       const std::stop_token& stop = {},
                       const std::optional<engine::SegmentationSettings>& settings = {});

}  // namespace dravik::trainer
