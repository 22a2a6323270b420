// The image files and folders that the operator opened last, the newest first, kept from one run to the next.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "trainer/window/WindowSystem.h"

namespace dravik::trainer {

class RecentPaths {
  public:
    static constexpr std::size_t kMost = 9;

    // The system outlives this object.
    explicit RecentPaths(WindowSystem& system);

    const std::vector<std::string>& paths() const noexcept { return paths_; }
    // Of several files of one folder the folder is remembered. Paths that do not exist are not.
    void add(const std::vector<std::string>& opened);
    void remove(const std::string& path);

  private:
    void keep();

    WindowSystem& system_;
    std::vector<std::string> paths_;
};

// At most so many characters: the middle of a longer path is left out.
std::string shortPath(const std::string& path, std::size_t most);

}  // namespace dravik::trainer
