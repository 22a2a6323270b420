#include "trainer/BatchInclude.h"

#include "base/Failure.h"
#include "base/Paths.h"

namespace dravik::trainer {

BatchInclude::BatchInclude(Trainer& trainer) : trainer_(trainer) {
    ticked_ = timer_.tick.connect([this] { step(); });
}

std::vector<std::string> BatchInclude::toInclude() const {
    std::vector<std::string> images;
    const OpenedParts& parts = trainer_.parts();
    for (int i = 0; i < parts.count(); ++i)
        if (trainer_.labelling().labels().text(parts.path(i)) &&
            trainer_.labelling().state(parts.path(i)) != PartState::Included)
            images.push_back(parts.path(i));
    return images;
}

void BatchInclude::start() {
    if (goesOn()) return;
    const auto images = toInclude();
    waiting_.assign(images.begin(), images.end());
    all_ = images.size();
    refused_.clear();
    isUp_ = false;
    timer_.setEnabled(true);
    started();
}

void BatchInclude::stop() {
    if (goesOn()) end();
}

void BatchInclude::end() {
    timer_.setEnabled(false);
    const std::size_t done = all_ - waiting_.size();
    waiting_.clear();
    trainer_.acts().say("Included " + std::to_string(done - refused_.size()) + " of " + std::to_string(all_) +
                        " labelled images" +
                        (refused_.empty() ? "" : ", refused " + std::to_string(refused_.size())));
    ended();
}

// One image at most, so that the window answers in between.
void BatchInclude::step() {
    if (waiting_.empty() || trainer_.isTraining()) return end();
    const std::string path = waiting_.front();
    try {
        OpenedParts& parts = trainer_.parts();
        if (!isUp_) {
            int index = 0;
            while (index < parts.count() && parts.path(index) != path) ++index;
            isUp_ = index < parts.count();
            if (isUp_)
                parts.setCurrent(index);
            else
                waiting_.pop_front();  // closed meanwhile
            return;
        }
        if (trainer_.isWorking()) return;
        waiting_.pop_front();
        isUp_ = false;
        const std::string reason = parts.current() >= 0 && parts.path(parts.current()) == path
                                       ? trainer_.includeAsLabelled()
                                       : "another image was chosen";
        if (!reason.empty()) refused_.push_back({path, reason});
        trainer_.acts().say("Including labelled images: " + std::to_string(all_ - waiting_.size()) + " of " +
                            std::to_string(all_) + " \u2013 Image > Stop Reading ends it");
    } catch (...) {
        refused_.push_back({path, currentFailure().description()});
        if (!waiting_.empty() && waiting_.front() == path) waiting_.pop_front();
        isUp_ = false;
    }
}

}  // namespace dravik::trainer
