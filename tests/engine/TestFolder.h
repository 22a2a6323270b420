// A fresh folder that goes with the test.
#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace dravik {

class TestFolder {
  public:
    TestFolder() {
        std::random_device random;
        path_ = std::filesystem::temp_directory_path() /
                ("dravik-" + std::to_string(random()) + "-" + std::to_string(random()));
        std::filesystem::create_directories(path_);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    std::string path(const std::string& name = {}) const { return (path_ / name).string(); }

  private:
    std::filesystem::path path_;
};

}  // namespace dravik
