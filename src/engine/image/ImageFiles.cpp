#include "engine/image/ImageFiles.h"

#include <algorithm>
#include <array>

#include "base/Paths.h"
#include "base/Text.h"

namespace dravik::engine {
namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 11> kExtensions = {".png",  ".jpg",  ".jpeg", ".bmp", ".gif", ".tif",
                                                          ".tiff", ".webp", ".pgm",  ".ppm", ".pbm"};

}  // namespace

std::span<const std::string_view> imageExtensions() noexcept {
    return kExtensions;
}

bool hasImageExtension(const fs::path& path) {
    const auto extension = lowerCase(fromPath(path.extension()));
    return std::find(kExtensions.begin(), kExtensions.end(), extension) != kExtensions.end();
}

std::vector<fs::path> imagesIn(const fs::path& folder, std::error_code& error) {
    std::vector<fs::path> images;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code unreadable;
        const auto status = entry->status(unreadable);
        if (hasImageExtension(entry->path()) && !fs::is_directory(status) && !fs::is_other(status))
            images.push_back(entry->path());
    }
    std::sort(images.begin(), images.end());
    return images;
}

}  // namespace dravik::engine
