// Font > Accuracy Page: asks for a file, and writes the page to it once the font has been checked.
#pragma once

#include <string>

#include "trainer/Trainer.h"
#include "trainer/window/WindowSystem.h"
#include "ui/Signal.h"

namespace dravik::trainer {

class AccuracyPageFile {
  public:
    // Both outlive this object. It looks at the check behind whoever has subscribed to its timer before.
    AccuracyPageFile(Trainer& trainer, WindowSystem& system);

    void ask();

  private:
    void write();

    Trainer& trainer_;
    WindowSystem& system_;
    std::string file_;  // that waits for its check
    ui::Connection ticked_;
};

}  // namespace dravik::trainer
