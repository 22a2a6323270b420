#include "trainer/window/CameraForm.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>

#include "base/NumberFormat.h"

namespace dravik::trainer {
namespace {

using Phase = camera::CameraState::Phase;

constexpr char kFree[] = "their own, as fast as possible";
constexpr char kSoftware[] = "Trigger";
constexpr char kLine[] = "a signal on ";

std::optional<double> numberOf(const std::string& text) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && last == end ? std::optional(value) : std::nullopt;
}

std::string textOf(double value) {
    std::string text = formatNumber(value, "0.###");
    if (text.back() == '.') text.pop_back();
    return text;
}

std::string nameOf(const camera::CameraDescription& camera) {
    std::string name = camera.vendor + " " + camera.model;
    if (!camera.serial.empty()) name += ", " + camera.serial;
    if (!camera.address.empty()) name += " (" + camera.address + ")";
    return name;
}

// A number's box as the camera has it, but for one in which something is being typed.
void show(ui::TextBox& box, ui::Label& range, const std::optional<camera::CameraNumber>& number,
          const std::optional<camera::CameraNumber>& before) {
    box.setEnabled(number.has_value());
    if (!number) {
        box.setText("");
        return range.setCaption("");
    }
    if (!before || before->value != number->value) box.setText(textOf(number->value));
    range.setCaption(textOf(number->least) + " to " + textOf(number->most));
}

}  // namespace

CameraForm::CameraForm() : ui::Form("cameraForm", "Camera") {
    lbCameras.setAccessibleName("Cameras");
    txtExposure.setAccessibleName("Exposure in microseconds");
    txtGain.setAccessibleName("Gain");
    cboTrigger.setAccessibleName("Images on");
    lblState.setUsesMnemonic(false);
    cmdRefresh.setToolTip("Look for cameras in the network and on the bus");
    cmdConnect.setToolTip("Use the camera that is chosen");
    cmdApply.setToolTip("Give exposure, gain and trigger to the camera");
    cmdTrigger.setToolTip("Have the camera take one image");
    cmdFreeze.setToolTip("Keep the picture as an image file and open it");
    chkLive.setToolTip("Show what the camera sees in place of the opened image");
    setLayout(ui::column({
        ui::item(lblCameras),
        ui::row({ui::item(lbCameras).stretched().atLeast(5400, 1500),
                 ui::column({ui::item(cmdRefresh), ui::item(cmdConnect), ui::space()})})
            .stretched(),
        ui::item(lblState),
        ui::table({{ui::item(lblExposure), ui::item(txtExposure).atLeast(1500), ui::item(lblExposureRange)},
                   {ui::item(lblGain), ui::item(txtGain).atLeast(1500), ui::item(lblGainRange)}}),
        ui::row({ui::item(lblTrigger), ui::item(cboTrigger).stretched(), ui::item(cmdApply),
                 ui::item(cmdTrigger)}),
        ui::row({ui::item(chkLive), ui::space(), ui::item(cmdFreeze), ui::item(CancelButton)}),
    }));
    timers = {&timer};
    defaultButton = &cmdApply;
    cancelButton = &CancelButton;
    resizable = true;
    CancelButton.click.subscribe([this] { unload(); });
    lbCameras.doubleClick.subscribe([this] { cmdConnect.press(); });
    lbCameras.click.subscribe([this] { cmdConnect.setEnabled(lbCameras.listIndex() >= 0); });
    cboTrigger.click.subscribe([this] {
        if (!filling_) cmdApply.press();
    });
    activated.subscribe([this] { lbCameras.setFocus(); });
    loading.subscribe([this] {
        hasShown_ = false;
        showState({});
        timer.setEnabled(true);
    });
    unloading.subscribe([this] { timer.setEnabled(false); });
}

void CameraForm::showCameras(const std::vector<camera::CameraDescription>& found,
                             const std::string& preferred) {
    const std::string before = chosen().empty() ? preferred : chosen();
    cameras_ = found;
    searched_ = true;
    std::vector<std::string> names;
    for (const auto& one : found) names.push_back(nameOf(one));
    lbCameras.setItems(std::move(names));
    const auto same =
        std::find_if(found.begin(), found.end(), [&](const auto& one) { return one.identifier == before; });
    if (!found.empty())
        lbCameras.setListIndex(same == found.end() ? 0 : static_cast<int>(same - found.begin()));
    cmdConnect.setEnabled(lbCameras.listIndex() >= 0);
}

void CameraForm::showState(const camera::CameraState& state) {
    const bool none = searched_ && !state.searching && cameras_.empty() && state.phase == Phase::Closed;
    lblState.setCaption(none && state.problem.empty()
                            ? "No camera was found. Is one connected, in the same network and switched on?"
                            : cameraText(state));
    cmdRefresh.setEnabled(!state.searching);
    cmdConnect.setCaption(state.phase == Phase::Closed ? "&Connect" : "Dis&connect");
    cmdConnect.setEnabled(state.phase != Phase::Closed || lbCameras.listIndex() >= 0);
    const bool live = state.phase == Phase::Live;
    for (ui::Widget* one : {static_cast<ui::Widget*>(&cmdApply), static_cast<ui::Widget*>(&cboTrigger)})
        one->setEnabled(live);
    cmdTrigger.setEnabled(live && cboTrigger.text() == kSoftware);
    const bool first = !hasShown_ || shown_.phase != state.phase;
    show(txtExposure, lblExposureRange, state.exposure, first ? std::nullopt : shown_.exposure);
    show(txtGain, lblGainRange, state.gain, first ? std::nullopt : shown_.gain);
    if (first || shown_.lines != state.lines || shown_.softwareTrigger != state.softwareTrigger) {
        const std::string before = cboTrigger.text();
        std::vector<std::string> ways = {kFree};
        if (state.softwareTrigger) ways.emplace_back(kSoftware);
        for (const std::string& line : state.lines) ways.push_back(kLine + line);
        const auto same = std::find(ways.begin(), ways.end(), before);
        const int index = same == ways.end() ? 0 : static_cast<int>(same - ways.begin());
        filling_ = true;
        cboTrigger.setItems(std::move(ways));
        cboTrigger.setListIndex(index);
        filling_ = false;
    }
    shown_ = state;
    hasShown_ = true;
}

void CameraForm::showLive(bool live) {
    chkLive.setChecked(live);
    cmdFreeze.setEnabled(live);
}

std::string CameraForm::chosen() const {
    const int index = lbCameras.listIndex();
    return index < 0 || index >= static_cast<int>(cameras_.size())
               ? std::string()
               : cameras_[static_cast<std::size_t>(index)].identifier;
}

camera::CameraSettings CameraForm::settings() const {
    camera::CameraSettings settings;
    settings.exposure = numberOf(txtExposure.text());
    settings.gain = numberOf(txtGain.text());
    const std::string way = cboTrigger.text();
    if (way == kSoftware) settings.trigger = camera::Trigger::Software;
    if (way.starts_with(kLine)) {
        settings.trigger = camera::Trigger::Line;
        settings.line = way.substr(sizeof kLine - 1);
    }
    return settings;
}

std::string cameraText(const camera::CameraState& state) {
    const std::string why = state.problem.empty() ? "" : ": " + state.problem;
    switch (state.phase) {
        case Phase::Connecting:
            return "Connecting..." + (state.problem.empty() ? std::string() : " " + state.problem);
        case Phase::Live: {
            std::string text =
                "Live: " + std::to_string(state.images) + (state.images == 1 ? " image" : " images");
            if (state.incomplete > 0)
                text += ", " + std::to_string(state.incomplete) + " incomplete ones lost";
            return state.problem.empty() ? text : text + ". " + state.problem;
        }
        case Phase::Lost:
            return "The camera is lost" + why +
                   ". Is its cable plugged in? It is tried again until it is back.";
        case Phase::Closed:
            break;
    }
    return (state.searching ? "Looking for cameras..." : "Not connected") + why;
}

}  // namespace dravik::trainer
