// Choosing the font, editing its character set, and the questions whether and when it was trained.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "screen/context/ScreenContext.h"
#include "screen/fonts/dlgFontManager.h"
#include "screen/inspection/SamplesGrid.h"

namespace dravik::screen {

class FontSelection {
  public:
    FontSelection(ScreenContext& context, SamplesGrid& grid) : context_(context), grid_(grid) {}

    // Lets the operator choose in the font manager and loads the choice; cancelling changes nothing.
    void SelectFont();
    // Shows a font without a dialog, or that there is none ("").
    void ShowFont(const std::string& font);
    void txtCharSet_Change();
    // Hands the text of txtCharSet to the tool, a character an element behind an empty first one.
    void SetupNewCharSet();

    // At least one committed sample exists.
    bool ReadyToTrain();
    // At least one sample was trained.
    bool FontTrained();
    // "Trained on " or "Not trained. Created " and the date of the font's file, or "unknown".
    std::string FontTrainDate(const std::string& Font);

    // Wired by the shell.
    std::function<void()> fontLoaded;  // another font was loaded, before the screen is filled from it
    std::function<void()> fillItems;

  private:
    // The manager was left without a choice, but fonts may have been made, renamed or deleted in it: the
    // screen goes on with the font that it shows, under the name that it has now, or with none. Where it
    // showed none, it shows the one that was made, since the tool works on it.
    void keepShownFont();
    void load(const std::string& font);
    // The tool has loaded the font: fills the screen from it.
    void show(const std::string& font);
    // Index in the tool's font list, kFontUnknown when it is not there.
    std::int16_t indexOf(const std::string& font);
    // Takes m_FontIndex again once the font is loaded, since loading may change the order of the tool's list.
    void takeIndexOf(const std::string& font);

    ScreenContext& context_;
    SamplesGrid& grid_;
    std::unique_ptr<dlgFontManager> manager_;
};

}  // namespace dravik::screen
