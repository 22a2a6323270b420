// Image > Image Settings: how the characters of images are looked for, in choices and figures; the region
// too, for those who know its place or work without a mouse.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "engine/segmentation/SegmentationSettings.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/ListControls.h"
#include "ui/TextBox.h"

namespace dravik::trainer {

class ImageSettingsForm : public ui::Form {
  public:
    explicit ImageSettingsForm(const engine::SegmentationSettings& settings);

    // The operator has pressed OK; the form unloads then.
    std::function<void(const engine::SegmentationSettings&)> accepted;

  private:
    void show(const engine::SegmentationSettings& settings);
    // Nothing when a figure is none or out of range.
    std::optional<engine::SegmentationSettings> entered() const;
    void showPossible();
    std::string regionText() const;

    // As it was shown, which is rounded: figures that nobody has changed stand for what they were.
    std::optional<engine::RotatedBox> shownRegion_;
    std::string shownText_;

    ui::Label lblPolarity{"lblPolarity", "&Polarity"};
    ui::ComboBox cboPolarity{"cboPolarity"};
    ui::Label lblKind{"lblKind", "&Kind of print"};
    ui::ComboBox cboKind{"cboKind"};
    ui::Label lblSmallest{"lblSmallest", "S&mallest height"};
    ui::TextBox txtSmallest{"txtSmallest"};
    ui::Label lblSmallestHint{"lblSmallestHint", "of capitals and figures, in pixels; empty for automatic"};
    ui::CheckBox chkRegion{"chkRegion", "Look only in a &region"};
    std::array<ui::Label, 5> lblRegion{ui::Label{"lblLeft", "&Left"}, ui::Label{"lblTop", "&Top"},
                                       ui::Label{"lblWidth", "&Width"}, ui::Label{"lblHeight", "&Height"},
                                       ui::Label{"lblAngle", "&Angle"}};
    std::array<ui::TextBox, 5> txtRegion{{ui::TextBox{"txtLeft"}, ui::TextBox{"txtTop"},
                                          ui::TextBox{"txtWidth"}, ui::TextBox{"txtHeight"},
                                          ui::TextBox{"txtAngle"}}};
    ui::Label lblHint{"lblHint"};
    ui::Button cmdAutomatic{"cmdAutomatic", "All A&utomatic"};
    ui::Button OKButton{"OKButton", "OK"};
    ui::Button CancelButton{"CancelButton", "Cancel"};
};

}  // namespace dravik::trainer
