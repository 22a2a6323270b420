// The found characters of an image as they are marked on it: a frame around each, below it the label that the
// typed text gives it, above it what the font reads and how sure it is.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "trainer/Trainer.h"
#include "trainer/window/PartPlacement.h"
#include "trainer/window/ViewDrawing.h"
#include "trainer/window/ViewGeometry.h"

namespace dravik::trainer {

class CharacterMarks {
  public:
    // The placement outlives the marks.
    explicit CharacterMarks(const PartPlacement& placement) : at_(placement) {}

    // As PartViewModel has them.
    void setCharacters(std::vector<LabelledCharacter> characters, int mismatch, int pointedAt);
    void setReading(std::vector<engine::ReadCharacter> reading);
    void setShowsReading(bool shows) { showsReading_ = shows; }

    const std::vector<LabelledCharacter>& characters() const noexcept { return characters_; }
    int characterAt(ViewPoint place) const;
    const engine::ReadCharacter* readingOf(int character) const;
    std::string tipAt(ViewPoint place) const;

    // Frames and bars of confidence; the character that is selected, -1 for none, stands where it is dragged
    // to.
    std::vector<ViewFrame> frames(int selected, const std::optional<engine::RotatedBox>& dragged) const;
    std::vector<ViewTag> tags() const;
    ViewBox tagPlace(const ViewTag& tag, double textWidth, double textHeight) const;

  private:
    void matchReading();
    bool warns(const LabelledCharacter& character) const;
    ViewTag tagOf(const LabelledCharacter& character, bool above, std::string text, ui::Color color) const;
    std::optional<ViewFrame> confidenceBar(std::size_t read) const;
    void addReadings(std::vector<ViewTag>& tags) const;
    ViewBox usualPlace(const ViewTag& tag) const;

    const PartPlacement& at_;
    std::vector<LabelledCharacter> characters_;
    std::map<int, float> lineHeights_;  // of the highest box, in image pixels, by line
    int mismatch_ = 0;
    int pointedAt_ = -1;
    std::vector<engine::ReadCharacter> reading_;
    std::vector<int> characterOfRead_;  // -1 where there is none
    bool showsReading_ = true;
};

}  // namespace dravik::trainer
