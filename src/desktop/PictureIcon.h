// Icons drawn from picture shapes: sharp at every size and scale, in the colours of the current palette.
#pragma once

#include <QIcon>

#include "widgets/Picture.h"

namespace dravik {

QIcon pictureIcon(const Picture& picture);

}  // namespace dravik
