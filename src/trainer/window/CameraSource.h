// A camera as a source of images: its live picture stands in the place of the opened image, and freezing
// makes an image file of it, which is opened as every other one is.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "camera/Camera.h"
#include "engine/image/GreyImage.h"
#include "trainer/window/CameraForm.h"
#include "trainer/window/WindowSystem.h"
#include "ui/Platform.h"

namespace dravik::trainer {

class CameraSource {
  public:
    struct Window {
        // The live picture is there, another one, or no more: what liveImage() says is to be shown.
        std::function<void()> liveChanged;
        // The path of a new file for an image; raises when it cannot be made.
        std::function<std::string()> newFile;
        // Opens an image file and makes it the current one.
        std::function<void(const std::string& path)> open;
        std::function<void(const std::string& words)> problem;
    };

    // Both outlive this object.
    CameraSource(ui::Platform& platform, WindowSystem& system, Window window);
    ~CameraSource();

    // Brings the form up and looks for cameras.
    void show();
    // The picture that stands in the place of the opened image; null when that is shown.
    const engine::GreyImage* liveImage() const noexcept { return live_ && image_ ? image_.get() : nullptr; }
    // The opened image is wanted, as when the operator chooses another one.
    void showOpened();
    // What one key does: freezes the live picture, or shows it again.
    void freezeOrGoOn();
    bool isOpen() const noexcept { return form_.loaded(); }

  private:
    void tick();
    void connectOrNot();
    void freeze();
    void setLive(bool live);

    ui::Platform& platform_;
    WindowSystem& system_;
    const Window window_;
    CameraForm form_;
    std::unique_ptr<camera::Camera> camera_;
    std::shared_ptr<const engine::GreyImage> image_;
    bool live_ = false;
    bool searching_ = false;
};

}  // namespace dravik::trainer
