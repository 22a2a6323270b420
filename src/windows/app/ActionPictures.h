// Pictures of the actions around a part's image.
#pragma once

#include "ui/Picture.h"

namespace dravik::pictures {

ui::Picture previousPart();
ui::Picture nextPart();
ui::Picture zoomIn();
ui::Picture zoomOut();
ui::Picture fitting();
ui::Picture oneToOne();

}  // namespace dravik::pictures
