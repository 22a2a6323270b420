#include <cstdlib>

#include "base/JobFolder.h"

namespace dravik {
namespace {

std::string dataFolder() {
    if (const char* data = std::getenv("XDG_DATA_HOME"); data && *data) return data;
    const char* home = std::getenv("HOME");
    return std::string(home && *home ? home : ".") + "/.local/share";
}

}  // namespace

JobFolder::JobFolder() : folder_(dataFolder() + "/tamlux/Jobs/") {}

}  // namespace dravik
