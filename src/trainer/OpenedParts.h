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

// What became of paths that were to be opened.
struct OpenResult {
    std::vector<std::string> problems;  // a line for each path that holds no image, naming it
    int added = 0;
    int alreadyOpen = 0;
    int first = -1;  // index of the first part added, else of the first that was open already; -1 for none
};

class OpenedParts {
  public:
    explicit OpenedParts(ImageDecoder decoder);

    // Opens files, and every image of a folder in order of name (by its usual extensions; folders inside are
    // not entered). Files already open are not opened twice. The first part opened becomes current when none
    // is.
    OpenResult open(const std::vector<std::string>& paths);
    void close(int index);
    void closeAll();

    int count() const noexcept;
    const std::string& path(int index) const;  // raises Subscript out of range (9)
    std::string name(int index) const;         // the file's name without its folder

    // -1 when nothing is open. Making a part current decodes it, here or by `decodeElsewhere`; when that
    // fails image() is empty and problem() says why, and the part stays in the list.
    int current() const noexcept;
    void setCurrent(int index);
    // When set, it is called to have the current part decoded, and hands the outcome to setDecoded(), now or
    // later. Until then image() is empty.
    std::function<void()> decodeElsewhere;
    struct Decoded {
        std::shared_ptr<const engine::GreyImage> image;  // not null
        std::string problem;                             // "" when there is none
    };
    // Never raises. Any thread may call it.
    static Decoded decode(const ImageDecoder& decoder, const std::string& path);
    void setDecoded(Decoded decoded);
    bool isDecoding() const noexcept { return decoding_; }
    const ImageDecoder& decoder() const noexcept { return decoder_; }
    bool next();      // false at the end
    bool previous();  // false at the start

    const engine::GreyImage& image() const noexcept;
    std::shared_ptr<const engine::GreyImage> sharedImage() const noexcept;
    const std::string& problem() const noexcept;
    // Work for any thread that makes a small copy for a strip of thumbnails, at most `side` pixels wide and
    // high; it is empty when the image cannot be decoded.
    std::function<engine::GreyImage()> thumbnailWork(int index, int side) const;

    ui::Signal<> listChanged;
    // Another part is current, or the current one is decoded.
    ui::Signal<> currentChanged;

  private:
    ImageDecoder decoder_;
    std::vector<std::string> paths_;
    int current_ = -1;
    std::shared_ptr<const engine::GreyImage> image_ = std::make_shared<engine::GreyImage>();
    std::string problem_;
    bool decoding_ = false;
};

}  // namespace dravik::trainer
