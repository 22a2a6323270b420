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

}  // namespace

ui::Picture previousPartPicture() {
    return {line({{10, 3}, {5, 8}, {10, 13}})};
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
