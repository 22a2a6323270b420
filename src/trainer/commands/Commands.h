// The three commands behind the command line. Each writes its results to `out` and its problems to `err`, one
// line each, and returns the exit code: 0 done, 1 failed in whole or in part, 130 interrupted.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "base/JobFolder.h"
#include "engine/classifier/Confidence.h"
#include "trainer/OpenedParts.h"

namespace dravik::trainer {

struct CommandStreams {
    std::ostream& out;
    std::ostream& err;
    bool errIsTerminal = false;

    // One line on `err`, with the program's name in front.
    void problem(const std::string& text) const;
};

struct LearnOptions {
    std::string font;
    std::string samples;                    // the list's file
    std::optional<std::string> characters;  // the set that the font is to have
    std::optional<std::int32_t> seconds;    // time limit of the run
};

int learnFont(const LearnOptions& options, const JobFolder& folder, const ImageDecoder& decoder,
              const CommandStreams& streams);

struct ReadOptions {
    std::string font;
    std::vector<std::string> images;
    double rejectLimit = engine::kRejectLimit;  // readings with less confidence are printed as "?"
    bool showsConfidence = false;
};

int readImages(const ReadOptions& options, const JobFolder& folder, const ImageDecoder& decoder,
               const CommandStreams& streams);

int listFonts(const JobFolder& folder, const CommandStreams& streams);

}  // namespace dravik::trainer
