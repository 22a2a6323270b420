#include "trainer/window/WindowActions.h"

#include "base/Failure.h"
#include "screen/context/Screen.h"
#include "trainer/window/ActionPictures.h"

namespace dravik::trainer {

WindowActions::WindowActions(screen::Screen& screen)
    : openImages({"openImages", "&Open Images...", "Open part images", {"Ctrl+O"}}),
      openFolder({"openFolder", "Open &Folder...", "Open every image of a folder", {"Ctrl+Shift+O"}}),
      closeImage(
          {"closeImage", "&Close Image", "Take the current image from the list", {"Ctrl+W", "Ctrl+F4"}}),
      closeAll({"closeAll", "Close &All", "Take all images from the list"}),
      quit({"quit", "&Quit", "End the program", {"Ctrl+Q"}}),
      undo({"undo", kUndoText, "Take back what was done to the font last", {"Ctrl+Z"}}),
      redo({"redo", kRedoText, "Do again what was taken back", {"Ctrl+Y", "Ctrl+Shift+Z"}}),
      previous({"previous", "&Previous", "Previous image", {"Alt+Left"}, previousPartPicture()}),
      next({"next", "&Next", "Next image", {"Alt+Right"}, nextPartPicture()}),
      zoomIn({"zoomIn", "Zoom &In", "Zoom in", {"Ctrl++", "Ctrl+="}, zoomInPicture()}),
      zoomOut({"zoomOut", "Zoom &Out", "Zoom out", {"Ctrl+-"}, zoomOutPicture()}),
      fit({"fit", "&Fit", "Fit the whole image", {"Ctrl+0"}, fitPicture(), true}),
      actualSize({"actualSize",
                  "&Actual Size",
                  "One image pixel to one pixel of the display",
                  {"Ctrl+1"},
                  actualSizePicture()}),
      readingOnImage({"readingOnImage",
                      "Reading on I&mage",
                      "What the font reads above each character of the image",
                      {"Ctrl+D"},
                      {},
                      true}),
      stopReading({"stopReading", "&Stop Reading", "Stop looking for characters in the image"}),
      readAgain({"readAgain", "&Read Again", "Open the image and look for its characters once more", {"F5"}}),
      readAll({"readAll",
               "Read &All...",
               "Read every opened image, the most doubtful listed first",
               {"Ctrl+Shift+R"}}),
      showGallery({"showGallery", "&Gallery", "The font's samples as pictures", {"Ctrl+G"}, {}, true}),
      region({"region",
              "Re&gion",
              "Draw, move, size and turn the region in which characters are looked for",
              {"Ctrl+R"},
              regionPicture(),
              true}),
      regionForImage({"regionForImage",
                      "Region for &This Image Only",
                      "The region counts for this image, not for all images read with the font",
                      {},
                      {},
                      true}),
      clearRegion({"clearRegion", "C&lear Region", "Look for characters in the whole image"}),
      imageSettings({"imageSettings",
                     "Image S&ettings...",
                     "Polarity, kind of print, smallest height and region by which characters are looked for",
                     {"Ctrl+I"}}),
      correctCharacters({"correctCharacters",
                         "&Correct Characters",
                         "Select, split, join, move, size, add and remove the boxes of characters",
                         {"Ctrl+B"},
                         correctCharactersPicture(),
                         true}),
      splitCharacter({"splitCharacter", "Split C&haracter", "Make two of the selected character (S)"}),
      joinCharacters(
          {"joinCharacters", "&Join with Next", "Make one of the selected character and the next (J)"}),
      addCharacter({"addCharacter", "A&dd Character", "A box beside the selected character (A)"}),
      removeCharacter({"removeCharacter", "Remo&ve Character", "The selected box goes (Delete)"}),
      restoreCharacters(
          {"restoreCharacters", "Restore Fo&und Characters", "Drop all corrections of this image"}),
      fontSelect({"fontSelect", "Select &Font...", screen.font.cmdSelectFont.toolTip(), {"Ctrl+F"}}),
      fontInclude({"fontInclude", "&Include", screen.sample.cmdInclude.toolTip()}),
      fontLearn({"fontLearn", "&Learn", screen.train.cmdTrain.toolTip(), {"Ctrl+L"}}),
      fontStop({"fontStop", "S&top", screen.train.cmdStop.toolTip(), {"Ctrl+."}}),
      fontSave({"fontSave", "&Save", screen.train.cmdSaveFont.toolTip(), {"Ctrl+S"}}),
      fontRevert({"fontRevert", "&Revert", screen.train.cmdRevert.toolTip()}),
      fontSaveCopy({"fontSaveCopy", "Save &Copy...", "Write the font as it is now to a file anywhere"}),
      fontRestore({"fontRestore", "Rest&ore...", "Bring an older version or a deleted font back"}),
      fontAccuracy({"fontAccuracy", "Acc&uracy Page...",
                    "Write a page to hand over: samples, held-out check, what is doubtful"}),
      guide({"guide", "&Operator Guide", "How to work with this program, with pictures"}),
      keys({"keys", "&Keys", "What the keys do", {"F1"}}),
      about({"about", "&About Dravik Trainer", "About this program"}),
      // Access keys of the menus keep clear of those of the screen.
      menus_{{"&File", {&openImages, &openFolder, nullptr, &closeImage, &closeAll, nullptr, &quit}},
             {"&Edit", {&undo, &redo}},
             {"I&mage",
              {&previous,
               &next,
               nullptr,
               &zoomIn,
               &zoomOut,
               &fit,
               &actualSize,
               &readingOnImage,
               nullptr,
               &region,
               &regionForImage,
               &clearRegion,
               &imageSettings,
               nullptr,
               &correctCharacters,
               &splitCharacter,
               &joinCharacters,
               &addCharacter,
               &removeCharacter,
               &restoreCharacters,
               nullptr,
               &stopReading,
               &readAgain}},
             {"&View", {&showGallery}},
             {"F&ont",
              {&fontSelect, &fontInclude, &fontLearn, &fontStop, &fontSave, &fontRevert, nullptr,
               &fontSaveCopy, &fontRestore, nullptr, &readAll, &fontAccuracy}},
             {"&Help", {&guide, &keys, nullptr, &about}}},
      toolbar_{&previous, &next,       nullptr, &zoomOut, &zoomIn,
               &fit,      &actualSize, nullptr, &region,  &correctCharacters} {
    bind(fontInclude, screen.sample.cmdInclude);
    bind(fontLearn, screen.train.cmdTrain);
    bind(fontStop, screen.train.cmdStop);
    bind(fontRevert, screen.train.cmdRevert);
}

void WindowActions::bind(Action& action, ui::Button& button) {
    action.setEnabled(button.enabled());
    connections_.push_back(button.changed.connect([&action, &button](ui::Change change) {
        if (change == ui::Change::Enabled) action.setEnabled(button.enabled());
    }));
    action.triggered.subscribe([&button] { button.press(); });
}

Action& WindowActions::find(std::string_view name) const {
    for (const ActionMenu& menu : menus_)
        for (Action* action : menu.entries)
            if (action && action->name() == name) return *action;
    throw Failure(RuntimeError::SubscriptOutOfRange);
}

const std::vector<KeyHelp>& keyHelp() {
    static const std::vector<KeyHelp> kKeys = {
        {"Alt+Left, Alt+Right, Page Up, Page Down", "previous and next image"},
        {"Ctrl and the wheel, Ctrl++, Ctrl+-", "zoom"},
        {"Ctrl+0, Ctrl+1", "fit, actual size"},
        {"Ctrl+R, Ctrl+B", "draw the region, correct characters; Escape ends both"},
        {"Arrows, Shift, Ctrl in the region", "move, size, turn it; Delete takes it away"},
        {"Tab, arrows among the characters", "from character to character; Enter for its menu"},
        {"S, J, A, Delete among the characters", "split, join with the next, add, remove"},
        {"Ctrl+arrows, Shift+arrows among them", "move, size the character"},
        {"Enter", "include the typed text"},
        {"Ctrl+L, Ctrl+S", "learn, save the font"},
        {"Ctrl+Z, Ctrl+Y", "undo, redo, but where text is typed"},
        {"Arrow keys in the characters", "from cell to cell"},
        {"Menu key, Shift+F10", "menu of a character or of the samples"},
        {"Shift+arrows, Ctrl+A, Ctrl+Insert, Delete", "select, copy, delete samples"},
        {"Ctrl+Enter in the samples", "sort by the current column"},
        {"Left, Right in a histogram", "from bar to bar"},
        {"Ctrl+Shift+R", "read all opened images"},
        {"Ctrl+G", "gallery of the font's samples"},
        {"A character, Delete, Enter in the gallery",
         "relabel or delete the selected samples, show the image"},
    };
    return kKeys;
}

}  // namespace dravik::trainer
