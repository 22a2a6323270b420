// What a histogram is drawn from: bars with their labels, the axis and its hash marks, in the form's user
// units. The plotting area is 0 to 50 by 0 to 100; the axes lie at x = 0 and y = 0.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ui/Chart.h"

namespace dravik::screen {

constexpr ui::ChartScale kHistogramScale{-5, 120, 55, -20};
constexpr double kAxisLength = 50;
constexpr double kAxisHeight = 100;

// Sets the four end coordinates of a line.
void MoveLine(ui::ChartLine& line, double x1, double y1, double x2, double y2);

struct HistogramDrawing {
    HistogramDrawing();

    // Bars and their labels; element 0 is there from the start, hidden.
    std::vector<ui::ChartBar> shpData;
    std::vector<ui::ChartLabel> lblX;
    // The visible hash marks of the vertical axis and the numbers beside the major ones.
    std::vector<ui::ChartLine> linY;
    std::vector<ui::ChartLabel> lblY;
    ui::ChartLine linX;
    ui::ChartLine linSample;  // a marker that no procedure moves
    std::string barTitle;     // below the labels of the bars: what they stand for

    // Shows the horizontal axis.
    void drawAxis();
    // Back to the hidden element 0, without hash marks.
    void clear();
    // Hidden bars and labels with indices 0 to count - 1.
    void load(std::size_t count, double barWidth, double labelWidth, int labelPoints);
    // Gives a bar its place; from then on the pointer finds it, hidden or not.
    void placeBar(std::size_t index, double left, double top, double height, bool visible);
    // Shows the label of a placed bar, centred under it.
    void placeLabel(std::size_t index, std::string caption);
    // Marks of an axis that reaches from 0 to `max`; none for 0.
    void placeHashMarks(std::int16_t max);

    // The first placed bar near x: no further from its left edge than it is wide, on either side.
    // Deliberately not measured from its centre.
    std::optional<std::size_t> barAt(double x) const;
    // The same, with y above -5 and below the bar's top.
    std::optional<std::size_t> barAt(double x, double y) const;

    ui::ChartScene scene() const;
    // Where a bar stands among those of the scene; -1 for a hidden one.
    int placeInScene(std::size_t index) const;

  private:
    std::size_t placed_ = 0;
};

}  // namespace dravik::screen
