#include "trainer/window/WatchedFolder.h"

#include <chrono>
#include <utility>

#include "base/Failure.h"
#include "base/FileSystem.h"
#include "base/Paths.h"
#include "engine/image/ImageFiles.h"

namespace dravik::trainer {
namespace {

constexpr int kUnchangedLooks = 1;  // after the one that has found the file
// A file that cannot be decoded may still be written, with pauses; after so many looks it is told of as it
// is.
constexpr int kPatientLooks = 20;

}  // namespace

WatchedFolder::WatchedFolder(engine::ImageDecoder decoder) : decoder_(std::move(decoder)) {
    ticked_ = timer_.tick.connect([this] { tick(); });
}

void WatchedFolder::watch(const std::string& folder) {
    Seen seen;
    std::error_code error;
    for (const auto& image : engine::imagesIn(toPath(folder), error)) seen.files[fromPath(image)].told = true;
    if (error) throw Failure(RuntimeError::PathNotFound, folder + ": " + error.message());
    looking_.cancel();
    seen_ = std::move(seen);
    folder_ = folder;
    there_ = true;
    timer_.setEnabled(true);
}

void WatchedFolder::stop() {
    looking_.cancel();
    folder_.clear();
    there_ = false;
    timer_.setEnabled(false);
}

WatchedFolder::Seen WatchedFolder::look(Seen seen, const std::string& folder,
                                        const engine::ImageDecoder& decoder, const std::stop_token& stop) {
    seen.complete.clear();
    std::error_code error;
    const auto images = engine::imagesIn(toPath(folder), error);
    seen.there = !error;
    if (error) return seen;
    std::map<std::string, File> files;
    for (const auto& image : images) {
        if (stop.stop_requested()) return seen;
        const std::string path = fromPath(image);
        File file;
        if (const auto known = seen.files.find(path); known != seen.files.end()) file = known->second;
        if (!file.told) {
            std::error_code gone;
            const std::uint64_t size = fileSize(path, gone);
            const std::int64_t time = fileTime(path, gone).time_since_epoch().count();
            const bool same = !gone && size > 0 && size == file.size && time == file.time;
            file.unchanged = same ? file.unchanged + 1 : 0;
            file.size = size;
            file.time = time;
            if (file.unchanged >= kUnchangedLooks) {
                bool whole = true;
                try {
                    decoder(path);
                } catch (...) {
                    whole = false;
                }
                file.told = whole || file.unchanged >= kPatientLooks;
                if (file.told) seen.complete.push_back(path);
            }
        }
        files.emplace(path, file);
    }
    seen.files = std::move(files);
    return seen;
}

void WatchedFolder::tick() {
    if (folder_.empty()) return;
    if (looking_.busy() && !looking_.deliver(std::chrono::milliseconds(0))) return;
    if (folder_.empty()) return;
    looking_.start([this, seen = seen_, folder = folder_,
                    decoder = decoder_](const std::stop_token& stop) mutable -> NewestWork::Delivery {
        return [this, found = look(std::move(seen), folder, decoder, stop)]() mutable {
            seen_ = std::move(found);
            if (std::exchange(there_, seen_.there) != there_ && thereChanged) thereChanged();
            if (!seen_.complete.empty() && arrived) arrived(std::exchange(seen_.complete, {}));
        };
    });
}

}  // namespace dravik::trainer
