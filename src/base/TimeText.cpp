#include "base/TimeText.h"

#include <array>
#include <ctime>

namespace dravik {

std::string localTimeText(std::chrono::system_clock::time_point time) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::array<char, 32> text{};
    const std::tm* local = std::localtime(&seconds);
    if (!local) return {};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", local)};
}

}  // namespace dravik
