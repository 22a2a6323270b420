// Asks for the name of a new font and for the characters that it is to start with.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "screen/fonts/FontNameForm.h"
#include "tool/FontTool.h"

namespace dravik::screen {

class dlgFontNew : public FontNameForm {
  public:
    dlgFontNew(TraceLog& log, ui::Platform& platform);

    // The chosen characters in the order of the caption; empty when none or the empty set was chosen.
    tool::CharacterSet GetInitCharSet() const;

  private:
    void InitCharSet_Click(std::size_t index);
    bool mayBeTaken() override;

    ui::Frame Frame1{"Frame1", "Initial Character Set"};
    std::vector<std::unique_ptr<ui::OptionButton>> InitCharSet;  // by index; 0 is the empty set
    ui::Platform& platform_;
    std::string chosenSet_;
};

}  // namespace dravik::screen
