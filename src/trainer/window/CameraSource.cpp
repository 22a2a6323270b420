#include "trainer/window/CameraSource.h"

#include <utility>

#include "base/Failure.h"

namespace dravik::trainer {
namespace {

using Phase = camera::CameraState::Phase;

constexpr char kCameraKey[] = "camera";

}  // namespace

CameraSource::CameraSource(ui::Platform& platform, WindowSystem& system, Window window)
    : platform_(platform), system_(system), window_(std::move(window)) {
    form_.timer.tick.subscribe([this] { tick(); });
    form_.cmdRefresh.click.subscribe([this] {
        camera_->search();
        searching_ = true;
    });
    form_.cmdConnect.click.subscribe([this] { connectOrNot(); });
    form_.cmdApply.click.subscribe([this] { camera_->apply(form_.settings()); });
    form_.cmdTrigger.click.subscribe([this] {
        setLive(true);
        camera_->trigger();
    });
    form_.cmdFreeze.click.subscribe([this] { freeze(); });
    form_.chkLive.click.subscribe([this] { setLive(form_.chkLive.checked()); });
    form_.unloading.subscribe([this] {
        camera_->close();
        image_.reset();
        setLive(false);
    });
}

CameraSource::~CameraSource() = default;

void CameraSource::show() {
    if (!camera_) camera_ = system_.makeCamera();
    if (!camera_) return;
    const bool first = !form_.loaded();
    platform_.show(form_);
    if (!first) return;
    form_.showLive(live_);
    form_.cmdRefresh.press();
}

void CameraSource::connectOrNot() {
    if (camera_->state().phase != Phase::Closed) {
        camera_->close();
        image_.reset();
        return setLive(false);
    }
    const std::string chosen = form_.chosen();
    if (chosen.empty()) return;
    system_.keep(kCameraKey, chosen);
    camera_->open(chosen, {});
    setLive(true);
}

void CameraSource::tick() {
    if (!camera_ || !form_.loaded()) return;
    const camera::CameraState state = camera_->state();
    if (searching_ && !state.searching) {
        searching_ = false;
        form_.showCameras(camera_->found(), system_.kept(kCameraKey));
    }
    form_.showState(state);
    auto newest = camera_->takeImage();
    if (!newest || !live_) return;
    const auto before = std::exchange(image_, std::move(newest));  // shown until the change is told
    window_.liveChanged();
}

void CameraSource::freeze() {
    if (!liveImage()) return;
    try {
        const std::string file = window_.newFile();
        system_.writeImage(*image_, file);
        window_.open(file);
        setLive(false);
    } catch (...) {
        window_.problem("The picture could not be kept: " + currentFailure().description());
    }
}

void CameraSource::freezeOrGoOn() {
    if (!camera_ || !form_.loaded()) return show();
    if (live_)
        freeze();
    else
        setLive(true);
}

void CameraSource::showOpened() {
    if (live_) setLive(false);
}

void CameraSource::setLive(bool live) {
    if (std::exchange(live_, live) != live) window_.liveChanged();
    form_.showLive(live);
}

}  // namespace dravik::trainer
