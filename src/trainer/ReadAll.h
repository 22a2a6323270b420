// Reads many images with one font, on all processors, beside whoever waits: what is read so far is taken
// whenever it is asked for.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "trainer/commands/ImageReading.h"

namespace dravik::trainer {

class ReadAll {
  public:
    struct Task {
        std::string path;
        std::optional<std::string> expected{};  // the text that is on the part, without blanks and breaks
        std::optional<engine::SegmentationSettings> settings{};  // by which it is looked at, else the font's
    };

    // Begins at once. The decoder may be asked by any thread.
    ReadAll(std::shared_ptr<const engine::FontReader> reader, engine::ImageDecoder decoder,
            std::vector<Task> tasks);
    // Stops it and waits for what is under way.
    ~ReadAll();
    ReadAll(const ReadAll&) = delete;
    ReadAll& operator=(const ReadAll&) = delete;

    // What was read since the last call, in no order.
    std::vector<ImageReading> take();
    std::size_t count() const noexcept { return tasks_.size(); }
    // All was read, or it was stopped; nothing comes any more once take() has given nothing.
    bool hasEnded() const noexcept { return running_ == 0; }
    void stop();

  private:
    void run(const std::stop_token& stop);

    const std::shared_ptr<const engine::FontReader> reader_;
    const engine::ImageDecoder decoder_;
    const std::vector<Task> tasks_;
    std::mutex mutex_;
    std::vector<ImageReading> done_;
    std::atomic<std::size_t> next_ = 0;
    std::atomic<int> running_ = 0;
    std::vector<std::jthread> threads_;
};

}  // namespace dravik::trainer
