#include "camera/Cameras.h"

#include "camera/aravis/AravisCamera.h"

namespace dravik::camera {

bool hasCameras() {
    return true;
}

std::unique_ptr<Camera> makeCamera() {
    return std::make_unique<AravisCamera>();
}

}  // namespace dravik::camera
