// Pictures of the actions around a part's image.
#pragma once

#include "widgets/Picture.h"

namespace dravik::pictures {

Picture previousPart();
Picture nextPart();
Picture zoomIn();
Picture zoomOut();
Picture fitting();
Picture oneToOne();

}  // namespace dravik::pictures
