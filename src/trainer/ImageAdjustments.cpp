#include "trainer/ImageAdjustments.h"

#include <utility>

namespace dravik::trainer {

using engine::CharacterBox;
using engine::SegmentationSettings;

ImageAdjustments::ImageAdjustments(engine::EmbeddedTool& tool, FontActs& acts, const OpenedParts& parts)
    : tool_(tool), acts_(acts), parts_(parts) {}

std::string ImageAdjustments::path() const {
    return parts_.current() < 0 ? std::string() : parts_.path(parts_.current());
}

const SegmentationSettings& ImageAdjustments::commonSettings() const {
    return tool_.currentFont() ? tool_.settings() : withoutFont_;
}

SegmentationSettings ImageAdjustments::settings() const {
    return settingsOf(path());
}

SegmentationSettings ImageAdjustments::settingsOf(const std::string& path) const {
    SegmentationSettings settings = commonSettings();
    if (const auto own = ownRegions_.find(path); own != ownRegions_.end()) settings.region = own->second;
    return settings;
}

bool ImageAdjustments::hasOwnRegion() const {
    return ownRegions_.contains(path());
}

void ImageAdjustments::setCommon(const SegmentationSettings& settings, const std::string& words) {
    if (settings == commonSettings()) return;
    if (tool_.currentFont())
        acts_.change(words, [&] { tool_.setSettings(settings); });
    else
        withoutFont_ = settings;
}

void ImageAdjustments::fontShown() {
    const std::optional<std::string> font = tool_.currentFont();
    if (std::exchange(font_, font) == font || !font || withoutFont_ == SegmentationSettings{}) return;
    if (tool_.settings() == SegmentationSettings{} && tool_.samples(tool::SampleKind::Committed)->size() == 0)
        setCommon(std::exchange(withoutFont_, {}), "change of the image settings");
}

void ImageAdjustments::takeRegion(const std::optional<engine::RotatedBox>& region, bool forThisImageOnly,
                                  SegmentationSettings& common) {
    if (forThisImageOnly) {
        ownRegions_[path()] = region;
    } else {
        ownRegions_.erase(path());
        common.region = region;
    }
}

void ImageAdjustments::setRegion(const std::optional<engine::RotatedBox>& region, bool forThisImageOnly) {
    SegmentationSettings common = commonSettings();
    takeRegion(region, forThisImageOnly, common);
    setCommon(common, region ? "change of the region" : "removal of the region");
    settingsChanged();
}

void ImageAdjustments::set(const SegmentationSettings& settings, bool regionForThisImageOnly) {
    SegmentationSettings common = commonSettings();
    common.print = settings.print;
    if (settings.region != this->settings().region)
        takeRegion(settings.region, regionForThisImageOnly, common);
    setCommon(common, "change of the image settings");
    settingsChanged();
}

ImageAdjustments::Correction* ImageAdjustments::correction() {
    const auto found = corrections_.find(path());
    return found == corrections_.end() ? nullptr : &found->second;
}

const ImageAdjustments::Correction* ImageAdjustments::correction() const {
    const auto found = corrections_.find(path());
    return found == corrections_.end() ? nullptr : &found->second;
}

void ImageAdjustments::charactersFound() {
    const Correction* known = correction();
    if (!known) return;
    if (known->undivided != tool_.characterBoxes()) {
        corrections_.erase(path());
        return;
    }
    tool_.setDivision(known->division);
    tool_.setCharacters(known->boxes);
}

void ImageAdjustments::charactersDivided() {
    Correction* known = correction();
    if (!known) return;
    known->division = tool_.division();
    known->found = known->boxes = tool_.characterBoxes();
}

void ImageAdjustments::correct(std::vector<CharacterBox> boxes, const std::string& words) {
    if (parts_.image().empty()) return;
    Correction* known = correction();
    if (!known) {
        const std::vector<CharacterBox> found = tool_.characterBoxes();
        known = &(corrections_[path()] = {
                      engine::characterBoxes(*tool_.foundScene()), found, tool_.division(), found, {}});
    }
    if (known->boxes == boxes) return;
    known->steps.push_back({std::exchange(known->boxes, std::move(boxes)), words, {}});
    tool_.setCharacters(known->boxes);
    charactersChanged();
}

bool ImageAdjustments::isCorrected() const {
    const Correction* known = correction();
    return known && known->boxes != known->found;
}

std::optional<std::string> ImageAdjustments::undoWords() const {
    const Correction* known = correction();
    return known && !known->steps.empty() ? std::optional(known->steps.back().words) : std::nullopt;
}

void ImageAdjustments::keepLabels(Labels labels) {
    Correction* known = correction();
    if (!known || known->steps.empty()) return;
    Labels& kept = known->steps.back().labels;
    if (kept.before.empty()) kept.before = std::move(labels.before);
    kept.after = std::move(labels.after);
}

const ImageAdjustments::Labels* ImageAdjustments::keptLabels() const {
    const Correction* known = correction();
    return known && !known->steps.empty() ? &known->steps.back().labels : nullptr;
}

void ImageAdjustments::undoCorrection() {
    Correction* known = correction();
    if (!known || known->steps.empty()) return;
    known->boxes = std::move(known->steps.back().before);
    known->steps.pop_back();
    tool_.setCharacters(known->boxes == known->found ? std::nullopt : std::optional(known->boxes));
    charactersChanged();
}

void ImageAdjustments::restoreFound() {
    if (!isCorrected()) return;
    Correction& known = *correction();
    known.steps.push_back({std::exchange(known.boxes, known.found), "return to the found characters", {}});
    tool_.setCharacters(std::nullopt);
    charactersChanged();
}

}  // namespace dravik::trainer
