// Reading with a trained font: from an image to its characters, how sure each is and what else it may be.
#pragma once

#include <span>
#include <stop_token>
#include <string>
#include <vector>

#include "engine/classifier/Confidence.h"
#include "engine/classifier/DistanceMeasure.h"
#include "engine/classifier/Network.h"
#include "engine/font/FontFile.h"
#include "engine/image/GreyImage.h"
#include "engine/recogniser/CharacterContext.h"
#include "engine/recogniser/TextFormats.h"
#include "engine/scene/Scene.h"

namespace dravik::engine {

// A found character: its box in image pixels, right and bottom exclusive, and the line that it stands in,
// from 0. Found characters are in reading order, line by line.
struct FoundCharacter {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    int line = 0;
};
FoundCharacter foundCharacter(const Region& place, int line);

// A character that one may be, and the confidence that it is right, 0 to 1 (see Confidence.h).
struct Alternative {
    std::string character;
    double confidence = 0;
};

// A character as the trained font reads it.
struct ReadCharacter {
    FoundCharacter place;
    std::string character;                    // the font's best answer
    double confidence = 0;                    // that the answer is right, 0 to 1 (see Confidence.h)
    std::vector<Alternative> alternatives{};  // the likeliest first, without the answer
};

// Stands for a character that is not known.
inline constexpr char kUnknownCharacter[] = "?";

// The text to show for a character: the answer, or "?" when its confidence is below `limit`.
std::string shownCharacter(const ReadCharacter& read, double limit = kRejectLimit);

// A font made ready to read. It does not change; any number of threads may read with it at once.
class FontReader {
  public:
    // Of a font that is not trained everything reads as nothing.
    explicit FontReader(const FontRecord& font);
    // `samples` are those that `statistics` counts, in the order in which they were included; they are looked
    // at here only.
    FontReader(Network network, const ClassStatistics& statistics, std::span<const Sample* const> samples,
               const SegmentationSettings& settings = {}, Context context = Context::Used);

    // The characters that the font can read, in the order of its network.
    std::vector<std::string> characters() const;
    // The font's own, by which images are looked at where no others are given.
    const SegmentationSettings& settings() const noexcept { return settings_; }
    std::vector<ReadCharacter> read(const GreyImage& image) const { return read(image, settings_); }
    std::vector<ReadCharacter> read(const GreyImage& image, const SegmentationSettings& settings) const;
    // The same of an image in which `found` is what findScene() finds. Ends early, with what it likes, once a
    // stop is requested.
    std::vector<ReadCharacter> read(const Scene& found, const std::stop_token& stop = {}) const;

  private:
    Network network_;
    DistanceMeasure measure_;
    TextFormats formats_;  // of the lines that the samples come from
    SegmentationSettings settings_;
    Context context_;
};

}  // namespace dravik::engine
