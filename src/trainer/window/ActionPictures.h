// Pictures of the actions around a part's image.
#pragma once

#include "ui/Picture.h"

namespace dravik::trainer {

ui::Picture previousPartPicture();
ui::Picture nextPartPicture();
ui::Picture zoomInPicture();
ui::Picture zoomOutPicture();
ui::Picture fitPicture();
ui::Picture actualSizePicture();
ui::Picture regionPicture();
ui::Picture correctCharactersPicture();

}  // namespace dravik::trainer
