// The forms in which `read` prints what it has read of an image.
#pragma once

#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/font/FontReader.h"
#include "trainer/commands/Commands.h"

namespace dravik::trainer {

struct ImageReading {
    std::string image;
    std::vector<engine::ReadCharacter> characters;
    std::optional<std::string> expected;  // the text that is on the part, without blanks and line breaks
    std::string problem;                  // why it could not be read; "" when it could

    // The best guesses; nothing is refused.
    bool isRight() const;
};

class ReadingFormat {
  public:
    ReadingFormat() = default;
    ReadingFormat(const ReadingFormat&) = delete;
    ReadingFormat& operator=(const ReadingFormat&) = delete;
    virtual ~ReadingFormat() = default;

    virtual void add(const ImageReading& reading) = 0;
    virtual void end() {}
};

// Writes to `out` as the options say, which outlive the format.
std::unique_ptr<ReadingFormat> readingFormat(const ReadOptions& options, std::ostream& out);

}  // namespace dravik::trainer
