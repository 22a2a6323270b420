// The viewer of a character's 49 features: a field of 7 x 7 grey cells that shows the scaled values or their
// standard deviations. The form chooses the character and the mode; the control fills the cells.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "support/Procedure.h"
#include "widgets/Form.h"
#include "widgets/Label.h"
#include "widgets/ListControls.h"
#include "widgets/Toolbar.h"

namespace dravik {

constexpr std::int16_t kCharArrayMode = 0;
constexpr std::int16_t kStdDevMode = 1;

class dlgCharArray : public Form {
  public:
    explicit dlgCharArray(TraceLog& log);

    Toolbar tlbArray{"tlbArray"};
    ComboBox cboChar{"cboChar"};
    // 49 cells, row by row, named "lblCell(0)" on.
    std::vector<std::unique_ptr<Label>> lblCell;

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

    // Character, mode: the operator wants to see another character or the other array.
    Signal<std::string, std::int16_t> SetArray;

  private:
    void cboChar_Click();
    void tlbArray_ButtonClick(const ToolButton& button);

    Procedures procedures_;
    std::string character_;
    std::int16_t mode_ = kCharArrayMode;
    bool choosing_ = false;  // the chooser is being filled, not used
};

}  // namespace dravik
