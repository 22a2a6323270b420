// The part images that the operator has opened, and which of them is current. Images are decoded by the
// platform.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/image/ImageDecoder.h"
#include "ui/Signal.h"

namespace dravik::trainer {

using engine::ImageDecoder;

// ".png" and the like, in small letters: files of a folder with such a name are taken for images.
std::span<const std::string_view> imageExtensions() noexcept;

class OpenedParts {
  public:
    explicit OpenedParts(ImageDecoder decoder);

    // Opens files, and every image of a folder in order of name (by its usual extensions; folders inside are
    // not entered). Files already open are not opened twice. Returns one line per path that holds no image,
    // naming it. The first part opened becomes current when none is.
    std::vector<std::string> open(const std::vector<std::string>& paths);
    void close(int index);
    void closeAll();

    int count() const noexcept;
    const std::string& path(int index) const;  // raises Subscript out of range (9)
    std::string name(int index) const;         // the file's name without its folder

    // -1 when nothing is open. Making a part current decodes it; when that fails image() is empty and
    // problem() says why, and the part stays in the list.
    int current() const noexcept;
    void setCurrent(int index);
    bool next();      // false at the end
    bool previous();  // false at the start

    const engine::GreyImage& image() const noexcept;
    std::shared_ptr<const engine::GreyImage> sharedImage() const noexcept;
    const std::string& problem() const noexcept;
    // A small copy for a strip of thumbnails, at most `side` pixels wide and high; empty when it cannot be
    // decoded.
    engine::GreyImage thumbnail(int index, int side) const;

    ui::Signal<> listChanged;
    ui::Signal<> currentChanged;

  private:
    ImageDecoder decoder_;
    std::vector<std::string> paths_;
    int current_ = -1;
    std::shared_ptr<const engine::GreyImage> image_ = std::make_shared<engine::GreyImage>();
    std::string problem_;
};

}  // namespace dravik::trainer
