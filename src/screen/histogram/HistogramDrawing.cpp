#include "screen/histogram/HistogramDrawing.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace dravik::screen {
namespace {

constexpr double kLabelTop = -2;
constexpr double kLowestHit = -5;
constexpr double kMajorMarkLeft = -2;
constexpr double kMinorMarkLeft = -1;
constexpr double kMarkLabelRight = -2.5;
constexpr double kMarkLabelWidth = 2.5;
constexpr int kMarkLabelPoints = 8;
// More numbers than this stand closer than their usual height.
constexpr int kManyMarkLabels = 20;
constexpr int kManyMarkLabelPoints = 6;
constexpr int kTitlePoints = 9;
constexpr char kSamplesTitle[] = "samples";
constexpr double kSamplesTitleTop = 116;
constexpr double kBarTitleTop = -11;
constexpr ui::Color kAxisColor = ui::rgb(127, 127, 127);
constexpr int kAxisWidth = 2;
constexpr int kMinorMarksPerMajor = 5;

ui::ChartLabel title(std::string caption, double top, ui::ChartLabel::Alignment alignment) {
    ui::ChartLabel label;
    label.caption = std::move(caption);
    label.top = top;
    label.width = kAxisLength;
    label.fontSize = kTitlePoints;
    label.alignment = alignment;
    label.visible = true;
    return label;
}

constexpr int markStep(std::int16_t max) {
    return max < 100 ? 1 : max < 500 ? 5 : 10;
}

template <class Elements>
auto visibleOf(const Elements& elements) {
    Elements visible;
    for (const auto& element : elements)
        if (element.visible) visible.push_back(element);
    return visible;
}

}  // namespace

void MoveLine(ui::ChartLine& line, double x1, double y1, double x2, double y2) {
    line.x1 = x1;
    line.y1 = y1;
    line.x2 = x2;
    line.y2 = y2;
}

HistogramDrawing::HistogramDrawing() {
    clear();
}

void HistogramDrawing::drawAxis() {
    MoveLine(linX, 0, 0, kAxisLength, 0);
    linX.borderWidth = kAxisWidth;
    linX.color = kAxisColor;
    linX.visible = true;
}

void HistogramDrawing::clear() {
    shpData.assign(1, {});
    lblX.assign(1, {});
    lblX.front().caption = "X-axis label";
    linY.clear();
    lblY.clear();
    placed_ = 0;
}

void HistogramDrawing::load(std::size_t count, double barWidth, double labelWidth, int labelPoints) {
    ui::ChartBar bar;
    bar.width = barWidth;
    bar.fill = ui::rgb(0, 0, 0);
    shpData.assign(count, bar);
    ui::ChartLabel label;
    label.width = labelWidth;
    label.top = kLabelTop;
    label.fontSize = labelPoints;
    lblX.assign(count, label);
    placed_ = 0;
}

void HistogramDrawing::placeBar(std::size_t index, double left, double top, double height, bool visible) {
    auto& bar = shpData.at(index);
    bar.left = left;
    bar.top = top;
    bar.height = height;
    bar.visible = visible;
    placed_ = std::max(placed_, index + 1);
}

void HistogramDrawing::placeLabel(std::size_t index, std::string caption) {
    const auto& bar = shpData.at(index);
    auto& label = lblX.at(index);
    label.left = bar.left + bar.width / 2 - label.width / 2;
    label.caption = std::move(caption);
    label.visible = true;
}

void HistogramDrawing::placeHashMarks(std::int16_t max) {
    linY.clear();
    lblY.clear();
    if (max == 0) return;
    const double unit = kAxisHeight / max;
    const int step = markStep(max);
    const bool many = max / (kMinorMarksPerMajor * step) > kManyMarkLabels;
    for (int k = step; k <= max; k += step) {
        const bool major = k % (kMinorMarksPerMajor * step) == 0;
        ui::ChartLine line;
        line.color = major ? ui::kWindowTextColor : kAxisColor;
        line.visible = true;
        MoveLine(line, major ? kMajorMarkLeft : kMinorMarkLeft, k * unit, 0, k * unit);
        linY.push_back(line);
        if (!major) continue;
        ui::ChartLabel label;
        label.width = kMarkLabelWidth;
        label.left = kMarkLabelRight - kMarkLabelWidth;
        label.top = line.y1;
        label.caption = std::to_string(k);
        label.fontSize = many ? kManyMarkLabelPoints : kMarkLabelPoints;
        label.alignment = ui::ChartLabel::Alignment::End;
        label.visible = true;
        lblY.push_back(std::move(label));
    }
}

std::optional<std::size_t> HistogramDrawing::barAt(double x) const {
    for (std::size_t i = 0; i < placed_; ++i)
        if (std::abs(x - shpData[i].left) <= shpData[i].width) return i;
    return std::nullopt;
}

std::optional<std::size_t> HistogramDrawing::barAt(double x, double y) const {
    if (y <= kLowestHit) return std::nullopt;
    for (std::size_t i = 0; i < placed_; ++i)
        if (std::abs(x - shpData[i].left) <= shpData[i].width && y < shpData[i].top) return i;
    return std::nullopt;
}

int HistogramDrawing::placeInScene(std::size_t index) const {
    if (index >= shpData.size() || !shpData[index].visible) return -1;
    return static_cast<int>(std::count_if(shpData.begin(),
                                          shpData.begin() + static_cast<std::ptrdiff_t>(index),
                                          [](const ui::ChartBar& bar) { return bar.visible; }));
}

ui::ChartScene HistogramDrawing::scene() const {
    ui::ChartScene scene;
    scene.bars = visibleOf(shpData);
    scene.lines = visibleOf(linY);
    if (linX.visible) scene.lines.push_back(linX);
    if (linSample.visible) scene.lines.push_back(linSample);
    scene.labels = visibleOf(lblX);
    auto numbers = visibleOf(lblY);
    scene.labels.insert(scene.labels.end(), std::make_move_iterator(numbers.begin()),
                        std::make_move_iterator(numbers.end()));
    if (scene.bars.empty()) return scene;
    scene.labels.push_back(title(kSamplesTitle, kSamplesTitleTop, ui::ChartLabel::Alignment::Start));
    if (!barTitle.empty())
        scene.labels.push_back(title(barTitle, kBarTitleTop, ui::ChartLabel::Alignment::Center));
    return scene;
}

}  // namespace dravik::screen
