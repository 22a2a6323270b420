// The forms in which `read` prints what it has read of an image.
#pragma once

#include <iosfwd>
#include <memory>

#include "trainer/commands/Commands.h"
#include "trainer/commands/ImageReading.h"

namespace dravik::trainer {

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
