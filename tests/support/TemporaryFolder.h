// A fresh folder that goes with the object.
#pragma once

#include <random>
#include <string>

#include "base/Paths.h"

namespace dravik {

class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::random_device random;
        do {
            folder_ = std::filesystem::temp_directory_path() /
                      ("dravik-" + std::to_string(random()) + "-" + std::to_string(random()));
        } while (!std::filesystem::create_directories(folder_));
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    // The path of a file in it (UTF-8), of the folder itself without a name.
    std::string path(const std::string& name = {}) const {
        return fromPath(name.empty() ? folder_ : folder_ / toPath(name));
    }

  private:
    std::filesystem::path folder_;
};

}  // namespace dravik
