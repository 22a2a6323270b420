#include "screen/context/Pictures.h"

namespace dravik::pictures {
namespace {

using Kind = ui::PictureShape::Kind;

constexpr ui::Color kGreen = ui::rgb(60, 170, 75);
constexpr ui::Color kAmber = ui::rgb(230, 170, 40);
constexpr ui::Color kRed = ui::rgb(215, 75, 65);
constexpr ui::Color kBlue = ui::rgb(70, 120, 210);
constexpr ui::Color kGrey = ui::rgb(140, 140, 140);

ui::PictureShape box(double left, double top, double right, double bottom, ui::Color color) {
    return {Kind::Polygon, {{left, top}, {right, top}, {right, bottom}, {left, bottom}}, true, 0, color};
}

ui::PictureShape frame(double left, double top, double right, double bottom) {
    return {Kind::Polygon,
            {{left, top}, {right, top}, {right, bottom}, {left, bottom}},
            false,
            1,
            ui::kButtonTextColor};
}

ui::PictureShape line(std::vector<ui::PicturePoint> points, double width = 1.25,
                      ui::Color color = ui::kButtonTextColor) {
    return {Kind::Polyline, std::move(points), false, width, color};
}

}  // namespace

ui::Picture graphical() {
    return {box(1.5, 1.5, 7, 7, kGreen), box(9, 1.5, 14.5, 7, kAmber), box(1.5, 9, 7, 14.5, kBlue),
            box(9, 9, 14.5, 14.5, kRed)};
}

ui::Picture numeric() {
    return {box(1.5, 2.5, 14.5, 5.5, kBlue),    frame(1.5, 2.5, 14.5, 13.5),
            line({{1.5, 5.5}, {14.5, 5.5}}, 1), line({{1.5, 9.5}, {14.5, 9.5}}, 1),
            line({{5.5, 2.5}, {5.5, 13.5}}, 1), line({{10, 2.5}, {10, 13.5}}, 1)};
}

ui::Picture histogram() {
    return {box(3, 9, 5.5, 13.5, kBlue), box(6.5, 4, 9, 13.5, kBlue), box(10, 6.5, 12.5, 13.5, kRed),
            line({{1.5, 1.5}, {1.5, 14}, {14.5, 14}})};
}

ui::Picture array() {
    ui::Picture picture;
    constexpr int kShades[3][3] = {{40, 150, 60}, {200, 50, 210}, {60, 170, 30}};
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column) {
            const int shade = kShades[row][column];
            picture.push_back(
                box(2 + column * 4, 2 + row * 4, 6 + column * 4, 6 + row * 4, ui::rgb(shade, shade, shade)));
        }
    picture.push_back(frame(2, 2, 14, 14));
    return picture;
}

ui::Picture undo() {
    return {line({{3, 6}, {10, 6}, {12.2, 6.8}, {13.3, 8.8}, {13, 11}, {11.5, 12.6}, {9, 13}, {6, 13}}, 1.6,
                 kBlue),
            {Kind::Polygon, {{7, 2}, {2, 6}, {7, 10}}, true, 0, kBlue}};
}

ui::Picture log() {
    return {frame(3.5, 1.5, 12.5, 14.5), line({{5.5, 4.5}, {10.5, 4.5}}, 1), line({{5.5, 7}, {10.5, 7}}, 1),
            line({{5.5, 9.5}, {10.5, 9.5}}, 1), line({{5.5, 12}, {8.5, 12}}, 1, kGrey)};
}

ui::Picture deviation() {
    return {line({{1.5, 13},
                  {4, 12.2},
                  {5.6, 9.5},
                  {6.8, 5},
                  {8, 3.2},
                  {9.2, 5},
                  {10.4, 9.5},
                  {12, 12.2},
                  {14.5, 13}},
                 1.5, kBlue),
            line({{8, 3.2}, {8, 14.5}}, 1, kGrey), line({{1.5, 14.5}, {14.5, 14.5}}, 1)};
}

ui::Picture character() {
    return {line({{3, 14}, {8, 2}, {13, 14}}, 1.8), line({{4.9, 9.6}, {11.1, 9.6}}, 1.8)};
}

}  // namespace dravik::pictures
