#include "base/JobFolder.h"

#include <cstdlib>
#include <utility>

namespace dravik {
namespace {

#ifdef _WIN32
constexpr char kSeparator = '\\';

std::string standardFolder() {
    return "C:\\Tamlux\\Jobs\\";
}
#else
constexpr char kSeparator = '/';

std::string standardFolder() {
    if (const char* data = std::getenv("XDG_DATA_HOME"); data && *data)
        return std::string(data) + "/tamlux/Jobs/";
    const char* home = std::getenv("HOME");
    return std::string(home && *home ? home : ".") + "/.local/share/tamlux/Jobs/";
}
#endif

}  // namespace

JobFolder::JobFolder() : folder_(standardFolder()) {}

JobFolder::JobFolder(std::string folder) : folder_(std::move(folder)) {
    if (folder_.empty()) folder_ = ".";
    if (folder_.back() != kSeparator && folder_.back() != '/') folder_ += kSeparator;
}

std::string JobFolder::fontsFolder() const {
    return folder_ + "Fonts" + kSeparator;
}

std::string JobFolder::fontFile(const std::string& fontName) const {
    return fontsFolder() + fontName + ".nnd";
}

std::string JobFolder::traceLog() const {
    return folder_ + "dravik_log.txt";
}

std::string JobFolder::uncommittedDump() const {
    return folder_ + "checknew.csv";
}

}  // namespace dravik
