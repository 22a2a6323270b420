#include "trainer/OpenedParts.h"

#include <algorithm>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "base/Failure.h"
#include "base/Paths.h"
#include "engine/image/ImageFiles.h"
#include "engine/image/Thumbnail.h"

namespace dravik::trainer {
namespace {

namespace fs = std::filesystem;

// The same file has the same name however the operator arrived at it.
std::string normalName(const fs::path& path) {
    std::error_code error;
    const auto absolute = fs::absolute(path, error);
    return fromPath((error ? path : absolute).lexically_normal());
}

}  // namespace

OpenedParts::OpenedParts(ImageDecoder decoder) : decoder_(std::move(decoder)) {}

OpenResult OpenedParts::open(const std::vector<std::string>& paths) {
    OpenResult result;
    std::vector<std::string>& problems = result.problems;
    std::unordered_set<std::string> known(paths_.begin(), paths_.end());
    const auto firstNew = paths_.size();
    std::string firstKnown;
    const auto add = [&](const fs::path& path) {
        auto name = normalName(path);
        if (known.insert(name).second) return paths_.push_back(std::move(name));
        ++result.alreadyOpen;
        if (firstKnown.empty()) firstKnown = std::move(name);
    };

    for (const auto& name : paths) {
        const auto path = toPath(name);
        std::error_code error;
        const auto status = fs::status(path, error);
        if (!fs::exists(status)) {
            problems.push_back(name + ": " +
                               (fs::status_known(status) ? "no such file or folder" : error.message()));
        } else if (fs::is_directory(status)) {
            const auto images = engine::imagesIn(path, error);
            for (const auto& image : images) add(image);
            if (error)
                problems.push_back(name + ": " + error.message());
            else if (images.empty())
                problems.push_back(name + ": no images in this folder");
        } else if (fs::is_other(status)) {
            problems.push_back(name + ": is no file");
        } else if (engine::hasImageExtension(path)) {
            add(path);
        } else {
            // Its name does not say that it is an image, so its content must.
            try {
                decoder_(name);
                add(path);
            } catch (...) {
                problems.push_back(currentFailure().description());
            }
        }
    }

    result.added = static_cast<int>(paths_.size() - firstNew);
    if (result.added > 0) {
        result.first = static_cast<int>(firstNew);
        listChanged();
        if (current_ < 0) setCurrent(result.first);
    } else if (!firstKnown.empty()) {
        result.first = static_cast<int>(std::find(paths_.begin(), paths_.end(), firstKnown) - paths_.begin());
    }
    return result;
}

void OpenedParts::close(int index) {
    static_cast<void>(path(index));
    paths_.erase(paths_.begin() + index);
    const bool wasCurrent = index == current_;
    if (index < current_) --current_;
    const int follower = std::min(current_, count() - 1);
    if (wasCurrent) current_ = -1;
    listChanged();
    if (wasCurrent) setCurrent(follower);
}

void OpenedParts::closeAll() {
    if (paths_.empty()) return;
    paths_.clear();
    current_ = -1;
    listChanged();
    setCurrent(-1);
}

int OpenedParts::count() const noexcept {
    return static_cast<int>(paths_.size());
}

const std::string& OpenedParts::path(int index) const {
    if (index < 0 || index >= count()) throw Failure(RuntimeError::SubscriptOutOfRange);
    return paths_[static_cast<std::size_t>(index)];
}

std::string OpenedParts::name(int index) const {
    return fromPath(toPath(path(index)).filename());
}

int OpenedParts::current() const noexcept {
    return current_;
}

void OpenedParts::setCurrent(int index) {
    if (index != -1) static_cast<void>(path(index));
    current_ = index;
    // Who shows the image before has it until the change is told.
    const auto before = std::exchange(image_, std::make_shared<engine::GreyImage>());
    problem_.clear();
    decoding_ = index >= 0;
    if (decoding_ && !decodeElsewhere) return setDecoded(decode(decoder_, path(index)));
    if (decoding_) decodeElsewhere();
    if (decoding_ || index < 0) currentChanged();
}

OpenedParts::Decoded OpenedParts::decode(const ImageDecoder& decoder, const std::string& path) {
    Decoded decoded{std::make_shared<engine::GreyImage>(), {}};
    try {
        decoded.image = std::make_shared<engine::GreyImage>(decoder(path));
        if (decoded.image->empty()) decoded.problem = path + ": the image has no pixels";
    } catch (...) {
        decoded.problem = currentFailure().description();
    }
    return decoded;
}

void OpenedParts::setDecoded(Decoded decoded) {
    const auto before = std::exchange(image_, std::move(decoded.image));
    problem_ = std::move(decoded.problem);
    decoding_ = false;
    currentChanged();
}

bool OpenedParts::next() {
    if (current_ + 1 >= count()) return false;
    setCurrent(current_ + 1);
    return true;
}

bool OpenedParts::previous() {
    if (current_ < 1) return false;
    setCurrent(current_ - 1);
    return true;
}

const engine::GreyImage& OpenedParts::image() const noexcept {
    return *image_;
}

std::shared_ptr<const engine::GreyImage> OpenedParts::sharedImage() const noexcept {
    return image_;
}

const std::string& OpenedParts::problem() const noexcept {
    return problem_;
}

std::function<engine::GreyImage()> OpenedParts::thumbnailWork(int index, int side) const {
    const auto decoded = index == current_ && !image_->empty() ? image_ : nullptr;
    return [decoded, decoder = decoder_, name = path(index), side] {
        try {
            return engine::thumbnailOf(decoded ? *decoded : *decode(decoder, name).image, side);
        } catch (...) {
            return engine::GreyImage();
        }
    };
}

}  // namespace dravik::trainer
