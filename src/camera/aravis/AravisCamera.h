// Cameras of the GenICam standard, over GigE Vision and USB3 Vision, through the library Aravis.
#pragma once

#include <memory>

#include "camera/Camera.h"

namespace dravik::camera {

class AravisCamera : public Camera {
  public:
    AravisCamera();
    ~AravisCamera() override;

    void search() override;
    std::vector<CameraDescription> found() const override;
    void open(const std::string& identifier, const CameraSettings& settings) override;
    void close() override;
    void apply(const CameraSettings& settings) override;
    void trigger() override;
    CameraState state() const override;
    std::shared_ptr<const engine::GreyImage> takeImage() override;

  private:
    struct Worker;
    std::unique_ptr<Worker> worker_;
};

}  // namespace dravik::camera
