// Pictures of the actions around a part's image, and of what has become of it.
#pragma once

#include "ui/Picture.h"

namespace dravik::trainer {

ui::Picture previousPartPicture();
ui::Picture nextPartPicture();
// Behind which the rest of a bar is that has too little room.
ui::Picture morePicture();
ui::Picture zoomInPicture();
ui::Picture zoomOutPicture();
ui::Picture fitPicture();
ui::Picture actualSizePicture();
ui::Picture regionPicture();
ui::Picture correctCharactersPicture();
ui::Picture keepTextPicture();

// What has become of an image, each of a shape and a colour of its own on a white ground.
ui::Picture includedPicture();
ui::Picture refusedPicture();
ui::Picture doubtfulPicture();
ui::Picture failedPicture();

}  // namespace dravik::trainer
