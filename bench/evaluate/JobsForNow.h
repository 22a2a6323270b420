// A jobs folder that goes when the measurement ends.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <system_error>

namespace dravik {

struct JobsForNow {
    std::filesystem::path path =
        std::filesystem::temp_directory_path() /
        ("dravik-evaluate-" + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));

    JobsForNow() = default;
    ~JobsForNow() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    JobsForNow(const JobsForNow&) = delete;
    JobsForNow& operator=(const JobsForNow&) = delete;
};

}  // namespace dravik
