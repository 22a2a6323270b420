// A camera as the program sees it: searched for, opened, adjusted, and asked for its newest image. Nothing
// here waits: the work is done on a thread of the camera's own, and observed by polling.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/image/GreyImage.h"

namespace dravik::camera {

struct CameraDescription {
    std::string identifier;  // opens it
    std::string vendor;
    std::string model;
    std::string serial;
    std::string address;  // in the network or on the bus

    friend bool operator==(const CameraDescription&, const CameraDescription&) = default;
};

enum class Trigger {
    Free,      // the camera takes images as fast as it can
    Software,  // one for each trigger()
    Line,      // one for each signal on an input line
};

struct CameraSettings {
    std::optional<double> exposure{};  // in microseconds; as the camera has it when missing
    std::optional<double> gain{};      // in the camera's unit, mostly decibels; likewise
    Trigger trigger = Trigger::Free;
    std::string line{};  // for Trigger::Line: one of CameraState::lines

    friend bool operator==(const CameraSettings&, const CameraSettings&) = default;
};

// A number that the camera lets be set, with its bounds.
struct CameraNumber {
    double value = 0;
    double least = 0;
    double most = 0;
};

struct CameraState {
    enum class Phase {
        Closed,
        Connecting,
        Live,
        Lost,  // it was open and does not answer; it is tried again until close()
    };
    Phase phase = Phase::Closed;
    bool searching = false;
    std::string problem;  // of the last search, opening, setting or image, in words; "" when there is none
    CameraDescription camera;
    std::optional<CameraNumber> exposure;  // missing when the camera has no such setting
    std::optional<CameraNumber> gain;
    bool softwareTrigger = false;
    std::vector<std::string> lines;  // input lines that can trigger
    std::uint64_t images = 0;        // complete ones since it was opened
    std::uint64_t incomplete = 0;    // those of which parts were lost on the way
};

class Camera {
  public:
    Camera() = default;
    Camera(const Camera&) = delete;
    Camera& operator=(const Camera&) = delete;
    virtual ~Camera() = default;

    // Looks for cameras, which takes a second or two.
    virtual void search() = 0;
    // What the last search has found.
    virtual std::vector<CameraDescription> found() const = 0;

    // Opens a camera instead of the one that is open. One that cannot be reached, or is lost later, is tried
    // again every second.
    virtual void open(const std::string& identifier, const CameraSettings& settings) = 0;
    virtual void close() = 0;
    // Numbers beyond the camera's bounds are set to the bound.
    virtual void apply(const CameraSettings& settings) = 0;
    // Has an image taken; without effect unless the settings say Trigger::Software.
    virtual void trigger() = 0;

    virtual CameraState state() const = 0;
    // The newest image that was not taken yet; null when there is none.
    virtual std::shared_ptr<const engine::GreyImage> takeImage() = 0;
};

}  // namespace dravik::camera
