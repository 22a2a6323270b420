// Image files as grey images, decoded by the system's imaging component.
#pragma once

#include "engine/image/GreyImage.h"

namespace dravik::com {

// Colours become their luma, transparent pixels stand on white, the orientation that a camera noted is
// followed. The path is UTF-8. COM must be initialized on the thread. Raises Failure with the file's name and
// the problem: File not found (53), Path/File access error (75), Permission denied (70), Invalid procedure
// call (5) for a file that is no image, Device I/O error (57) for a damaged one, Out of memory (7) above
// kMostPixels.
engine::GreyImage decodeImageFileByWic(const std::string& path);

}  // namespace dravik::com
