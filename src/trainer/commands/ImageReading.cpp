#include "trainer/commands/ImageReading.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "base/Failure.h"
#include "base/FileSystem.h"
#include "engine/scene/Scene.h"

namespace dravik::trainer {

bool ImageReading::isRight() const {
    if (!expected || !problem.empty()) return false;
    std::string read;
    for (const engine::ReadCharacter& one : characters) read += one.character;
    return read == *expected;
}

bool ImageReading::isRefused() const {
    return !problem.empty() || confidence() < engine::kRejectLimit;
}

std::string ImageReading::text(double rejectLimit, std::string_view lineBreak) const {
    std::string read;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        if (i > 0 && characters[i].place.line != characters[i - 1].place.line) read += lineBreak;
        read += engine::shownCharacter(characters[i], rejectLimit);
    }
    return read;
}

double ImageReading::confidence() const {
    double least = characters.empty() ? 0 : 1;
    for (const engine::ReadCharacter& one : characters) least = std::min(least, one.confidence);
    return least;
}

ImageReading readImage(const std::string& image, const std::string& path, std::optional<std::string> expected,
                       const engine::FontReader& reader, const engine::ImageDecoder& decoder,
                       const std::stop_token& stop,
                       const std::optional<engine::SegmentationSettings>& settings) {
    ImageReading reading{image, {}, std::move(expected), {}};
    try {
        const auto picture = std::make_shared<const engine::GreyImage>(decoder(path));
        reading.characters =
            reader.read(engine::findScene(picture, settings.value_or(reader.settings()), stop), stop);
    } catch (...) {
        reading.problem = currentFailure().description();
        if (reading.problem.find(nameOf(path)) == std::string::npos)
            reading.problem = image + ": " + reading.problem;
    }
    return reading;
}

}  // namespace dravik::trainer
