#include <array>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "FuzzTargets.h"
#include "engine/classifier/Reading.h"
#include "engine/recogniser/BaseReader.h"
#include "engine/segmentation/Segmentation.h"

namespace dravik {

using namespace engine;
using namespace tool;
namespace {

// Small images from few bytes: pixels that are missing repeat those that are there, in rows or as they run.
GreyImage imageOf(std::span<const std::uint8_t> bytes) {
    const std::size_t width = 1 + bytes[0], height = 1 + bytes[1] / 2;
    const bool byRow = (bytes[2] & 1) != 0;
    const auto pixels = bytes.subspan(3);
    GreyImage image(static_cast<int>(width), static_cast<int>(height), 200);
    if (pixels.empty()) return image;
    for (std::size_t y = 0; y < height; ++y)
        for (std::size_t x = 0; x < width; ++x)
            image(static_cast<int>(x), static_cast<int>(y)) =
                pixels[(byRow ? x + y / 8 : x + y * width) % pixels.size()];
    return image;
}

// A font of three characters, three samples each.
class TaughtFont {
  public:
    TaughtFont() {
        TrainingSet set;
        set.codes = {'A', 'B', 'C'};
        for (std::uint32_t i = 0; i < samples_.size(); ++i) {
            Sample& sample = samples_[i];
            sample.serial = i + 1;
            sample.code = set.codes[i % 3];
            for (std::uint32_t k = 0; k < kInputCount; ++k)
                sample.inputs[k] = static_cast<float>((k + i * 5) % 7) / 7;
            set.inputs.insert(set.inputs.end(), sample.inputs.begin(), sample.inputs.end());
            set.classes.push_back(i % 3);
            statistics_.add(sample);
            places_[i] = &sample;
        }
        TrainingFigures figures;
        network_ = trained(
            set, 1, [](const TrainingFigures& now) { return now.cycles < 20; }, figures);
    }
    std::vector<Recognition> read(const Segmentation& found) const {
        const DistanceMeasure measure(statistics_, places_);
        return recognize(found, {network_, measure});
    }

  private:
    std::array<Sample, 9> samples_;
    std::array<const Sample*, 9> places_{};
    ClassStatistics statistics_;
    Network network_;
};

}  // namespace

void tryImage(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < 3) return;
    const GreyImage image = imageOf(bytes);
    const Segmentation found = segment(image, takeWholeCharacters);
    int line = 0;
    for (const Glyph& glyph : found.glyphs) {
        if (glyph.piece.runs.empty() || glyph.line < line) std::abort();
        line = glyph.line;
        for (const Run& run : glyph.piece.runs)
            if (run.x0 >= run.x1 || run.x1 > found.ink.width || run.y >= found.ink.height) std::abort();
    }
    if (!found.glyphs.empty() && static_cast<std::size_t>(line) >= found.lines.size()) std::abort();
    for (const SampleInputs& inputs : allInputs(found, {}))
        for (std::size_t i = 0; i < kInputCount; ++i)
            if (!std::isfinite(inputs[i]) || (i < kFeatureCount && (inputs[i] < 0 || inputs[i] > 1)))
                std::abort();
    static const TaughtFont font;
    const auto read = font.read(found);
    if (read.size() != found.glyphs.size()) std::abort();
    for (const Recognition& one : read) {
        const double sure = confidence(one.best.evidence);
        if (one.best.code == 0 || !(sure >= 0 && sure <= 1)) std::abort();
    }
}

}  // namespace dravik
