// The window with the platform and the trainer that it shows, made and ended in the order in which they need
// each other.
#pragma once

#include "windows/app/MainWindow.h"
// Behind the Windows headers
#include <optional>

#include "base/JobFolder.h"
#include "trainer/Trainer.h"
#include "windows/com/WicImage.h"
#include "windows/win32/Win32Platform.h"

namespace dravik::app {

class Program {
  public:
    // The window is still hidden. COM is initialized on the thread. With `remembersFont` the font of the last
    // session is loaded at once.
    Program(Settings settings, const JobFolder& jobs, bool remembersFont) : window_(std::move(settings)) {
        platform_.owner = [this] { return window_.window(); };
        trainer_.emplace(platform_, jobs, com::decodeImageFileByWic, remembersFont);
        window_.fill(*trainer_, platform_);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program() { window_.clear(); }

    MainWindow& window() noexcept { return window_; }
    trainer::Trainer& trainer() noexcept { return *trainer_; }

  private:
    MainWindow window_;
    win32::Win32Platform platform_;
    std::optional<trainer::Trainer> trainer_;
};

}  // namespace dravik::app
