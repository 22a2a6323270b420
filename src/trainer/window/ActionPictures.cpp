#include "trainer/window/ActionPictures.h"

namespace dravik::trainer {
namespace {

using Kind = ui::PictureShape::Kind;

ui::PictureShape line(std::vector<ui::PicturePoint> points) {
    return {Kind::Polyline, std::move(points), false, 1.6};
}

ui::Picture magnifier(bool plus) {
    ui::Picture picture = {{Kind::Ellipse, {{2, 2}, {11, 11}}, false, 1.5},
                           line({{10, 10}, {14, 14}}),
                           line({{4.5, 6.5}, {8.5, 6.5}})};
    if (plus) picture.push_back(line({{6.5, 4.5}, {6.5, 8.5}}));
    return picture;
}

// On a round ground, white but for a rim.
ui::Picture onGround(ui::Color color, std::vector<ui::PictureShape> shapes) {
    ui::Picture picture = {{Kind::Ellipse, {{1, 1}, {15, 15}}, true, 0, ui::rgb(255, 255, 255)},
                           {Kind::Ellipse, {{1, 1}, {15, 15}}, false, 1.2, color}};
    for (ui::PictureShape& shape : shapes) {
        shape.color = color;
        picture.push_back(shape);
    }
    return picture;
}

}  // namespace

ui::Picture includedPicture() {
    return onGround(ui::rgb(0x1B, 0x7F, 0x37),
                    {{Kind::Polyline, {{4.5, 8}, {7, 11}, {11.5, 5}}, false, 2.2}});
}

ui::Picture refusedPicture() {
    return onGround(ui::rgb(0xC6, 0x28, 0x28), {{Kind::Polyline, {{5, 5}, {11, 11}}, false, 2.2},
                                                {Kind::Polyline, {{11, 5}, {5, 11}}, false, 2.2}});
}

ui::Picture doubtfulPicture() {
    return onGround(ui::rgb(0xB8, 0x5C, 0x00),
                    {{Kind::Polyline,
                      {{5.8, 6}, {6.3, 4.6}, {8, 4}, {9.8, 4.7}, {10, 6.2}, {8, 8}, {8, 9.6}},
                      false,
                      1.8},
                     {Kind::Ellipse, {{7.1, 11}, {8.9, 12.8}}, true, 0}});
}

ui::Picture failedPicture() {
    return onGround(ui::rgb(0x55, 0x55, 0x55), {{Kind::Polyline, {{4.2, 8}, {11.8, 8}}, false, 2.4}});
}

ui::Picture previousPartPicture() {
    return {line({{10, 3}, {5, 8}, {10, 13}})};
}

ui::Picture morePicture() {
    return {line({{4, 4}, {8, 8}, {4, 12}}), line({{9, 4}, {13, 8}, {9, 12}})};
}

ui::Picture nextPartPicture() {
    return {line({{6, 3}, {11, 8}, {6, 13}})};
}

ui::Picture zoomInPicture() {
    return magnifier(true);
}

ui::Picture zoomOutPicture() {
    return magnifier(false);
}

ui::Picture fitPicture() {
    return {line({{2, 5.5}, {2, 2}, {5.5, 2}}),
            line({{10.5, 2}, {14, 2}, {14, 5.5}}),
            line({{14, 10.5}, {14, 14}, {10.5, 14}}),
            line({{5.5, 14}, {2, 14}, {2, 10.5}}),
            {Kind::Polygon, {{5, 5}, {11, 5}, {11, 11}, {5, 11}}, false, 1.3}};
}

// A pin.
ui::Picture keepTextPicture() {
    return {line({{5, 2}, {11, 2}}), line({{6, 2}, {6, 7}, {4, 9}, {12, 9}, {10, 7}, {10, 2}}),
            line({{8, 9}, {8, 14}})};
}

ui::Picture actualSizePicture() {
    return {line({{2, 5}, {4, 3.5}, {4, 12.5}}),
            line({{11, 5}, {13, 3.5}, {13, 12.5}}),
            {Kind::Ellipse, {{7, 5.2}, {8.6, 6.8}}, true, 0},
            {Kind::Ellipse, {{7, 9.6}, {8.6, 11.2}}, true, 0}};
}

// A turned rectangle.
ui::Picture regionPicture() {
    return {{Kind::Polygon, {{2, 6}, {11, 2}, {14, 9}, {5, 13}}, false, 1.5}};
}

// Two boxes, the cut between them.
ui::Picture correctCharactersPicture() {
    return {{Kind::Polygon, {{2, 4}, {7, 4}, {7, 12}, {2, 12}}, false, 1.4},
            {Kind::Polygon, {{9, 4}, {14, 4}, {14, 12}, {9, 12}}, false, 1.4},
            line({{8, 1}, {8, 15}})};
}

}  // namespace dravik::trainer
