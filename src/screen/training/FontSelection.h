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

// m_FontIndex while the step's font is not yet known.
constexpr std::int16_t kFontUnknown = -1;

class FontSelection {
  public:
    FontSelection(ScreenContext& context, SamplesGrid& grid) : context_(context), grid_(grid) {}

    // Lets the operator choose in the font manager and loads the choice; cancelling changes nothing.
    void SelectFont();
    // Shows a font without a dialog, or that there is none ("").
    void ShowFont(const std::string& name);
    void txtCharSet_Change();
    // Hands the text of txtCharSet to the tool, a character an element behind an empty first one.
    void SetupNewCharSet();

    // At least one committed sample exists.
    bool ReadyToTrain();
    // At least one sample was trained.
    bool FontTrained();
    // "Trained on " or "Not trained. Created " and the date of the font's file, or "unknown".
    std::string FontTrainDate(const std::string& Font);

    // Index of the selected font in the tool's font list.
    std::int16_t m_FontIndex = kFontUnknown;

    // Wired by the shell.
    std::function<void()> fontLoaded;  // another font was loaded, before the screen is filled from it
    std::function<void()> fillItems;

  private:
    // The manager was left without a choice, but fonts may have been made, renamed or deleted in it: the
    // screen goes on with the font that it shows, under the name that it has now, or with none.
    void keepShownFont();
    void load(const std::string& name);
    // Index in the tool's font list, kFontUnknown when it is not there.
    std::int16_t indexOf(const std::string& font);
    // Takes m_FontIndex again once the font is loaded, since loading may change the order of the tool's list.
    void takeIndexOf(const std::string& font);

    ScreenContext& context_;
    SamplesGrid& grid_;
    std::unique_ptr<dlgFontManager> manager_;
};

}  // namespace dravik::screen
