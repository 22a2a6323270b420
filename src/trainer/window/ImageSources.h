// Where the images of the window come from: files and folders that are chosen, dropped or opened again, the
// clipboard, and a folder into which another program writes them. Says what became of them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/JobFolder.h"
#include "trainer/OpenedParts.h"
#include "trainer/window/PartStrip.h"
#include "trainer/window/RecentPaths.h"
#include "trainer/window/WatchedFolder.h"
#include "trainer/window/WindowActions.h"
#include "trainer/window/WindowSystem.h"

namespace dravik::trainer {

// A file for an image that is not one yet, in the jobs folder's Images: "pasted 2026-03-31 14.05.09.png".
// Makes the folder; raises what that raises.
std::string newImageFile(const JobFolder& jobs, const std::string& source);

class ImageSources {
  public:
    // How the operator is told: a notice beside the image, and problems, a line each, which stay until they
    // are dismissed.
    struct Words {
        std::function<void(const std::string&)> notice;
        std::function<void(const std::vector<std::string>&)> problems;
        std::function<void(const std::string&)> solved;  // that line is true no more
        // The operator has typed a text for the current image.
        std::function<bool()> isTyping;
    };

    // All outlive this object.
    ImageSources(OpenedParts& parts, PartStrip& strip, WindowActions& actions, WindowSystem& system,
                 const JobFolder& jobs, Words words);

    // Image files and folders.
    OpenResult open(const std::vector<std::string>& paths);
    // An image that the program itself has written; it becomes the current one.
    void openNew(const std::string& file);
    std::string newFile(const std::string& source) const { return newImageFile(jobs_, source); }
    ui::Timer& watchTimer() noexcept { return watched_.timer(); }

  private:
    void choose(FileQuestion question);
    void openRecent(std::size_t index);
    void paste();
    void watchOrStop();
    std::string goneText() const;
    void takeArrived(const std::vector<std::string>& paths);
    void showWatched();
    void showRecent();

    OpenedParts& parts_;
    PartStrip& strip_;
    WindowActions& actions_;
    WindowSystem& system_;
    const JobFolder& jobs_;
    const Words words_;
    RecentPaths recent_;
    WatchedFolder watched_;
};

// "17 images added, 3 were open already"; "" when there is nothing to say.
std::string openedText(const OpenResult& opened, bool hadImages);
}  // namespace dravik::trainer
