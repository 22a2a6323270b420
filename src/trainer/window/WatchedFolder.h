// A folder into which another program, as that of a camera, writes images: tells of each one once it is
// completely written. Looked at by polling, beside the window, so that it works on every system and on
// network drives too.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "engine/image/ImageDecoder.h"
#include "trainer/NewestWork.h"
#include "ui/Timer.h"

namespace dravik::trainer {

class WatchedFolder {
  public:
    static constexpr int kInterval = 500;  // milliseconds between two looks

    explicit WatchedFolder(engine::ImageDecoder decoder);

    // From now on; what is in the folder already is not told of. Raises Path not found (76) where there is no
    // such folder.
    void watch(const std::string& folder);
    void stop();
    // "" when none is watched.
    const std::string& folder() const noexcept { return folder_; }
    // It could be read when it was looked at last.
    bool isThere() const noexcept { return there_; }
    // Ticks while a folder is watched.
    ui::Timer& timer() noexcept { return timer_; }

    // New images, completely written: what two looks find unchanged and can be decoded, and what cannot but
    // is left alone for long. In order of name.
    std::function<void(const std::vector<std::string>& paths)> arrived;
    // The folder has gone, or is back.
    std::function<void()> thereChanged;

  private:
    struct File {
        std::uint64_t size = 0;
        std::int64_t time = 0;
        int unchanged = 0;  // looks
        bool told = false;
    };
    // What is known of the files; given to each look and back.
    struct Seen {
        std::map<std::string, File> files;  // by name
        std::vector<std::string> complete;  // paths, new with this look
        bool there = true;
    };

    static Seen look(Seen seen, const std::string& folder, const engine::ImageDecoder& decoder,
                     const std::stop_token& stop);
    void tick();

    const engine::ImageDecoder decoder_;
    std::string folder_;
    bool there_ = false;
    Seen seen_;
    NewestWork looking_;
    ui::Timer timer_{"tmrWatchedFolder", kInterval};
    ui::Connection ticked_;
};

}  // namespace dravik::trainer
