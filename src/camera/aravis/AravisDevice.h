// An open camera of Aravis, used from one thread: its settings and its stream of images. Operations raise
// Device I/O error (57) with the library's own words.
#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "camera/Camera.h"

struct _ArvCamera;
struct _ArvStream;

namespace dravik::camera {

// All cameras that answer; takes a second or two.
std::vector<CameraDescription> searchCameras();

class AravisDevice {
  public:
    // Opens the camera and starts its stream.
    AravisDevice(const std::string& identifier, const CameraSettings& settings);
    AravisDevice(const AravisDevice&) = delete;
    AravisDevice& operator=(const AravisDevice&) = delete;
    ~AravisDevice();

    void apply(const CameraSettings& settings);
    void trigger();
    // The next image, waited for as long as `patience`; null when there is none, or when parts of it were
    // lost (which counts in `incomplete`).
    std::shared_ptr<const engine::GreyImage> next(std::chrono::microseconds patience,
                                                  std::uint64_t& incomplete);
    // The camera has stopped answering.
    bool lost() const noexcept { return lost_; }
    // The parts of a state that the camera tells: itself, numbers and their bounds, what can trigger.
    void describe(CameraState& state) const;

  private:
    struct Release {
        void operator()(void* object) const noexcept;
    };

    void startStream();
    void stopStream() noexcept;
    void choosePixelFormat();

    std::atomic<bool> lost_ = false;
    std::unique_ptr<_ArvCamera, Release> camera_;
    std::unique_ptr<_ArvStream, Release> stream_;
    std::string identifier_;
    std::string format_;
    CameraSettings settings_;
};

}  // namespace dravik::camera
