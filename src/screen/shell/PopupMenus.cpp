#include "screen/shell/PopupMenus.h"

#include "base/Conversions.h"

namespace dravik::screen {
namespace {

constexpr std::int16_t kGridView = 2;

std::string mouseText(const ui::MouseEvent& event) {
    return std::to_string(event.button) + "," + std::to_string(event.shift) + "," + numberText(event.x) +
           "," + numberText(event.y) + ")";
}

const char* pickName(MenuPick pick) {
    switch (pick) {
        case MenuPick::CharacterArray:
            return "CharacterArray";
        case MenuPick::CharacterStdDev:
            return "CharacterStdDev";
        case MenuPick::CharacterDelete:
            return "CharacterDelete";
        case MenuPick::CharacterExclude:
            return "CharacterExclude";
        case MenuPick::CharacterHistogram:
            return "CharacterHistogram";
        case MenuPick::FontHistogram:
            return "FontHistogram";
        default:
            return nullptr;
    }
}

bool inFont(const ui::Label& cell) {
    return cell.backColor() != ui::kScrollBarColor;
}

}  // namespace

void PopupMenus::lblChar_MouseDown(int Index, const ui::MouseEvent& event) {
    const std::string entry = "Dravikdlg.lblChar_MouseDown(" + std::to_string(Index) + "," + mouseText(event);
    context_.procedures.run(entry, "lblChar_MouseDown", [&] {
        context_.errors.UserMsg("");
        ui::Label& cell = *context_.screen.overview.lblChar.at(static_cast<std::size_t>(Index));
        if (!inFont(cell) || event.button != ui::kRightButton) return;
        const std::string& character = cell.caption();
        dlgContextPopup popup(context_.log);
        popup.setCharacter(character);
        popup.ShowFontPopup(false);
        popup.ShowGridItems(false);
        popup.ShowCharHistogram(counts_.NumberTrained(character) >= 2);
        popup.ShowFullHistogram(true);
        popup.ShowDeleteTrain(counts_.NumberTrained(character) >= 1);
        popup.ShowExcludeChar(true);
        popup.ShowCharArray(true);
        context_.procedures.trace("DravikDlg.lblChar_MouseDown: PopupMenu");
        act(popup.popUp(context_.platform, popup.mnuMain, cell, event.x, event.y), cell);
    });
}

void PopupMenus::act(MenuPick pick, ui::Label& cell) {
    const std::string& character = cell.caption();
    if (const char* name = pickName(pick))
        context_.procedures.trace("DravikDlg.lblChar_MouseDown: UserSelection = " + std::string(name));
    switch (pick) {
        case MenuPick::CharacterArray:
            if (inFont(cell)) forms_.DisplayCharArray(character, false);
            break;
        case MenuPick::CharacterStdDev:
            if (inFont(cell)) forms_.DisplayCharArray(character, true);
            break;
        case MenuPick::CharacterHistogram:
            if (!inFont(cell)) break;
            if (counts_.NumberTrained(character) == 1) {
                context_.errors.UserMsg("Only 1 sample. No histogram available.");
            } else {
                forms_.DisplayCharHistogram(character, kCharacterDistance);
            }
            break;
        case MenuPick::FontHistogram:
            forms_.DisplayCharHistogram(character, kFontHistogram);
            break;
        case MenuPick::CharacterExclude:
            excludeCharacter(character);
            break;
        case MenuPick::CharacterDelete:
            deleteCharacter(character);
            break;
        default:
            break;
    }
}

void PopupMenus::excludeCharacter(const std::string& character) {
    if (!confirmed("Are you certain you want to exclude the character " + character + " from the font?",
                   character))
        return;
    ActScope act(context_, OperatorAct::Kind::Exclusion, character);
    deletion_.DeleteChar(kDeleteCommitted, character);
    const auto set = deletion_.FontWithoutChar(character);
    if (!set) return;
    context_.tool->SetCharacterSet(*set);
    act.characterSet(*set);
    overview_.UpdateCharDisplay();
    context_.screen.train.cmdTrain.setFocus();
    context_.errors.UserMsg("Excluded " + character + ". Retrain required.");
}

void PopupMenus::deleteCharacter(const std::string& character) {
    if (!confirmed("Are you certain you want to delete all samples for the character " + character + "?",
                   character))
        return;
    const ActScope act(context_, OperatorAct::Kind::DeletionOfCharacter, character);
    deletion_.DeleteChar(kDeleteCommitted, character);
    context_.screen.train.cmdTrain.setFocus();
    overview_.UpdateCharDisplay();
    context_.errors.UserMsg("Deleted character " + character + ". Retrain to update display.");
}

bool PopupMenus::confirmed(const std::string& question, const std::string& character) {
    return context_.platform.messageBox({question, "Delete Samples for " + character,
                                         ui::MessageBox::Buttons::YesNo}) == ui::Answer::Yes;
}

void PopupMenus::grid_MouseDown(const ui::MouseEvent& event) {
    context_.procedures.run("Dravikdlg.grid_MoustDown(" + mouseText(event), "grid_MouseDown", [&] {
        if (event.button == ui::kLeftButton) grid_.sortByHeading();
        if (event.button != ui::kRightButton) return;
        context_.errors.UserMsg("");
        dlgContextPopup popup(context_.log);
        popup.ShowFontPopup(false);
        popup.ShowGridItems(true);
        popup.ShowCharHistogram(false);
        popup.ShowFullHistogram(true);
        popup.ShowDeleteTrain(false);
        popup.ShowExcludeChar(false);
        popup.ShowCharArray(false);
        popup.CurrentView = kGridView;
        switch (
            popup.popUp(context_.platform, popup.mnuMain, context_.screen.numeric.grid, event.x, event.y)) {
            case MenuPick::GridCopy:
                grid_.copySelection();
                break;
            case MenuPick::GridDelete:
                grid_.deleteSelection();
                break;
            case MenuPick::FontHistogram:
                overview_.SetFontArray();
                forms_.DisplayCharHistogram(overview_.firstOfFontArray(), kFontHistogram);
                break;
            default:
                break;
        }
    });
}

}  // namespace dravik::screen
