#include "trainer/window/WindowActions.h"

#include "base/Failure.h"
#include "screen/context/Screen.h"
#include "trainer/window/ActionPictures.h"

namespace dravik::trainer {
namespace {

Action recentAction(int number) {
    const std::string digit = std::to_string(number);
    return Action({"recent" + digit, "&" + digit, "Open these images again"});
}

Action* found(const ActionList& entries, std::string_view name) {
    for (Action* action : entries) {
        if (!action) continue;
        if (action->name() == name) return action;
        if (Action* inside = found(action->entries(), name)) return inside;
    }
    return nullptr;
}

}  // namespace

WindowActions::WindowActions(screen::Screen& screen)
    : openImages({"openImages", "&Open Images...", "Open part images", {"Ctrl+O"}}),
      openFolder({"openFolder", "Open &Folder...", "Open every image of a folder", {"Ctrl+Shift+O"}}),
      recent{recentAction(1), recentAction(2), recentAction(3), recentAction(4), recentAction(5),
             recentAction(6), recentAction(7), recentAction(8), recentAction(9)},
      openRecent({"openRecent", "Open &Recent", "Open files and folders of before once more"},
                 {&recent[0], &recent[1], &recent[2], &recent[3], &recent[4], &recent[5], &recent[6],
                  &recent[7], &recent[8]}),
      watchFolder({"watchFolder", kWatchText, "Open the images that arrive in a folder by themselves"}),
      camera({"camera", "Ca&mera...", "Take images from a camera"}),
      openLabels({"openLabels",
                  "Open &Labels...",
                  "Take the texts of images from a list: image, tab, text",
                  {"Ctrl+Shift+B"}}),
      saveLabels({"saveLabels",
                  "&Save Labels...",
                  "Write the texts of the opened images as a list",
                  {"Ctrl+Shift+S"}}),
      closeImage(
          {"closeImage", "&Close Image", "Take the current image from the list", {"Ctrl+W", "Ctrl+F4"}}),
      closeAll({"closeAll", "Close &All", "Take all images from the list"}),
      quit({"quit", "&Quit", "End the program", {"Ctrl+Q"}}),
      undo({"undo", kUndoText, "Take back what was done to the font last", {"Ctrl+Z"}}),
      redo({"redo", kRedoText, "Do again what was taken back", {"Ctrl+Y", "Ctrl+Shift+Z"}}),
      paste({"paste", "&Paste Image", "Open the image that is on the clipboard", {"Ctrl+V"}}),
      keepText({"keepText",
                "&Keep Text",
                "The text stays for the next image, for many parts with one print",
                {"Ctrl+K"},
                keepTextPicture(),
                true}),
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
      showGallery({"showGallery", "Galler&y", "The font's samples as pictures", {"Ctrl+G"}, {}, true}),
      freeze({"freeze",
              "Free&ze or Show Live",
              "Keep the camera's picture as an image, or show it live",
              {"F8"}}),
      viewGraphical({"viewGraphical",
                     "&Graphical",
                     screen.overview.tlbChars.button("Graphical").toolTip(),
                     {"Ctrl+Shift+G"},
                     {},
                     true}),
      viewNumeric({"viewNumeric",
                   "&Numeric",
                   screen.overview.tlbChars.button("Numeric").toolTip(),
                   {"Ctrl+Shift+N"},
                   {},
                   true}),
      viewArray({"viewArray", "&Array", screen.overview.tlbChars.button("Array").toolTip()}),
      viewLog(
          {"viewLog", "&Log", screen.overview.tlbChars.button("Log").toolTip(), {"Ctrl+Shift+L"}, {}, true}),
      themeSystem({"themeSystem", "&System", "The colours of the desktop", {}, {}, true}),
      themeLight({"themeLight", "&Light", "Dark on light", {}, {}, true}),
      themeDark({"themeDark", "&Dark", "Light on dark", {}, {}, true}),
      theme({"theme", "&Theme", "The colours of the window"}, {&themeSystem, &themeLight, &themeDark}),
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
      fontNew({"fontNew", "&New Font...", "Make a font and take it to the screen", {"Ctrl+N"}}),
      fontSelect({"fontSelect", "Select &Font...", screen.font.cmdSelectFont.toolTip(), {"Ctrl+F"}}),
      fontInclude({"fontInclude", "&Include", screen.sample.cmdInclude.toolTip()}),
      includeLabelled({"includeLabelled",
                       "Include All La&belled",
                       "Include every opened image that has a label and is not in the font yet",
                       {"Ctrl+Shift+I"}}),
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
      menus_{{"&File",
              {&openImages, &openFolder, &openRecent, nullptr, &watchFolder, &camera, nullptr, &openLabels,
               &saveLabels, nullptr, &closeImage, &closeAll, nullptr, &quit}},
             {"&Edit", {&undo, &redo, nullptr, &paste, nullptr, &keepText}},
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
               &readAgain,
               nullptr,
               &freeze}},
             {"&View",
              {&viewGraphical, &viewNumeric, &viewArray, nullptr, &viewLog, nullptr, &showGallery, nullptr,
               &theme}},
             {"F&ont",
              {&fontNew, &fontSelect, &fontInclude, &includeLabelled, &fontLearn, &fontStop, &fontSave,
               &fontRevert, nullptr, &fontSaveCopy, &fontRestore, nullptr, &readAll, &fontAccuracy}},
             {"&Help", {&guide, &keys, nullptr, &about}}},
      toolbar_{&previous,   &next,   nullptr, &zoomOut,           &zoomIn, &fit,
               &actualSize, nullptr, &region, &correctCharacters, nullptr, &keepText} {
    bind(fontInclude, screen.sample.cmdInclude);
    bind(fontLearn, screen.train.cmdTrain);
    bind(fontStop, screen.train.cmdStop);
    bind(fontRevert, screen.train.cmdRevert);
    bindViews(screen);
}

void WindowActions::bind(Action& action, ui::Button& button) {
    action.setEnabled(button.enabled());
    connections_.push_back(button.changed.connect([&action, &button](ui::Change change) {
        if (change == ui::Change::Enabled) action.setEnabled(button.enabled());
    }));
    action.triggered.subscribe([&button] { button.press(); });
}

void WindowActions::bindViews(screen::Screen& screen) {
    ui::Toolbar& bar = screen.overview.tlbChars;
    for (const auto& [action, key] : {std::pair{&viewGraphical, "Graphical"},
                                      {&viewNumeric, "Numeric"},
                                      {&viewArray, "Array"},
                                      {&viewLog, "Log"}})
        action->triggered.subscribe([&button = bar.button(key)] { button.press(); });
    const auto show = [this, &screen, &bar] {
        viewGraphical.setChecked(screen.overview.fraChar.visible());
        viewNumeric.setChecked(!screen.overview.fraChar.visible());
        viewLog.setChecked(bar.button("Log").pressed());
    };
    connections_.push_back(screen.overview.fraChar.changed.connect([show](ui::Change) { show(); }));
    connections_.push_back(bar.changed.connect([show](ui::Change) { show(); }));
    show();
}

Action& WindowActions::find(std::string_view name) const {
    for (const ActionMenu& menu : menus_)
        if (Action* action = found(menu.entries, name)) return *action;
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
        {"Enter", "include the text and go on, but first to each character in doubt"},
        {"Ctrl+N, Ctrl+F", "new font, select a font"},
        {"Ctrl+Shift+B, Ctrl+Shift+S", "open labels, save labels"},
        {"Ctrl+Shift+I", "include all labelled images"},
        {"Ctrl+K", "keep the text for the next image"},
        {"Ctrl+L, Ctrl+S", "learn, save the font"},
        {"Ctrl+Z, Ctrl+Y", "undo, redo, but where text is typed"},
        {"F8", "freeze the camera's picture, show it live"},
        {"Ctrl+V", "open the image or the files of the clipboard"},
        {"Ctrl+Shift+G, Ctrl+Shift+N", "characters as cells, samples as a table"},
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
