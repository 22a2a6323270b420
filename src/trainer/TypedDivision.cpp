#include "trainer/TypedDivision.h"

#include <memory>
#include <optional>
#include <utility>

#include "base/Text.h"
#include "engine/scene/GivenText.h"

namespace dravik::trainer {

void TypedDivision::imageChanged() {
    cancel();
    text_.clear();
}

void TypedDivision::decide(const std::string& text) {
    if (adjustments_.isCorrected()) return cancel();
    if (std::exchange(text_, text) == text) return;
    cancel();
    text_ = text;
    const std::shared_ptr<const engine::Scene> found = tool_.foundScene();
    std::vector<std::string> typed = characters(text);
    if (typed.empty() || typed.size() == found->characters()) return take(nullptr);
    work_.start([this, found, typed = std::move(typed)](const std::stop_token& stop) -> NewestWork::Delivery {
        std::optional<engine::Scene> divided = engine::sceneWithText(*found, typed, stop);
        return [this, division = divided ? std::make_shared<const engine::Scene>(*std::move(divided))
                                         : nullptr] { take(division); };
    });
}

void TypedDivision::deliver(std::chrono::milliseconds patience) {
    try {
        work_.deliver(patience);
    } catch (...) {
        cancel();
    }
}

void TypedDivision::finish() {
    while (busy()) deliver(std::chrono::seconds(1));
}

void TypedDivision::cancel() {
    if (busy()) text_.clear();
    work_.cancel();
}

void TypedDivision::take(std::shared_ptr<const engine::Scene> division) {
    if (!division && !tool_.division()) return;
    tool_.setDivision(std::move(division));
    adjustments_.charactersDivided();
    changed();
}

}  // namespace dravik::trainer
