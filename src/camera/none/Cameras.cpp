#include "camera/Cameras.h"

namespace dravik::camera {

bool hasCameras() {
    return false;
}

std::unique_ptr<Camera> makeCamera() {
    return nullptr;
}

}  // namespace dravik::camera
