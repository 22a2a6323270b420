// The typed text helps to find the characters of the current image: where another number of them is found, it
// is tried to divide the print into those of the text, beside the window. Characters that the operator has
// corrected stay as they are.
#pragma once

#include <chrono>
#include <string>

#include "engine/embedded/EmbeddedTool.h"
#include "trainer/ImageAdjustments.h"
#include "trainer/NewestWork.h"
#include "ui/Signal.h"

namespace dravik::trainer {

class TypedDivision {
  public:
    // Both outlive this object.
    TypedDivision(engine::EmbeddedTool& tool, ImageAdjustments& adjustments)
        : tool_(tool), adjustments_(adjustments) {}

    // The characters of an image were found, or it has none.
    void imageChanged();
    // This text, as an include takes it, is said to stand in the current image; "" for none.
    void decide(const std::string& text);
    // A text is being tried.
    bool busy() const { return work_.busy(); }
    // Waits so long for it. Where it fails the found characters stay.
    void deliver(std::chrono::milliseconds patience);
    // However long it takes: an include needs it.
    void finish();
    void cancel();

    // The characters of the current image.
    ui::Signal<> changed;

  private:
    void take(std::shared_ptr<const engine::Scene> division);

    engine::EmbeddedTool& tool_;
    ImageAdjustments& adjustments_;
    std::string text_;  // that is tried, or was
    NewestWork work_;
};

}  // namespace dravik::trainer
