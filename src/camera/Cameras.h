// The cameras that the program was built with: those of the GenICam standard, or none.
#pragma once

#include <memory>

#include "camera/Camera.h"

namespace dravik::camera {

bool hasCameras();
// Null when there are none.
std::unique_ptr<Camera> makeCamera();

}  // namespace dravik::camera
