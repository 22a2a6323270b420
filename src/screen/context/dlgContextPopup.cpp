#include "screen/context/dlgContextPopup.h"

namespace dravik::screen {

dlgContextPopup::dlgContextPopup(TraceLog& log) {
    add(mnuMain, "mnuMainGridCopy", "&Copy", MenuPick::GridCopy);
    add(mnuMain, "mnuMainGridDelete", "&Delete", MenuPick::GridDelete);
    add(mnuMain, "mnuMainBreak3", "-");
    add(mnuMain, "mnuMainCharacterShowArray", "Show Character &Array", MenuPick::CharacterArray);
    add(mnuMain, "mnuMainCharacterShowStdDev", "Show &StdDev Array", MenuPick::CharacterStdDev);
    add(mnuMain, "mnuMainBreak4", "-");
    add(mnuMain, "mnuMainCharHist", "Show &Histogram", MenuPick::CharacterHistogram);
    add(mnuMain, "mnuMainFontHist", "Show &Font Histogram", MenuPick::FontHistogram);
    add(mnuMain, "mnuMainBreak5", "-");
    add(mnuMain, "mnuMainCharacterDelete", "Delete &Training", MenuPick::CharacterDelete);
    add(mnuMain, "mnuMainCharacterExclude", "&Remove", MenuPick::CharacterExclude);

    add(mnuGrid, "mnuGridCopy", "Copy", MenuPick::GridCopy);
    add(mnuGrid, "mnuGridDelete", "Delete", MenuPick::GridDelete);
    add(mnuGrid, "mnuGridBreak1", "-");
    add(mnuGrid, "mnuGridShowGraphical", "Graphical Display");

    add(mnuCharacter, "mnuCharacterShowArray", "Show Array", MenuPick::CharacterArray);

    add(mnuHistogram, "mnuHistogramDelete", "Delete These Samples", MenuPick::HistogramDelete);
    add(mnuHistogram, "mnuHistogramShowChar", "Show Character Histogram", MenuPick::HistogramShowChar);

    log.trace("dlgContextPopup.Form_Initialize");
    ShowGridItems(false);
    ShowCharHistogram(false);
    ShowFullHistogram(false);
    ShowDeleteTrain(false);
    ShowExcludeChar(false);
    ShowFontPopup(false);
    ShowCharArray(true);
}

void dlgContextPopup::add(ui::PopupMenu& menu, const char* name, const char* caption, MenuPick pick) {
    auto& item = menu.add(name, caption);
    if (pick != MenuPick::None) item.click.subscribe([this, pick] { userSelection_ = pick; });
}

void dlgContextPopup::ShowGridItems(bool enabled) {
    mnuMain.item("mnuMainGridCopy").enabled = enabled;
    mnuMain.item("mnuMainGridDelete").enabled = enabled;
}

void dlgContextPopup::ShowCharHistogram(bool enabled) {
    mnuMain.item("mnuMainCharHist").enabled = enabled;
}

void dlgContextPopup::ShowFullHistogram(bool enabled) {
    mnuMain.item("mnuMainFontHist").enabled = enabled;
}

void dlgContextPopup::ShowDeleteTrain(bool enabled) {
    mnuMain.item("mnuMainCharacterDelete").enabled = enabled;
}

void dlgContextPopup::ShowExcludeChar(bool enabled) {
    mnuMain.item("mnuMainCharacterExclude").enabled = enabled;
}

void dlgContextPopup::ShowFontPopup(bool enabled) {
    mnuHistogram.item("mnuHistogramDelete").enabled = enabled;
    mnuHistogram.item("mnuHistogramShowChar").enabled = !enabled;
}

void dlgContextPopup::ShowCharArray(bool enabled) {
    mnuMain.item("mnuMainCharacterShowArray").enabled = enabled;
    mnuMain.item("mnuMainCharacterShowStdDev").enabled = enabled;
}

void dlgContextPopup::setCharacter(const std::string& character) {
    character_ = character;
    mnuMain.item("mnuMainCharacterShowArray").caption = "Show Character Array for " + character;
    mnuMain.item("mnuMainCharacterShowStdDev").caption = "Show StdDev Array for " + character;
    mnuMain.item("mnuMainCharacterDelete").caption = "Delete Training for " + character;
    mnuMain.item("mnuMainCharacterExclude").caption = "Remove " + character + " from Font";
    mnuMain.item("mnuMainCharHist").caption = "Show Histogram for " + character;
}

MenuPick dlgContextPopup::popUp(ui::Platform& platform, ui::PopupMenu& menu, ui::Widget& at, double x,
                                double y) {
    platform.popUpMenu(menu, at, x, y);
    return userSelection_;
}

}  // namespace dravik::screen
