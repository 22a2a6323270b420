// What the operator does with the image beside looking at it: the region, the image settings, corrected
// characters, and the menu of a character with what else it may be.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "trainer/Trainer.h"
#include "trainer/window/PartViewModel.h"
#include "trainer/window/WindowActions.h"
#include "ui/Platform.h"
#include "ui/Signal.h"

namespace dravik::trainer {

class ImageTools {
  public:
    // All outlive this object.
    ImageTools(Trainer& trainer, ui::Platform& platform, WindowActions& actions, PartViewModel& view);

    // While characters are corrected Undo takes back corrections: "Undo split of a character"; nothing when
    // there is nothing of that to take back.
    std::optional<std::string> undoText() const;
    void undo();

    // What is to be known of the image beside its characters: that it has a region, or is corrected; "" for
    // nothing.
    std::string note() const;
    // How the mode of the view is worked, in a sentence or two; "" while none is on.
    std::string modeHint() const;
    // Which character is selected, for screen readers; "" for none.
    std::string selectionText() const;

  private:
    void connectActions();
    void toggle(ViewMode mode);
    void showState();
    void setRegion(const std::optional<engine::RotatedBox>& region);
    void toggleOwnRegion();
    void takeCorrection(const BoxChange& change);
    void labelsFollow(const BoxChange& change);
    void showMenuOf(int character, ViewPoint place);
    void takeInstead(std::size_t character, const std::string& text);
    void openSettings();

    Trainer& trainer_;
    ui::Platform& platform_;
    WindowActions& actions_;
    PartViewModel& view_;
    bool ownRegion_ = false;  // the next region is to be of its image alone
    std::vector<ui::Connection> connections_;
};

}  // namespace dravik::trainer
