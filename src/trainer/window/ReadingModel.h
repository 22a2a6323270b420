// What the current font reads in the current image, as it is shown: lines of characters, each with how sure
// the font is, or a note why there is nothing to read; and what a screen reader is told of it.
#pragma once

#include <string>
#include <vector>

#include "trainer/Trainer.h"
#include "ui/Signal.h"

namespace dravik::trainer {

constexpr char kReadingCaption[] = "The font &reads:";
constexpr char kReadingName[] = "Text read in the image";  // for screen readers
constexpr char kCheckTip[] = "Samples of the font read by fonts that were taught without them";

struct ReadingSpan {
    std::string text;
    std::string tip;
    bool weak = false;  // underlined with a wave, in the warning colour
};

class ReadingModel {
  public:
    void setReading(const Reading& reading);

    // None when there is just the note.
    const std::vector<std::vector<ReadingSpan>>& lines() const noexcept { return lines_; }
    const std::string& note() const noexcept { return note_; }
    // How many lines the view is high.
    int shownLines() const noexcept;
    // The lines with `lineEnd` between them, else the note.
    std::string text(const std::string& lineEnd = "\n") const;
    // How many characters are weak; "" when there is nothing to read.
    std::string description() const;

    ui::Signal<> changed;

  private:
    std::vector<std::vector<ReadingSpan>> lines_;
    std::string note_;
};

}  // namespace dravik::trainer
