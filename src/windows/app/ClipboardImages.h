// Images on the clipboard: copied files, or a picture.
#pragma once

#include <string>
#include <vector>

namespace dravik::app {

// The paths that a dropped or copied list of files names.
std::vector<std::string> pathsOf(HDROP files);
// As WindowSystem::clipboardImages().
std::vector<std::string> clipboardImages(HWND owner, const std::string& newFile);
// There is something of that kind, and no text with a picture.
bool clipboardHasImages();

}  // namespace dravik::app
