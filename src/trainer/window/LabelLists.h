// File > Open Labels and Save Labels, Font > Include All Labelled: the texts of many images in one go.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "trainer/BatchInclude.h"
#include "trainer/Trainer.h"
#include "trainer/window/WindowActions.h"
#include "trainer/window/WindowSystem.h"
#include "ui/Platform.h"
#include "ui/Signal.h"

namespace dravik::trainer {

class LabelLists {
  public:
    // All outlive this object; `tell` takes what is wrong with a list, in lines.
    LabelLists(Trainer& trainer, ui::Platform& platform, WindowSystem& system, WindowActions& actions,
               std::function<void(const std::vector<std::string>&)> tell);

    // Images are being included.
    bool isIncluding() const noexcept { return batch_.goesOn(); }
    void stopIncluding() { batch_.stop(); }
    ui::Timer& timer() noexcept { return batch_.timer(); }
    // isIncluding().
    ui::Signal<> changed;

  private:
    void open();
    void save();
    void includeAll();
    void showRefused();

    Trainer& trainer_;
    ui::Platform& platform_;
    WindowSystem& system_;
    const std::function<void(const std::vector<std::string>&)> tell_;
    BatchInclude batch_;
    std::vector<ui::Connection> connections_;
};

}  // namespace dravik::trainer
