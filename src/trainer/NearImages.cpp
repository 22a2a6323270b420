#include "trainer/NearImages.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <mutex>
#include <system_error>
#include <utility>

#include "base/Paths.h"

namespace dravik::trainer {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostPixels = std::size_t{64} << 20;  // of all images together

// By which a file that was written anew is known.
using Stamp = std::pair<fs::file_time_type, std::uintmax_t>;

Stamp stampOf(const std::string& path) {
    std::error_code error;
    const auto time = fs::last_write_time(toPath(path), error);
    return {time, fs::file_size(toPath(path), error)};
}

std::size_t pixelsOf(const engine::GreyImage& image) {
    return static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height());
}

}  // namespace

struct NearImages::Shared {
    struct Kept {
        std::shared_ptr<const engine::GreyImage> image;
        Stamp stamp;
    };

    explicit Shared(engine::ImageDecoder ofFiles) : decoder(std::move(ofFiles)) {}

    const engine::ImageDecoder decoder;
    mutable std::mutex mutex;
    std::vector<std::string> nearby;
    std::map<std::string, Kept> kept;

    bool isNear(const std::string& path) const {
        return std::find(nearby.begin(), nearby.end(), path) != nearby.end();
    }

    // As the file is now.
    OpenedParts::Decoded decode(const std::string& path) {
        const Stamp stamp = stampOf(path);
        {
            const std::lock_guard lock(mutex);
            const auto found = kept.find(path);
            if (found != kept.end() && found->second.stamp == stamp) return {found->second.image, {}};
        }
        OpenedParts::Decoded decoded = OpenedParts::decode(decoder, path);
        const std::lock_guard lock(mutex);
        if (decoded.problem.empty() && isNear(path)) kept[path] = {decoded.image, stamp};
        return decoded;
    }

    // It is near and not decoded, and there is room for it.
    bool lacks(const std::string& path) const {
        const std::lock_guard lock(mutex);
        std::size_t pixels = 0;
        for (const auto& [name, one] : kept) pixels += pixelsOf(*one.image);
        return isNear(path) && !kept.contains(path) && pixels <= kMostPixels / nearby.size();
    }
};

NearImages::NearImages(engine::ImageDecoder decoder)
    : shared_(std::make_shared<Shared>(std::move(decoder))) {}

NearImages::~NearImages() = default;

void NearImages::goTo(std::vector<std::string> paths) {
    const std::lock_guard lock(shared_->mutex);
    shared_->nearby = std::move(paths);
    std::erase_if(shared_->kept, [this](const auto& one) { return !shared_->isNear(one.first); });
}

std::function<OpenedParts::Decoded()> NearImages::decoding(const std::string& path) const {
    return [shared = shared_, path] { return shared->decode(path); };
}

void NearImages::decodeAll() {
    std::vector<std::string> paths;
    {
        const std::lock_guard lock(shared_->mutex);
        paths = shared_->nearby;
    }
    work_.start(
        [shared = shared_, paths = std::move(paths)](const std::stop_token& stop) -> NewestWork::Delivery {
            for (const std::string& path : paths)
                if (!stop.stop_requested() && shared->lacks(path)) shared->decode(path);
            return {};
        });
}

void NearImages::forget(const std::string& path) {
    const std::lock_guard lock(shared_->mutex);
    shared_->kept.erase(path);
}

}  // namespace dravik::trainer
