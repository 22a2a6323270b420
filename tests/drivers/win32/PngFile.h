// Pictures of the screen as PNG files, written by the system's imaging component. COM is initialized on the
// thread.
#pragma once

#include <string>

#include "windows/win32/Gdi.h"

namespace dravik::test {

// The path is UTF-8. Raises Path/File access error (75) that names the file.
void writePng(const std::string& path, win32::Canvas& picture);

}  // namespace dravik::test
