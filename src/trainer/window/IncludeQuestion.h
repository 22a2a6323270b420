// Asked before an include: characters that look clearly like others than those that were typed.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "ui/Form.h"
#include "ui/Label.h"

namespace dravik::trainer {

struct Contradiction {
    std::size_t place = 0;  // in reading order, from 0
    std::string typed;
    std::string seen;
};

// "5th"
std::string ordinal(std::size_t place);
// "5th character: typed B, looks like 8"
std::string contradictionText(const Contradiction& one);

class IncludeQuestion : public ui::Form {
  public:
    explicit IncludeQuestion(const std::vector<Contradiction>& found);

    // The text is included as it is. False after Correct and Escape.
    bool includes() const noexcept { return includes_; }

  private:
    std::vector<std::unique_ptr<ui::Label>> lblFound;
    ui::Label lblQuestion{"lblQuestion", "A wrong label spoils the font. Include the text as it is?"};
    ui::Button cmdInclude{"cmdInclude", "&Include"};
    ui::Button CancelButton{"CancelButton", "&Correct"};
    bool includes_ = false;
};

}  // namespace dravik::trainer
