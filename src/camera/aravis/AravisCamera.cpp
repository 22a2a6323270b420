#include "camera/aravis/AravisCamera.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

#include "base/Failure.h"
#include "camera/aravis/AravisDevice.h"

namespace dravik::camera {
namespace {

using namespace std::chrono_literals;

constexpr auto kBetweenTries = 1s;
// How long an image is waited for before the thread looks whether it is asked for something else.
constexpr auto kPatience = 20ms;

}  // namespace

// What is asked for and what is known stands behind one mutex; the device belongs to the thread alone.
struct AravisCamera::Worker {
    mutable std::mutex mutex;
    std::condition_variable_any woken;

    bool searchAsked = false;
    bool triggerAsked = false;
    bool openAsked = false;   // `wanted` is new
    bool applyAsked = false;  // `settings` are new
    std::string wanted;       // identifier of the camera that is to be open, "" for none
    CameraSettings settings;

    CameraState state;
    std::vector<CameraDescription> found;
    std::shared_ptr<const engine::GreyImage> newest;

    std::unique_ptr<AravisDevice> device;
    std::jthread thread{[this](const std::stop_token& stop) { run(stop); }};

    ~Worker() {
        thread.request_stop();
        woken.notify_all();
        thread.join();
    }

    template <class Change>
    void ask(Change change) {
        {
            const std::scoped_lock lock(mutex);
            change();
        }
        woken.notify_all();
    }

    // Runs one piece of work outside the lock; a failure becomes the state's problem.
    template <class Work>
    bool attempt(Work work) {
        try {
            work();
            return true;
        } catch (...) {
            const std::string problem = currentFailure().description();
            const std::scoped_lock lock(mutex);
            state.problem = problem;
            return false;
        }
    }

    void run(const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            const bool searches = asked(searchAsked);
            if (searches) searchNow();
            if (asked(openAsked)) letGo();
            if (!device) connect();
            if (device && asked(applyAsked)) applyNow();
            if (device && asked(triggerAsked)) attempt([this] { device->trigger(); });
            if (device) {
                receive();
                continue;
            }
            std::unique_lock lock(mutex);
            const auto hasWork = [this] { return searchAsked || openAsked; };
            if (wanted.empty())
                woken.wait(lock, stop, hasWork);
            else
                woken.wait_for(lock, stop, kBetweenTries, hasWork);
        }
        device.reset();
    }

    bool asked(bool& what) const {
        const std::scoped_lock lock(mutex);
        return std::exchange(what, false);
    }

    void searchNow() {
        std::vector<CameraDescription> cameras;
        attempt([&cameras] { cameras = searchCameras(); });
        const std::scoped_lock lock(mutex);
        found = std::move(cameras);
        state.searching = searchAsked;
    }

    void letGo() {
        device.reset();
        const std::scoped_lock lock(mutex);
        newest.reset();
        triggerAsked = false;
        const bool searching = state.searching;
        state = {};
        state.searching = searching;
        if (!wanted.empty()) state.phase = CameraState::Phase::Connecting;
    }

    void connect() {
        std::string identifier;
        CameraSettings current;
        {
            const std::scoped_lock lock(mutex);
            identifier = wanted;
            current = settings;
            applyAsked = false;
        }
        if (identifier.empty()) return;
        CameraState known;
        if (!attempt([&] {
                auto opened = std::make_unique<AravisDevice>(identifier, current);
                opened->describe(known);
                device = std::move(opened);
            }))
            return;
        const std::scoped_lock lock(mutex);
        known.phase = CameraState::Phase::Live;
        known.searching = state.searching;
        known.images = state.images;
        known.incomplete = state.incomplete;
        state = std::move(known);
    }

    void applyNow() {
        CameraSettings current;
        {
            const std::scoped_lock lock(mutex);
            current = settings;
        }
        CameraState known;
        if (!attempt([&] {
                device->apply(current);
                device->describe(known);
            }))
            return;
        const std::scoped_lock lock(mutex);
        state.exposure = known.exposure;
        state.gain = known.gain;
        state.problem.clear();
    }

    void receive() {
        std::shared_ptr<const engine::GreyImage> image;
        std::uint64_t incomplete = 0;
        attempt([&] { image = device->next(kPatience, incomplete); });
        const bool lost = device->lost();
        if (lost) device.reset();
        const std::scoped_lock lock(mutex);
        state.incomplete += incomplete;
        if (image) {
            ++state.images;
            state.problem.clear();
            newest = std::move(image);
        }
        if (lost) {
            state.phase = CameraState::Phase::Lost;
            state.problem = "The camera does not answer";
        }
    }
};

AravisCamera::AravisCamera() : worker_(std::make_unique<Worker>()) {}

AravisCamera::~AravisCamera() = default;

void AravisCamera::search() {
    worker_->ask([this] { worker_->searchAsked = worker_->state.searching = true; });
}

std::vector<CameraDescription> AravisCamera::found() const {
    const std::scoped_lock lock(worker_->mutex);
    return worker_->found;
}

void AravisCamera::open(const std::string& identifier, const CameraSettings& settings) {
    worker_->ask([&] {
        worker_->wanted = identifier;
        worker_->settings = settings;
        worker_->openAsked = true;
        worker_->state.phase = CameraState::Phase::Connecting;
    });
}

void AravisCamera::close() {
    worker_->ask([this] {
        worker_->wanted.clear();
        worker_->openAsked = true;
        worker_->newest.reset();
        worker_->state.phase = CameraState::Phase::Closed;
    });
}

void AravisCamera::apply(const CameraSettings& settings) {
    worker_->ask([&] {
        worker_->settings = settings;
        worker_->applyAsked = true;
    });
}

void AravisCamera::trigger() {
    worker_->ask([this] { worker_->triggerAsked = true; });
}

CameraState AravisCamera::state() const {
    const std::scoped_lock lock(worker_->mutex);
    return worker_->state;
}

std::shared_ptr<const engine::GreyImage> AravisCamera::takeImage() {
    const std::scoped_lock lock(worker_->mutex);
    return std::exchange(worker_->newest, nullptr);
}

}  // namespace dravik::camera
