#include "screen/inspection/dlgCharArray.h"

#include <algorithm>
#include <utility>

#include "screen/context/Pictures.h"
#include "tool/Samples.h"

namespace dravik::screen {
namespace {

constexpr std::size_t kColumns = 7;
constexpr int kCellSize = 600;

class Choosing {
  public:
    explicit Choosing(bool& flag) : flag_(flag) { flag_ = true; }
    Choosing(const Choosing&) = delete;
    Choosing& operator=(const Choosing&) = delete;
    ~Choosing() { flag_ = false; }

  private:
    bool& flag_;
};

}  // namespace

dlgCharArray::dlgCharArray(TraceLog& log, ui::Platform& platform)
    : ui::Form("dlgCharArray", "Character Array"),
      procedures_(log, [&log, &platform](std::string_view source, const Failure& failure) {
          log.trace("# dlgCharArray error: " + failure.description());
          platform.messageBox({"Error " + std::to_string(failure.number()) + " " + failure.description(),
                               "Error in " + std::string(source) + " of dlgCharArray"});
      }) {
    tlbArray.add("Char", "Char", ui::ToolButton::Style::Check, pictures::array())
        .setToolTip("View the character's feature array");
    tlbArray.add("StdDev", "StdDev", ui::ToolButton::Style::Check, pictures::deviation())
        .setToolTip("View the standard deviation of each feature");
    cboChar.setAccessibleName("Character");
    cboChar.setToolTip("Character to view");

    std::vector<std::vector<ui::Layout>> cells(kColumns);
    for (std::size_t i = 0; i < tool::kFeatureCount; ++i) {
        lblCell.push_back(std::make_unique<ui::Label>("lblCell(" + std::to_string(i) + ")"));
        lblCell[i]->setCell(true);
        lblCell[i]->setUsesMnemonic(false);
        lblCell[i]->setAlignment(ui::Label::Alignment::Center);
        cells[i / kColumns].push_back(ui::item(*lblCell[i]).stretched().atLeast(kCellSize, kCellSize));
        setCell(i, "");
    }
    setLayout(ui::column({
        ui::row({ui::item(tlbArray), ui::item(cboChar).atLeast(900), ui::space()}),
        ui::table(std::move(cells)).withColumns(std::vector<int>(kColumns, 1)).stretched(),
        ui::item(lblMessage),
    }));
    lblMessage.setUsesMnemonic(false);
    lblMessage.setVisible(false);
    resizable = true;

    loading.subscribe([this] { procedures_.run("dlgCharArray.Form_Load", "Form_Load", [] {}); });
    cboChar.click.subscribe([this] { cboChar_Click(); });
    tlbArray.buttonClick.subscribe([this](ui::ToolButton& button) { tlbArray_ButtonClick(button); });
}

void dlgCharArray::SetMode(std::int16_t mode) {
    procedures_.run("dlgCharArray.SetMode", "SetMode", [&] {
        if (mode != kCharArrayMode && mode != kStdDevMode) return;
        mode_ = mode;
        modeSet_ = true;
        showModeButtons();
        setCaption((mode == kCharArrayMode ? "Character Array for " : "Standard Dev Array for ") +
                   character_);
    });
}

void dlgCharArray::SetCharacter(const std::string& character, const std::vector<std::string>* FontArray,
                                std::int16_t mode) {
    procedures_.run("dlgCharArray.SetCharacter(" + character + ")", "SetCharacter", [&] {
        character_ = character;
        if (!FontArray) return procedures_.trace("IsArray(FontArray) = FALSE");
        if (FontArray->empty()) return procedures_.trace("IsEmpty(FontArray) = TRUE");
        if (FontArray->size() == 1) {
            setMessage("The font has one character only: nothing can be chosen here");
            return procedures_.trace("UBound(FontArray) = 0");
        }
        const Choosing choosing(choosing_);
        cboChar.setItems(*FontArray);
        SetMode(mode);
        const auto found = std::find(FontArray->begin(), FontArray->end(), character);
        if (found != FontArray->end()) cboChar.setListIndex(static_cast<int>(found - FontArray->begin()));
    });
}

void dlgCharArray::setCell(std::size_t index, const std::string& caption) {
    auto& cell = *lblCell.at(index);
    cell.setCaption(caption);
    cell.setAccessibleName("Row " + std::to_string(index / kColumns + 1) + ", column " +
                           std::to_string(index % kColumns + 1) + ": " + caption);
}

void dlgCharArray::shadeCell(std::size_t index, std::int16_t value) {
    if (value < 0) throw Failure(RuntimeError::InvalidProcedureCall);
    const int grey = std::min<int>(value, 255);
    auto& cell = *lblCell.at(index);
    cell.setBackColor(ui::rgb(grey, grey, grey));
    cell.setForeColor(value >= 128 ? ui::rgb(0, 0, 0) : ui::rgb(255, 255, 255));
}

void dlgCharArray::cboChar_Click() {
    if (choosing_) return;
    procedures_.run("dlgCharArray.cboChar_Click", "cboChar_Click", [this] {
        if (cboChar.text() != character_) SetArray(cboChar.text(), mode_);
    });
}

void dlgCharArray::tlbArray_ButtonClick(const ui::ToolButton& button) {
    procedures_.run("dlgCharArray.tlbArray_ButtonClick", "tlbArray_ButtonClick", [&] {
        // Nothing may come of it, and the buttons tell what is shown.
        showModeButtons();
        SetArray(cboChar.text(), button.key == "StdDev" ? kStdDevMode : kCharArrayMode);
    });
}

void dlgCharArray::showModeButtons() {
    tlbArray.button("Char").setPressed(modeSet_ && mode_ == kCharArrayMode);
    tlbArray.button("StdDev").setPressed(modeSet_ && mode_ == kStdDevMode);
}

void dlgCharArray::setMessage(const std::string& text) {
    lblMessage.setCaption(text);
    lblMessage.setToolTip(text);
    lblMessage.setVisible(!text.empty());
}

}  // namespace dravik::screen
