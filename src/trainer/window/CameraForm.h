// The form of a camera: which one, what it is doing, its settings, and what the operator does with its
// picture. Says what is wanted; the camera itself is its owner's.
#pragma once

#include <string>
#include <vector>

#include "camera/Camera.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/ListControls.h"
#include "ui/Signal.h"
#include "ui/TextBox.h"
#include "ui/Timer.h"

namespace dravik::trainer {

class CameraForm : public ui::Form {
  public:
    CameraForm();

    // What was found; keeps the choice, and chooses `preferred` or the first one where there was none.
    void showCameras(const std::vector<camera::CameraDescription>& found, const std::string& preferred);
    void showState(const camera::CameraState& state);
    void showLive(bool live);

    // Of the camera chosen; "" when none is.
    std::string chosen() const;
    // As typed and chosen; what is no number is left as the camera has it.
    camera::CameraSettings settings() const;

    ui::Timer timer{"tmrCamera", 40};
    ui::Button cmdRefresh{"cmdRefresh", "&Refresh"};
    ui::Button cmdConnect{"cmdConnect", "&Connect"};
    ui::Button cmdApply{"cmdApply", "&Apply"};
    ui::Button cmdTrigger{"cmdTrigger", "&Trigger"};
    ui::Button cmdFreeze{"cmdFreeze", "&Freeze"};
    ui::CheckBox chkLive{"chkLive", "Show &live picture"};

  private:
    ui::Label lblCameras{"lblCameras", "Ca&meras"};
    ui::ListBox lbCameras{"lbCameras"};
    ui::Label lblState{"lblState"};
    ui::Label lblExposure{"lblExposure", "E&xposure, \u00B5s"};
    ui::TextBox txtExposure{"txtExposure"};
    ui::Label lblExposureRange{"lblExposureRange"};
    ui::Label lblGain{"lblGain", "&Gain"};
    ui::TextBox txtGain{"txtGain"};
    ui::Label lblGainRange{"lblGainRange"};
    ui::Label lblTrigger{"lblTrigger", "Images &on"};
    ui::ComboBox cboTrigger{"cboTrigger", {}};
    ui::Button CancelButton{"CancelButton", "Close"};

    std::vector<camera::CameraDescription> cameras_;
    camera::CameraState shown_;
    bool searched_ = false;
    bool hasShown_ = false;
    bool filling_ = false;
};

// "Live: 120 images, 2 of them incomplete" and the like.
std::string cameraText(const camera::CameraState& state);

}  // namespace dravik::trainer
