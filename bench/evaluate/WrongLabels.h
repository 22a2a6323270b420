// How many wrong labels are pointed out before an include by what is seen and by the font, and how many right
// ones are doubted.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "engine/embedded/EmbeddedTool.h"
#include "generate/Random.h"

namespace dravik {

class WrongLabels {
  public:
    // The image of the tool has as many characters as its text. The text is typed as it is, then with one
    // other character, with two neighbours swapped, and with one missing and another one too much; never with
    // look-alikes alone.
    void tryOut(engine::EmbeddedTool& tool, const std::vector<std::string>& text);
    void print() const;

  private:
    struct Kind {
        const char* name;
        int typed = 0;
        int found = 0;
    };

    Random random_{4711};
    int right_ = 0;
    int doubted_ = 0;
    std::array<Kind, 3> kinds_{{{"one other"}, {"two swapped"}, {"one missing, one too much"}}};
};

}  // namespace dravik
