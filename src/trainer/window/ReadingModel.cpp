#include "trainer/window/ReadingModel.h"

#include <algorithm>
#include <cmath>

namespace dravik::trainer {
namespace {

constexpr std::size_t kMostLinesAtOnce = 3;

ReadingSpan spanOf(const engine::ReadCharacter& read) {
    ReadingSpan span;
    span.text = engine::shownCharacter(read);
    span.weak = read.confidence < kWeakConfidence;
    const char* doubt = span.text != read.character ? " (not taken)" : span.weak ? " (weak)" : "";
    span.tip = read.character + ": " + std::to_string(std::lround(read.confidence * 100)) + " % sure" + doubt;
    return span;
}

}  // namespace

void ReadingModel::setReading(const Reading& reading) {
    lines_.clear();
    note_ = reading.note;
    if (reading.available)
        for (const auto& line : reading.lines) {
            auto& spans = lines_.emplace_back();
            for (const engine::ReadCharacter& read : line) spans.push_back(spanOf(read));
        }
    changed();
}

int ReadingModel::shownLines() const noexcept {
    return static_cast<int>(std::clamp<std::size_t>(lines_.size(), 1, kMostLinesAtOnce));
}

std::string ReadingModel::text(const std::string& lineEnd) const {
    if (lines_.empty()) return note_;
    std::string all;
    for (const auto& line : lines_) {
        if (&line != &lines_.front()) all += lineEnd;
        for (const ReadingSpan& span : line) all += span.text;
    }
    return all;
}

std::string ReadingModel::description() const {
    if (lines_.empty()) return {};
    std::ptrdiff_t weak = 0;
    for (const auto& line : lines_)
        weak += std::count_if(line.begin(), line.end(), [](const ReadingSpan& span) { return span.weak; });
    if (weak == 0) return "No weak characters";
    return std::to_string(weak) + (weak == 1 ? " weak character" : " weak characters");
}

}  // namespace dravik::trainer
