// All actions of the program's window, its menus and the part's toolbar, and what the keys do in words.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "trainer/window/Action.h"

namespace dravik::screen {
struct Screen;
}
namespace dravik::ui {
class Button;
}

namespace dravik::trainer {

// Where there is nothing to take back or to do again.
constexpr char kUndoText[] = "&Undo";
constexpr char kRedoText[] = "&Redo";
// While no folder is watched.
constexpr char kWatchText[] = "&Watch Folder...";

class WindowActions {
  public:
    // Include, Learn, Stop, Revert and the views are the screen's own buttons: in step with them and pressing
    // them. The screen outlives this object.
    explicit WindowActions(screen::Screen& screen);

    Action openImages;
    Action openFolder;
    std::array<Action, 9> recent;
    Action openRecent;
    Action watchFolder;
    Action camera;
    Action openLabels;
    Action saveLabels;
    Action closeImage;
    Action closeAll;
    Action quit;

    Action undo;
    Action redo;
    Action paste;
    Action keepText;

    Action previous;
    Action next;
    Action zoomIn;
    Action zoomOut;
    Action fit;
    Action actualSize;
    Action readingOnImage;
    Action stopReading;
    Action readAgain;
    Action readAll;

    Action showGallery;

    Action freeze;

    Action viewGraphical;
    Action viewNumeric;
    Action viewArray;
    Action viewLog;
    Action themeSystem;
    Action themeLight;
    Action themeDark;
    Action theme;

    Action region;
    Action regionForImage;
    Action clearRegion;
    Action imageSettings;
    Action correctCharacters;
    Action splitCharacter;
    Action joinCharacters;
    Action addCharacter;
    Action removeCharacter;
    Action restoreCharacters;

    Action fontNew;
    Action fontSelect;
    Action fontInclude;
    Action includeLabelled;
    Action fontLearn;
    Action fontStop;
    Action fontSave;
    Action fontRevert;
    Action fontSaveCopy;
    Action fontRestore;
    Action fontAccuracy;

    Action guide;
    Action keys;
    Action about;

    const std::vector<ActionMenu>& menus() const noexcept { return menus_; }
    const ActionList& toolbar() const noexcept { return toolbar_; }
    // Of the menus; raises Subscript out of range (9) for an unknown name.
    Action& find(std::string_view name) const;

  private:
    void bind(Action& action, ui::Button& button);
    void bindViews(screen::Screen& screen);

    std::vector<ActionMenu> menus_;
    ActionList toolbar_;
    std::vector<ui::Connection> connections_;
};

// Keys, and what they do.
using KeyHelp = std::pair<std::string, std::string>;
const std::vector<KeyHelp>& keyHelp();

}  // namespace dravik::trainer
