// The hidden form that holds every pop-up menu. A caller makes a fresh one for each pop-up, says what the
// menu is about, enables what makes sense, pops one of its menus up and acts on the item that the operator
// picked.
#pragma once

#include <cstdint>
#include <string>

#include "screen/context/TraceLog.h"
#include "ui/Menu.h"
#include "ui/Platform.h"

namespace dravik::screen {

// The code that an item leaves in UserSelection.
enum class MenuPick : std::int16_t {
    None = 0,
    CharacterArray = 1,
    CharacterStdDev = 2,
    CharacterDelete = 3,
    CharacterExclude = 4,
    CharacterHistogram = 5,
    FontHistogram = 6,
    GridCopy = 7,
    GridDelete = 8,
    HistogramDelete = 9,
    HistogramShowChar = 10,
};

class dlgContextPopup {
  public:
    // Every item is disabled except the two array items and mnuHistogramShowChar.
    explicit dlgContextPopup(TraceLog& log);
    dlgContextPopup(const dlgContextPopup&) = delete;
    dlgContextPopup& operator=(const dlgContextPopup&) = delete;

    ui::PopupMenu mnuMain{"mnuMain", "Main"};
    ui::PopupMenu mnuGrid{"mnuGrid", "Grid"};
    ui::PopupMenu mnuCharacter{"mnuCharacter", "Character"};
    ui::PopupMenu mnuHistogram{"mnuHistogram", "Histogram"};

    void ShowGridItems(bool enabled);
    void ShowCharHistogram(bool enabled);
    void ShowFullHistogram(bool enabled);
    void ShowDeleteTrain(bool enabled);
    void ShowExcludeChar(bool enabled);
    // True enables the deletion of a bin and disables the character's histogram, false the other way round.
    void ShowFontPopup(bool enabled);
    void ShowCharArray(bool enabled);

    // The character that the menu is about; setting it names the character in the captions.
    const std::string& Character() const noexcept { return character_; }
    void setCharacter(const std::string& character);

    // The view that the menu was opened from; 2 is the grid.
    std::int16_t CurrentView = 0;

    // The item picked so far.
    MenuPick UserSelection() const noexcept { return userSelection_; }

    // Pops one of the menus up at a place of a widget and returns the pick once the menu is closed.
    MenuPick popUp(ui::Platform& platform, ui::PopupMenu& menu, ui::Widget& at, double x, double y);

  private:
    void add(ui::PopupMenu& menu, const char* name, const char* caption, MenuPick pick = MenuPick::None);

    std::string character_;
    MenuPick userSelection_ = MenuPick::None;
};

}  // namespace dravik::screen
