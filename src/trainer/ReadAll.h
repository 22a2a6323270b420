// Reads many images with one font, on all processors, beside whoever waits: what is read so far is taken
// whenever it is asked for.
#pragma once

#include <atomic>
#include <functional>
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
    // The text that an image should have, without blanks and line breaks; nothing where none is known.
    using Expected = std::function<std::optional<std::string>(const std::string& path)>;

    // Begins at once. `expected` is asked here only; the decoder may be asked by any thread.
    ReadAll(std::shared_ptr<const engine::FontReader> reader, engine::ImageDecoder decoder,
            const std::vector<std::string>& paths, const Expected& expected);
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
    struct Task {
        std::string path;
        std::optional<std::string> expected;
    };
    void run(const std::stop_token& stop);

    const std::shared_ptr<const engine::FontReader> reader_;
    const engine::ImageDecoder decoder_;
    std::vector<Task> tasks_;
    std::mutex mutex_;
    std::vector<ImageReading> done_;
    std::atomic<std::size_t> next_ = 0;
    std::atomic<int> running_ = 0;
    std::vector<std::jthread> threads_;
};

}  // namespace dravik::trainer
