// A surface with bars, lines and labels in user units: x to the right, y upwards. The form that owns it
// builds a scene and hands it over whole; the backend draws it sharp at any size. Arrow keys come to the form
// as every key does, which moves the pointer; the menu key comes as kKeyMenu.
#pragma once

#include <string>
#include <vector>

#include "ui/Widget.h"

namespace dravik::ui {

constexpr int kKeyMenu = 93;

struct ChartBar {
    double left = 0;
    double top = 0;  // the bar reaches from `top` down by `height`
    double width = 0;
    double height = 0;
    Color fill = 0;
    bool visible = false;
    std::string accessibleName{};
    bool hatched = false;  // told from others by more than its colour
};

struct ChartLine {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
    int borderWidth = 1;  // pixels at 96 dpi
    Color color = kWindowTextColor;
    bool visible = false;
};

struct ChartLabel {
    enum class Alignment { Start, Center, End };

    double left = 0;
    double top = 0;  // the text hangs below `top`
    double width = 0;
    std::string caption;
    int fontSize = 10;  // points
    Color backColor = kButtonFaceColor;
    Alignment alignment = Alignment::Center;
    bool verticallyCentered = false;  // the text is centred on `top` instead
    bool visible = false;
};

// User coordinates of the surface's left-top and right-bottom corners.
struct ChartScale {
    double left = 0;
    double top = 1;
    double right = 1;
    double bottom = 0;
};

struct ChartScene {
    std::vector<ChartBar> bars;
    std::vector<ChartLine> lines;
    std::vector<ChartLabel> labels;
};

class Chart : public Widget {
  public:
    explicit Chart(std::string name)
        : Widget(WidgetKind::Chart, std::move(name), kButtonFaceColor, kWindowTextColor) {}

    const ChartScale& scale() const noexcept { return scale_; }
    void setScale(ChartScale scale) {
        scale_ = scale;
        changed(Change::Items);
    }
    const ChartScene& scene() const noexcept { return scene_; }
    void setScene(ChartScene scene) {
        scene_ = std::move(scene);
        changed(Change::Items);
    }
    // Which of the scene's bars the pointer or a key has come to; -1 for none.
    int pointed() const noexcept { return pointed_; }
    void setPointed(int bar) { assign(pointed_, bar, Change::Selection); }

  private:
    ChartScale scale_;
    ChartScene scene_;
    int pointed_ = -1;
};

}  // namespace dravik::ui
