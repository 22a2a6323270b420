// Icons drawn from picture shapes: sharp at every size and scale, in the colours of the current palette.
#pragma once

#include <QIcon>

#include "ui/Picture.h"

namespace dravik::qt {

QIcon pictureIcon(const ui::Picture& picture);

}  // namespace dravik::qt
