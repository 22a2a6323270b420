#include "engine/image/RunLabels.h"

#include <algorithm>

namespace dravik::engine {

const std::vector<RunLabels::Labelled>& RunLabels::add(const std::uint8_t* row, int width) {
    above_.swap(here_);
    here_.clear();
    std::size_t first = 0;
    forInkRuns(row, width, [&](int x0, int x1) {
        constexpr std::uint32_t kNone = ~std::uint32_t{0};
        std::uint32_t label = kNone;
        while (first < above_.size() && above_[first].x1 < x0) ++first;
        for (std::size_t other = first; other < above_.size() && above_[other].x0 <= x1; ++other) {
            const std::uint32_t touched = same(above_[other].label);
            if (label == kNone || label == touched) {
                label = touched;
                continue;
            }
            same_[std::max(label, touched)] = std::min(label, touched);
            label = std::min(label, touched);
        }
        if (label == kNone) {
            label = static_cast<std::uint32_t>(same_.size());
            same_.push_back(label);
        }
        here_.push_back({x0, x1, label});
    });
    return here_;
}

std::uint32_t RunLabels::same(std::uint32_t label) {
    while (same_[label] != label) {
        same_[label] = same_[same_[label]];
        label = same_[label];
    }
    return label;
}

}  // namespace dravik::engine
