// A jobs folder of its own for one test, with the trace counter reset and tracing switched off at the end;
// reads back what was traced.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "base/JobFolder.h"
#include "support/modGlobals.h"

namespace dravik::test {

class TracedJobs {
  public:
    TracedJobs() {
        static int serial = 0;
        std::random_device random;
        path_ = std::filesystem::temp_directory_path() /
                ("dravik-jobs-" + std::to_string(random()) + "-" + std::to_string(++serial));
        std::filesystem::create_directories(path_);
        g_lLogEntry = 0;
    }
    TracedJobs(const TracedJobs&) = delete;
    TracedJobs& operator=(const TracedJobs&) = delete;
    ~TracedJobs() {
        g_bTrace = false;
        g_lLogEntry = 0;
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    JobFolder folder() const { return JobFolder(path_.string()); }

    // The entry texts of the log in order, without the header.
    std::vector<std::string> entries() const {
        std::vector<std::string> result;
        std::ifstream in(folder().traceLog(), std::ios::binary);
        for (std::string line; std::getline(in, line);) {
            if (line.ends_with('\r')) line.pop_back();
            if (!line.starts_with('#')) result.push_back(fieldAfterThreeTabs(line));
        }
        return result;
    }

  private:
    static std::string fieldAfterThreeTabs(const std::string& line) {
        std::size_t at = 0;
        for (int i = 0; i < 3; ++i) {
            at = line.find('\t', at);
            if (at == std::string::npos) return line;
            ++at;
        }
        return line.substr(at);
    }

    std::filesystem::path path_;
};

}  // namespace dravik::test
