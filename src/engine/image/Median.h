// The middle of some values.
#pragma once

#include <algorithm>
#include <vector>

namespace dravik::engine {

// The upper one of two middles; 0 of none.
inline float median(std::vector<float> values) {
    if (values.empty()) return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

}  // namespace dravik::engine
