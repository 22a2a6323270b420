#include "camera/aravis/AravisDevice.h"

#include <arv.h>

#include <algorithm>
#include <utility>

#include "base/Failure.h"
#include "camera/PixelFormat.h"

namespace dravik::camera {
namespace {

constexpr int kBuffers = 6;

// Calls a function of the library, whose last argument is where it puts an error, and raises that.
template <class Function, class... Arguments>
auto call(Function function, Arguments... arguments) {
    GError* error = nullptr;
    const auto check = [&error] {
        if (!error) return;
        const Failure failure(RuntimeError::DeviceIoError, error->message);
        g_clear_error(&error);
        throw failure;
    };
    if constexpr (std::is_void_v<decltype(function(arguments..., &error))>) {
        function(arguments..., &error);
        check();
    } else {
        auto result = function(arguments..., &error);
        check();
        return result;
    }
}

std::string text(const char* value) {
    return value ? value : "";
}

// Names that the library gives in an array of its own.
template <class Function>
std::vector<std::string> names(Function function, ArvCamera* camera) {
    guint count = 0;
    const char** list = call(function, camera, &count);
    std::vector<std::string> result(list, list + count);
    g_free(list);
    return result;
}

template <class Available, class Value, class Bounds>
std::optional<CameraNumber> number(ArvCamera* camera, Available available, Value value, Bounds bounds) {
    if (!call(available, camera)) return {};
    CameraNumber result;
    result.value = call(value, camera);
    call(bounds, camera, &result.least, &result.most);
    return result;
}

std::optional<CameraNumber> exposureOf(ArvCamera* camera) {
    return number(camera, arv_camera_is_exposure_time_available, arv_camera_get_exposure_time,
                  arv_camera_get_exposure_time_bounds);
}

std::optional<CameraNumber> gainOf(ArvCamera* camera) {
    return number(camera, arv_camera_is_gain_available, arv_camera_get_gain, arv_camera_get_gain_bounds);
}

double within(double value, const CameraNumber& number) {
    return std::clamp(value, number.least, std::max(number.least, number.most));
}

}  // namespace

std::vector<CameraDescription> searchCameras() {
    arv_update_device_list();
    std::vector<CameraDescription> result;
    for (unsigned i = 0; i < arv_get_n_devices(); ++i)
        result.push_back({text(arv_get_device_id(i)), text(arv_get_device_vendor(i)),
                          text(arv_get_device_model(i)), text(arv_get_device_serial_nbr(i)),
                          text(arv_get_device_address(i))});
    return result;
}

void AravisDevice::Release::operator()(void* object) const noexcept {
    g_object_unref(object);
}

AravisDevice::AravisDevice(const std::string& identifier, const CameraSettings& settings)
    : camera_(call(arv_camera_new, identifier.c_str())), identifier_(identifier) {
    if (!camera_) throw Failure(RuntimeError::DeviceIoError, "There is no camera \"" + identifier + "\"");
    g_signal_connect(arv_camera_get_device(camera_.get()), "control-lost",
                     G_CALLBACK(+[](ArvDevice*, std::atomic<bool>* lost) { *lost = true; }), &lost_);
    choosePixelFormat();
    call(arv_camera_set_acquisition_mode, camera_.get(), ARV_ACQUISITION_MODE_CONTINUOUS);
    apply(settings);
    startStream();
}

AravisDevice::~AravisDevice() {
    stopStream();
    g_signal_handlers_disconnect_by_data(arv_camera_get_device(camera_.get()), &lost_);
}

void AravisDevice::choosePixelFormat() {
    const std::vector<std::string> offered =
        names(arv_camera_dup_available_pixel_formats_as_strings, camera_.get());
    const auto* best = std::find_if(std::begin(kPixelFormats), std::end(kPixelFormats), [&](auto format) {
        return std::find(offered.begin(), offered.end(), format) != offered.end();
    });
    if (best == std::end(kPixelFormats))
        throw Failure(RuntimeError::DeviceIoError, "The camera sends no pixels that can be read here");
    format_ = *best;
    call(arv_camera_set_pixel_format_from_string, camera_.get(), format_.c_str());
}

void AravisDevice::startStream() {
    stream_.reset(call(arv_camera_create_stream, camera_.get(), nullptr, nullptr));
    const guint size = call(arv_camera_get_payload, camera_.get());
    for (int i = 0; i < kBuffers; ++i) arv_stream_push_buffer(stream_.get(), arv_buffer_new_allocate(size));
    call(arv_camera_start_acquisition, camera_.get());
}

void AravisDevice::stopStream() noexcept {
    if (!stream_) return;
    arv_camera_stop_acquisition(camera_.get(), nullptr);  // fails where the camera is lost
    stream_.reset();
}

void AravisDevice::apply(const CameraSettings& settings) {
    ArvCamera* camera = camera_.get();
    if (settings.exposure)
        if (const auto bounds = exposureOf(camera)) {
            if (call(arv_camera_is_exposure_auto_available, camera))
                call(arv_camera_set_exposure_time_auto, camera, ARV_AUTO_OFF);
            call(arv_camera_set_exposure_time, camera, within(*settings.exposure, *bounds));
        }
    if (settings.gain)
        if (const auto bounds = gainOf(camera)) {
            if (call(arv_camera_is_gain_auto_available, camera))
                call(arv_camera_set_gain_auto, camera, ARV_AUTO_OFF);
            call(arv_camera_set_gain, camera, within(*settings.gain, *bounds));
        }
    if (settings.trigger == settings_.trigger && settings.line == settings_.line) {
        settings_ = settings;
        return;
    }
    // Cameras take another trigger only while they stand still.
    const bool streamed = stream_ != nullptr;
    stopStream();
    switch (settings.trigger) {
        case Trigger::Free:
            call(arv_camera_clear_triggers, camera);
            break;
        case Trigger::Software:
            call(arv_camera_set_trigger, camera, "Software");
            break;
        case Trigger::Line:
            call(arv_camera_set_trigger, camera, settings.line.c_str());
            break;
    }
    settings_ = settings;
    if (streamed) startStream();
}

void AravisDevice::trigger() {
    if (settings_.trigger == Trigger::Software) call(arv_camera_software_trigger, camera_.get());
}

std::shared_ptr<const engine::GreyImage> AravisDevice::next(std::chrono::microseconds patience,
                                                            std::uint64_t& incomplete) {
    ArvBuffer* buffer = arv_stream_timeout_pop_buffer(stream_.get(), static_cast<guint64>(patience.count()));
    if (!buffer) return nullptr;
    // Whatever comes of it, the buffer goes back to be filled again.
    const auto giveBack = [this](ArvBuffer* filled) { arv_stream_push_buffer(stream_.get(), filled); };
    const std::unique_ptr<ArvBuffer, decltype(giveBack)> filled(buffer, giveBack);
    if (arv_buffer_get_status(buffer) != ARV_BUFFER_STATUS_SUCCESS) {
        ++incomplete;
        return nullptr;
    }
    std::size_t size = 0;
    const void* data = arv_buffer_get_image_data(buffer, &size);
    gint padding = 0;
    gint paddingBelow = 0;
    arv_buffer_get_image_padding(buffer, &padding, &paddingBelow);
    return std::make_shared<engine::GreyImage>(
        greyImage(format_, arv_buffer_get_image_width(buffer), arv_buffer_get_image_height(buffer),
                  static_cast<std::size_t>(padding), std::span(static_cast<const std::byte*>(data), size)));
}

void AravisDevice::describe(CameraState& state) const {
    ArvCamera* camera = camera_.get();
    state.camera = {identifier_, text(call(arv_camera_get_vendor_name, camera)),
                    text(call(arv_camera_get_model_name, camera)), "", ""};
    if (arv_camera_is_feature_available(camera, "DeviceSerialNumber", nullptr))
        state.camera.serial = text(call(arv_camera_get_device_serial_number, camera));
    state.exposure = exposureOf(camera);
    state.gain = gainOf(camera);
    state.softwareTrigger = call(arv_camera_is_software_trigger_supported, camera);
    state.lines = names(arv_camera_dup_available_trigger_sources, camera);
    std::erase(state.lines, "Software");
}

}  // namespace dravik::camera
