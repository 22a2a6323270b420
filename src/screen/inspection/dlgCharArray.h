// The viewer of a character's 49 features: a field of 7 x 7 grey cells that shows the scaled values or their
// standard deviations. The form chooses the character and the mode; the control fills the cells.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "screen/context/Procedure.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/ListControls.h"
#include "ui/Toolbar.h"

namespace dravik::screen {

constexpr std::int16_t kCharArrayMode = 0;
constexpr std::int16_t kStdDevMode = 1;

class dlgCharArray : public ui::Form {
  public:
    dlgCharArray(TraceLog& log, ui::Platform& platform);

    ui::Toolbar tlbArray{"tlbArray"};
    ui::ComboBox cboChar{"cboChar"};
    // 49 cells, row by row, named "lblCell(0)" on.
    std::vector<std::unique_ptr<ui::Label>> lblCell;

    // kCharArrayMode or kStdDevMode; anything else changes nothing.
    void SetMode(std::int16_t mode);
    // Fills the chooser from the font array (nothing when there is none) and chooses the character. An array
    // of fewer than two characters is traced and changes nothing but the character.
    void SetCharacter(const std::string& character, const std::vector<std::string>* FontArray,
                      std::int16_t mode);

    const std::string& character() const noexcept { return character_; }
    std::int16_t mode() const noexcept { return mode_; }

    void setCell(std::size_t index, const std::string& caption);
    // 0 black to 255 white, with a text colour that stands out; larger values are cut, negative ones raise
    // Invalid procedure call (5).
    void shadeCell(std::size_t index, std::int16_t value);

    // Says why something is not shown, below the cells; "" takes that back.
    void setMessage(const std::string& text);

    // Character, mode: the operator wants to see another character or the other array.
    ui::Signal<std::string, std::int16_t> SetArray;

  private:
    void cboChar_Click();
    void tlbArray_ButtonClick(const ui::ToolButton& button);
    void showModeButtons();

    Procedures procedures_;
    std::string character_;
    std::int16_t mode_ = kCharArrayMode;
    bool modeSet_ = false;
    ui::Label lblMessage{"lblMessage"};
    bool choosing_ = false;  // the chooser is being filled, not used
};

}  // namespace dravik::screen
