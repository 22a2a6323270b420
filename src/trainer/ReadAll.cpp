#include "trainer/ReadAll.h"

#include <algorithm>
#include <utility>

namespace dravik::trainer {

ReadAll::ReadAll(std::shared_ptr<const engine::FontReader> reader, engine::ImageDecoder decoder,
                 std::vector<Task> tasks)
    : reader_(std::move(reader)), decoder_(std::move(decoder)), tasks_(std::move(tasks)) {
    const auto most = std::min<std::size_t>(std::max(1u, std::thread::hardware_concurrency()), tasks_.size());
    running_ = static_cast<int>(most);
    for (std::size_t i = 0; i < most; ++i)
        threads_.emplace_back([this](const std::stop_token& stop) { run(stop); });
}

ReadAll::~ReadAll() {
    stop();
}

void ReadAll::stop() {
    for (std::jthread& thread : threads_) thread.request_stop();
}

void ReadAll::run(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
        const std::size_t place = next_++;
        if (place >= tasks_.size()) break;
        const Task& task = tasks_[place];
        ImageReading reading =
            readImage(task.path, task.path, task.expected, *reader_, decoder_, stop, task.settings);
        if (stop.stop_requested()) break;  // it may be half read
        const std::scoped_lock lock(mutex_);
        done_.push_back(std::move(reading));
    }
    --running_;
}

std::vector<ImageReading> ReadAll::take() {
    const std::scoped_lock lock(mutex_);
    return std::exchange(done_, {});
}

}  // namespace dravik::trainer
