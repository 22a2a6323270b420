// How the current image is looked at, where what the tool finds by itself is not right: the font's settings,
// a region for one image alone, and characters that the operator has corrected. What is of one image alone is
// remembered by its path as long as the program runs.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/embedded/EmbeddedTool.h"
#include "trainer/FontActs.h"
#include "trainer/OpenedParts.h"
#include "ui/Signal.h"

namespace dravik::trainer {

class ImageAdjustments {
  public:
    // All outlive this object.
    ImageAdjustments(engine::EmbeddedTool& tool, FontActs& acts, const OpenedParts& parts);

    // By which the current image is looked at: those of the font, or of the program while no font is loaded,
    // with the image's own region.
    engine::SegmentationSettings settings() const;
    // The same for any image.
    engine::SegmentationSettings settingsOf(const std::string& path) const;
    // Those that count for all images.
    const engine::SegmentationSettings& commonSettings() const;
    bool hasOwnRegion() const;

    // What counts for all images is changed by one act, which can be undone; another region for all makes
    // the image's own one go. A failure is told on the screen.
    void setRegion(const std::optional<engine::RotatedBox>& region, bool forThisImageOnly);
    void set(const engine::SegmentationSettings& settings, bool regionForThisImageOnly);

    // Another font may be shown. What was set while there was none becomes that of a font without samples and
    // settings of its own.
    void fontShown();

    // The tool has the current image, in which nothing is corrected: what was corrected in it counts again,
    // if the same was found then.
    void charactersFound();
    // The characters of the current image, in which nothing is corrected, were divided otherwise.
    void charactersDivided();
    // The characters of the current image are these; `words` say what was done.
    void correct(std::vector<engine::CharacterBox> boxes, const std::string& words);
    bool isCorrected() const;
    // What undoCorrection() would take back, in words; nothing when there is nothing.
    std::optional<std::string> undoWords() const;
    void undoCorrection();
    // What the typed text was before the last correction and after it, where it went along.
    struct Labels {
        std::string before, after;
    };
    void keepLabels(Labels labels);
    const Labels* keptLabels() const;
    // All of them.
    void restoreFound();

    // Of the current image.
    ui::Signal<> settingsChanged;
    ui::Signal<> charactersChanged;

  private:
    struct Step {
        std::vector<engine::CharacterBox> before;
        std::string words;
        Labels labels{};
    };
    struct Correction {
        std::vector<engine::CharacterBox> undivided, found;  // freely, and as a text divides it
        std::shared_ptr<const engine::Scene> division;
        std::vector<engine::CharacterBox> boxes;
        std::vector<Step> steps;
    };

    std::string path() const;
    Correction* correction();
    const Correction* correction() const;
    void takeRegion(const std::optional<engine::RotatedBox>& region, bool forThisImageOnly,
                    engine::SegmentationSettings& common);
    void setCommon(const engine::SegmentationSettings& settings, const std::string& words);

    engine::EmbeddedTool& tool_;
    FontActs& acts_;
    const OpenedParts& parts_;
    engine::SegmentationSettings withoutFont_;
    std::optional<std::string> font_;
    std::unordered_map<std::string, std::optional<engine::RotatedBox>> ownRegions_;  // by path
    std::unordered_map<std::string, Correction> corrections_;
};

}  // namespace dravik::trainer
